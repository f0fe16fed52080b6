#pragma once
// Texts by table and row from the chosen language file, with the English text
// of the call site as the fallback for a missing file, table or row.

#include "CVxStringA.h"
#include "CVxStringW.h"

#include <vector>

class CVxLocFileInfo;
class CVxLocStrings;

class CVxLocalize
{
public:
    // The tables that the program knows by name, in the order in which
    // LoadFromFile compares them.
    enum EVxLocTable
    {
        TBL_MESSAGES = 0,
        TBL_LIBRARY,
        TBL_MAINMENU,
        TBL_TOOLBAR,
        TBL_LAYERSWINDOW,
        TBL_OPTIONSDLG,
        TBL_EXPLORE3DDLG,
        TBL_TRANSFORMDLG,
        TBL_OBJECTPROPERTIESDLG,
        TBL_OBJECTADVANCEDPROPERTIESDLG,
        TBL_ROOMPROPERTIESDLG,
        TBL_ROOMMNGDLG,
        TBL_OBJECTPOPUPMENU,
        TBL_WALLPROPERTIESDLG,
        TBL_EDITWALLSDLG,
        TBL_NEWOBJECTPOPUPMENU,
        TBL_PARTSLISTDLG,
        TBL_PARTLISTEXPORTDLG,
        TBL_IMPORTOBJECTLISTINGDLG,
        TBL_PRINTDLG,
        TBL_LABELPROPERTIESDLG,
        TBL_RENAMEDLG,
        TBL_EXPORTHTMLDLG,
        TBL_COUNT
    };

    CVxLocalize();
    ~CVxLocalize();
    CVxLocalize(const CVxLocalize&) = delete;
    CVxLocalize& operator=(const CVxLocalize&) = delete;

    // Lists the language files "plv_*.txt" of the folder. A file that can't be
    // read or names no language is left out, without a message. No language
    // is selected afterwards.
    void Init(const CVxStringW& languageFolder);
    // Makes one file, chosen by path, the only language and selects it.
    bool InitWithLanguageFile(const CVxStringW& file);
    // Reads the tables of the listed file `index`. A file whose tables can't
    // be read leaves the language selected before as it was.
    bool SelectLanguage(int index);
    // Selects the first listed file of that Windows-style language number.
    bool SelectLanguageID(int id);
    // Back to the English texts of the call sites.
    void SelectNoLanguage();
    int GetSelectedLanguage() const { return m_selected; }

    // Index into the loaded tables of a well-known table, -1 until loaded.
    int GetTableIndex(EVxLocTable table) const;
    // Index of any table by its section name, -1 when there is none.
    int GetDlgIndex(const CVxStringA& name) const;
    int GetTableCount() const { return static_cast<int>(m_tables.size()); }
    // The loaded table `index`, or null.
    const CVxLocStrings* GetTable(int index) const;

    // The text of a row of a table, or `english` when no language is
    // selected, or the table, the row or its text is missing.
    CVxStringW LocalizeDlgString(int table, int number, const CVxStringW& english) const;
    // The same as a test: false leaves `out` alone.
    bool LocalizeDlgStringEx(int table, int number, CVxStringW& out) const;
    CVxStringW LocalizeMessage(int number, const CVxStringW& english) const;
    // A row of a table named by its section, through the shared instance:
    // the lookup that the lower layers are given.
    static CVxStringW LookupText(const char* table, int row, const CVxStringW& english);
    CVxStringW LocalizeLibItem(int number, const CVxStringW& english) const;

    CVxStringW GetHelpfile() const;
    CVxStringW GetWhatsNewFile() const;
    CVxStringW GetCredits() const;
    bool IsRightToLeft() const;
    // 0 with no language selected.
    int GetSelectedLanguageID() const;
    // The file name of the selected language, "plv_en.txt" with none.
    CVxStringW GetSelectedLanguageFile() const;
    // The listed file of that language number, or null.
    const CVxLocFileInfo* GetLanguageInfo(int id) const;
    // Name and number of the listed file `index`; false out of range.
    bool GetLanguageInfo(int index, CVxStringW& name, int& id) const;
    // The listed files that name a language.
    int GetLanguagesCount() const;
    int GetLanguageFileCount() const { return static_cast<int>(m_files.size()); }
    const CVxLocFileInfo* GetLanguageFile(int index) const;

    // While a translator's synchroniser runs, texts are read as they stand.
    static void SetSynchronizing(bool on);
    static bool IsSynchronizing();

private:
    bool LoadFromFile(int index);
    void ClearTables();
    void ClearFiles();

    std::vector<CVxLocFileInfo*> m_files;
    int m_selected = -1;
    std::vector<CVxLocStrings*> m_tables;
    int m_tableIndex[TBL_COUNT];

    static bool s_synchronizing;
};

CVxLocalize* VX_GetLoc();

// "\n" pairs in a stored text become CR LF; with stripComment the text ends
// before its first "#".
CVxStringW ReplaceNewLinesAndComments(const CVxStringW& text, bool stripComment);
// Removes the "&" accelerator marks of a text; "&&", a shown "&", stays as one.
CVxStringW RemoveAmp(const CVxStringW& text);
