#include "CVxFont.h"
#include "CVxIniFileReader.h"
#include "CVxOptions.h"
#include "CVxPart.h"
#include "CVxPartPayload.h"
#include "CVxPartVectorGrouper.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"
#include "CVxUnits.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

CVxStringA SaveText(const CVxPart& part, bool forLibrary = false)
{
    CVxStringWriter writer;
    part.SaveToFile(&writer, "Part1", forLibrary, nullptr);
    return writer.GetString();
}

// Every "Part..." section of the text through the grouper, as a floor reads.
std::vector<CVxPart> LoadText(const CVxStringA& text, int version = 1020, int unit = 1, int kind = 0)
{
    CVxStringReader reader(text, 65001);
    reader.SetProjectVersion(version);
    reader.SetUnit(unit);
    reader.SetReaderKind(kind);
    std::vector<CVxPart> parts;
    CVxPartVectorGrouper grouper(parts);
    reader.Start();
    while (!reader.GetSectionName().IsEmpty()) {
        if (reader.GetSectionName().StartsWith("Part")) {
            CVxPart part;
            part.LoadFromSection(&reader);
            grouper.Add(std::move(part), version);
        } else {
            reader.ReadSection(nullptr);
        }
    }
    grouper.Finalize();
    return parts;
}

CVxPart LoadOne(const char* keys, int version = 1020, int unit = 1, int kind = 0)
{
    const std::vector<CVxPart> parts = LoadText(CVxStringA("[Part1]\r\n") + keys, version, unit, kind);
    return parts.empty() ? CVxPart() : parts[0];
}

// The keys of one section, in file order.
std::vector<std::string> KeysOf(const CVxStringA& text, const char* section)
{
    struct CCollector : IVxReadIniClient
    {
        void OnReadIniValue(const CVxStringA& key, const CVxStringW&, CVxIniFileReader*) override
        {
            keys.push_back(key.c_str());
        }
        std::vector<std::string> keys;
    } collector;
    CVxStringReader reader(text, 65001);
    reader.Start();
    while (!reader.GetSectionName().IsEmpty())
        reader.ReadSection(reader.GetSectionName() == section ? &collector : nullptr);
    return collector.keys;
}

bool Has(const std::vector<std::string>& keys, const char* key)
{
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

CVxPart Plain(int type)
{
    CVxPart part;
    part.type = static_cast<uint16_t>(type);
    part.lineColor = 0;
    part.textColor = 0;
    part.fillStyle = 0;
    part.inUse = true;
    return part;
}

// A part with every field away from its default that its type keeps.
CVxPart Rich(int type)
{
    CVxPart part = Plain(type);
    part.caption = L"Two\r\nlines";
    part.x = 12.5;
    part.y = -7.25;
    part.z = 3;
    part.width = 90;
    part.height = 12;
    part.zHeight = 210;
    part.rotation = 33;
    part.rotation3D = 12;
    part.angle = 45;
    part.CreateFont()->m_size = 14;
    part.subType = 3;
    part.handleType = 2;
    part.doorframe = true;
    part.thickness = 4.5;
    part.lineColor = 0x0000FF;
    part.textColor = 0x00FF00;
    part.fillStyle = 3;
    part.emissive = 40;
    part.specular = 0x202020;
    part.shininess = 55;
    part.appearFill = CVxAppearance(0x3366AA);
    part.appearFill.SetTexture(L"/textures/oak.jpg");
    part.frontColorEnable = true;
    part.appearFront = CVxAppearance(0x101010);
    part.lineStyle = lsDashDot;
    part.lineEnds = 3;
    part.lineThick = 2.5f;
    part.locked = CVxPart::ctxLockSize;
    part.unlockPassword = L"secret";
    part.layer = 2;
    part.snapToWall = true;
    part.wallRotation = 90;
    part.fileLink = L"https://example.org/";
    part.soundClip = L"/sounds/bell.wav";
    part.appTag = 4;
    part.opened = false;
    part.overlayTexture = L"/textures/overlay.png";
    part.price = 199;
    part.customID = L"A-17";
    part.comment = L"note\r\nmore";
    part.libObjID = 900;
    part.lib3DImgIdx = 4;
    part.lib3DImgPng = L"/images/plan.png";
    part.wrlProto = L"/models/chair.wrl";
    part.wrlPrototype = L"Chair";
    part.wrlProtoStd = true;
    part.wrlProtoWidth = 2;
    part.wrlProtoOffZ = 0.5f;
    part.wrl3dAsBillboard = true;
    part.specificDisability = CVxPart::disable3D;
    part.snapRegion = 3;
    part.polygon.LoadFromString(CVxStringW(L"3|0|0;0|1000;0|0;1000|"));
    if (type == ptComplexObject) {
        part.groupID = 5;
        part.subParts.push_back(Plain(ptRectangle));
        part.subParts.push_back(Plain(ptCircle));
        part.subParts.back().lineColor = 0x00FFFF;
        // A member group that shares the group's colour.
        part.subParts.push_back(Plain(ptComplexObject));
        part.subParts.back().lineColor = part.lineColor;
        part.subParts.back().subParts.push_back(Plain(ptTriangle));
        part.SetPropertiesToSubParts();
    }
    if (type == ptTable) {
        part.subType = 0;
        part.SetTableRowsCols(2, 3);
        part.subParts[4].caption = L"cell";
        part.subParts[4].textColor = 0x777777;
    }
    return part;
}

} // namespace

