// Projects in their files: the container a save produces, round trips of a
// whole house, old and newer files, damaged and hostile files, and saves
// that fail or die half-way without costing the user the previous file.

#include "CVxAppHelperHeadless.h"
#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxGlobalShadow.h"
#include "CVxProject.h"
#include "VxContainerTestUtil.h"
#include "VxModelTestUtil.h"
#include "VxTestEnv.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <csignal>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace {

CVxPart Box(double x, const wchar_t* caption, const CVxStringW& texture = CVxStringW())
{
    CVxPart part;
    part.inUse = true;
    part.type = ptRectangle;
    part.x = x;
    part.y = 50;
    part.width = 80;
    part.height = 60;
    part.caption = caption;
    part.appearFill.SetTexture(texture);
    return part;
}

// Two named rooms with a floor opening, a free slot between a box and a
// group on the ground floor, and an upper floor with one box.
void BuildHouse(CVxProject& project)
{
    project.m_width = 600;
    project.m_height = 300;
    project.m_comments = L"North side:\r\ngarden";
    CVxFloor* floor = project.GetFloor();
    floor->m_walls.SetAsBasicRect(600, 300, 10, 250);
    floor->m_walls.GetNewWall()->Set(400, 0, 400, 300, CVxWall::ALIGN_CENTER, 10, 250, 250, true, false);
    floor->m_walls.RebuildWalls();
    CVxHoleInFloor hole;
    hole.x = 50;
    hole.width = 80;
    hole.height = 40;
    floor->m_walls.holes.push_back(hole);
    CVxFloorPlan plan;
    plan.CreatePlan(*floor, project.m_unit);
    for (CVxFloorRegion& room : plan.regions)
        room.name = room.GetInnerBoundingRect().left < 200 ? L"Living" : L"Study";
    floor->SetCommonFloorAppearancesAndSave(plan, true);
    *floor->GetNewObject() = Box(10, L"Wardrobe");
    floor->GetNewObject()->inUse = false;
    CVxPart group = Box(100, L"Dining");
    group.type = ptComplexObject;
    group.subParts = {Box(0, L"Table"), Box(90, L"Chair")};
    *floor->GetNewObject() = group;
    CVxFloor upper;
    upper.Reset(&project);
    *upper.GetNewObject() = Box(30, L"Bed");
    project.m_floors.push_back(new CVxFloor(upper));
}

CVxStringW RoomNameAt(CVxFloor* floor, int unit, const CVxDPoint& point)
{
    floor->m_walls.RebuildWalls();
    CVxFloorPlan plan;
    plan.CreatePlan(*floor, unit);
    const CVxFloorRegion* room = plan.SafeGetRegion(plan.FindRegion(point));
    return room ? room->name : CVxStringW(L"<no room>");
}

// The inflated text of the last entry, which must end the container.
std::string InnerText(const std::string& container)
{
    const size_t name = container.rfind("[File]\r\nName=");
    const size_t uncp = container.find("UncpSize=", name);
    const size_t data = container.find("\r\n", container.find("DataSize=", uncp)) + 2;
    const size_t packed = std::stoul(container.substr(container.find("DataSize=", uncp) + 9));
    EXPECT_EQ(data + packed + 4, container.size()) << "the text entry ends the file";
    uLongf size = std::stoul(container.substr(uncp + 9));
    std::string text(size, '\0');
    uncompress(reinterpret_cast<Bytef*>(text.data()), &size, reinterpret_cast<const Bytef*>(&container[data]),
               static_cast<uLong>(packed));
    return text;
}

class CVxCountingHost : public CVxAppHelperHeadless
{
public:
    using CVxAppHelperHeadless::CVxAppHelperHeadless;
    int MsgBox(const CVxStringW&, const CVxStringW&, unsigned, void*, EVxMsgButton, EVxMsgButton) override
    {
        ++boxes;
        return VX_MBR_OTHER;
    }
    int boxes = 0;
};

} // namespace

TEST(ProjectFile, SmallProjectGivesHeadThenEntriesInOrderOfMention)
{
    const std::string thumbnail = "\x89PNG\r\n\x1A\n\0thumb";
    const std::string notes = "Paint: white\r\n";
    CVxProject project;
    project.m_thumbnailPath = WriteFile("small/vx_projt.png", thumbnail);
    project.m_attachments.m_items.push_back({WriteFile("small/notes.txt", notes), {10, 20}, 0, 0, L"Paint"});
    const CVxStringW path = TempPath("small/house.pvp");
    ASSERT_TRUE(project.SaveToFile(path, true, nullptr));

    const std::string written = ReadFile(path);
    const std::string text = InnerText(written);
    EXPECT_EQ(text.rfind("\xEF\xBB\xBF\r\n[Room]\r\nFileVersion=1020\r\nEncoding=utf-8\r\nWidth=", 0), 0u);
    EXPECT_EQ(text.find("Compression"), std::string::npos) << "the inner text must end the recursion";
    EXPECT_NE(text.find("\r\nItem0=notes.txt|Paint|"), std::string::npos);
    EXPECT_TRUE(written == VxContainerHead() + "\r\n" + VxRawEntry("vx_projt.png", thumbnail) +
                               VxDeflatedEntry("notes.txt", notes) + VxDeflatedEntry("project.pvp", text));
    EXPECT_FALSE(QFile::exists(TempPath("small/house.pvp.saving~").ToQString()));
}

