// The object library: the standard catalogue, names by library number, new
// objects in the project's unit, the user's own library and its files.

#include "CVxUserLibrary.h"
#include "CVxAppCore.h"
#include "CVxLocalize.h"
#include "CVxProject.h"
#include "CVxQtDC.h"
#include "CVxUnits.h"
#include "VxLibraryTestUtil.h"
#include "VxTestEnv.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>

#include <gtest/gtest.h>

namespace {

int IndexOfLibObj(const CVxUserLibrary& library, int libObjID)
{
    return library.FindPartWithLibObjID(libObjID, false);
}

// Every test starts from the catalogue and an empty user library.
class LibraryTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QFile::remove((VxDocsFolder() + CVxUserLibrary::userFileName).ToQString());
        m_library = &VxInitLibraryFrom(VxCatalogueFolder());
        m_core = VX_GetCore();
        m_core->GetProject().m_unit = CVxUnits::UNIT_CM;
    }
    void TearDown() override { m_core->GetProject().m_unit = CVxUnits::UNIT_CM; }

    CVxAppCore* m_core = nullptr;
    CVxUserLibrary* m_library = nullptr;
};

TEST_F(LibraryTest, StandardCatalogueLoadsAllObjectsOnTheStandardPages)
{
    EXPECT_EQ(m_library->GetObjectCount(), 293);
    EXPECT_EQ(m_library->GetFirstUserObject(), 293);
    ASSERT_EQ(m_library->GetPages().size(), 15u);
    EXPECT_EQ(m_library->GetPages()[2].uniqueName, CVxStringW(L"Doors"));
    EXPECT_EQ(m_library->GetPages()[2].localName, CVxStringW(L"Doors and Windows"));
    EXPECT_EQ(m_library->GetPages()[13].localName, CVxStringW(L"Additional 3D Shapes"));
    for (int page = 1; page < CVxLibraryPage::standardPageCount; ++page) {
        int onPage = 0;
        for (const CVxPart& part : m_library->GetObjects())
            onPage += (part.libraryMask & (1u << page)) != 0;
        EXPECT_GT(onPage, 0) << "page " << page;
    }
    // Parts ask the loaded library for names, heights and page bits.
    EXPECT_EQ(CVxPart::GetLibrary()->GetLibObjName(39), CVxStringW(L"Chair"));
    EXPECT_DOUBLE_EQ(CVxPart::GetLibrary()->GetLibObjZHeight(39), 90);
    EXPECT_DOUBLE_EQ(CVxPart::GetLibrary()->GetLibObjZHeight(99999), -1);
    EXPECT_EQ(CVxPart::GetLibrary()->GetLibIDFromName(CVxStringW(L"Garden")), 11);
    EXPECT_EQ(CVxPart::TypeLocalNameFromID(ptLibraryObject, 39), CVxStringW(L"Chair"));
    EXPECT_EQ(m_core->FindLibPartPage(1 << 4, CVxStringW(L"Chairs")), 4);
    EXPECT_EQ(m_core->FindLibPartPage(1 << 4, CVxStringW(L"Tables")), -1);
}

TEST_F(LibraryTest, CompressedCatalogueReadsAsThePlainOne)
{
    const CVxStringW packed = VxTestTempFolder() + L"packed/Library.pvlz";
    QDir().mkpath(packed.ExtractFileFolder().ToQString());
    const int flags = CVxUserLibrary::LIB_LOAD_USER_PAGES | CVxUserLibrary::LIB_LOAD_STANDARD;
    CVxUserLibrary plain;
    ASSERT_TRUE(plain.LoadFromFile(VxCatalogueFolder() + CVxUserLibrary::standardFileName, flags, -1));
    ASSERT_TRUE(plain.SaveToFile(packed, -1, true));
    EXPECT_EQ(VxReadBytes(packed).rfind("[LibSetup]\r\nFileVersion=1020", 0), 0u);

    // Beside the program the compressed copy wins; the program reads it
    // into the same objects on the same pages.
    CVxUserLibrary& loaded = VxInitLibraryFrom(packed.ExtractFileFolder());
    EXPECT_TRUE(loaded.GetFileName().EndsWith(CVxStringW(L"Library.pvlz")));
    EXPECT_TRUE(loaded.WasCompressed());
    ASSERT_EQ(loaded.GetObjectCount(), 293);
    for (int i = 0; i < 293; ++i) {
        const CVxPart& a = plain.GetObjects()[static_cast<size_t>(i)];
        const CVxPart& b = loaded.GetObjects()[static_cast<size_t>(i)];
        EXPECT_EQ(a.libObjID, b.libObjID) << i;
        EXPECT_EQ(a.libraryMask, b.libraryMask) << i;
        EXPECT_EQ(a.subParts.size(), b.subParts.size()) << i;
        EXPECT_DOUBLE_EQ(a.width, b.width) << i;
        EXPECT_DOUBLE_EQ(a.rotation, b.rotation) << i;
    }
    loaded.RemoveTempFiles();
    plain.RemoveTempFiles();
}