TEST(PartFile, EveryTypeSurvivesARoundTrip)
{
    for (int type = 0; type < ptTypeCount; ++type) {
        SCOPED_TRACE(CVxPart::TypeNameFromID(type).ToQString().toStdString());
        const CVxPart part = Rich(type);
        const CVxStringA saved = SaveText(part);
        const std::vector<CVxPart> loaded = LoadText(saved);
        ASSERT_EQ(1u, loaded.size());
        EXPECT_EQ(saved, SaveText(loaded[0]));
        EXPECT_EQ(type, loaded[0].type);
        EXPECT_EQ(part.caption, loaded[0].caption);
        EXPECT_EQ(part.comment, loaded[0].comment);
        EXPECT_EQ(part.subParts.size(), loaded[0].subParts.size());
        EXPECT_TRUE(loaded[0].inUse);
    }
}

TEST(PartFile, GroupsKeepTheirMembersValuesThroughAFile)
{
    const CVxPart group = Rich(ptComplexObject);
    const CVxPart loaded = LoadText(SaveText(group))[0];
    ASSERT_EQ(3u, loaded.subParts.size());
    EXPECT_EQ(0x0000FFu, loaded.subParts[0].lineColor);
    EXPECT_EQ(0x00FFFFu, loaded.subParts[1].lineColor);
    EXPECT_EQ(0x0000FFu, loaded.subParts[2].lineColor);
    EXPECT_EQ(0x0000FFu, loaded.subParts[2].subParts[0].lineColor);
    EXPECT_EQ(group.appearFill, loaded.subParts[0].appearFill);
    EXPECT_EQ(loaded.lineColor, loaded.baseLineColor);
    EXPECT_EQ(5, loaded.subParts[1].groupID);

    const std::vector<std::string> member = KeysOf(SaveText(group), "Part1.1");
    EXPECT_FALSE(Has(member, "LineColor"));
    EXPECT_FALSE(Has(member, "Layer"));
    EXPECT_TRUE(Has(member, "GroupID"));
    EXPECT_TRUE(Has(KeysOf(SaveText(group), "Part1.2"), "LineColor"));
    EXPECT_FALSE(KeysOf(SaveText(group), "Part1.3.1").empty());

    // A group without a number can't mark its members; they keep their
    // values all the same.
    CVxPart unnumbered = group;
    unnumbered.groupID = 0;
    const CVxPart reloaded = LoadText(SaveText(unnumbered))[0];
    EXPECT_EQ(0x0000FFu, reloaded.subParts[0].lineColor);
    EXPECT_EQ(0x0000FFu, reloaded.subParts[2].subParts[0].lineColor);
}

