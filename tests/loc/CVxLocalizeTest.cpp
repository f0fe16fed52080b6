#include "CVxLocalize.h"
#include "CVxLocFileInfo.h"
#include "CVxLocStrings.h"
#include "VxLocTestFiles.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

// A folder with one language file of these tables, listed and selected.
struct SLoaded
{
    SLoaded(const char* folderName, const std::string& tables, const std::string& extraMain = std::string())
    {
        folder = VxLocTestFolder(folderName);
        EXPECT_TRUE(VxLocWriteFile(folder + L"plv_xx.txt",
                                   VxLocLanguageFile("Testisch", "1234;xx", tables, extraMain)));
        loc.Init(folder);
        selected = loc.SelectLanguage(0);
    }
    CVxStringW folder;
    CVxLocalize loc;
    bool selected = false;
};

} // namespace

TEST(CVxLocalize, WithoutLanguageFolderEverythingIsEnglish)
{
    CVxLocalize loc;
    loc.Init(VxTestTempFolder() + L"no such folder");
    EXPECT_EQ(loc.GetLanguagesCount(), 0);
    EXPECT_EQ(loc.LocalizeMessage(8, L"untitled"), L"untitled");
    EXPECT_EQ(loc.LocalizeDlgString(loc.GetDlgIndex("Units"), 1, L"mm"), L"mm");
    CVxStringW out = L"unchanged";
    EXPECT_FALSE(loc.LocalizeDlgStringEx(0, 1, out));
    EXPECT_EQ(out, L"unchanged");
    EXPECT_EQ(loc.GetSelectedLanguageFile(), L"plv_en.txt");
    EXPECT_EQ(loc.GetSelectedLanguageID(), 0);
    EXPECT_TRUE(loc.GetHelpfile().IsEmpty());
    EXPECT_FALSE(loc.SelectLanguageID(1033));
    EXPECT_EQ(loc.GetLanguageInfo(1033), nullptr);
    EXPECT_EQ(loc.GetTableIndex(CVxLocalize::TBL_MESSAGES), -1);
}

TEST(CVxLocalize, RowsInAnyOrderWithRemarksAndLineEnds)
{
    // A remark behind "#" is cut, the blank before it kept; "\n" becomes CR LF.
    SLoaded f("order", "[Messages]\nItem9=neun\nItem2=zwei\nItem0=null\nItem7=Texte # vieux\nItem6=a\\nb\n");
    ASSERT_TRUE(f.selected);
    EXPECT_EQ(f.loc.LocalizeMessage(9, L"nine"), L"neun");
    EXPECT_EQ(f.loc.LocalizeMessage(2, L"two"), L"zwei");
    EXPECT_EQ(f.loc.LocalizeMessage(0, L"zero"), L"null");
    EXPECT_EQ(f.loc.LocalizeMessage(5, L"five"), L"five");
    EXPECT_EQ(f.loc.LocalizeMessage(-1, L"minus"), L"minus");
    EXPECT_EQ(f.loc.LocalizeMessage(1000, L"far"), L"far");
    EXPECT_EQ(f.loc.LocalizeMessage(7, L"Text"), L"Texte ");
    EXPECT_EQ(f.loc.LocalizeMessage(6, L"x"), CVxStringW(L"a\r\nb"));
}

TEST(CVxLocalize, EmptyRowsAndRowsOfOnlyARemarkGiveTheEnglishText)
{
    SLoaded f("empty rows", "[Messages]\nItem3=\nItem4=# to do\nItem5=fünf\n");
    ASSERT_TRUE(f.selected);
    EXPECT_EQ(f.loc.LocalizeMessage(3, L"three"), L"three");
    EXPECT_EQ(f.loc.LocalizeMessage(4, L"four"), L"four");
    EXPECT_EQ(f.loc.LocalizeMessage(5, L"five"), L"f\u00FCnf");
    CVxStringW out = L"kept";
    EXPECT_FALSE(f.loc.LocalizeDlgStringEx(f.loc.GetTableIndex(CVxLocalize::TBL_MESSAGES), 3, out));
    EXPECT_EQ(out, L"kept");
    EXPECT_TRUE(f.loc.LocalizeDlgStringEx(f.loc.GetTableIndex(CVxLocalize::TBL_MESSAGES), 5, out));
    EXPECT_EQ(out, L"f\u00FCnf");
}