TEST_F(LibraryTest, NameReferencesResolveInEveryLanguage)
{
    const CVxStringW folder = VxTestTempFolder() + L"refs/";
    VxWriteLibFile(folder + L"Library.pvl",
                   VxLibHead() + VxLibPart(1, 12, "Armchair") + VxLibPart(2, 13, "@12 large") +
                       VxLibPart(3, 14, "@13 with cushion") + VxLibPart(4, 15, "@15 self") +
                       VxLibPart(5, 16, "@999 missing") + VxLibPart(6, 17, "@18 a") +
                       VxLibPart(7, 18, "@17 b") + VxLibPart(8, 19, "@12"));
    CVxUserLibrary& library = VxInitLibraryFrom(folder);
    ASSERT_EQ(library.GetObjectCount(), 8);
    EXPECT_EQ(m_core->GetLibObjName(13), CVxStringW(L"Armchair large"));
    EXPECT_EQ(m_core->GetLibObjName(14), CVxStringW(L"Armchair large with cushion"));
    EXPECT_EQ(m_core->GetLibObjName(19), CVxStringW(L"Armchair"));
    // Broken references end, showing the file's text.
    EXPECT_EQ(m_core->GetLibObjName(15), CVxStringW(L"@15 self"));
    EXPECT_EQ(m_core->GetLibObjName(16), CVxStringW(L"@999 missing"));
    EXPECT_EQ(m_core->GetLibObjName(17), CVxStringW(L"@18 a"));
    EXPECT_EQ(library.SafeGetPart(1)->caption, CVxStringW(L"Armchair large"));

    // A language file names only the base object.
    const CVxStringW language = VxWriteLibFile(VxTestTempFolder() + L"lang/plv_xx.txt",
                                               "[Main]\r\nLanguage=Test\r\nLanguageID=1031;de\r\nEncoding="
                                               "utf-8\r\n\r\n[Library]\r\nItem12=Sessel\r\n");
    CVxLocalize* loc = VX_GetLoc();
    ASSERT_TRUE(loc->InitWithLanguageFile(language));
    ASSERT_TRUE(loc->SelectLanguage(0));
    m_core->LocalizeLibrary();
    EXPECT_EQ(m_core->GetLibObjName(12), CVxStringW(L"Sessel"));
    EXPECT_EQ(m_core->GetLibObjName(13), CVxStringW(L"Sessel large"));
    EXPECT_EQ(library.SafeGetPart(2)->caption, CVxStringW(L"Sessel large with cushion"));
    loc->Init(CVxStringW());
    m_core->LocalizeLibrary();
    EXPECT_EQ(m_core->GetLibObjName(13), CVxStringW(L"Armchair large"));
}

// A catalogue object left out of a language file shows its English name
// among pages of translated names.
TEST_F(LibraryTest, GermanFileNamesEveryCatalogueObject)
{
    CVxUserLibrary catalogue;
    ASSERT_TRUE(catalogue.LoadFromFile(VxCatalogueFolder() + CVxUserLibrary::standardFileName,
                                       CVxUserLibrary::LIB_LOAD_STANDARD, -1));
    CVxLocalize* loc = VX_GetLoc();
    loc->Init(VxCatalogueFolder() + L"Language");
    ASSERT_TRUE(loc->SelectLanguageID(1031));
    const int table = loc->GetTableIndex(CVxLocalize::TBL_LIBRARY);
    int named = 0;
    for (const CVxPart& part : catalogue.GetObjects()) {
        // References take their base object's name.
        if (part.libObjID <= 0 || part.caption.GetAt(0) == L'@')
            continue;
        // An empty row reads as none.
        CVxStringW german;
        EXPECT_TRUE(loc->LocalizeDlgStringEx(table, part.libObjID, german)) << part.libObjID;
        ++named;
    }
    EXPECT_GT(named, 250);
    m_core->LocalizeLibrary();
    EXPECT_EQ(m_core->GetLibObjName(56), CVxStringW(L"Doppelbett"));
    EXPECT_EQ(m_core->GetLibObjName(1101), CVxStringW(L"Dozamo Kleiderschrank"));
    EXPECT_EQ(m_library->SafeGetPart(IndexOfLibObj(*m_library, 52))->caption, CVxStringW(L"Couchtisch"));
    loc->Init(CVxStringW());
    m_core->LocalizeLibrary();
}

