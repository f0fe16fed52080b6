// Reads arbitrary bytes as the text form of a surface's appearance, writes it
// back and reads that again: the second reading must give the same surface
// and the same text. Also builds the tile picture of what was read.

#include "CVxAppearance.h"
#include "CVxStringReader.h"
#include "VxUtf8.h"

#include <QImage>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

void Check(bool condition, const char* what)
{
    if (!condition) {
        fprintf(stderr, "appearance text round trip: %s\n", what);
        abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // One line of a record file is all an appearance ever is.
    if (size > 4096)
        return 0;
    const CVxStringA bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const CVxStringW text = VX_StringFromUTF8(bytes);

    CVxAppearance first;
    first.LoadFromString(text, nullptr);
    const CVxStringW saved = first.SaveToString(nullptr);

    CVxAppearance second;
    second.LoadFromString(saved, nullptr);
    const CVxStringW savedAgain = second.SaveToString(nullptr);
    Check(savedAgain == saved, "text changed on the second save");

    CVxAppearance third;
    third.LoadFromString(savedAgain, nullptr);
    Check(third == second, "appearance changed on the second reading");
    Check(third.kind == second.kind && third.flags == second.flags && third.tileName == second.tileName,
          "fields outside the comparison changed");

    // An old project file, whose stretched textures lie at their real size.
    CVxStringReader oldFile(CVxStringA(), 65001);
    oldFile.SetProjectVersion(700);
    CVxAppearance old;
    old.LoadFromString(text, &oldFile);

    // Pictures named by the input are not opened: only the generated tile.
    second.main.texture.Empty();
    second.blend.texture.Empty();
    const QImage tile = second.GenerateTilePicture();
    Check(!tile.isNull() && tile.width() <= 256 && tile.height() <= 256, "tile picture out of bounds");
    return 0;
}