TEST(CVxLocalize, DirectionIsRightToLeftOnlyForRtl)
{
    struct
    {
        const char* name;
        const char* main;
        bool rtl;
    } cases[] = {
        {"rtl", "Direction=RTL\n", true},
        {"ltr", "Direction=LTR\n", false},
        {"lower", "Direction=rtl\n", false},
        {"blank", "Direction=RTL \n", false},
        {"missing", "", false},
    };
    for (const auto& c : cases) {
        SLoaded f(c.name, "[Messages]\nItem1=x\n", c.main);
        ASSERT_TRUE(f.selected) << c.name;
        EXPECT_EQ(f.loc.IsRightToLeft(), c.rtl) << c.name;
        EXPECT_EQ(f.loc.GetLanguageFile(0)->IsRightToLeft(), c.rtl) << c.name;
    }
}

TEST(CVxLocalize, SelectLanguageIDFindsTheFileOfThatNumber)
{
    const CVxStringW folder = VxLocTestFolder("by id");
    ASSERT_TRUE(VxLocWriteFile(folder + L"plv_de.txt",
                               VxLocLanguageFile("Deutsch", "1031;de", "[Messages]\nItem8=unbenannt\n")));
    ASSERT_TRUE(VxLocWriteFile(folder + L"plv_fr.txt",
                               VxLocLanguageFile("Fran\xC3\xA7"
                                                 "ais",
                                                 "1036;fr", "[Messages]\nItem8=sans titre\n")));
    CVxLocalize loc;
    loc.Init(folder);
    ASSERT_EQ(loc.GetLanguagesCount(), 2);

    ASSERT_TRUE(loc.SelectLanguageID(1036));
    EXPECT_EQ(loc.GetSelectedLanguageID(), 1036);
    EXPECT_EQ(loc.LocalizeMessage(8, L"untitled"), L"sans titre");

    ASSERT_TRUE(loc.SelectLanguageID(1031));
    EXPECT_EQ(loc.LocalizeMessage(8, L"untitled"), L"unbenannt");

    EXPECT_FALSE(loc.SelectLanguageID(9999));
    EXPECT_EQ(loc.GetSelectedLanguageID(), 1031);

    const CVxLocFileInfo* fr = loc.GetLanguageInfo(1036);
    ASSERT_NE(fr, nullptr);
    EXPECT_EQ(fr->GetLanguage(), L"Fran\u00E7ais");
    EXPECT_EQ(loc.GetLanguageInfo(1049), nullptr);

    CVxStringW name;
    int id = 0;
    ASSERT_TRUE(loc.GetLanguageInfo(0, name, id));
    EXPECT_EQ(name, L"Deutsch");
    EXPECT_EQ(id, 1031);
    EXPECT_FALSE(loc.GetLanguageInfo(2, name, id));
    EXPECT_FALSE(loc.GetLanguageInfo(-1, name, id));
}