TEST_F(LibraryTest, NewObjectsTakeTheProjectUnit)
{
    const int chair = IndexOfLibObj(*m_library, 39);
    ASSERT_GE(chair, 0);
    CVxPart part;
    ASSERT_TRUE(m_core->LibWriteToPart(&part, chair));
    EXPECT_DOUBLE_EQ(part.width, 45);
    EXPECT_DOUBLE_EQ(part.height, 50);
    EXPECT_DOUBLE_EQ(part.zHeight, 90);
    EXPECT_EQ(part.caption, CVxStringW(L"Chair"));

    // Inches: each size rounded up to whole inches; 254 cm stays 100 in.
    m_core->GetProject().m_unit = CVxUnits::UNIT_INCH;
    ASSERT_TRUE(m_core->LibWriteToPart(&part, chair));
    EXPECT_DOUBLE_EQ(part.width, 18);
    EXPECT_DOUBLE_EQ(part.height, 20);
    EXPECT_DOUBLE_EQ(part.zHeight, 36);
    CVxPart tall = *m_library->SafeGetPart(chair);
    tall.width = 100;
    // Given in inches, kept in centimetres.
    EXPECT_GE(m_core->LibAddObjectToUserLibrary(tall, 0), 0);
    EXPECT_DOUBLE_EQ(m_library->SafeGetPart(m_library->GetSlotCount() - 1)->width, 254);
    ASSERT_TRUE(m_core->LibWriteToPart(&part, m_library->GetSlotCount() - 1));
    EXPECT_DOUBLE_EQ(part.width, 100);

    // Basic shapes keep their numbers in any unit.
    const int rectangle = 0;
    ASSERT_NE(m_library->SafeGetPart(rectangle)->libraryMask & 2u, 0u);
    ASSERT_TRUE(m_core->LibWriteToPart(&part, rectangle));
    EXPECT_DOUBLE_EQ(part.width, 100);
    EXPECT_FALSE(m_core->LibWriteToPart(&part, 100000));
}

TEST_F(LibraryTest, AutomaticCaptionsOfMeasuringObjects)
{
    for (const CVxPart& source : m_library->GetObjects()) {
        if (source.type != ptMeasLine && source.type != ptEnergyLabel)
            continue;
        CVxPart part;
        ASSERT_TRUE(
            m_core->LibWriteToPart(&part, static_cast<int>(&source - m_library->GetObjects().data())));
        EXPECT_EQ(part.caption, CVxStringW(source.type == ptMeasLine ? L"~" : L"A;<B;C;D;E;F;G"));
    }
}

