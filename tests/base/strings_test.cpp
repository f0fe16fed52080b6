// Text: the string classes, the tokenizer, table lines and UTF-8.

#include "CVxStringA.h"
#include "CVxStringTokenizer.h"
#include "CVxStringW.h"
#include "VxTestEnv.h"
#include "VxUtf8.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

TEST(StringW, SearchAndPiecesUseIntIndexes)
{
    const CVxStringW s = L"walls|rooms";
    EXPECT_EQ(s.Find(L'|'), 5);
    EXPECT_EQ(s.Find(L"x"), -1);
    EXPECT_EQ(s.Find(L'o', 7), 7);
    EXPECT_EQ(s.Left(5), L"walls");
    EXPECT_EQ(s.Mid(6), L"rooms");
    EXPECT_EQ(s.Mid(6, -1), L"rooms");
    EXPECT_EQ(s.Mid(6, 2), L"ro");
    EXPECT_EQ(s.Mid(40), L"");
    EXPECT_EQ(s.Right(3), L"oms");
    EXPECT_EQ(s.Right(99), s);
    EXPECT_EQ(s.Left(-1), L"");
    EXPECT_EQ(s[99], L'\0');
    EXPECT_TRUE(s.StartsWith(CVxStringW(L"wall")));
    EXPECT_TRUE(s.EndsWith(CVxStringW(L"ms")));
    EXPECT_FALSE(CVxStringW(L"m").EndsWith(CVxStringW(L"rooms")));
}

TEST(StringW, TrimRemovesOnlyBlanks)
{
    CVxStringW s = L"  \tdoor \n  ";
    s.Trim();
    EXPECT_EQ(s, L"\tdoor \n");
    CVxStringW blanks = L"   ";
    EXPECT_TRUE(blanks.Trim().IsEmpty());
}

TEST(StringW, ReplaceAllReturnsNewTextAndReplaceInChangesInPlace)
{
    const CVxStringW s = L"a\\nb\\n";
    EXPECT_EQ(s.ReplaceAll(CVxStringW(L"\\n"), CVxStringW(L"\r\n")), L"a\r\nb\r\n");
    EXPECT_EQ(s, L"a\\nb\\n");
    // A replacement that contains what it replaces must not loop.
    EXPECT_EQ(CVxStringW(L"aa").ReplaceAll(CVxStringW(L"a"), CVxStringW(L"aa")), L"aaaa");
    CVxStringW t = L"kitchen";
    t.ReplaceIn(0, 3, CVxStringW(L"K"));
    EXPECT_EQ(t, L"Kchen");
}

TEST(StringW, SprintfGrowsPastTheFirstBuffer)
{
    CVxStringW s;
    s.sprintf(L"%d-%ls", 42, L"x");
    EXPECT_EQ(s, L"42-x");
    const std::wstring longText(2000, L'w');
    s.sprintf(L"[%ls]", longText.c_str());
    EXPECT_EQ(s.GetLength(), 2002);
    CVxStringA a;
    a.sprintf("%s", std::string(900, 'a').c_str());
    EXPECT_EQ(a.GetLength(), 900);
}

TEST(StringW, IntToHexAndToIntDef)
{
    EXPECT_EQ(CVxStringW::IntToHex(0xD9FFFF, 6, true), L"0xD9FFFF");
    EXPECT_EQ(CVxStringW::IntToHex(0x80, 6, true), L"0x000080");
    EXPECT_EQ(CVxStringW::IntToHex(0, 0, false), L"0");
    EXPECT_EQ(CVxStringW::IntToHex(0xEEFFFFFE, 6, false), L"EEFFFFFE");

    EXPECT_EQ(CVxStringW(L"0xD9FFFF").ToIntDef(-1), 0xD9FFFF);
    EXPECT_EQ(CVxStringW(L"0xEEFFFFFE").ToIntDef(-1), static_cast<int>(0xEEFFFFFEu));
    EXPECT_EQ(CVxStringW(L"14286847").ToIntDef(-1), 14286847); // an old file's decimal colour
    EXPECT_EQ(CVxStringW(L"").ToIntDef(7), 7);
    EXPECT_EQ(CVxStringW(L"abc").ToIntDef(7), 7);
    EXPECT_EQ(CVxStringW(L"0x").ToIntDef(7), 0); // too short for hexadecimal: read as decimal 0
    EXPECT_EQ(CVxStringW(L" 12abc").ToIntDef(7), 12);
    EXPECT_TRUE(CVxStringW(L"2").ToBoolDef(false));
    EXPECT_FALSE(CVxStringW(L"-3").ToBoolDef(true));
    EXPECT_TRUE(CVxStringW(L"junk").ToBoolDef(true));
    EXPECT_EQ(CVxStringW(L"1730000000123").ToInt64Def(0), 1730000000123LL);
}