TEST(CVxLocalize, InitListsOnlyLanguageFiles)
{
    const CVxStringW folder = VxLocTestFolder("mixed");
    ASSERT_TRUE(VxLocWriteFile(folder + L"plv_de.txt",
                               VxLocLanguageFile("Deutsch", "1031;de", "[Messages]\nItem8=unbenannt\n")));
    ASSERT_TRUE(VxLocWriteFile(folder + L"plv_nolang.txt",
                               "[Main]\r\nLanguageID=1040;it\r\n\r\n[Messages]\r\nItem8=senza titolo\r\n"));
    ASSERT_TRUE(
        VxLocWriteFile(folder + L"plv_emptylang.txt", "[Main]\r\nLanguage=\r\nLanguageID=1043;nl\r\n"));
    static const char kGarbage[] = "\x00\xFF\xFE[\x01\x02=\x80\x81\n\n]]]=[Main\r\r\rLanguage=x";
    ASSERT_TRUE(VxLocWriteFile(folder + L"plv_garbage.txt", std::string(kGarbage, sizeof(kGarbage) - 1)));
    ASSERT_TRUE(VxLocWriteFile(folder + L"plv_empty.txt", ""));
    ASSERT_TRUE(VxLocWriteFile(folder + L"plv_othermain.txt", "[Other]\r\nLanguage=Nope\r\n"));
    ASSERT_TRUE(VxLocWriteFile(folder + L"strings_es.txt",
                               VxLocLanguageFile("Espa\xC3\xB1ol", "1034;es", "[Messages]\nItem8=sin t\n")));
    ASSERT_TRUE(VxLocWriteFile(folder + L"plv_es.ini",
                               VxLocLanguageFile("Espa\xC3\xB1ol", "1034;es", "[Messages]\nItem8=sin t\n")));

    CVxLocalize loc;
    loc.Init(folder);
    ASSERT_EQ(loc.GetLanguagesCount(), 1);
    ASSERT_EQ(loc.GetLanguageFileCount(), 1);
    EXPECT_EQ(loc.GetLanguageFile(0)->GetLanguage(), L"Deutsch");
    EXPECT_EQ(loc.GetLanguageFile(0)->GetPath(), folder + L"plv_de.txt");
    EXPECT_EQ(loc.GetLanguageFile(1), nullptr);
    EXPECT_EQ(loc.GetSelectedLanguage(), -1);
    EXPECT_EQ(loc.LocalizeMessage(8, L"untitled"), L"untitled");
    ASSERT_TRUE(loc.SelectLanguage(0));
    EXPECT_EQ(loc.LocalizeMessage(8, L"untitled"), L"unbenannt");
}

TEST(CVxLocalize, SelectByIndexAndInitAgainDropsTheSelection)
{
    SLoaded f("init again", "[Messages]\nItem1=eins\n");
    ASSERT_TRUE(f.selected);
    EXPECT_EQ(f.loc.GetSelectedLanguage(), 0);
    EXPECT_FALSE(f.loc.SelectLanguage(1));
    EXPECT_FALSE(f.loc.SelectLanguage(-5));
    EXPECT_EQ(f.loc.GetSelectedLanguage(), 0);
    f.loc.Init(f.folder);
    EXPECT_EQ(f.loc.GetSelectedLanguage(), -1);
    EXPECT_EQ(f.loc.LocalizeMessage(1, L"one"), L"one");
    EXPECT_TRUE(f.loc.SelectLanguage(0));
    EXPECT_EQ(f.loc.LocalizeMessage(1, L"one"), L"eins");
}

TEST(CVxLocalize, MainSectionFields)
{
    SLoaded f(
        "main fields", "[Messages]\nItem1=eins\n",
        "DefCountry=Germany\nHelpFile=hilfe.pdf\nWhatsnew=neu.html\nCredits=Erste Zeile\\nZweite # Zeile\n");
    ASSERT_TRUE(f.selected);
    const CVxLocFileInfo* info = f.loc.GetLanguageFile(0);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->GetLanguageID(), 1234);
    EXPECT_EQ(info->GetLanguageCode(), L"xx");
    EXPECT_EQ(f.loc.GetHelpfile(), L"hilfe.pdf");
    EXPECT_EQ(f.loc.GetWhatsNewFile(), L"neu.html");
    EXPECT_EQ(f.loc.GetCredits(), CVxStringW(L"Erste Zeile\r\nZweite # Zeile"));
}