TEST(PartFile, KeysAreWrittenInOrderAndOnlyWhenNeeded)
{
    const std::vector<std::string> plain = KeysOf(SaveText(Plain(ptRectangle)), "Part1");
    const std::vector<std::string> expected = {
        "Type", "Width",      "Height",   "ZHeight",   "PosX",           "PosY",     "Rotation",
        "PosZ", "AppearFill", "FileLink", "SoundClip", "OverlayTexture", "CustomID", "Comment"};
    EXPECT_EQ(expected, plain);

    CVxPart part = Plain(ptRectangle);
    part.rotation3D = 5e-8;
    part.lib3DImgPng = L"/images/plan.png";
    part.userLibID = 3;
    part.groupID = 7;
    EXPECT_EQ(expected, KeysOf(SaveText(part), "Part1"));
    part.rotation3D = 1e-6;
    part.lib3DImgIdx = 2;
    const std::vector<std::string> library = KeysOf(SaveText(part, true), "Part1");
    EXPECT_FALSE(Has(library, "PosX"));
    EXPECT_FALSE(Has(library, "Rotation"));
    EXPECT_TRUE(Has(library, "PosZ"));
    EXPECT_TRUE(Has(library, "Rotation3D"));
    EXPECT_TRUE(Has(library, "UserLibID"));
    EXPECT_TRUE(Has(library, "Lib3DImgPng"));
    EXPECT_FALSE(Has(library, "GroupID"));

    const std::vector<std::string> door = KeysOf(SaveText(Plain(ptDoor)), "Part1");
    EXPECT_TRUE(Has(door, "HandleType"));
    EXPECT_TRUE(Has(door, "Opened"));
    EXPECT_FALSE(Has(door, "LineEnds"));
    EXPECT_TRUE(Has(KeysOf(SaveText(Plain(ptMeasLine)), "Part1"), "LineEnds"));
    EXPECT_TRUE(Has(KeysOf(SaveText(Plain(ptAngle)), "Part1"), "Angle"));
    const std::vector<std::string> emptyGroup = KeysOf(SaveText(Plain(ptComplexObject)), "Part1");
    EXPECT_TRUE(Has(emptyGroup, "SubPartCount"));
    EXPECT_FALSE(Has(emptyGroup, "GroupID"));
}

TEST(PartFile, DamagedNumbersAreRepaired)
{
    const CVxPart part = LoadOne("Width=2e11\r\nHeight=-3e11\r\nPosX=nan\r\nPosY=1e300\r\nZHeight=inf\r\n"
                                 "Rotation=abc\r\nType=Wardrobe\r\nLineThick=1e300\r\n");
    EXPECT_EQ(100, part.width);
    EXPECT_EQ(100, part.height);
    EXPECT_EQ(100, part.x);
    EXPECT_EQ(100, part.y);
    EXPECT_EQ(100, part.zHeight);
    EXPECT_EQ(0, part.rotation);
    EXPECT_EQ(ptRectangle, part.type);
    EXPECT_EQ(1.0f, part.lineThick);
    EXPECT_EQ(1u, part.libraryMask);
}

TEST(PartFile, APayloadOfAnUnknownClassIsWrittenBackAsItCame)
{
    const char* payload = "Stairs:Steps=14|Rise=17.5|Landing=1";
    const CVxPart part = LoadOne((CVxStringA("Width=120\r\nPayload=") + payload + "\r\n").c_str());
    EXPECT_EQ(part.GetPayload(), nullptr);
    // Through a copy and a second file, as saving an opened project does.
    const CVxPart copy = part;
    const std::vector<CVxPart> reread = LoadText(SaveText(copy));
    ASSERT_EQ(reread.size(), 1u);
    const CVxPart& again = reread[0];
    const std::vector<std::string> keys = KeysOf(SaveText(again), "Part1");
    EXPECT_TRUE(Has(keys, "Payload"));
    EXPECT_NE(SaveText(again).Find(CVxStringA("Payload=") + payload), -1);
    CVxPart reset = again;
    reset.Reset();
    EXPECT_FALSE(Has(KeysOf(SaveText(reset), "Part1"), "Payload"));
}

