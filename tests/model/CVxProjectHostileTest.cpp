// Projects that someone made to harm the user who opens them: references to
// private files, numbers that size loops, and more objects and table cells
// than any home holds.

#include "CVxFloor.h"
#include "CVxHoleInFloor.h"
#include "CVxPartVectorGrouper.h"
#include "CVxProject.h"
#include "VxModelTestUtil.h"
#include "VxTestEnv.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <cmath>
#include <list>

namespace {

std::string Plain(const std::string& room, const std::string& parts)
{
    return "[Room]\r\nFileVersion=1020\r\nWidth=600\r\nHeight=400\r\n" + room +
           "\r\n[Floor]\r\n\r\n[RoomWalls]\r\n\r\n" + parts + "[EndFloor]\r\n\r\n[PictureResizeCache]\r\n";
}

size_t CountParts(const std::vector<CVxPart>& parts)
{
    size_t count = parts.size();
    for (const CVxPart& part : parts)
        count += CountParts(part.subParts);
    return count;
}

} // namespace

TEST(ProjectHostile, PrivateFilesNamedByTheTextAreNeitherTakenInNorEmbedded)
{
    const CVxStringW secret = WriteFile("hostile/secret.txt", "the user's secret");
    const std::string sound = std::string("RIFF\x24\0\0\0WAVEfmt ", 16);
    WriteFile("hostile/project/clip.wav", sound);
    const std::string parts =
        "[Part0]\r\nType=Rectangle\r\nSoundClip=/etc/passwd\r\nFileLink=/etc/passwd\r\n\r\n"
        "[Part1]\r\nType=Rectangle\r\nSoundClip=../../../../../../proc/self/environ\r\n\r\n"
        "[Part2]\r\nType=Rectangle\r\nSoundClip=../secret.txt\r\n\r\n"
        "[Part3]\r\nType=Rectangle\r\nSoundClip=clip.wav\r\n\r\n";
    const CVxStringW path =
        WriteFile("hostile/project/plan.pvp", Plain("SkyBoxTop=../secret.txt\r\n", parts));

    CVxProject project;
    std::list<CVxMissingFileInfo> missing;
    ASSERT_TRUE(project.LoadFromFile(path, &missing, nullptr, false, 0));
    std::vector<QString> names;
    for (const CVxMissingFileInfo& info : missing)
        names.push_back(QFileInfo(info.filePath.ToQString()).fileName());
    EXPECT_EQ(names, (std::vector<QString>{"secret.txt", "passwd", "environ"}));
    // Nothing of them was copied into the project's folder.
    EXPECT_EQ(QDir(project.m_storagePath.ToQString()).entryList(QDir::Files), QStringList({"clip.wav"}));

    const CVxStringW saved = WriteFile("hostile/out/saved.pvp", "");
    ASSERT_TRUE(project.SaveToFile(saved, true, &missing));
    const std::string written = ReadFile(saved);
    EXPECT_EQ(written.find("the user's secret"), std::string::npos);
    EXPECT_EQ(written.find("Name=passwd"), std::string::npos);
    EXPECT_EQ(written.find("Name=secret.txt"), std::string::npos);
    EXPECT_EQ(written.find("Name=environ"), std::string::npos);
    EXPECT_NE(written.find("Name=clip.wav"), std::string::npos);
    // Without the list of missing files, as a batch convert saves, the same.
    ASSERT_TRUE(project.SaveToFile(saved, true, nullptr));
    EXPECT_EQ(ReadFile(saved).find("the user's secret"), std::string::npos);
    EXPECT_EQ(ReadFile(saved).find("Name=passwd"), std::string::npos);
    // A link is kept as its text.
    CVxProject read;
    ASSERT_TRUE(read.LoadFromFile(saved, nullptr, nullptr, false, 0));
    ASSERT_FALSE(read.GetFloor()->m_objects.empty());
    EXPECT_EQ(read.GetFloor()->m_objects[0].fileLink, L"/etc/passwd");
    read.RemoveTempFiles();
    project.RemoveTempFiles();
}