TEST_F(LibraryTest, UserLibraryRoundTrip)
{
    CVxYesHost host;
    const int chair = IndexOfLibObj(*m_library, 39);
    const int door = IndexOfLibObj(*m_library, 195);
    ASSERT_GE(chair, 0);
    ASSERT_GE(door, 0);
    CVxPart mine = *m_library->SafeGetPart(chair);
    mine.caption = L"Desk chair";
    mine.libObjID = 0;
    mine.rotation = 45;
    CVxPart myDoor = *m_library->SafeGetPart(door);
    myDoor.caption = L"Back door";
    myDoor.rotation = 90;
    CVxPart third = mine;
    third.caption = L"Stool";
    const int a = m_core->LibAddObjectToUserLibrary(mine, 0);
    const int b = m_core->LibAddObjectToUserLibrary(myDoor, 0);
    const int c = m_core->LibAddObjectToUserLibrary(third, 0);
    ASSERT_EQ(a, 293);
    ASSERT_EQ(c, 295);
    EXPECT_GT(host.rebuilds, 0);

    EXPECT_TRUE(m_core->LibRenameObject(a, CVxStringW(L"Office chair")));
    EXPECT_EQ(host.questions, 0);
    // Moving the stool before the chair shifts the others one on.
    EXPECT_TRUE(m_core->LibReorderObjectToPos(c, a, false));
    EXPECT_FALSE(m_core->LibReorderObjectToPos(a, a, false));
    EXPECT_FALSE(m_core->LibReorderObjectToPos(0, a, false));
    EXPECT_TRUE(m_core->LibRemoveObject(b + 1));
    EXPECT_EQ(host.questions, 1);
    // Standard objects are not the user's to remove.
    EXPECT_FALSE(m_core->LibRemoveObject(chair));

    // What is in the file comes back in the same order.
    ASSERT_TRUE(QFileInfo::exists((VxDocsFolder() + CVxUserLibrary::userFileName).ToQString()));
    ASSERT_TRUE(m_library->ReloadUserLibrary());
    ASSERT_EQ(m_library->GetObjectCount(), 295);
    EXPECT_EQ(m_library->SafeGetPart(293)->caption, CVxStringW(L"Stool"));
    EXPECT_EQ(m_library->SafeGetPart(294)->caption, CVxStringW(L"Office chair"));
    EXPECT_DOUBLE_EQ(m_library->SafeGetPart(294)->width, 45);
    EXPECT_DOUBLE_EQ(m_library->SafeGetPart(294)->rotation, 0);

    // A rename onto a taken name asks, and the other object goes.
    EXPECT_TRUE(m_core->LibRenameObject(294, CVxStringW(L"Stool")));
    EXPECT_EQ(host.questions, 2);
    ASSERT_TRUE(m_library->ReloadUserLibrary());
    EXPECT_EQ(m_library->GetObjectCount(), 294);

    // A door's turn says which way it opens and survives the file.
    ASSERT_GE(m_core->LibAddObjectToUserLibrary(myDoor, 0), 0);
    ASSERT_TRUE(m_library->ReloadUserLibrary());
    EXPECT_DOUBLE_EQ(m_library->SafeGetPart(m_library->GetSlotCount() - 1)->rotation, 90);

    // The answer no leaves everything.
    host.answer = VX_MBR_NO;
    EXPECT_FALSE(m_core->LibRemoveObject(293));
    EXPECT_TRUE(m_library->SafeGetPart(293)->inUse);
}

TEST_F(LibraryTest, InterruptedSaveLeavesTheOldFileWhole)
{
    CVxPart mine = *m_library->SafeGetPart(IndexOfLibObj(*m_library, 39));
    mine.caption = L"Kept";
    ASSERT_GE(m_core->LibAddObjectToUserLibrary(mine, 0), 0);
    const CVxStringW file = VxDocsFolder() + CVxUserLibrary::userFileName;
    const std::string before = VxReadBytes(file);
    ASSERT_FALSE(before.empty());

    // The temporary can't be made: a folder stands in its place.
    const QString blocker = (file + L".saving~").ToQString();
    QDir().mkpath(blocker + "/inside");
    m_library->SafeGetPart(293)->caption = L"Changed";
    EXPECT_FALSE(m_library->SaveUserLibrary());
    EXPECT_EQ(VxReadBytes(file), before);
    QDir(blocker).removeRecursively();

    // A save killed half-way left a torn temporary; the next one goes on.
    VxWriteLibFile(file + L".saving~", "[LibSetup]\r\nFileVers");
    ASSERT_TRUE(m_library->ReloadUserLibrary());
    EXPECT_EQ(m_library->SafeGetPart(293)->caption, CVxStringW(L"Kept"));
    EXPECT_TRUE(m_library->SaveUserLibrary());
    EXPECT_FALSE(QFileInfo::exists(blocker));
}

TEST_F(LibraryTest, UserLibraryMovesFromAnOlderPlace)
{
    CVxPart mine = *m_library->SafeGetPart(IndexOfLibObj(*m_library, 39));
    mine.caption = L"Moved";
    mine.libObjID = 0;
    ASSERT_GE(m_core->LibAddObjectToUserLibrary(mine, 0), 0);
    const CVxStringW file = VxDocsFolder() + CVxUserLibrary::userFileName;
    const CVxStringW program = VxTestTempFolder() + L"oldprogram/";
    QDir().mkpath(program.ToQString());
    QFile::copy((VxCatalogueFolder() + L"Library.pvl").ToQString(), (program + L"Library.pvl").ToQString());
    ASSERT_TRUE(QFile::rename(file.ToQString(), (program + L"catalog.msk").ToQString()));

    CVxUserLibrary& library = VxInitLibraryFrom(program);
    EXPECT_TRUE(QFileInfo::exists(file.ToQString()));
    EXPECT_FALSE(QFileInfo::exists((program + L"catalog.msk").ToQString()));
    ASSERT_EQ(library.GetObjectCount(), 294);
    EXPECT_EQ(library.SafeGetPart(293)->caption, CVxStringW(L"Moved"));
}

