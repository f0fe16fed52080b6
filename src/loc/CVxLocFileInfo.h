#pragma once
// What the section "Main" of one language file says about the language: the
// name in the language list, the numbers that identify it, and the files and
// texts that go with it. The tables of the file are read only when the
// language is selected.

#include "CVxStringA.h"
#include "CVxStringW.h"
#include "IVxReadIniClient.h"

class CVxIniFileReader;

class CVxLocFileInfo : public IVxReadIniClient
{
public:
    CVxLocFileInfo() = default;

    // Reads the section "Main" of `path`. A file that can't be read, or names
    // no language, gives false and is no language file.
    bool LoadFromFile(const CVxStringW& path);

    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;

    // The code page named by an "Encoding" value, 0 for a name it doesn't know.
    static int EncodingToCodePage(const wchar_t* encoding);

    const CVxStringW& GetPath() const { return m_path; }
    const CVxStringW& GetLanguage() const { return m_language; }
    int GetLanguageID() const { return m_languageId; }
    // Compared with the system's UI languages, as "de" or "pt_BR".
    const CVxStringW& GetLanguageCode() const { return m_languageCode; }
    int GetCodePage() const { return m_codePage; }
    const CVxStringW& GetDefCountry() const { return m_defCountry; }
    const CVxStringW& GetHelpFile() const { return m_helpFile; }
    const CVxStringW& GetWhatsNewFile() const { return m_whatsNewFile; }
    const CVxStringW& GetCredits() const { return m_credits; }
    bool IsRightToLeft() const { return m_rightToLeft; }

private:
    CVxStringW m_path;
    CVxStringW m_language;
    int m_languageId = 0;
    CVxStringW m_languageCode;
    int m_codePage = 0;
    CVxStringW m_defCountry;
    CVxStringW m_helpFile;
    CVxStringW m_whatsNewFile;
    CVxStringW m_credits;
    bool m_rightToLeft = false;
};
