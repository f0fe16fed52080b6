// Library files that lie: counts and numbers no library has, sizes that are
// no numbers, pages that do not exist, containers that contain themselves.
// Each loads in bounded time and memory into objects the program can use.

#include "CVxUserLibrary.h"
#include "VxContainerTestUtil.h"
#include "VxLibraryTestUtil.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

CVxStringW HostileFile(const char* name, const std::string& bytes)
{
    return VxWriteLibFile(VxTestTempFolder() + L"hostile/" + CVxStringW(QString::fromLatin1(name)), bytes);
}

void ExpectUsable(const CVxPart& part)
{
    for (double value :
         {part.x, part.y, part.z, part.width, part.height, part.zHeight, part.thickness, part.rotation}) {
        EXPECT_TRUE(std::isfinite(value));
        EXPECT_LE(std::fabs(value), CVxUserLibrary::maxLength);
    }
    EXPECT_GE(part.libObjID, 0);
    EXPECT_LE(part.libObjID, CVxUserLibrary::maxLibObjID);
}

TEST(LibraryHostile, NumbersOutOfEveryRange)
{
    const std::string text =
        VxLibHead("Page99999=Far\r\nUniquePageName4294967296=Farther\r\nPage7x=Odd\r\nPage-1=Minus\r\n"
                  "Page255=Last\r\nUniquePageName255=LastPage\r\n") +
        VxLibPart(1, 2147483647, "Huge", "Width=1e308\r\nPosZ=-1e300\r\nRotation=1e300\r\nUserLibID=-7\r\n") +
        VxLibPart(2, 40, "NaN", "Width=nan\r\nHeight=inf\r\nZHeight=-nan\r\nThickness=1e400\r\n") +
        VxLibPart(3, -12, "Negative", "Library=Nowhere|Basic\r\n") +
        "\r\n[LibSetup]\r\nFileVersion=99999999999\r\nCompression=zlib\r\n";
    CVxUserLibrary library;
    ASSERT_TRUE(
        library.LoadFromFile(HostileFile("numbers.pvl", text), CVxUserLibrary::LIB_LOAD_USER_PAGES, -1));
    ASSERT_EQ(library.GetObjectCount(), 3);
    for (const CVxPart& part : library.GetObjects())
        ExpectUsable(part);
    EXPECT_EQ(library.SafeGetPart(0)->libObjID, 0);
    EXPECT_EQ(library.SafeGetPart(0)->userLibID, 0);
    // An unknown page name counts as the user library's page.
    EXPECT_EQ(library.SafeGetPart(2)->libraryMask, 3u);
    // Only page numbers in range make pages.
    ASSERT_EQ(library.GetPages().size(), 1u);
    EXPECT_EQ(library.GetPages()[0].id, CVxUserLibrary::maxPageIndex);
    EXPECT_EQ(library.GetPages()[0].uniqueName, CVxStringW(L"LastPage"));
}

TEST(LibraryHostile, AbsurdCountsCostNothing)
{
    std::string text = VxLibHead() + "\r\n[Part1]\r\nType=ComplexObject\r\nSubPartCount=2000000000\r\n";
    text += "\r\n[Part1.1]\r\nType=Rectangle\r\nSubPartCount=-5\r\n";
    text += "\r\n[Part2]\r\nType=Table\r\nSubType=65535\r\nSubPartCount=99999999\r\n";
    CVxUserLibrary library;
    ASSERT_TRUE(library.LoadFromFile(HostileFile("counts.pvl", text), 0, -1));
    EXPECT_GE(library.GetObjectCount(), 1);
    for (const CVxPart& part : library.GetObjects())
        ExpectUsable(part);

    // More objects than a library may hold: the rest are left out.
    std::string many = VxLibHead();
    for (int i = 1; i <= CVxUserLibrary::maxObjectsPerFile + 50; ++i)
        many += "[Part" + std::to_string(i) + "]\r\nType=Rectangle\r\n";
    CVxUserLibrary big;
    ASSERT_TRUE(big.LoadFromFile(HostileFile("many.pvl", many), 0, -1));
    EXPECT_EQ(big.GetObjectCount(), CVxUserLibrary::maxObjectsPerFile);
}

TEST(LibraryHostile, ContainersThatAreNoLibrary)
{
    const std::string head = "[LibSetup]\r\nFileVersion=1020\r\nCompression=zlib\r\n\r\n";
    // The inner file claims to be a container again: read once, not forever.
    const std::string inner = head + VxLibPart(1, 39, "Loop");
    CVxUserLibrary library;
    EXPECT_FALSE(
        library.LoadFromFile(HostileFile("loop.pvl", head + VxDeflatedEntry("inner.pvl", inner)), 0, -1));
    EXPECT_FALSE(
        library.LoadFromFile(HostileFile("nomain.pvl", head + VxRawEntry("picture.png", "xx")), 0, -1));
    EXPECT_FALSE(library.LoadFromFile(
        HostileFile("cut.pvl", head + "[File]\r\nName=a.pvl\r\nDataSize=999999\r\nab"), 0, -1));
    EXPECT_FALSE(library.LoadFromFile(HostileFile("empty.pvl", ""), 0, -1));
    EXPECT_FALSE(library.LoadFromFile(VxTestTempFolder() + L"hostile/absent.pvl", 0, -1));
    EXPECT_EQ(library.GetObjectCount(), 0);
    // A good inner file under an entry name with folders unpacks inside.
    EXPECT_TRUE(library.LoadFromFile(
        HostileFile("good.pvl", head + VxDeflatedEntry("../../x.pvl", VxLibHead() + VxLibPart(1, 39, "Ok"))),
        0, -1));
    EXPECT_EQ(library.GetObjectCount(), 1);
    library.RemoveTempFiles();

    // A container head behind objects changes nothing; those objects are
    // checked like any others.
    ASSERT_TRUE(library.LoadFromFile(
        HostileFile("late.pvl", VxLibPart(1, 39, "Early", "Width=1e300\r\n") + "\r\n" + head +
                                    VxDeflatedEntry("x.pvl", VxLibHead() + VxLibPart(1, 40, "Inner"))),
        0, -1));
    ASSERT_EQ(library.GetObjectCount(), 1);
    EXPECT_EQ(library.SafeGetPart(0)->caption, CVxStringW(L"Early"));
    ExpectUsable(*library.SafeGetPart(0));
    library.RemoveTempFiles();
}

} // namespace

namespace {

TEST(LibraryHostile, NewerFilesWarnAndReadAllTheSame)
{
    CVxYesHost host;
    const std::string text = "[LibSetup]\r\nFileVersion=2400\r\nFutureKey=1\r\n" + VxLibPart(1, 39, "Chair") +
                             "FutureObjectKey=7\r\n\r\n[FutureSection]\r\nA=1\r\n";
    CVxUserLibrary library;
    ASSERT_TRUE(library.LoadFromFile(HostileFile("newer.pvl", text), 0, -1));
    EXPECT_EQ(library.GetObjectCount(), 1);
    EXPECT_EQ(host.questions, 1);
    EXPECT_TRUE(
        host.lastQuestion.StartsWith(CVxStringW(L"The file was created using a higher version of Plaveno.")));
}

} // namespace
