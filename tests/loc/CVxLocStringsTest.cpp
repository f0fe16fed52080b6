#include "CVxLocStrings.h"
#include "CVxLocalize.h"
#include "CVxStringWriter.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

namespace {
void Feed(CVxLocStrings& table, const char* key, const CVxStringW& value)
{
    table.OnReadIniValue(CVxStringA(key), value, nullptr);
}
} // namespace

TEST(ReplaceNewLinesAndComments, TurnsBackslashNIntoCrLfAndCutsRemarks)
{
    EXPECT_EQ(ReplaceNewLinesAndComments(L"a\\nb", false), CVxStringW(L"a\r\nb"));
    EXPECT_EQ(ReplaceNewLinesAndComments(L"a\\b", false), L"a\\b");
    EXPECT_EQ(ReplaceNewLinesAndComments(L"a\\", false), L"a\\");
    EXPECT_EQ(ReplaceNewLinesAndComments(L"", true), L"");
    // The remark is cut only when asked.
    EXPECT_EQ(ReplaceNewLinesAndComments(L"Texte # vieux", true), L"Texte ");
    EXPECT_EQ(ReplaceNewLinesAndComments(L"#", true), L"");
    EXPECT_EQ(ReplaceNewLinesAndComments(L"a\\nb#c\\nd", true), CVxStringW(L"a\r\nb"));
    // While synchronising the text is left alone.
    CVxLocalize::SetSynchronizing(true);
    EXPECT_EQ(ReplaceNewLinesAndComments(L"a\\nb # alt", true), L"a\\nb # alt");
    CVxLocalize::SetSynchronizing(false);
}

TEST(CVxLocStrings, AddNewLinesIsTheReverse)
{
    EXPECT_EQ(CVxLocStrings::AddNewLines(CVxStringW(L"a\r\nb\nc")), L"a\\nb\\nc");
    EXPECT_EQ(CVxLocStrings::AddNewLines(CVxStringW(L"a\rb")), CVxStringW(L"a\rb"));
    const CVxStringW text = L"Zeile 1\r\nZeile 2";
    EXPECT_EQ(ReplaceNewLinesAndComments(CVxLocStrings::AddNewLines(text), true), text);
}

TEST(RemoveAmp, RemovesAcceleratorMarks)
{
    EXPECT_EQ(RemoveAmp(L"Save &As..."), L"Save As...");
    EXPECT_EQ(RemoveAmp(L"Black && White"), L"Black & White");
    EXPECT_EQ(RemoveAmp(L"end&"), L"end");
    EXPECT_EQ(RemoveAmp(L""), L"");
}

TEST(CVxLocStrings, ReadsItemKeysOnlyAndGrowsUpToTheCap)
{
    CVxLocStrings table("Messages");
    Feed(table, "Item3", L"drei");
    Feed(table, "Caption", L"nichts");
    Feed(table, "Items", L"nichts");
    Feed(table, "Item", L"nichts");
    EXPECT_EQ(table.GetCount(), 13);
    CVxStringW out;
    EXPECT_TRUE(table.GetString(3, out));
    EXPECT_EQ(out, L"drei");
    out = L"kept";
    EXPECT_FALSE(table.GetString(2, out));
    EXPECT_FALSE(table.GetString(13, out));
    EXPECT_FALSE(table.GetString(-1, out));
    EXPECT_EQ(out, L"kept");
    // The table grows to ten beyond the highest row, up to the cap.
    Feed(table, "Item15", L"fuenfzehn");
    EXPECT_EQ(table.GetCount(), 25);
    Feed(table, "Item2", L"zwei");
    EXPECT_EQ(table.GetCount(), 25);
    Feed(table, "Item25", L"fuenfundzwanzig");
    EXPECT_EQ(table.GetCount(), 35);
    Feed(table, "Item100000", L"letzte");
    EXPECT_EQ(table.GetCount(), CVxLocStrings::kMaxRow + 10);
    Feed(table, "Item100001", L"zu weit");
    Feed(table, "Item2147483648", L"zu weit");
    Feed(table, "Item4294967298", L"zu weit");
    EXPECT_EQ(table.GetCount(), CVxLocStrings::kMaxRow + 10);
    EXPECT_TRUE(table.GetString(2, out));
    EXPECT_EQ(out, L"zwei");
    table.SetString(-1, L"x");
    table.SetString(CVxLocStrings::kMaxRow + 1, L"x");
    EXPECT_EQ(table.GetCount(), CVxLocStrings::kMaxRow + 10);
}

TEST(CVxLocStrings, SynchronizeWithTakesMissingAndUntranslatedRows)
{
    CVxLocStrings reference("Messages");
    Feed(reference, "Item1", L"OK");
    Feed(reference, "Item2", L"Cancel");
    reference.SetString(3, L"New text #");
    Feed(reference, "Item4", L"");
    Feed(reference, "Item5", L"Five");

    CVxLocStrings translation("Messages");
    Feed(translation, "Item1", L"Gut");
    Feed(translation, "Item3", L"Alter Text");
    Feed(translation, "Item4", L"Vier");
    Feed(translation, "Item40", L"Verwaist");

    ASSERT_TRUE(translation.SynchronizeWith(reference));
    EXPECT_EQ(translation.GetCount(), reference.GetCount());
    CVxStringW out;
    const std::pair<int, const wchar_t*> rows[] = {
        {1, L"Gut"}, {2, L"Cancel"}, {3, L"New text #"}, {4, L"Vier"}, {5, L"Five"}};
    for (const auto& [row, text] : rows) {
        ASSERT_TRUE(translation.GetString(row, out)) << row;
        EXPECT_EQ(out, text) << row;
    }
    EXPECT_FALSE(translation.GetString(40, out));

    CVxLocStrings other("Toolbar");
    Feed(other, "Item1", L"Neu");
    EXPECT_FALSE(other.SynchronizeWith(reference));
    EXPECT_EQ(other.GetCount(), 11);
    ASSERT_TRUE(other.GetString(1, out));
    EXPECT_EQ(out, L"Neu");
}

TEST(CVxLocStrings, SynchronizeWithKeepsTheToDoMarkWhileSynchronising)
{
    CVxLocalize::SetSynchronizing(true);
    CVxLocStrings reference("Messages");
    Feed(reference, "Item3", L"New text #");
    CVxLocStrings translation("Messages");
    Feed(translation, "Item3", L"Alter Text");
    CVxLocalize::SetSynchronizing(false);
    ASSERT_TRUE(translation.SynchronizeWith(reference));
    CVxStringW out;
    ASSERT_TRUE(translation.GetString(3, out));
    EXPECT_EQ(out, L"New text #");
}

TEST(CVxLocStrings, SaveToFileWritesTheNonEmptyRows)
{
    CVxLocStrings table("Messages");
    Feed(table, "Item7", L"sieben\\nzwei Zeilen");
    Feed(table, "Item2", L"zwei");
    Feed(table, "Item0", L"null");
    CVxStringWriter writer;
    table.SaveToFile(&writer);
    table.SaveToFile(nullptr);
    const std::string text = writer.GetString().Std();
    const std::string expected = "[Messages]\r\nItem0=null\r\nItem2=zwei\r\nItem7=sieben\\nzwei Zeilen\r\n";
    ASSERT_GE(text.size(), expected.size());
    EXPECT_EQ(text.substr(text.size() - expected.size()), expected);
}
