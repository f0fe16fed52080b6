// The German language file shipped in data/Language: it lists, loads, and
// answers the rows that the program asks for.

#include "CVxLocFileInfo.h"
#include "CVxLocStrings.h"
#include "CVxLocalize.h"
#include "VxTestEnv.h"

#include <QFile>
#include <QStringDecoder>

#include <gtest/gtest.h>

namespace {
CVxStringW LanguageFolder()
{
    return CVxStringW(QString::fromUtf8(PLAVENO_SOURCE_DIR)) + L"/data/Language";
}

struct SGerman
{
    SGerman()
    {
        loc.Init(LanguageFolder());
        selected = loc.SelectLanguageID(1031);
    }
    CVxLocalize loc;
    bool selected = false;
};
} // namespace

TEST(GermanLanguageFile, IsListedWithItsMainSection)
{
    SGerman de;
    ASSERT_TRUE(de.selected);
    const CVxLocFileInfo* info = de.loc.GetLanguageInfo(1031);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->GetLanguage(), L"Deutsch");
    EXPECT_EQ(info->GetCodePage(), 65001);
    EXPECT_EQ(de.loc.GetSelectedLanguageFile(), L"plv_de.txt");
}

TEST(GermanLanguageFile, IsWrittenAsRecordFilesAre)
{
    QFile file((LanguageFolder() + L"/plv_de.txt").ToQString());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.startsWith("\xEF\xBB\xBF\r\n[Main]\r\n"));
    EXPECT_TRUE(bytes.endsWith("\r\n"));
    EXPECT_EQ(bytes.count("\n"), bytes.count("\r\n"));
    EXPECT_EQ(bytes.count("\r"), bytes.count("\r\n"));
    EXPECT_FALSE(bytes.contains('#'));
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(bytes);
    EXPECT_FALSE(utf8.hasError());
    EXPECT_TRUE(text.contains(QString::fromUtf8("Rückgängig")));
}

TEST(GermanLanguageFile, GivesGermanTexts)
{
    SGerman de;
    ASSERT_TRUE(de.selected);
    CVxLocalize& loc = de.loc;
    EXPECT_EQ(loc.LocalizeMessage(8, L"untitled"), L"unbenannt");
    EXPECT_EQ(loc.LocalizeMessage(5, L"x"),
              CVxStringW(L"Das Projekt wurde ge\u00E4ndert, aber nicht in der Datei gespeichert.\r\n"
                         L"M\u00F6chten Sie es speichern?"));
    const int mainMenu = loc.GetTableIndex(CVxLocalize::TBL_MAINMENU);
    EXPECT_EQ(loc.LocalizeDlgString(mainMenu, 1, L"&Project"), L"&Projekt");
    const int toolbar = loc.GetTableIndex(CVxLocalize::TBL_TOOLBAR);
    EXPECT_EQ(loc.LocalizeDlgString(toolbar, 2, L"Open"), L"\u00D6ffnen");
    EXPECT_EQ(loc.LocalizeDlgString(loc.GetDlgIndex("Units"), 17, L"m\u00B2"), L"m\u00B2");
}

TEST(GermanLanguageFile, HasEveryRowTheProgramAsksFor)
{
    SGerman de;
    ASSERT_TRUE(de.selected);
    CVxLocalize& loc = de.loc;
    const int messages[] = {1,   2,   5,   8,   13,  18,  21,  22,  23,  27,  28,  32,
                            33,  34,  36,  37,  49,  50,  57,  90,  91,  93,  94,  96,
                            105, 106, 107, 115, 118, 128, 129, 132, 141, 178, 179, 186};
    CVxStringW out;
    for (int row : messages)
        EXPECT_TRUE(loc.LocalizeDlgStringEx(loc.GetTableIndex(CVxLocalize::TBL_MESSAGES), row, out)) << row;
    for (int row : {1, 5, 9, 17, 19, 26, 42, 82})
        EXPECT_TRUE(loc.LocalizeDlgStringEx(loc.GetTableIndex(CVxLocalize::TBL_MAINMENU), row, out)) << row;
    for (int row : {1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14, 15, 16, 17, 18})
        EXPECT_TRUE(loc.LocalizeDlgStringEx(loc.GetDlgIndex("Units"), row, out)) << row;
    // Every command but those without a text of their own.
    for (int row = 1; row <= 182; ++row) {
        const bool noText = (row >= 9 && row <= 11) || (row >= 56 && row <= 58) || row == 121 || row == 122;
        EXPECT_EQ(loc.LocalizeDlgStringEx(loc.GetTableIndex(CVxLocalize::TBL_TOOLBAR), row, out), !noText)
            << row;
    }
    // The format painter's second line.
    EXPECT_TRUE(loc.LocalizeDlgStringEx(loc.GetTableIndex(CVxLocalize::TBL_TOOLBAR), 300, out));
    // The library window.
    for (int row = 340; row <= 351; ++row)
        EXPECT_TRUE(loc.LocalizeDlgStringEx(loc.GetTableIndex(CVxLocalize::TBL_MESSAGES), row, out)) << row;
    // The 3D viewer, the sun's place and time, the 3D set-up.
    for (int row = 101; row <= 138; ++row)
        EXPECT_TRUE(loc.LocalizeDlgStringEx(loc.GetTableIndex(CVxLocalize::TBL_EXPLORE3DDLG), row, out))
            << row;
    for (int row = 1; row <= 15; ++row)
        EXPECT_TRUE(loc.LocalizeDlgStringEx(loc.GetDlgIndex("LocationDlg"), row, out)) << row;
    for (int row = 1; row <= 22; ++row)
        EXPECT_TRUE(loc.LocalizeDlgStringEx(loc.GetDlgIndex("Setup3DForm"), row, out)) << row;
}