// The number readers take the plain forms without scanf; every form must
// read as scanf reads it, including what scanf does with overflow, signs,
// blanks and trailing text.
TEST(StringW, NumberReadersMatchScanf)
{
    const char* const texts[] = {
        "0",
        "7",
        "-7",
        "+7",
        "-0",
        "+",
        "-",
        "--1",
        "+-1",
        " 12",
        "\t12",
        "12 ",
        "12abc",
        "12.5",
        "1e3",
        "007",
        "123456789",
        "-123456789",
        "1234567890",
        "2147483647",
        "2147483648",
        "-2147483648",
        "-2147483649",
        "4294967295",
        "4294967296",
        "99999999999999999999",
        "-99999999999999999999",
        "9223372036854775807",
        "9223372036854775808",
        "0000000000042",
        "ff",
        "FF",
        "abc",
        "x",
        "0x",
        "0x0",
        "0x1F",
        "0X1F",
        "0xx",
        "0xg",
        "0x 1",
        "0x-1",
        "0x+1",
        "0x0x1F",
        "0x0X1F",
        "0x0xg",
        "0xFFFFFF",
        "0xffffff",
        "0xEEFFFFFE",
        "0xFFFFFFFF",
        "0x100000000",
        "0x0000000000FF",
        "0x7FFFFFFFFFFFFFFF",
        "0xFFFFFFFFFFFFFFFF",
        "0x10000000000000000",
        "0xFFq",
        "0x-",
        "0x12 34",
        "1 2",
        "",
    };
    for (const char* text : texts) {
        const CVxStringA narrow(text);
        const CVxStringW wide(std::wstring(text, text + narrow.GetLength()));
        int expectInt = 12345;
        long long expectLong = 12345;
        if (!narrow.IsEmpty()) {
            const bool hex = narrow.GetLength() >= 3 && narrow.StartsWith(CVxStringA("0x"));
            unsigned u = 0;
            unsigned long long ull = 0;
            int i = 0;
            long long ll = 0;
            if (hex) {
                expectInt = sscanf(text + 2, "%x", &u) == 1 ? static_cast<int>(u) : expectInt;
                expectLong = sscanf(text + 2, "%llx", &ull) == 1 ? static_cast<long long>(ull) : expectLong;
            } else {
                expectInt = sscanf(text, "%d", &i) == 1 ? i : expectInt;
                expectLong = sscanf(text, "%lld", &ll) == 1 ? ll : expectLong;
            }
        }
        EXPECT_EQ(narrow.ToIntDef(12345), expectInt) << text;
        EXPECT_EQ(wide.ToIntDef(12345), expectInt) << text;
        EXPECT_EQ(narrow.ToInt64Def(12345), expectLong) << text;
        EXPECT_EQ(wide.ToInt64Def(12345), expectLong) << text;
    }
}

TEST(StringW, ToDoubleThrowsOnText)
{
    EXPECT_DOUBLE_EQ(CVxStringW(L"2.5").ToDouble(), 2.5);
    EXPECT_THROW(CVxStringW(L"abc").ToDouble(), std::exception);
    EXPECT_THROW(CVxStringW(L"").ToDouble(), std::exception);
}

TEST(StringW, PathPieces)
{
    const CVxStringW path = L"/home/ann/plans/flat.v2.pvp";
    EXPECT_EQ(path.ExtractFileFolder(), L"/home/ann/plans/");
    EXPECT_EQ(path.ExtractFileTitle(), L"flat.v2.pvp");
    EXPECT_EQ(path.ExtractFileTitleWithoutExt(), L"flat.v2");
    EXPECT_EQ(path.ExtractFileExt(), L".pvp");
    EXPECT_EQ(CVxStringW(L"/a.b/plan").ExtractFileExt(), L"");
    EXPECT_EQ(CVxStringW(L"plan.pvp").ExtractFileFolder(), L"");
    EXPECT_EQ(CVxStringW(L"C:\\Users\\ann\\x.pvp").FromWinPath(), L"C:/Users/ann/x.pvp");
}

