// Reading the record format: line ends, key lines, heads, buffers.

#include "CVxIniFileReader.h"
#include "CVxStringReader.h"
#include "VxIniTestUtil.h"

#include <gtest/gtest.h>

TEST(IniReaderLines, LfAndCrLfReadAlike)
{
    const std::string expected = "[Room]\nWidth=500\nHeight=300\n[Floor]\nPartCount=2\n";
    EXPECT_EQ(VxDumpText("[Room]\r\nWidth=500\r\nHeight=300\r\n\r\n[Floor]\r\nPartCount=2\r\n"), expected);
    EXPECT_EQ(VxDumpText("[Room]\nWidth=500\nHeight=300\n\n[Floor]\nPartCount=2\n"), expected);
}

TEST(IniReaderLines, CrAloneSwallowsTheNextByte)
{
    EXPECT_EQ(VxDumpText("[Room]\rXWidth=5\r\n"), "[Room]\nWidth=5\n");
}

TEST(IniReaderLines, LastLineWithoutLineEndIsDelivered)
{
    EXPECT_EQ(VxDumpText("[Room]\r\nWidth=5\r\nHeight=3"), "[Room]\nWidth=5\nHeight=3\n");
}

TEST(IniReaderKeys, ValuesAreTakenAsTheyStand)
{
    const std::string text = "[Room]\r\n"
                             "Empty=\r\n"
                             "=orphan\r\n"
                             "Pair=a=b\r\n"
                             "Width= 5 \r\n"
                             "no equals sign\r\n"
                             "[broken head\r\n"
                             "Case=1\r\n"
                             "case=2\r\n";
    EXPECT_EQ(VxDumpText(text), "[Room]\nEmpty=\nPair=a=b\nWidth= 5 \nCase=1\ncase=2\n");
}

TEST(IniReaderKeys, InvalidUtf8CutsTheValueOff)
{
    EXPECT_EQ(VxDumpText("[Room]\r\nName=K\xC3\xBC\xFF"
                         "che\r\n"),
              "[Room]\nName=K\xC3\xBC\n");
}

TEST(IniReaderSections, EmptyFileHasNoSection)
{
    CVxIniFileReader reader(VxWriteTempFile(L"empty.ini", ""), 0);
    ASSERT_TRUE(reader.IsOpened());
    EXPECT_FALSE(reader.Start());
    EXPECT_TRUE(reader.GetSectionName().IsEmpty());
}

TEST(IniReaderSections, MissingFileReadsAsEnded)
{
    CVxIniFileReader reader(VxTempPath(L"no-such-file.ini"), 0);
    EXPECT_FALSE(reader.IsOpened());
    EXPECT_FALSE(reader.Start());
    EXPECT_TRUE(reader.GetSectionName().IsEmpty());
    bool eof = false;
    EXPECT_TRUE(reader.ReadLineFromFile(eof).IsEmpty());
    EXPECT_TRUE(eof);
}

TEST(IniReaderSections, SkippedSectionDeliversNothingAndLoopGoesOn)
{
    CVxIniFileReader reader(VxWriteTempFile(L"skip.ini", "Lead=1\r\n[A]\r\nX=1\r\n[B]\r\nY=2\r\n[C]\r\n"), 0);
    std::string seen;
    CVxFunctionClient client([&seen](const CVxStringA& key, const CVxStringW&, CVxIniFileReader* r) {
        seen += r->GetSectionName().Std() + "." + key.Std() + ";";
    });
    ASSERT_TRUE(reader.Start());
    EXPECT_EQ(reader.GetSectionName(), "A");
    EXPECT_TRUE(reader.ReadSection(nullptr));
    EXPECT_EQ(reader.GetSectionName(), "B");
    EXPECT_TRUE(reader.ReadSection(&client));
    EXPECT_EQ(reader.GetSectionName(), "C");
    EXPECT_FALSE(reader.ReadSection(&client));
    EXPECT_TRUE(reader.GetSectionName().IsEmpty());
    EXPECT_EQ(seen, "B.Y;");
}