TEST(ProjectFile, SunChosenInTheProgramIsSaved)
{
    // The sample file had no sun; one set afterwards must reach the file.
    CVxProject project;
    ASSERT_FALSE(project.m_globalShadow.IsPresent());
    CVxGlobalShadow sun;
    sun.enabled = true;
    sun.latitude = 35.68;
    sun.day = 170;
    sun.StoreToKept(project.m_globalShadow);
    const CVxStringW path = TempPath("sun/house.pvp");
    ASSERT_TRUE(project.SaveToFile(path, false, nullptr));
    CVxProject read;
    ASSERT_TRUE(read.LoadFromFile(path, nullptr, nullptr, false, 0));
    CVxGlobalShadow back;
    back.LoadFromKept(read.m_globalShadow);
    EXPECT_TRUE(back.enabled);
    EXPECT_EQ(back.day, 170);
    EXPECT_DOUBLE_EQ(back.latitude, 35.68);
}

TEST(ProjectFile, HouseRoundTripsInBothForms)
{
    CVxProject house;
    BuildHouse(house);
    for (const bool compressed : {true, false}) {
        SCOPED_TRACE(compressed);
        const CVxStringW path = TempPath(compressed ? "trip/house.pvp" : "trip/plain.pvp");
        ASSERT_TRUE(house.SaveToFile(path, compressed, nullptr));
        CVxProject read;
        std::list<CVxMissingFileInfo> missing;
        ASSERT_TRUE(read.LoadFromFile(path, &missing, nullptr, false, 0));
        EXPECT_TRUE(missing.empty());
        EXPECT_EQ(read.m_comments, house.m_comments);
        ASSERT_EQ(read.GetFloorCount(), 2);
        CVxFloor* ground = read.m_floors[0];
        ASSERT_EQ(ground->m_walls.GetWallCount(), 5);
        for (int i = 0; i < 5; ++i)
            EXPECT_EQ(ground->m_walls.walls[i].SaveToString(),
                      house.m_floors[0]->m_walls.walls[i].SaveToString());
        ASSERT_EQ(ground->m_walls.GetHoleCount(), 1);
        EXPECT_EQ(ground->m_walls.holes[0].SaveToString(),
                  house.m_floors[0]->m_walls.holes[0].SaveToString());
        EXPECT_EQ(RoomNameAt(ground, read.m_unit, {100, 100}), L"Living");
        EXPECT_EQ(RoomNameAt(ground, read.m_unit, {500, 100}), L"Study");
        ASSERT_EQ(ground->CountUsedObjects(), 2);
        EXPECT_EQ(ground->m_objects[0].caption, L"Wardrobe");
        ASSERT_EQ(ground->m_objects[1].subParts.size(), 2u);
        EXPECT_EQ(ground->m_objects[1].subParts[1].caption, L"Chair");
        ASSERT_EQ(read.m_floors[1]->CountUsedObjects(), 1);
        EXPECT_EQ(read.m_floors[1]->m_objects[0].caption, L"Bed");
    }
}

TEST(ProjectFile, PicturesAreStoredOnceAndSameNamesFromTwoFoldersBothKept)
{
    CVxProject project;
    CVxFloor* floor = project.GetFloor();
    // Only what reads as a picture is embedded as one.
    const std::string png = "\x89PNG\r\n\x1A\n";
    const CVxStringW oak = WriteFile("pics/a/wood.png", png + "oak");
    *floor->GetNewObject() = Box(0, L"Table", oak);
    *floor->GetNewObject() = Box(100, L"Shelf", oak);
    *floor->GetNewObject() = Box(200, L"Door", WriteFile("pics/b/wood.png", png + "pine"));
    const CVxStringW path = TempPath("pics/house.pvp");
    ASSERT_TRUE(project.SaveToFile(path, true, nullptr));
    const std::string written = ReadFile(path);
    EXPECT_EQ(written.find("Name=wood.png"), written.rfind("Name=wood.png")) << "one entry per picture";
    EXPECT_NE(written.find("Name=wood_"), std::string::npos);

    CVxProject read;
    ASSERT_TRUE(read.LoadFromFile(path, nullptr, nullptr, false, 0));
    const CVxStringW storage = read.m_storagePath;
    const std::vector<CVxPart>& parts = read.GetFloor()->m_objects;
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_TRUE(parts[0].appearFill.GetTexture().StartsWith(storage));
    EXPECT_EQ(ReadFile(parts[1].appearFill.GetTexture()), png + "oak");
    EXPECT_EQ(ReadFile(parts[2].appearFill.GetTexture()), png + "pine");
    // Opening another project gives the unpacked files up.
    read.LoadFromFile(path, nullptr, nullptr, false, 0);
    EXPECT_FALSE(QDir(storage.ToQString()).exists());
}

