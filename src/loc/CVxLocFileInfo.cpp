#include "CVxLocFileInfo.h"

#include "CVxIniFileReader.h"
#include "CVxLocalize.h"
#include "CVxStringTokenizer.h"
#include "VxCodePages.h"

bool CVxLocFileInfo::LoadFromFile(const CVxStringW& path)
{
    m_path = path;
    m_language.Empty();
    m_languageId = 0;
    m_languageCode.Empty();
    m_codePage = 0;
    m_defCountry.Empty();
    m_helpFile.Empty();
    m_whatsNewFile.Empty();
    m_credits.Empty();
    m_rightToLeft = false;
    CVxIniFileReader reader(path, 0);
    if (!reader.IsOpened())
        return false;
    // A byte order mark has told the reader its code page; an "Encoding" key
    // in the section may still change it.
    m_codePage = static_cast<int>(reader.GetCodePage());
    reader.Start();
    while (!reader.GetSectionName().IsEmpty()) {
        if (reader.GetSectionName() == "Main") {
            reader.ReadSection(this);
            break;
        }
        reader.ReadSection(nullptr);
    }
    return !m_language.IsEmpty();
}

void CVxLocFileInfo::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader)
{
    if (key == "Language") {
        m_language = value;
    } else if (key == "LanguageID") {
        // "1031;de": the Windows-style number, then the code of the language.
        CVxStringTokenizer fields(value, L';');
        m_languageId = fields.GetNextToken().ToIntDef(0);
        m_languageCode = fields.GetNextToken();
    } else if (key == "Encoding") {
        m_codePage = EncodingToCodePage(value.c_str());
        if (reader)
            reader->ChangeCodePage(static_cast<unsigned>(m_codePage));
    } else if (key == "DefCountry") {
        m_defCountry = value;
    } else if (key == "HelpFile") {
        m_helpFile = value;
    } else if (key == "Whatsnew") {
        m_whatsNewFile = value;
    } else if (key == "Credits") {
        m_credits = ReplaceNewLinesAndComments(value, false);
    } else if (key == "Direction") {
        m_rightToLeft = value == L"RTL";
    }
}

int CVxLocFileInfo::EncodingToCodePage(const wchar_t* encoding)
{
    return static_cast<int>(VX_EncodingToCodePage(encoding));
}