TEST(PartFile, StairsGetTheirPayloadAndADamagedOneItsDefaults)
{
    CVxPartPayload::RegisterBuiltinClasses();
    const CVxPart stairs = LoadOne("Type=LibraryObject\r\nLibObjID=65\r\nPayload=StairsPayload:12|\r\n");
    ASSERT_NE(stairs.GetPayload(), nullptr);
    const CVxPart copy = stairs;
    EXPECT_NE(SaveText(copy).Find("Payload=StairsPayload:12|\r\n"), -1);
    // A known class whose text can't be read: the part makes a default one.
    const CVxPart damaged = LoadOne("Type=LibraryObject\r\nLibObjID=65\r\nPayload=StairsPayload:x|\r\n");
    ASSERT_NE(damaged.GetPayload(), nullptr);
    EXPECT_NE(SaveText(damaged).Find("Payload=StairsPayload:10|\r\n"), -1);
    // Without a payload in the file a stairs object still gets one.
    const CVxPart plain = LoadOne("Type=LibraryObject\r\nLibObjID=162\r\n");
    ASSERT_NE(plain.GetPayload(), nullptr);
    EXPECT_EQ(plain.GetPayload()->GetClassName(), CVxStringW(L"BanisterStairsPayload"));
}

TEST(PartFile, MissingValuesTakeDefaults)
{
    const CVxOptions* options = VX_GetOptions();
    const CVxPart plain = LoadOne("Type=Rectangle\r\n");
    EXPECT_EQ(0u, plain.lineColor);
    EXPECT_EQ(options->m_defFillColor, plain.GetFillColor());
    EXPECT_EQ(20u, plain.shininess);
    const CVxPart standard =
        LoadOne("Type=Rectangle\r\n", 1020, 1, CVxIniFileReader::VX_READER_STANDARD_LIBRARY);
    EXPECT_EQ(options->m_defLineColor, standard.lineColor);
    EXPECT_EQ(options->m_defFillStyle, standard.fillStyle);

    EXPECT_EQ(195, LoadOne("Type=Door\r\nZHeight=-1\r\n").zHeight);
    EXPECT_EQ(130, LoadOne("Type=Window\r\nZHeight=-1\r\n").zHeight);
    struct CLibrary : IVxPartLibrary
    {
        double GetLibObjZHeight(int libId) const override { return libId == 21 ? 85 : -1; }
    } library;
    CVxPart::SetLibrary(&library);
    EXPECT_EQ(85, LoadOne("Type=LibraryObject\r\nLibObjID=21\r\nZHeight=-1\r\n").zHeight);
    CVxPart::SetLibrary(nullptr);

    const CVxPart page = LoadOne("Library=Doors|Kitchen\r\nTransparency=0.5\r\nEmissiveColor=300\r\n"
                                 "Type=MeasLine\r\nAppTag=6\r\nCaption=a\\nb\r\n");
    EXPECT_EQ((1u << 2) | (1u << 8), page.libraryMask);
    EXPECT_EQ(50, page.appearFill.GetTransparency());
    EXPECT_EQ(44u, page.emissive);
    EXPECT_EQ(4u, page.appTag);
    EXPECT_EQ(CVxStringW(L"a\r\nb"), page.caption);
}