TEST_F(LibraryTest, SingleObjectFilesTravelBetweenLibraries)
{
    const int chair = IndexOfLibObj(*m_library, 39);
    const CVxStringW path = VxTestTempFolder() + L"export/chair";
    QDir().mkpath(path.ExtractFileFolder().ToQString());
    ASSERT_TRUE(m_core->LibExportObject(chair, path));
    const CVxStringW file = path + L".pvo";
    ASSERT_TRUE(QFileInfo::exists(file.ToQString()));

    // An ordinary project: a 500 by 500 room with the chair in its middle.
    CVxProject project;
    ASSERT_TRUE(project.LoadFromFile(file, nullptr, nullptr, false, 0));
    EXPECT_DOUBLE_EQ(project.m_width, 500);
    EXPECT_DOUBLE_EQ(project.m_height, 500);
    ASSERT_EQ(project.GetFloor()->CountUsedObjects(), 1);
    const CVxPart& placed = project.GetFloor()->m_objects.front();
    EXPECT_DOUBLE_EQ(placed.x, (500 - 45) / 2.0);
    EXPECT_DOUBLE_EQ(placed.y, (500 - 50) / 2.0);
    project.RemoveTempFiles();

    const int imported = m_core->LibImportObject(file, 0);
    ASSERT_EQ(imported, 293);
    const CVxPart* back = m_library->SafeGetPart(imported);
    EXPECT_EQ(back->libObjID, 39);
    EXPECT_DOUBLE_EQ(back->width, 45);
    EXPECT_DOUBLE_EQ(back->x, 0);
    EXPECT_TRUE(m_library->IsUserObject(imported));
}

TEST_F(LibraryTest, FilesThatAreNoLibraryObjectAreRefused)
{
    const int before = m_library->GetObjectCount();
    const CVxStringW folder = VxTestTempFolder() + L"notobjects/";
    EXPECT_EQ(m_core->LibImportObject(VxWriteLibFile(folder + L"text.pvo", "hello, no object here\n"), 0),
              -1);
    EXPECT_EQ(m_core->LibImportObject(VxWriteLibFile(folder + L"empty.pvo", ""), 0), -1);
    EXPECT_EQ(m_core->LibImportObject(
                  VxWriteLibFile(folder + L"library.pvo", VxLibHead() + VxLibPart(1, 39, "x")), 0),
              -1);
    // A project with no object in it.
    CVxProject empty;
    ASSERT_TRUE(empty.SaveToFile(folder + L"room.pvo", true, nullptr));
    empty.RemoveTempFiles();
    EXPECT_EQ(m_core->LibImportObject(folder + L"room.pvo", 0), -1);
    EXPECT_EQ(m_core->LibImportObject(folder + L"absent.pvo", 0), -1);
    EXPECT_EQ(m_library->GetObjectCount(), before);
}

TEST_F(LibraryTest, ThumbnailsShowTheObjects)
{
    int drawn = 0;
    for (int libObjID : {39, 195, 26, 72}) {
        const int index = IndexOfLibObj(*m_library, libObjID);
        ASSERT_GE(index, 0);
        CVxPart part = *m_library->SafeGetPart(index);
        QImage image;
        {
            CVxQtDC dc(96, 96, true);
            dc.SelectPen(CVxDC::penNull, 0, 0);
            dc.SelectBrush(CVxDC::brushSolid, 0xFFFFFF);
            dc.Rectangle(0, 0, 97, 97);
            dc.SelectOldBrush();
            dc.SelectOldPen();
            m_core->LibDrawObjectThumb(&dc, &part, true, 0, 0, 96, 96);
            image = dc.GetImage()->copy();
        }
        int dark = 0;
        int left = 96, right = -1;
        for (int y = 0; y < 96; ++y) {
            for (int x = 0; x < 96; ++x) {
                if (qGray(image.pixel(x, y)) < 200) {
                    ++dark;
                    left = std::min(left, x);
                    right = std::max(right, x);
                }
            }
        }
        EXPECT_GT(dark, 100) << libObjID;
        // Fitted: the symbol spans most of the box and stays inside it.
        EXPECT_LT(right - left, 96) << libObjID;
        EXPECT_GT(right - left, 40) << libObjID;
        if (libObjID == 39 && !qEnvironmentVariableIsEmpty("PLAVENO_THUMB_PNG"))
            image.save(qEnvironmentVariable("PLAVENO_THUMB_PNG"));
        ++drawn;
    }
    EXPECT_EQ(drawn, 4);
}

