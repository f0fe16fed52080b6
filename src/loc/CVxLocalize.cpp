#include "CVxLocalize.h"

#include "CVxIniFileReader.h"
#include "CVxLocFileInfo.h"
#include "CVxLocStrings.h"
#include "IVxAppHelperCallback.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <algorithm>

namespace {
// The section names of the well-known tables, in the order of EVxLocTable.
const char* const kTableNames[CVxLocalize::TBL_COUNT] = {
    "Messages",
    "Library",
    "MainMenu",
    "Toolbar",
    "LayersWindow",
    "OptionsDlg",
    "Explore3DDlg",
    "TransformDlg",
    "ObjectPropertiesDlg",
    "ObjectAdvancedPropertiesDlg",
    "RoomPropertiesDlg",
    "RoomMngDlg",
    "ObjectPopupMenu",
    "WallPropertiesDlg",
    "EditWallsDlg",
    "NewObjectPopupMenu",
    "PartsListDlg",
    "PartListExportDlg",
    "ImportObjectListingDlg",
    "PrintDlg",
    "LabelPropertiesDlg",
    "RenameDlg",
    "ExportHTMLDlg",
};

// Library rows that translators need not repeat: the first takes the text of
// the second.
const int kLibraryCopyRow = 65;
const int kLibraryCopySource = 13;
const int kLibraryPrefixedRow = 1101;
const int kLibraryPrefixedSource = 277;

// Each table stops at CVxLocStrings::kMaxRow, but a file of many tables with
// one high row each would still claim memory by the gigabyte. Once the tables
// read hold this many rows, the sections that follow are skipped.
const int kMaxRowsPerFile = 1000000;

CVxStringA ToUtf8(const CVxStringW& text)
{
    return VX_StringToUTF8(text);
}
} // namespace

bool CVxLocalize::s_synchronizing = false;

CVxLocalize* VX_GetLoc()
{
    static CVxLocalize* loc = new CVxLocalize;
    return loc;
}

CVxLocalize::CVxLocalize()
{
    std::fill(std::begin(m_tableIndex), std::end(m_tableIndex), -1);
}

CVxLocalize::~CVxLocalize()
{
    ClearTables();
    ClearFiles();
}

void CVxLocalize::ClearTables()
{
    for (CVxLocStrings* table : m_tables)
        delete table;
    m_tables.clear();
    std::fill(std::begin(m_tableIndex), std::end(m_tableIndex), -1);
}

void CVxLocalize::ClearFiles()
{
    for (CVxLocFileInfo* file : m_files)
        delete file;
    m_files.clear();
}

void CVxLocalize::Init(const CVxStringW& languageFolder)
{
    VxTrace("Init - language dir: %s\n", ToUtf8(languageFolder).c_str());
    ClearTables();
    ClearFiles();
    m_selected = -1;

    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host || languageFolder.IsEmpty())
        return;
    CVxStringW mask = languageFolder;
    if (!mask.EndsWith(L"/"))
        mask += L'/';
    mask += L"plv_*.txt";
    SVxSearchRec rec;
    for (bool found = host->FileFindFirst(mask, false, &rec); found;
         found = host->FileFindNext(false, &rec)) {
        auto* info = new CVxLocFileInfo;
        if (info->LoadFromFile(rec.fullPath))
            m_files.push_back(info);
        else
            delete info;
    }
    host->FileFindClose(&rec);
}

bool CVxLocalize::InitWithLanguageFile(const CVxStringW& file)
{
    auto* info = new CVxLocFileInfo;
    if (!info->LoadFromFile(file)) {
        VxTrace("CVxLocalize::InitWithLanguageFile - failed to load info from: %s\n", ToUtf8(file).c_str());
        delete info;
        return false;
    }
    ClearTables();
    ClearFiles();
    m_selected = -1;
    m_files.push_back(info);
    if (!SelectLanguage(0)) {
        VxTrace("CVxLocalize::InitWithLanguageFile - failed to load strings from: %s\n",
                ToUtf8(file).c_str());
        return false;
    }
    return true;
}