TEST(CVxLocFileInfo, EncodingNamesTheCodePage)
{
    EXPECT_EQ(CVxLocFileInfo::EncodingToCodePage(L"windows-874"), 874);
    EXPECT_EQ(CVxLocFileInfo::EncodingToCodePage(L"iso-8859-1"), 1252);
    EXPECT_EQ(CVxLocFileInfo::EncodingToCodePage(L"big5"), 10002);
    EXPECT_EQ(CVxLocFileInfo::EncodingToCodePage(L"utf-7"), 65000);
    EXPECT_EQ(CVxLocFileInfo::EncodingToCodePage(L"windows-1257"), 0);
    EXPECT_EQ(CVxLocFileInfo::EncodingToCodePage(L""), 0);
}

TEST(CVxLocFileInfo, TheEncodingKeyOverridesTheByteOrderMark)
{
    const CVxStringW folder = VxLocTestFolder("encoding");
    ASSERT_TRUE(VxLocWriteFile(
        folder + L"plv_cs.txt",
        "\xEF\xBB\xBF[Main]\r\nLanguage=Cesky\r\nLanguageID=1029;cs\r\nEncoding=windows-1250\r\n"));
    ASSERT_TRUE(VxLocWriteFile(folder + L"plv_plain.txt", "[Main]\nLanguage=Plain\nLanguageID=1\n"));
    CVxLocFileInfo withKey;
    ASSERT_TRUE(withKey.LoadFromFile(folder + L"plv_cs.txt"));
    EXPECT_EQ(withKey.GetCodePage(), 1250);
    CVxLocFileInfo plain;
    ASSERT_TRUE(plain.LoadFromFile(folder + L"plv_plain.txt"));
    EXPECT_EQ(plain.GetCodePage(), 0);
    EXPECT_EQ(plain.GetLanguageID(), 1);
    EXPECT_TRUE(plain.GetLanguageCode().IsEmpty());
    EXPECT_FALSE(plain.LoadFromFile(folder + L"plv_missing.txt"));
    EXPECT_TRUE(plain.GetLanguage().IsEmpty());
}

TEST(CVxLocalize, LineFeedsAndNoByteOrderMarkReadTheSame)
{
    const CVxStringW folder = VxLocTestFolder("lf");
    ASSERT_TRUE(
        VxLocWriteFile(folder + L"plv_lf.txt",
                       "[Main]\nLanguage=Lf\nLanguageID=5;lf\n\n[Messages]\nItem1=eins\nItem2=zwei\n"));
    CVxLocalize loc;
    loc.Init(folder);
    ASSERT_TRUE(loc.SelectLanguage(0));
    EXPECT_EQ(loc.LocalizeMessage(1, L"one"), L"eins");
    EXPECT_EQ(loc.LocalizeMessage(2, L"two"), L"zwei");
}

TEST(CVxLocalize, TablesByName)
{
    SLoaded f("by name",
              "[Messages]\nItem1=eins\n\n[Units]\nItem1=Millimeter\n\n[MainMenu]\nItem1=Projekt\n\n"
              "[SomeNewDlg]\nItem3=drei\n\n[Library]\nItem2=Stuhl\n");
    ASSERT_TRUE(f.selected);
    CVxLocalize& loc = f.loc;
    EXPECT_EQ(loc.GetTableCount(), 5);
    EXPECT_EQ(loc.GetTableIndex(CVxLocalize::TBL_MESSAGES), 0);
    EXPECT_EQ(loc.GetTableIndex(CVxLocalize::TBL_LIBRARY), 4);
    EXPECT_EQ(loc.GetTableIndex(CVxLocalize::TBL_TOOLBAR), -1);
    EXPECT_EQ(loc.GetTableIndex(CVxLocalize::TBL_COUNT), -1);
    EXPECT_EQ(loc.GetDlgIndex("Units"), 1);
    EXPECT_EQ(loc.GetDlgIndex("MainMenu"), loc.GetTableIndex(CVxLocalize::TBL_MAINMENU));
    EXPECT_EQ(loc.GetDlgIndex("Main"), -1);
    EXPECT_EQ(loc.GetDlgIndex("units"), -1);
    EXPECT_EQ(loc.GetDlgIndex("NoSuchDlg"), -1);

    EXPECT_EQ(loc.LocalizeDlgString(loc.GetDlgIndex("Units"), 1, L"mm"), L"Millimeter");
    EXPECT_EQ(loc.LocalizeDlgString(loc.GetDlgIndex("SomeNewDlg"), 3, L"three"), L"drei");
    EXPECT_EQ(loc.LocalizeDlgString(loc.GetDlgIndex("NoSuchDlg"), 1, L"english"), L"english");
    EXPECT_EQ(loc.LocalizeDlgString(99, 1, L"english"), L"english");
    EXPECT_EQ(loc.LocalizeLibItem(2, L"Chair"), L"Stuhl");
    EXPECT_EQ(loc.LocalizeLibItem(3, L"Table"), L"Table");
    ASSERT_NE(loc.GetTable(3), nullptr);
    EXPECT_EQ(loc.GetTable(3)->GetName(), CVxStringA("SomeNewDlg"));
    EXPECT_EQ(loc.GetTable(5), nullptr);
}