TEST(StringW, CaseAndComparison)
{
    CVxStringW s = L"Living Room";
    EXPECT_TRUE(s.IsEqualNoCase(CVxStringW(L"LIVING room")));
    EXPECT_EQ(CVxStringW(s).UpperCase(), L"LIVING ROOM");
    EXPECT_EQ(CVxStringW(s).LowerCase(), L"living room");
    EXPECT_LT(CVxStringW(L"a").Compare(CVxStringW(L"b")), 0);
}

TEST(StringW, ConversionsWithQStringAndAscii)
{
    const CVxStringW s = L"Küche ²";
    const QString q = s;
    EXPECT_EQ(q, QString::fromUtf8("Küche ²"));
    EXPECT_EQ(CVxStringW(q), s);
    EXPECT_EQ(CVxStringA(CVxStringW(L"Options")), "Options");
    EXPECT_EQ(CVxStringW(CVxStringA("Floor")), L"Floor");
}

TEST(Tokenizer, KeepsInnerEmptyTokensAndDropsTrailingOne)
{
    CVxStringTokenizer tokens(L"a||b|", L'|');
    const std::vector<CVxStringW> list = tokens.GetTokenList();
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[0], L"a");
    EXPECT_EQ(list[1], L"");
    EXPECT_EQ(list[2], L"b");

    CVxStringTokenizer stepwise(L"1|Ground floor", L'|');
    EXPECT_TRUE(stepwise.IsNextToken());
    EXPECT_EQ(stepwise.GetNextToken(), L"1");
    EXPECT_EQ(stepwise.GetNextToken(), L"Ground floor");
    EXPECT_FALSE(stepwise.IsNextToken());
    EXPECT_EQ(stepwise.GetNextToken(), L"");

    EXPECT_TRUE(CVxStringTokenizer(L"", L'|').GetTokenList().empty());
    EXPECT_EQ(CVxStringTokenizer(L"|", L'|').GetTokenList().size(), 1u);
}

TEST(CsvLine, QuotedFieldsAndSeparators)
{
    const std::vector<CVxStringW> f =
        CVxStringW(L" 1000, \"Green \"\"beige\"\"\" x ,\t205;190\t,last").SplitCsvLine(L',');
    ASSERT_EQ(f.size(), 6u);
    EXPECT_EQ(f[0], L"1000");
    EXPECT_EQ(f[1], L"Green \"beige\""); // what follows a closing quote is dropped
    EXPECT_EQ(f[2], L"");                // a tab ends a field like the separator
    EXPECT_EQ(f[3], L"205;190");
    EXPECT_EQ(f[4], L"");
    EXPECT_EQ(f[5], L"last");

    const std::vector<CVxStringW> open = CVxStringW(L"\"never closed").SplitCsvLine(L';');
    ASSERT_EQ(open.size(), 1u);
    EXPECT_EQ(open[0], L"never closed");
}

TEST(Utf8, RoundTripAndStopAtBadSequence)
{
    const CVxStringW text = L"Wohnzimmer 20 m² – 😀";
    const CVxStringA utf8 = VX_StringToUTF8(text);
    EXPECT_EQ(VX_StringFromUTF8(utf8), text);
    EXPECT_EQ(VX_StringToUnicode(utf8, 1250), text); // the code page has no effect

    // An invalid byte cuts the text there and keeps what came before.
    EXPECT_EQ(VX_StringFromUTF8(CVxStringA("ab\xC3"
                                           "cd")),
              L"ab");
    EXPECT_EQ(VX_StringFromUTF8(CVxStringA("ok\xFF")), L"ok");
    // A surrogate code point can't be encoded.
    std::wstring withSurrogate = L"x";
    withSurrogate.push_back(static_cast<wchar_t>(0xD800));
    withSurrogate += L"y";
    EXPECT_EQ(VX_StringToUTF8(CVxStringW(withSurrogate)), "x");
}