bool CVxLocalize::SelectLanguage(int index)
{
    if (index == m_selected)
        return true;
    if (index < 0 || index >= GetLanguageFileCount())
        return false;
    if (!LoadFromFile(index))
        return false;
    m_selected = index;
    return true;
}

void CVxLocalize::SelectNoLanguage()
{
    ClearTables();
    m_selected = -1;
}

bool CVxLocalize::SelectLanguageID(int id)
{
    for (int i = 0; i < GetLanguageFileCount(); ++i)
        if (m_files[static_cast<size_t>(i)]->GetLanguageID() == id)
            return SelectLanguage(i);
    return false;
}

bool CVxLocalize::LoadFromFile(int index)
{
    const CVxLocFileInfo* info = m_files[static_cast<size_t>(index)];
    VxTrace("CVxLocalize::LoadFromFile %u %d\n", static_cast<unsigned>(index), info->GetCodePage());

    // The tables are read aside and take the place of the present ones only
    // when the file gave any, so a broken file keeps the language shown before.
    std::vector<CVxLocStrings*> tables;
    int rows = 0;
    CVxIniFileReader reader(info->GetPath(), static_cast<unsigned>(info->GetCodePage()));
    if (reader.IsOpened()) {
        reader.Start();
        while (!reader.GetSectionName().IsEmpty()) {
            const CVxStringA name = reader.GetSectionName();
            if (name == "Main" || rows >= kMaxRowsPerFile) {
                reader.ReadSection(nullptr);
                continue;
            }
            // A table split over several sections of one name is read as one.
            auto same = std::find_if(tables.begin(), tables.end(),
                                     [&name](const CVxLocStrings* t) { return t->GetName() == name; });
            CVxLocStrings* table = same != tables.end() ? *same : nullptr;
            if (!table) {
                table = new CVxLocStrings(name);
                tables.push_back(table);
            }
            const int before = table->GetCount();
            reader.ReadSection(table);
            rows += table->GetCount() - before;
        }
    }
    if (tables.empty())
        return false;

    ClearTables();
    m_tables = std::move(tables);
    for (int i = 0; i < GetTableCount(); ++i)
        for (int t = 0; t < TBL_COUNT; ++t)
            if (m_tables[static_cast<size_t>(i)]->GetName() == kTableNames[t])
                m_tableIndex[t] = i;

    const int library = m_tableIndex[TBL_LIBRARY];
    if (!IsSynchronizing() && library >= 0) {
        CVxLocStrings* table = m_tables[static_cast<size_t>(library)];
        CVxStringW text;
        if (table->GetString(kLibraryCopySource, text))
            table->SetString(kLibraryCopyRow, text);
        if (table->GetString(kLibraryPrefixedSource, text))
            table->SetString(kLibraryPrefixedRow, L"Dozamo " + text);
    }
    return true;
}

int CVxLocalize::GetTableIndex(EVxLocTable table) const
{
    if (table < 0 || table >= TBL_COUNT)
        return -1;
    return m_tableIndex[table];
}

int CVxLocalize::GetDlgIndex(const CVxStringA& name) const
{
    for (int i = 0; i < GetTableCount(); ++i)
        if (m_tables[static_cast<size_t>(i)]->GetName() == name)
            return i;
    return -1;
}

const CVxLocStrings* CVxLocalize::GetTable(int index) const
{
    if (index < 0 || index >= GetTableCount())
        return nullptr;
    return m_tables[static_cast<size_t>(index)];
}

bool CVxLocalize::LocalizeDlgStringEx(int table, int number, CVxStringW& out) const
{
    if (m_selected < 0)
        return false;
    const CVxLocStrings* strings = GetTable(table);
    return strings && strings->GetString(number, out);
}

CVxStringW CVxLocalize::LocalizeDlgString(int table, int number, const CVxStringW& english) const
{
    CVxStringW text;
    return LocalizeDlgStringEx(table, number, text) ? text : english;
}