TEST(CVxLocalize, ATableInSeveralSectionsReadsAsOne)
{
    SLoaded f("split", "[Messages]\nItem1=eins\n\n[Units]\nItem1=mm\n\n[Messages]\nItem2=zwei\n");
    ASSERT_TRUE(f.selected);
    EXPECT_EQ(f.loc.GetTableCount(), 2);
    EXPECT_EQ(f.loc.LocalizeMessage(1, L"one"), L"eins");
    EXPECT_EQ(f.loc.LocalizeMessage(2, L"two"), L"zwei");
}

TEST(CVxLocalize, LibraryRowsFilledFromOthers)
{
    SLoaded f("library", "[Library]\nItem13=Tisch\nItem277=Sofa\n");
    ASSERT_TRUE(f.selected);
    EXPECT_EQ(f.loc.LocalizeLibItem(65, L"Table"), L"Tisch");
    EXPECT_EQ(f.loc.LocalizeLibItem(1101, L"Dozamo Sofa"), L"Dozamo Sofa");
    EXPECT_EQ(f.loc.LocalizeLibItem(13, L"Table"), L"Tisch");

    SLoaded g("library other", "[Library]\nItem277=Couch\nItem65=eigene\n");
    ASSERT_TRUE(g.selected);
    EXPECT_EQ(g.loc.LocalizeLibItem(65, L"Table"), L"eigene");
    EXPECT_EQ(g.loc.LocalizeLibItem(1101, L"Dozamo Sofa"), L"Dozamo Couch");

    // Without their sources in the library table the rows stay empty.
    SLoaded h("library empty", "[Library]\nItem12=zwoelf\n\n[Messages]\nItem13=dreizehn\nItem277=x\n");
    ASSERT_TRUE(h.selected);
    EXPECT_EQ(h.loc.LocalizeLibItem(65, L"Table"), L"Table");
    EXPECT_EQ(h.loc.LocalizeLibItem(1101, L"Dozamo Sofa"), L"Dozamo Sofa");
    EXPECT_EQ(h.loc.LocalizeMessage(65, L"sixty-five"), L"sixty-five");
}

TEST(CVxLocalize, TheSynchroniserReadsTextsAsTheyStand)
{
    CVxLocalize::SetSynchronizing(true);
    SLoaded f("synchronising", "[Library]\nItem13=Tisch # alt\nItem277=Sofa\\nzwei\n");
    CVxLocalize::SetSynchronizing(false);
    ASSERT_TRUE(f.selected);
    EXPECT_EQ(f.loc.LocalizeLibItem(13, L"Table"), L"Tisch # alt");
    EXPECT_EQ(f.loc.LocalizeLibItem(277, L"Sofa"), L"Sofa\\nzwei");
    EXPECT_EQ(f.loc.LocalizeLibItem(65, L"Table"), L"Table");
    EXPECT_EQ(f.loc.LocalizeLibItem(1101, L"x"), L"x");
}