TEST(PartFile, OldVersionsAreBroughtUpToDate)
{
    for (int version : {300, 1020}) {
        const CVxPart door = LoadOne("Type=Door\r\nWidth=90\r\nHeight=90\r\n", version);
        EXPECT_EQ(3.0, door.height);
        EXPECT_EQ(0xFDFDFDu, door.GetFillColor());
    }

    const char* joined = "WrlProto=models\\chair.wrl#Chair\r\n";
    EXPECT_EQ(CVxStringW(L"Chair"), LoadOne(joined, 704).wrlPrototype);
    EXPECT_TRUE(LoadOne(joined, 705).wrlPrototype.IsEmpty());

    const char* front = "Type=Window\r\nLibObjID=106\r\nFrontColor=0x00FF00\r\nTransparency=0.25\r\n"
                        "Texture=/t/a.jpg\r\n";
    const CVxPart old = LoadOne(front, 600);
    EXPECT_TRUE(old.frontColorEnable);
    EXPECT_EQ(25, old.appearFront.GetTransparency());
    EXPECT_EQ(CVxStringW(L"/t/a.jpg"), old.appearFront.GetTexture());
    EXPECT_TRUE(old.appearFill.GetTexture().IsEmpty());
    EXPECT_EQ(ptLibraryObject, old.type);
    EXPECT_EQ(ptWindow, LoadOne(front, 601).type);

    EXPECT_EQ(4, LoadOne("Type=LibraryObject\r\nLibObjID=196\r\n", 700).handleType);
    EXPECT_EQ(1, LoadOne("Type=LibraryObject\r\nLibObjID=196\r\n", 701).handleType);

    EXPECT_EQ(7.0, LoadOne("Type=Door\r\nWidth=90\r\nHeight=10\r\n", 849).thickness);
    EXPECT_EQ(0.0, LoadOne("Type=Door\r\nWidth=90\r\nHeight=10\r\n", 850).thickness);
    // One inch of frame in a project in inches.
    EXPECT_EQ(1.0, LoadOne("Type=LibraryObject\r\nLibObjID=93\r\n", 849, CVxUnits::UNIT_INCH).thickness);
    const CVxPart window = LoadOne("Type=Window\r\nLineColor=0x0000FF\r\nFrontColor=0x123456\r\n", 849);
    EXPECT_EQ(0x0000FFu, window.GetFillColor());
    EXPECT_EQ(0u, window.lineColor);
    EXPECT_EQ(0u, window.appearFront.GetColor());
    EXPECT_TRUE(window.frontColorEnable);

    // Before 720 the fill colour stood apart from the appearance.
    const char* fill = "FillColor=0x112233\r\nAppearFill=||0|0|0|0|-1|0|0|0|0|0|0|FFFFFF\r\n";
    EXPECT_EQ(0x112233u, LoadOne(fill, 719).GetFillColor());
    EXPECT_EQ(0xFFFFFFu, LoadOne(fill, 720).GetFillColor());
}

TEST(PartGrouper, CountedMembersNestAndCloseInTime)
{
    const std::vector<CVxPart> parts =
        LoadText("[Part1]\r\nType=ComplexObject\r\nGroupID=2\r\nSubPartCount=2\r\n"
                 "[Part1.1]\r\nType=Circle\r\nGroupID=2\r\n"
                 "[Part1.2]\r\nType=ComplexObject\r\nGroupID=2\r\nSubPartCount=1\r\n"
                 "[Part1.2.1]\r\nType=Triangle\r\nGroupID=2\r\n"
                 "[Part5]\r\nType=Arrow\r\n"
                 "[Part7]\r\nType=ComplexObject\r\nGroupID=8\r\nSubPartCount=0\r\n"
                 "[Part8]\r\nType=Line\r\n");
    ASSERT_EQ(4u, parts.size());
    ASSERT_EQ(2u, parts[0].subParts.size());
    EXPECT_EQ(ptCircle, parts[0].subParts[0].type);
    ASSERT_EQ(1u, parts[0].subParts[1].subParts.size());
    EXPECT_EQ(ptTriangle, parts[0].subParts[1].subParts[0].type);
    EXPECT_EQ(ptArrow, parts[1].type);
    EXPECT_TRUE(parts[2].subParts.empty());
    EXPECT_EQ(ptLine, parts[3].type);
    EXPECT_EQ(0u, parts[0].subParts[1].subParts[0].lineColor);
}