CVxStringW CVxLocalize::LocalizeMessage(int number, const CVxStringW& english) const
{
    return LocalizeDlgString(m_tableIndex[TBL_MESSAGES], number, english);
}

CVxStringW CVxLocalize::LookupText(const char* table, int row, const CVxStringW& english)
{
    const CVxLocalize* loc = VX_GetLoc();
    return loc->LocalizeDlgString(loc->GetDlgIndex(table), row, english);
}

CVxStringW CVxLocalize::LocalizeLibItem(int number, const CVxStringW& english) const
{
    return LocalizeDlgString(m_tableIndex[TBL_LIBRARY], number, english);
}

const CVxLocFileInfo* CVxLocalize::GetLanguageFile(int index) const
{
    if (index < 0 || index >= GetLanguageFileCount())
        return nullptr;
    return m_files[static_cast<size_t>(index)];
}

CVxStringW CVxLocalize::GetHelpfile() const
{
    const CVxLocFileInfo* info = GetLanguageFile(m_selected);
    return info ? info->GetHelpFile() : CVxStringW();
}

CVxStringW CVxLocalize::GetWhatsNewFile() const
{
    const CVxLocFileInfo* info = GetLanguageFile(m_selected);
    return info ? info->GetWhatsNewFile() : CVxStringW();
}

CVxStringW CVxLocalize::GetCredits() const
{
    const CVxLocFileInfo* info = GetLanguageFile(m_selected);
    return info ? info->GetCredits() : CVxStringW();
}

bool CVxLocalize::IsRightToLeft() const
{
    const CVxLocFileInfo* info = GetLanguageFile(m_selected);
    return info && info->IsRightToLeft();
}

int CVxLocalize::GetSelectedLanguageID() const
{
    const CVxLocFileInfo* info = GetLanguageFile(m_selected);
    return info ? info->GetLanguageID() : 0;
}

CVxStringW CVxLocalize::GetSelectedLanguageFile() const
{
    const CVxLocFileInfo* info = GetLanguageFile(m_selected);
    return info ? info->GetPath().ExtractFileTitle() : CVxStringW(L"plv_en.txt");
}

const CVxLocFileInfo* CVxLocalize::GetLanguageInfo(int id) const
{
    for (const CVxLocFileInfo* info : m_files)
        if (info->GetLanguageID() == id)
            return info;
    return nullptr;
}

bool CVxLocalize::GetLanguageInfo(int index, CVxStringW& name, int& id) const
{
    const CVxLocFileInfo* info = GetLanguageFile(index);
    if (!info)
        return false;
    name = info->GetLanguage();
    id = info->GetLanguageID();
    return true;
}

int CVxLocalize::GetLanguagesCount() const
{
    return static_cast<int>(std::count_if(m_files.begin(), m_files.end(), [](const CVxLocFileInfo* info) {
        return !info->GetLanguage().IsEmpty();
    }));
}

void CVxLocalize::SetSynchronizing(bool on)
{
    s_synchronizing = on;
}

bool CVxLocalize::IsSynchronizing()
{
    return s_synchronizing;
}

CVxStringW ReplaceNewLinesAndComments(const CVxStringW& text, bool stripComment)
{
    if (CVxLocalize::IsSynchronizing())
        return text;
    CVxStringW result = text.ReplaceAll(L"\\n", L"\r\n");
    if (stripComment) {
        const int hash = result.Find(L'#');
        if (hash >= 0)
            result = result.Left(hash);
    }
    return result;
}

CVxStringW RemoveAmp(const CVxStringW& text)
{
    // "&&" is how a label shows one "&"; it stays as that one character.
    CVxStringW result;
    for (int i = 0; i < text.GetLength(); ++i) {
        if (text[i] != L'&')
            result += text[i];
        else if (text[i + 1] == L'&')
            result += text[++i];
    }
    return result;
}