TEST(CVxLocalize, HugeAndOddRowNumbersAreSkipped)
{
    SLoaded f("huge rows",
              "[Messages]\nItem2000000000=riesig\nItem99999999999999999999=zu gross\nItem100001=knapp\n"
              "Item100000=letzte\nItem-3=minus\nItem+4=plus\nItem 5=blank\nItemX=x\nItem=leer\nitem6=klein\n"
              "Item7a=suffix\nItem0x8=hex\nItem9=neun\nItem010=zehn\n");
    ASSERT_TRUE(f.selected);
    const CVxLocStrings* table = f.loc.GetTable(f.loc.GetTableIndex(CVxLocalize::TBL_MESSAGES));
    ASSERT_NE(table, nullptr);
    EXPECT_LE(table->GetCount(), CVxLocStrings::kMaxRow + 10);
    EXPECT_EQ(f.loc.LocalizeMessage(2000000000, L"huge"), L"huge");
    EXPECT_EQ(f.loc.LocalizeMessage(100001, L"over"), L"over");
    EXPECT_EQ(f.loc.LocalizeMessage(100000, L"last"), L"letzte");
    for (int row : {0, 3, 4, 5, 6, 7, 8})
        EXPECT_EQ(f.loc.LocalizeMessage(row, L"english"), L"english") << row;
    EXPECT_EQ(f.loc.LocalizeMessage(9, L"nine"), L"neun");
    EXPECT_EQ(f.loc.LocalizeMessage(10, L"ten"), L"zehn");

    // Only a huge row leaves the table empty.
    SLoaded g("only huge", "[Messages]\nItem2000000000=riesig\n");
    ASSERT_TRUE(g.selected);
    EXPECT_EQ(g.loc.GetTable(g.loc.GetTableIndex(CVxLocalize::TBL_MESSAGES))->GetCount(), 0);
}

TEST(CVxLocalize, ManyTablesWithHighRowsStayWithinBounds)
{
    std::string tables;
    for (int i = 0; i < 40; ++i)
        tables += "[T" + std::to_string(i) + "]\nItem100000=hoch\n\n";
    SLoaded f("many high rows", tables);
    ASSERT_TRUE(f.selected);
    long long rows = 0;
    for (int i = 0; i < f.loc.GetTableCount(); ++i)
        rows += f.loc.GetTable(i)->GetCount();
    EXPECT_LT(f.loc.GetTableCount(), 40);
    EXPECT_LE(rows, 1000000 + CVxLocStrings::kMaxRow + 10);
    EXPECT_EQ(f.loc.LocalizeDlgString(f.loc.GetDlgIndex("T0"), 100000, L"high"), L"hoch");
    EXPECT_EQ(f.loc.GetDlgIndex("T39"), -1);
}

TEST(CVxLocalize, InvalidUtf8CutsOnlyItsOwnRow)
{
    SLoaded f("bad utf8", "[Messages]\nItem1=gut\nItem2=ab\xC3\x28xy\nItem3=\xFF\xFE\nItem4=\xC3\xA4rger\n");
    ASSERT_TRUE(f.selected);
    EXPECT_EQ(f.loc.LocalizeMessage(1, L"good"), L"gut");
    EXPECT_EQ(f.loc.LocalizeMessage(2, L"bad"), L"ab");
    EXPECT_EQ(f.loc.LocalizeMessage(3, L"bad"), L"bad");
    EXPECT_EQ(f.loc.LocalizeMessage(4, L"anger"), L"\u00E4rger");
}