TEST(IniReaderSections, ByteOrderMarkIsSkippedAndSetsUtf8)
{
    CVxIniFileReader reader(
        VxWriteTempFile(L"bom.ini", "\xEF\xBB\xBF\r\n[Room]\r\nName=\xC3\xA9t\xC3\xA9\r\n"), 0);
    EXPECT_EQ(reader.GetCodePage(), 65001u);
    EXPECT_EQ(VxDumpRecords(reader), "[Room]\nName=\xC3\xA9t\xC3\xA9\n");
}

TEST(IniReaderSections, WideFileReadsInUnitsOfWchar)
{
    std::string text = "\xFF\xFE";
    for (wchar_t c : std::wstring(L"[Room]\r\nName=K\u00FCche\r\n=x\r\n[Floor]\n"))
        text.append(reinterpret_cast<const char*>(&c), sizeof(c));
    EXPECT_EQ(VxDumpText(text), "[Room]\nName=K\xC3\xBC"
                                "che\n[Floor]\n");
}

TEST(IniReaderBuffers, LinesLongerThanTheBufferSpanRefills)
{
    const std::string longValue(5000, 'v');
    // Two lines around each refill: the second one starts a few bytes before
    // the first boundary and ends beyond the third.
    std::string text =
        "[Room]\r\nPad=" + std::string(2030, 'p') + "\r\nLong=" + longValue + "\r\nAfter=1\r\n";
    EXPECT_EQ(VxDumpText(text),
              "[Room]\nPad=" + std::string(2030, 'p') + "\nLong=" + longValue + "\nAfter=1\n");
}

TEST(IniReaderBuffers, CrLfSplitByARefillEndsOneLine)
{
    // The CR is the last byte of the first buffer and its LF the first of the next.
    const std::string head = "[Room]\r\nPad=";
    const std::string pad(2047 - head.size(), 'p');
    const std::string text = head + pad + "\r\nNext=2\r\n";
    ASSERT_EQ(text[2047], '\r');
    EXPECT_EQ(VxDumpText(text), "[Room]\nPad=" + pad + "\nNext=2\n");
}

TEST(IniReaderBuffers, StringReaderReadsTextOfAnyLength)
{
    const std::string value(3000, 'x');
    CVxStringReader reader(CVxStringA("[Plaveno Clipboard]\r\n\r\n[Part0]\r\nCaption=" + value + "\r\n"),
                           65001);
    EXPECT_TRUE(reader.IsOpened());
    EXPECT_EQ(VxDumpRecords(reader), "[Plaveno Clipboard]\n[Part0]\nCaption=" + value + "\n");
}

TEST(IniReaderBuffers, ReadLineFromFileGivesWideLines)
{
    CVxIniFileReader reader(VxWriteTempFile(L"lines.txt", "one\r\nK\xC3\xBC\nlast"), 0);
    bool eof = false;
    EXPECT_EQ(reader.ReadLineFromFile(eof), CVxStringW(L"one"));
    EXPECT_FALSE(eof);
    EXPECT_EQ(reader.ReadLineFromFile(eof), CVxStringW(L"K\u00FC"));
    EXPECT_FALSE(eof);
    EXPECT_EQ(reader.ReadLineFromFile(eof), CVxStringW(L"last"));
    EXPECT_TRUE(eof);
}

TEST(IniReaderConversions, NumbersFallBackToTheirDefaults)
{
    EXPECT_DOUBLE_EQ(CVxIniFileReader::ToDouble(L"12.5", 1), 12.5);
    EXPECT_DOUBLE_EQ(CVxIniFileReader::ToDouble(L"abc", 7), 7);
    EXPECT_EQ(CVxIniFileReader::ToInt(L"0x00FF80", 0), 0xFF80);
    EXPECT_EQ(CVxIniFileReader::ToInt(L"", 3), 3);
    EXPECT_TRUE(CVxIniFileReader::ToBool(L"2", false));
    EXPECT_FALSE(CVxIniFileReader::ToBool(L"0", true));
    EXPECT_TRUE(CVxIniFileReader::ToBool(L"x", true));
}