TEST(PartGrouper, OldFilesGroupByNumber)
{
    const std::vector<CVxPart> parts =
        LoadText("[Part1]\r\nType=ComplexObject\r\nGroupID=3\r\nLineColor=0xFF\r\n"
                 "[Part2]\r\nType=Circle\r\nGroupID=3\r\n"
                 "[Part3]\r\nType=Circle\r\nGroupID=3\r\nLineColor=0xFF00\r\n"
                 "[Part4]\r\nType=Arrow\r\nGroupID=4\r\n"
                 "[Part5]\r\nType=Arrow\r\n",
                 800);
    ASSERT_EQ(3u, parts.size());
    ASSERT_EQ(2u, parts[0].subParts.size());
    EXPECT_EQ(0xFFu, parts[0].subParts[0].lineColor);
    EXPECT_EQ(0xFF00u, parts[0].subParts[1].lineColor);
    // A member whose group is gone still gets colours.
    EXPECT_EQ(0u, parts[1].lineColor);
    EXPECT_EQ(20u, parts[1].shininess);
}

TEST(PartGrouper, HostileCountsAndDepthsCostBoundedWork)
{
    CVxStringA text =
        "[Part1]\r\nType=ComplexObject\r\nSubPartCount=2000000000\r\n[Part1.1]\r\nType=Circle\r\n";
    std::vector<CVxPart> parts = LoadText(text);
    ASSERT_EQ(1u, parts.size());
    EXPECT_EQ(1u, parts[0].subParts.size());
    EXPECT_LE(parts[0].subParts.capacity(), 256u);

    // Groups nested a thousand deep, and a part behind them.
    text.Empty();
    CVxStringA section = "Part1";
    for (int level = 0; level < 1000; ++level) {
        text += "[" + section + "]\r\nType=ComplexObject\r\nSubPartCount=1\r\n";
        section += ".1";
    }
    text += "[" + section + "]\r\nType=Circle\r\n[Part2]\r\nType=Arrow\r\n";
    parts = LoadText(text);
    ASSERT_EQ(2u, parts.size());
    EXPECT_EQ(ptArrow, parts[1].type);
    int depth = 0;
    for (const CVxPart* part = &parts[0]; !part->subParts.empty(); part = &part->subParts[0])
        ++depth;
    EXPECT_LT(depth, CVxPart::maxGroupDepth);
    const std::vector<CVxPart> reloaded = LoadText(SaveText(parts[0]));
    EXPECT_EQ(1u, reloaded.size());

    // Tables are rebuilt from their size, within a budget for the file.
    text.Empty();
    for (int i = 1; i <= 4; ++i)
        text += CVxStringA().sprintf("[Part%d]\r\nType=Table\r\nSubType=65535\r\nSubPartCount=0\r\n", i);
    text += "[Part9]\r\nType=Table\r\nSubType=515\r\nSubPartCount=1\r\n[Part9.1]\r\nType=Label\r\nCaption="
            "kept\r\n";
    parts = LoadText(text);
    ASSERT_EQ(5u, parts.size());
    size_t cells = 0;
    for (const CVxPart& table : parts)
        cells += table.subParts.size();
    // Beyond the budget a table has no more than one cell.
    EXPECT_LE(cells, static_cast<size_t>(CVxPartVectorGrouper::maxTableCellsPerRun) + parts.size());
    EXPECT_EQ(255u * 255u, parts[0].subParts.size());
    EXPECT_EQ(1u, parts[3].subParts.size());
    // Once the budget is spent a table keeps the cells that the file holds.
    ASSERT_EQ(1u, parts[4].subParts.size());
    EXPECT_EQ(CVxStringW(L"kept"), parts[4].subParts[0].caption);
}