TEST(CVxLocalize, AFileWithoutTablesSelectsNothing)
{
    const CVxStringW folder = VxLocTestFolder("no tables");
    ASSERT_TRUE(
        VxLocWriteFile(folder + L"plv_a.txt", VxLocLanguageFile("A", "1;a", "[Messages]\nItem1=eins\n")));
    ASSERT_TRUE(VxLocWriteFile(folder + L"plv_b.txt", VxLocLanguageFile("B", "2;b", "")));
    CVxLocalize loc;
    loc.Init(folder);
    ASSERT_EQ(loc.GetLanguagesCount(), 2);
    EXPECT_FALSE(loc.SelectLanguageID(2));
    EXPECT_EQ(loc.GetSelectedLanguage(), -1);
    EXPECT_EQ(loc.LocalizeMessage(1, L"one"), L"one");

    ASSERT_TRUE(loc.SelectLanguageID(1));
    EXPECT_FALSE(loc.SelectLanguageID(2));
    EXPECT_EQ(loc.GetSelectedLanguageID(), 1);
    EXPECT_EQ(loc.LocalizeMessage(1, L"one"), L"eins");
}

TEST(CVxLocalize, AFileThatVanishedAfterListingSelectsNothing)
{
    const CVxStringW folder = VxLocTestFolder("vanished");
    ASSERT_TRUE(
        VxLocWriteFile(folder + L"plv_a.txt", VxLocLanguageFile("A", "1;a", "[Messages]\nItem1=eins\n")));
    CVxLocalize loc;
    loc.Init(folder);
    ASSERT_EQ(loc.GetLanguagesCount(), 1);
    ASSERT_EQ(remove(loc.GetLanguageFile(0)->GetPath().ToQString().toUtf8().constData()), 0);
    EXPECT_EQ(loc.LocalizeMessage(1, L"one"), L"one");
}

TEST(CVxLocalize, InitWithLanguageFile)
{
    const CVxStringW folder = VxLocTestFolder("with file");
    ASSERT_TRUE(VxLocWriteFile(folder + L"plv_de.txt",
                               VxLocLanguageFile("Deutsch", "1031;de", "[Messages]\nItem8=unbenannt\n")));
    ASSERT_TRUE(VxLocWriteFile(folder + L"mine.txt",
                               VxLocLanguageFile("Meins", "1111;mi", "[Messages]\nItem8=ohne Namen\n")));
    ASSERT_TRUE(
        VxLocWriteFile(folder + L"nolang.txt", "[Main]\r\nLanguageID=7\r\n\r\n[Messages]\r\nItem8=x\r\n"));
    ASSERT_TRUE(VxLocWriteFile(folder + L"onlymain.txt", VxLocLanguageFile("Leer", "2222;le", "")));

    CVxLocalize loc;
    loc.Init(folder);
    ASSERT_TRUE(loc.SelectLanguage(0));

    EXPECT_FALSE(loc.InitWithLanguageFile(folder + L"nolang.txt"));
    EXPECT_EQ(loc.GetLanguageFileCount(), 1);
    EXPECT_EQ(loc.LocalizeMessage(8, L"untitled"), L"unbenannt");
    EXPECT_FALSE(loc.InitWithLanguageFile(folder + L"missing.txt"));

    ASSERT_TRUE(loc.InitWithLanguageFile(folder + L"mine.txt"));
    EXPECT_EQ(loc.GetLanguageFileCount(), 1);
    EXPECT_EQ(loc.GetSelectedLanguage(), 0);
    EXPECT_EQ(loc.GetSelectedLanguageID(), 1111);
    EXPECT_EQ(loc.GetSelectedLanguageFile(), L"mine.txt");
    EXPECT_EQ(loc.LocalizeMessage(8, L"untitled"), L"ohne Namen");

    EXPECT_FALSE(loc.InitWithLanguageFile(folder + L"onlymain.txt"));
    EXPECT_EQ(loc.GetLanguagesCount(), 1);
    EXPECT_EQ(loc.GetSelectedLanguage(), -1);
    EXPECT_EQ(loc.LocalizeMessage(8, L"untitled"), L"untitled");
}