TEST_F(LibraryTest, ThumbnailsOf3DObjectsShowTheirPlanPicture)
{
    const QString png = (VxTestTempFolder() + L"pictures/chair3d.png").ToQString();
    QDir().mkpath(QFileInfo(png).path());
    QImage red(40, 20, QImage::Format_RGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(png));
    CVxPart part = *m_library->SafeGetPart(IndexOfLibObj(*m_library, 39));
    part.lib3DImgPng = CVxStringW(png);
    for (bool show3D : {true, false}) {
        CVxQtDC dc(96, 96, true);
        m_core->LibDrawObjectThumb(&dc, &part, show3D, 0, 0, 96, 96);
        const QImage image = dc.GetImage()->copy();
        // The picture keeps its shape: 96 by 48 in the middle.
        EXPECT_EQ(image.pixelColor(48, 48) == QColor(Qt::red), show3D);
        EXPECT_NE(image.pixelColor(48, 10), QColor(Qt::red));
    }
    EXPECT_NE(m_core->FindLib3DImage(CVxStringW(png)), nullptr);
    EXPECT_EQ(m_core->FindLib3DImage(CVxStringW(png + ".missing")), nullptr);
}

TEST_F(LibraryTest, ViewCaptionShowsTheSizeInTheProjectUnit)
{
    const CVxPart* chair = m_library->SafeGetPart(IndexOfLibObj(*m_library, 39));
    EXPECT_EQ(m_core->LibGetPartViewCaption(chair, false, false), CVxStringW(L"Chair"));
    m_core->GetProject().m_unit = CVxUnits::UNIT_INCH;
    const CVxStringW text = m_core->LibGetPartViewCaption(chair, true, true);
    EXPECT_TRUE(text.StartsWith(CVxStringW(L"Chair\n18 x 20 x 36"))) << text.ToQString().toStdString();
}

} // namespace

TEST_F(LibraryTest, AdditionalLibrariesAreCopiedSwitchedOffAndRemoved)
{
    CVxYesHost host;
    const int standard = m_library->GetObjectCount();
    const CVxStringW folder = CVxUserLibrary::GetAdditionalLibraryFolder();
    QDir(folder.ToQString()).removeRecursively();
    const CVxStringW source =
        VxWriteLibFile(VxTestTempFolder() + L"downloads/Garden extras.pvl",
                       VxLibHead() + VxLibPart(1, 40, "Bench") + VxLibPart(2, 41, "Pot"));
    CVxStringW error;
    // Not a library, and not a file at all: nothing is copied.
    EXPECT_FALSE(m_core->LibAddAdditionalLibrary(
        VxWriteLibFile(VxTestTempFolder() + L"downloads/notes.pvl", "shopping list"), &error));
    EXPECT_FALSE(error.IsEmpty());
    EXPECT_FALSE(m_core->LibAddAdditionalLibrary(VxTestTempFolder() + L"downloads", &error));
    EXPECT_TRUE(QDir(folder.ToQString()).entryList(QDir::Files).isEmpty());

    ASSERT_TRUE(m_core->LibAddAdditionalLibrary(source, &error));
    ASSERT_TRUE(m_core->LibAddAdditionalLibrary(source, &error));
    // Two copies under free names, both loaded, and kept at the next start.
    EXPECT_EQ(QDir(folder.ToQString()).entryList(QDir::Files).size(), 2);
    EXPECT_EQ(m_core->GetUserLibrary().GetObjectCount(), standard + 4);
    m_core->LibInitObjectLibrary();
    EXPECT_EQ(m_core->GetUserLibrary().GetObjectCount(), standard + 4);

    ASSERT_TRUE(m_core->LibSetAdditionalLibraryEnabled(0, false));
    EXPECT_EQ(m_core->GetUserLibrary().GetObjectCount(), standard + 2);
    ASSERT_TRUE(m_core->LibRemoveAdditionalLibrary(1));
    EXPECT_EQ(m_core->GetUserLibrary().GetObjectCount(), standard);
    EXPECT_EQ(QDir(folder.ToQString()).entryList(QDir::Files).size(), 1);
    EXPECT_TRUE(QFileInfo::exists(source.ToQString()));
    ASSERT_TRUE(m_core->LibRemoveAdditionalLibrary(0));
    EXPECT_TRUE(QDir(folder.ToQString()).entryList(QDir::Files).isEmpty());
}
