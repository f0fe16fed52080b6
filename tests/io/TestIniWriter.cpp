// Writing the record format, and reading back what was written.

#include "CVxIniWriter.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"
#include "VxIniTestUtil.h"

#include <gtest/gtest.h>

namespace {

void WriteSampleProject(CVxIniWriter& writer)
{
    writer.StartSection("Room");
    writer.WriteInteger("FileVersion", 1020);
    writer.WriteString("Encoding", L"utf-8");
    writer.WriteDouble("Width", 500.5);
    writer.WriteString("Comments", L"K\u00FCche \u20AC");
    writer.WriteString("Empty", L"");
    writer.WriteInteger64("Stamp", 5000000000L);
    writer.WriteBool("UserCoord", true);
    writer.WriteString("GridColor", CVxStringW::IntToHex(0x00FF80, 6, true));
    writer.StartSection("Floor");
    writer.WriteBool("Hidden", false);
    writer.StartSection("EndFloor");
}

} // namespace

TEST(IniWriterFile, WritesTheExactBytesOfTheFormat)
{
    const CVxStringW path = VxTempPath(L"golden.pvp");
    {
        CVxIniWriter writer(path);
        ASSERT_TRUE(writer.IsOpened());
        WriteSampleProject(writer);
        writer.Finalize();
    }
    EXPECT_EQ(VxReadWholeFile(path), "\xEF\xBB\xBF\r\n"
                                     "[Room]\r\n"
                                     "FileVersion=1020\r\n"
                                     "Encoding=utf-8\r\n"
                                     "Width=500.5\r\n"
                                     "Comments=K\xC3\xBC"
                                     "che \xE2\x82\xAC\r\n"
                                     "Empty=\r\n"
                                     "Stamp=5000000000\r\n"
                                     "UserCoord=1\r\n"
                                     "GridColor=0x00FF80\r\n"
                                     "\r\n"
                                     "[Floor]\r\n"
                                     "Hidden=0\r\n"
                                     "\r\n"
                                     "[EndFloor]\r\n");
}

TEST(IniWriterFile, RoundTripThroughTheReader)
{
    const CVxStringW path = VxTempPath(L"roundtrip.pvp");
    {
        CVxIniWriter writer(path);
        WriteSampleProject(writer);
    }
    CVxIniFileReader reader(path, 0);
    ASSERT_TRUE(reader.IsOpened());
    EXPECT_EQ(VxDumpRecords(reader), "[Room]\n"
                                     "FileVersion=1020\n"
                                     "Encoding=utf-8\n"
                                     "Width=500.5\n"
                                     "Comments=K\xC3\xBC"
                                     "che \xE2\x82\xAC\n"
                                     "Empty=\n"
                                     "Stamp=5000000000\n"
                                     "UserCoord=1\n"
                                     "GridColor=0x00FF80\n"
                                     "[Floor]\n"
                                     "Hidden=0\n"
                                     "[EndFloor]\n");
    EXPECT_EQ(reader.GetCodePage(), 65001u);
}

TEST(IniWriterFile, UnopenedWriterWritesNothing)
{
    CVxIniWriter writer(VxTempPath(L"no-such-folder/x.pvp"));
    EXPECT_FALSE(writer.IsOpened());
    WriteSampleProject(writer);
    writer.Finalize();
    EXPECT_EQ(VxReadWholeFile(VxTempPath(L"no-such-folder/x.pvp")), "<missing>");
}

TEST(IniWriterFile, OpenFileWithoutMarkWritesNothingAhead)
{
    const CVxStringW path = VxTempPath(L"head.pvp");
    FILE* file = CVxIniWriter::OpenFile(path, false);
    ASSERT_NE(file, nullptr);
    CVxIniWriter::FileWriteInteger(file, "FileVersion", 1020);
    CVxIniWriter::FileWriteString(file, "Name", L"a|b");
    CVxIniWriter::FileWriteDouble(file, "Zero", 0.0);
    CVxIniWriter::FileWriteInteger64(file, "Big", -5000000000L);
    fclose(file);
    EXPECT_EQ(VxReadWholeFile(path), "FileVersion=1020\r\nName=a|b\r\nZero=0\r\nBig=-5000000000\r\n");
}

TEST(IniStringWriter, ClipboardTextParsesBackWithAnEmptyHead)
{
    CVxStringWriter writer;
    EXPECT_TRUE(writer.IsOpened());
    writer.StartSection("Room");
    writer.WriteString("Unit", L"cm");
    writer.WriteInteger("CurrentFloor", 0);
    // No file behind a string writer: 64-bit values are left out.
    writer.WriteInteger64("ProjectId", 123456789012L);
    writer.StartSection("Part0");
    writer.WriteDouble("X", 1.5);
    writer.WriteBool("Visible", true);
    EXPECT_EQ(writer.GetString(), "[Plaveno Clipboard]\r\n\r\n"
                                  "[Room]\r\nUnit=cm\r\nCurrentFloor=0\r\n"
                                  "\r\n[Part0]\r\nX=1.5\r\nVisible=1\r\n");

    CVxStringReader reader(writer.GetString(), 65001);
    EXPECT_EQ(VxDumpRecords(reader),
              "[Plaveno Clipboard]\n[Room]\nUnit=cm\nCurrentFloor=0\n[Part0]\nX=1.5\nVisible=1\n");
}
