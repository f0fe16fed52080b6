// A language file from the fuzzer's bytes: listed from its folder, selected,
// and asked for rows the way the program asks for them.

#include "CVxLocStrings.h"
#include "CVxLocalize.h"
#include "CVxStringW.h"
#include "IVxAppHelperCallback.h"

#include <cstdint>
#include <cstdio>

CVxStringW VxFuzzTempFolder();

namespace {
CVxStringW LanguageFolder()
{
    static const CVxStringW folder = [] {
        const CVxStringW path = VxFuzzTempFolder() + L"Language/";
        VX_GetAppHelper()->CreateFolder(path);
        return path;
    }();
    return folder;
}

bool WriteBytes(const CVxStringW& path, const uint8_t* data, size_t size)
{
    FILE* file = VX_GetAppHelper()->OpenFile(path, VX_OPEN_WRITE);
    if (!file)
        return false;
    const bool ok = size == 0 || fwrite(data, 1, size, file) == size;
    fclose(file);
    return ok;
}

void AskRows(const CVxLocalize& loc)
{
    static const int kRows[] = {0,          1, 2, 5, 8, 13, 65, 178, 277, 1101, CVxLocStrings::kMaxRow,
                                2000000000, -1};
    for (int table = -1; table <= loc.GetTableCount(); ++table)
        for (int row : kRows)
            loc.LocalizeDlgString(table, row, L"english");
    for (int row : kRows) {
        loc.LocalizeMessage(row, L"english");
        loc.LocalizeLibItem(row, L"english");
    }
    loc.LocalizeDlgString(loc.GetDlgIndex("Units"), 1, L"mm");
    loc.GetSelectedLanguageFile();
    loc.GetSelectedLanguageID();
    loc.IsRightToLeft();
    loc.GetCredits();
    loc.GetLanguagesCount();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const CVxStringW path = LanguageFolder() + L"plv_fuzz.txt";
    if (!WriteBytes(path, data, size))
        return 0;

    CVxLocalize loc;
    loc.Init(LanguageFolder());
    for (int i = 0; i < loc.GetLanguageFileCount(); ++i)
        loc.SelectLanguage(i);
    AskRows(loc);

    // The same file chosen by path, and its tables brought together as a
    // translator's tool does.
    CVxLocalize byPath;
    byPath.InitWithLanguageFile(path);
    AskRows(byPath);
    if (loc.GetTableCount() > 0 && byPath.GetTableCount() > 0) {
        CVxLocStrings merged(loc.GetTable(0)->GetName());
        merged.SynchronizeWith(*byPath.GetTable(0));
        CVxLocStrings::AddNewLines(ReplaceNewLinesAndComments(L"a\\nb#c", true));
    }
    return 0;
}