TEST(ProjectFile, OpenedProjectListsTheFilesItTookInFromOutside)
{
    // The embedded picture unpacks into the project's folder and needs no
    // entry; the one that the text names by a full path is copied in.
    const CVxStringW outside = WriteFile("stored/elsewhere/sky.png", "sky");
    const std::string text =
        "[Room]\r\nSkyBoxLeft=" + outside.ToQString().toStdString() + "\r\nSkyBoxTop=tile.png\r\n";
    const CVxStringW path =
        WriteFile("stored/house.pvp", VxContainerHead() + "\r\n" + VxRawEntry("tile.png", "tile") +
                                          VxDeflatedEntry("project.pvp", text));
    CVxProject project;
    ASSERT_TRUE(project.LoadFromFile(path, nullptr, nullptr, false, 0));
    const CVxStringW storage = project.m_storagePath;
    EXPECT_EQ(project.m_skyBoxTop, storage + L"tile.png");
    EXPECT_EQ(project.m_skyBoxLeft, storage + L"sky.png");
    ASSERT_EQ(project.m_storedFiles.size(), 1u);
    EXPECT_EQ(project.m_storedFiles.front().first, outside);
    EXPECT_EQ(project.m_storedFiles.front().second, storage + L"sky.png");
    EXPECT_EQ(ReadFile(project.m_storedFiles.front().second), "sky");
}

TEST(ProjectFile, OldPlainFilesWithVersionRulesGapsAndForeignSectionsLoad)
{
    const std::string old = "[Room]\r\nFileVersion=701\r\nWidth=0\r\nHeight=250\r\nGridLineStyle=0\r\n"
                            "SpaceAround=10\r\n\r\n[Terrain]\r\nHeights=1|2|3\r\n\r\n[Floor]\r\n\r\n"
                            "[Part0]\r\nType=0\r\nCaption=Sofa\r\n\r\n[Future]\r\nX=1\r\n\r\n"
                            "[Part7]\r\nType=0\r\nCaption=Lamp\r\n\r\n[EndFloor]\r\n\r\n[Unknown]\r\n\r\n"
                            "[PictureResizeCache]\r\nItem0=a.png|64\r\n";
    const CVxStringW path = WriteFile("old/old.pvp", old);
    CVxProject project;
    ASSERT_TRUE(project.LoadFromFile(path, nullptr, nullptr, false, 0));
    EXPECT_DOUBLE_EQ(project.m_width, 1);
    EXPECT_EQ(project.m_gridLineStyle, 1);
    EXPECT_DOUBLE_EQ(project.m_spaceBottom, 10);
    ASSERT_EQ(project.GetFloorCount(), 1);
    const std::vector<CVxPart>& parts = project.GetFloor()->m_objects;
    ASSERT_EQ(parts.size(), 2u) << "no free slots for the gaps in the numbers";
    EXPECT_EQ(parts[1].caption, L"Lamp");

    ASSERT_TRUE(project.SaveToFile(path, false, nullptr));
    const CVxStringA saved(ReadFile(path).c_str());
    EXPECT_EQ(VxSectionText(saved, "Terrain"), "Heights=1|2|3\n");
    EXPECT_EQ(VxSectionText(saved, "PictureResizeCache"), "Item0=a.png|64\n");
    EXPECT_EQ(saved.Std().find("Future"), std::string::npos);

    // The cache goes on through a container, still the last section.
    const CVxStringW packed = TempPath("old/packed.pvp");
    ASSERT_TRUE(project.SaveToFile(packed, true, nullptr));
    CVxProject reopened;
    ASSERT_TRUE(reopened.LoadFromFile(packed, nullptr, nullptr, false, 0));
    ASSERT_TRUE(reopened.SaveToFile(packed, true, nullptr));
    const std::string text = InnerText(ReadFile(packed));
    EXPECT_EQ(text.substr(text.rfind("\r\n[")), "\r\n[PictureResizeCache]\r\nItem0=a.png|64\r\n");
}