TEST(ProjectHostile, RoomNumbersOutOfRangeKeepTheirDefaults)
{
    for (const char* value : {"nan", "inf", "1e10", "1e300", "-1"}) {
        const std::string room = std::string("GridSize=") + value + "\r\nSpaceAround=" + value +
                                 "\r\nDecimalPrecision=" + (value[0] == '1' ? "2000000000" : "-7") +
                                 "\r\nCaptionFont=Sans|" + value + "|1|0|0\r\n";
        CVxProject project;
        ASSERT_TRUE(
            project.LoadFromFile(WriteFile("hostile/grid.pvp", Plain(room, "")), nullptr, nullptr, false, 0));
        EXPECT_DOUBLE_EQ(project.m_gridSize, 50) << value;
        EXPECT_TRUE(std::isfinite(project.m_spaceLeft) && std::fabs(project.m_spaceLeft) < 1e9) << value;
        EXPECT_EQ(project.m_decimalPrecision, 2) << value;
        EXPECT_TRUE(project.m_captionFont.m_size > 0 && project.m_captionFont.m_size <= 1000) << value;
    }
}

TEST(ProjectHostile, ObjectsAndTableCellsCostBoundedMemory)
{
    std::string parts;
    for (int i = 0; i < 3000; ++i)
        parts += "[Part" + std::to_string(i) + "]\r\nType=Table\r\nSubType=-1\r\n\r\n";
    CVxProject project;
    ASSERT_TRUE(
        project.LoadFromFile(WriteFile("hostile/tables.pvp", Plain("", parts)), nullptr, nullptr, false, 0));
    ASSERT_EQ(project.GetFloor()->m_objects.size(), 3000u);
    EXPECT_LE(CountParts(project.GetFloor()->m_objects),
              static_cast<size_t>(CVxPartVectorGrouper::maxTableCellsPerRun) + 2 * 3000);

    std::string empty;
    for (size_t i = 0; i < CVxFloor::maxProjectObjects + 1000; ++i)
        empty += "[Part0]\r\n";
    ASSERT_TRUE(
        project.LoadFromFile(WriteFile("hostile/many.pvp", Plain("", empty)), nullptr, nullptr, false, 0));
    EXPECT_EQ(project.GetFloor()->m_objects.size(), CVxFloor::maxProjectObjects);
}

// A line too long for the reader, such as a floor opening of a million
// points, is skipped whole; the load says so instead of giving a project that
// silently lacks it.
TEST(ProjectHostile, AnOverlongLineMarksTheLoadDamaged)
{
    const std::string before = "Hole00=Rectangle|10|20|30|40|0\r\n";
    const std::string after = "Hole02=Rectangle|50|60|10|10|0\r\n\r\n";
    std::string points;
    while (points.size() <= (size_t{8} << 20))
        points += "1234.56;7890.12|";
    for (const bool overlong : {false, true}) {
        const std::string opening = "Hole01=Polygon|3|0|0;0|10;0|0;10|" + (overlong ? points : std::string());
        const CVxStringW path =
            WriteFile("hostile/overlong.pvp", Plain("", before + opening + "\r\n" + after));
        CVxProject project;
        ASSERT_TRUE(project.LoadFromFile(path, nullptr, nullptr, false, 0));
        EXPECT_EQ(project.WasDamagedOnLoad(), overlong);
        EXPECT_EQ(project.m_floors.front()->m_walls.GetHoleCount(), overlong ? 2 : 3);
        project.RemoveTempFiles();
    }
}

// An opening that could not be read back once written is left out on
// reading: too many points, or a place beyond any plan.
TEST(ProjectHostile, FloorOpeningsAreReadOnlyWhenTheyCanBeWrittenBack)
{
    std::string many = "Polygon|0|0|";
    for (int i = 0; i < 20001; ++i)
        many += std::to_string(i % 500) + ";" + std::to_string(i / 500) + "|";
    CVxHoleInFloor hole;
    EXPECT_FALSE(hole.LoadFromString(CVxStringW(QString::fromStdString(many))));
    EXPECT_FALSE(hole.LoadFromString(L"Polygon|3|0|0;0|1e300;0|0;10|"));
    EXPECT_FALSE(hole.LoadFromString(L"Rectangle|10|20|1e30|40|0"));
    ASSERT_TRUE(hole.LoadFromString(L"Polygon|3|0|0;0|-99999999999.5;0|0;10|"));
    CVxHoleInFloor again;
    ASSERT_TRUE(again.LoadFromString(hole.SaveToString()));
    EXPECT_EQ(again.polygon.GetVertexCount(), 3);
}
