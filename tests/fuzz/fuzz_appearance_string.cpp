// Reads arbitrary bytes as the text form of a surface's appearance, writes it
// back and reads it again: once written, the text and the surface it gives
// must stay fixed through further readings and writings. Also builds the
// tile picture of what was read.

#include "CVxAppearance.h"
#include "CVxPicBuf.h"
#include "CVxStringReader.h"
#include "VxUtf8.h"

#include <QtGlobal>

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

// Paths from the input reach the file system's checks, which complain of
// names no file can have; that is expected here.
void Quiet(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const QtMessageHandler previous = qInstallMessageHandler(Quiet);
    (void)previous;
    // One line of a record file is all an appearance ever is.
    if (size > 4096)
        return 0;
    const CVxStringA bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const CVxStringW text = VX_StringFromUTF8(bytes);

    CVxAppearance first;
    first.LoadFromString(text, nullptr);

    // Numbers are written with at most eight decimals, and a value that
    // needs more is cut to six, so the first save may round; from then on
    // the text is fixed.
    CVxAppearance second;
    second.LoadFromString(first.SaveToString(nullptr), nullptr);
    const CVxStringW saved = second.SaveToString(nullptr);
    CVxAppearance third;
    third.LoadFromString(saved, nullptr);
    const CVxStringW savedAgain = third.SaveToString(nullptr);
    CVxAppearance fourth;
    fourth.LoadFromString(savedAgain, nullptr);
    Check(savedAgain == saved, "text changed on a later save");
    Check(fourth == third, "appearance changed on a later reading");
    Check(fourth.kind == third.kind && fourth.flags == third.flags && fourth.tileName == third.tileName,
          "fields outside the comparison changed");
    Check(first.main == second.main && first.blend == second.blend && first.tileMode == second.tileMode,
          "materials changed on the first save");

    // An old project file, whose stretched textures lie at their real size.
    CVxStringReader oldFile(CVxStringA(), 65001);
    oldFile.SetProjectVersion(700);
    CVxAppearance old;
    old.LoadFromString(text, &oldFile);

    // Pictures named by the input are not opened: only the generated tile.
    second.main.texture.Empty();
    second.blend.texture.Empty();
    CVxPicBuf* tile = second.GenerateTilePicture();
    Check(tile && !tile->IsEmpty() && tile->GetWidth() <= 256 && tile->GetHeight() <= 256,
          "tile picture out of bounds");
    tile->Release();
    return 0;
}