TEST(ProjectFile, NewerFileWarnsOnce)
{
    IVxAppHelperCallback* previous = VX_GetAppHelper();
    CVxCountingHost host(previous->GetUserAppDataPath(), previous->GetUserDocsPath());
    VX_SetAppHelperCallback(&host);
    std::string head = VxContainerHead();
    head.replace(head.find("1020"), 4, "1021");
    const std::string text = "[Room]\r\nFileVersion=1021\r\nNewKey=1\r\n";
    CVxProject project;
    EXPECT_TRUE(
        project.LoadFromFile(WriteFile("newer/newer.pvp", head + "\r\n" + VxDeflatedEntry("p.pvp", text)),
                             nullptr, nullptr, false, 0));
    EXPECT_EQ(host.boxes, 1);
    EXPECT_TRUE(project.LoadFromFile(WriteFile("newer/plain.pvp", text + text), nullptr, nullptr, false, 0));
    EXPECT_EQ(host.boxes, 2);
    VX_SetAppHelperCallback(previous);
}

TEST(ProjectFile, DamagedAndHostileFilesLoadWhatTheyCanAndStayInTheirFolder)
{
    CVxProject house;
    BuildHouse(house);
    const CVxStringW path = TempPath("damaged/house.pvp");
    ASSERT_TRUE(house.SaveToFile(path, true, nullptr));
    const std::string whole = ReadFile(path);
    // Cut inside the text: the head of the project came through.
    CVxProject read;
    EXPECT_TRUE(read.LoadFromFile(WriteFile("damaged/cut.pvp", whole.substr(0, whole.size() * 2 / 3)),
                                  nullptr, nullptr, false, 0));
    EXPECT_DOUBLE_EQ(read.m_width, 600);
    // Cut inside the head: no text at all, a reset project.
    EXPECT_FALSE(
        read.LoadFromFile(WriteFile("damaged/head.pvp", whole.substr(0, VxContainerHead().size() + 10)),
                          nullptr, nullptr, false, 0));
    EXPECT_EQ(read.GetFloorCount(), 1);
    EXPECT_TRUE(read.LoadFromFile(WriteFile("damaged/binary.pvp", std::string("\x7F"
                                                                              "ELF\0\x01[\xFF",
                                                                              9)),
                                  nullptr, nullptr, false, 0));
    EXPECT_DOUBLE_EQ(read.m_width, 500);

    const std::string hostile =
        VxContainerHead() + "\r\n" + VxRawEntry("../../escaped.png", "x") +
        VxDeflatedEntry("..\\..\\inner.pvp", "[Room]\r\nWidth=321\r\nSkyBoxTop=escaped.png\r\n");
    ASSERT_TRUE(read.LoadFromFile(WriteFile("damaged/hostile.pvp", hostile), nullptr, nullptr, false, 0));
    EXPECT_DOUBLE_EQ(read.m_width, 321);
    EXPECT_EQ(QDir(read.m_storagePath.ToQString()).entryList(QDir::Files, QDir::Name),
              QStringList({"escaped.png", "inner.pvp"}));
}

TEST(ProjectFile, FailedOrKilledSavesLeaveThePreviousFile)
{
    CVxProject project;
    BuildHouse(project);
    const CVxStringW path = TempPath("safe/house.pvp");
    ASSERT_TRUE(project.SaveToFile(path, true, nullptr));
    const std::string before = ReadFile(path);

    // A big sound attachment keeps the save busy long enough to be killed.
    std::string noise(48 << 20, '\0');
    std::mt19937 random(7);
    for (char& c : noise)
        c = static_cast<char>(random());
    noise.replace(0, 12, "RIFF\x10\0\0\0WAVE", 12);
    project.m_attachments.m_items.push_back({WriteFile("safe/noise.wav", noise), {}, 0, 0, L""});
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0)
        _exit(project.SaveToFile(path, true, nullptr) ? 0 : 1);
    const QString temp = TempPath("safe/house.pvp.saving~").ToQString();
    for (int i = 0; i < 2000 && QFileInfo(temp).size() < (1 << 20); ++i)
        usleep(5000);
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "the save finished before it could be killed";
    EXPECT_TRUE(ReadFile(path) == before);

    // Folder permissions don't hold for root; a folder in the temporary
    // file's place, where the killed save left its remains, fails a save
    // for anyone.
    QFile::remove(temp);
    QDir().mkpath(temp);
    QFile::setPermissions(path.ExtractFileFolder().ToQString(), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_FALSE(project.SaveToFile(path, false, nullptr));
    QFile::setPermissions(path.ExtractFileFolder().ToQString(),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_TRUE(ReadFile(path) == before);
    CVxProject read;
    ASSERT_TRUE(read.LoadFromFile(path, nullptr, nullptr, false, 0));
    EXPECT_EQ(read.GetFloorCount(), 2);
}
