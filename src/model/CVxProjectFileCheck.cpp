#include "CVxProjectFileCheck.h"

#include "CVxIniFileReader.h"
#include "CVxLocalize.h"
#include "CVxProject.h"
#include "IVxReadIniClient.h"
#include "VxReferencedFile.h"

#include <QFileInfo>

#include <iterator>
#include <limits>

namespace {

// The version and the compression of the head.
class CVxHeadReader : public IVxReadIniClient
{
public:
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader*) override
    {
        if (key == "FileVersion")
            version = CVxIniFileReader::ToInt(value, 0);
        else if (key == "Compression")
            compressed = true;
    }
    int version = 0;
    bool compressed = false;
};

// Walks the entries of a container without unpacking them. The loader takes
// a cut-off entry as far as it goes, so a container that lost its end would
// open as a smaller project; a block that ends before its announced size
// shows the loss.
class CVxEntryCheck : public IVxReadIniClient
{
public:
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override
    {
        if (key != "DataSize" || !reader)
            return;
        const int size = CVxIniFileReader::ToInt(value, -1);
        if (size < 0 || !reader->SkipDataBlock(static_cast<unsigned>(size)))
            complete = false;
        ++entries;
    }
    bool complete = true;
    int entries = 0;
};

// The run of sections of a plain project: every "Floor" closes with an
// "EndFloor", and the writer's last section is the picture cache. A file
// cut anywhere before that would load as a smaller project without a word.
struct SVxPlainRun
{
    void Section(const CVxStringA& name)
    {
        if (name == "Floor") {
            if (openFloor)
                unclosedFloor = true;
            openFloor = true;
        } else if (name == "EndFloor") {
            openFloor = false;
            ++endFloors;
        }
        last = name;
        ++sections;
    }
    bool IsCutShort(int version) const
    {
        // Every project writer puts its floors behind the head.
        if (sections == 0)
            return true;
        // Files of older versions may know neither closing section.
        if (endFloors > 0 && (openFloor || unclosedFloor))
            return true;
        return version >= CVxProject::fileVersion && last != "PictureResizeCache";
    }
    CVxStringA last;
    int sections = 0;
    int endFloors = 0;
    bool openFloor = false;
    bool unclosedFloor = false;
};

} // namespace

CVxProjectFileCheck CVxProjectFileCheck::Check(const CVxStringW& path, EKind kind)
{
    const QFileInfo info(path.ToQString());
    if (path.IsEmpty() || !info.exists())
        return {VX_FILE_REFUSED, VX_REASON_MISSING};
    if (info.isDir())
        return {VX_FILE_REFUSED, VX_REASON_FOLDER};
    // A pipe, a device or a file of the kernel would block the reader or
    // never end.
    if (!VX_IsPlainFile(path, std::numeric_limits<int64_t>::max()))
        return {VX_FILE_REFUSED, VX_REASON_SPECIAL};
    if (info.size() == 0)
        return {VX_FILE_REFUSED, VX_REASON_EMPTY};

    CVxIniFileReader reader{path, 0};
    if (!reader.IsOpened())
        return {VX_FILE_REFUSED, VX_REASON_UNREADABLE};
    reader.Start();
    const CVxStringA head = reader.GetSectionName();
    const bool library = head == "LibSetup";
    if (kind == VX_EXPECT_PROJECT && library)
        return {VX_FILE_REFUSED, VX_REASON_LIBRARY};
    if (kind == VX_EXPECT_LIBRARY && !library)
        return {VX_FILE_REFUSED, head == "Room" ? VX_REASON_NOT_LIBRARY : VX_REASON_NOT_PROJECT};
    if (!library && head != "Room")
        return {VX_FILE_REFUSED, VX_REASON_NOT_PROJECT};

    CVxHeadReader headReader;
    reader.ReadSection(&headReader);
    CVxProjectFileCheck result(VX_FILE_GOOD, VX_REASON_NONE);
    result.m_fileVersion = headReader.version;
    result.m_compressed = headReader.compressed;
    if (headReader.compressed) {
        CVxEntryCheck entries;
        while (!reader.GetSectionName().IsEmpty())
            reader.ReadSection(reader.GetSectionName() == "File" ? &entries : nullptr);
        // A head without a single entry is a container cut within its head.
        if (!entries.complete || entries.entries == 0) {
            result.m_verdict = entries.entries == 0 ? VX_FILE_REFUSED : VX_FILE_DAMAGED;
            result.m_reason = VX_REASON_CUT_SHORT;
        }
    } else if (!library) {
        // A plain library has no closing section to miss.
        SVxPlainRun run;
        while (!reader.GetSectionName().IsEmpty()) {
            run.Section(reader.GetSectionName());
            reader.ReadSection(nullptr);
        }
        if (run.IsCutShort(headReader.version)) {
            result.m_verdict = VX_FILE_DAMAGED;
            result.m_reason = VX_REASON_CUT_SHORT;
        }
    }
    return result;
}

const wchar_t* CVxProjectFileCheck::ReasonText(EReason reason)
{
    switch (reason) {
    case VX_REASON_NONE:
        break;
    case VX_REASON_MISSING:
        return L"no such file";
    case VX_REASON_FOLDER:
        return L"is a folder, not a file";
    case VX_REASON_SPECIAL:
        return L"not a regular file";
    case VX_REASON_UNREADABLE:
        return L"can't be read";
    case VX_REASON_EMPTY:
        return L"empty file, not a project";
    case VX_REASON_NOT_PROJECT:
        return L"not a Plaveno project";
    case VX_REASON_LIBRARY:
        return L"an object library, not a project";
    case VX_REASON_NOT_LIBRARY:
        return L"a project, not an object library";
    case VX_REASON_CUT_SHORT:
        return L"damaged or incomplete project file (cut short)";
    case VX_REASON_CORRUPT:
        return L"damaged project file (its data can't be unpacked)";
    }
    return L"";
}

CVxStringW CVxProjectFileCheck::LocalizedReason(EReason reason)
{
    // Rows of the messages table; the English text stands at the call site.
    static const int rows[] = {0, 27, 901, 902, 27, 903, 904, 905, 906, 907, 908};
    static const wchar_t* const english[] = {
        L"",
        L"The file doesn't exist or you don't have the permission to read it.",
        L"This is a folder, not a file.",
        L"This is not a regular file.",
        L"The file doesn't exist or you don't have the permission to read it.",
        L"The file is empty.",
        L"This is not a Plaveno project.",
        L"This is an object library, not a project.",
        L"This is a project, not an object library.",
        L"The file is damaged or incomplete: it was cut short.",
        L"The file is damaged: its data can't be unpacked.",
    };
    const int index = static_cast<int>(reason);
    if (index <= 0 || index >= static_cast<int>(std::size(rows)))
        return CVxStringW();
    return VX_GetLoc()->LocalizeMessage(rows[index], english[index]);
}
