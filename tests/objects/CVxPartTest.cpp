#include "CVxPart.h"
#include "CVxFont.h"
#include "CVxPartPayload.h"

#include <gtest/gtest.h>

namespace {

CVxPart MakePart(int type, int libId = 0)
{
    CVxPart part;
    part.type = static_cast<uint16_t>(type);
    part.libObjID = libId;
    part.inUse = true;
    return part;
}

class CTestPayload : public CVxPartPayload
{
public:
    CVxStringW GetClassName() const override { return L"TestPayload"; }
    CVxPartPayload* Duplicate() const override { return new CTestPayload(*this); }
    CVxStringW SaveToString() const override
    {
        return CVxStringW::IntToHex(static_cast<unsigned>(steps), 1, false);
    }
    int steps = 10;
};

} // namespace

TEST(PartTypes, NamesAreExactInversesAndUnknownsFallBack)
{
    for (int type = 0; type < ptTypeCount; ++type)
        EXPECT_EQ(type, CVxPart::TypeIDFromName(CVxPart::TypeNameFromID(type)));
    EXPECT_EQ(CVxStringW(L"MeasLine"), CVxPart::TypeNameFromID(ptMeasLine));
    EXPECT_EQ(CVxStringW(L"Rectangle"), CVxPart::TypeNameFromID(99));
    EXPECT_EQ(CVxStringW(L"Rectangle"), CVxPart::TypeNameFromID(-1));
    EXPECT_EQ(ptRectangle, CVxPart::TypeIDFromName(L"Wardrobe"));
    EXPECT_EQ(CVxStringW(L"Measurement line"), CVxPart::TypeLocalNameFromID(ptMeasLine, 0));
    EXPECT_EQ(CVxStringW(L"Entrance"), CVxPart::TypeLocalNameFromID(ptEntrTriangle, 12345));
}

TEST(PartTypes, LibraryObjectNamesComeFromTheInstalledLibrary)
{
    struct CLibrary : IVxPartLibrary
    {
        CVxStringW GetLibObjName(int libId) const override { return libId == 21 ? L"Cabinet" : L""; }
    } library;
    CVxPart::SetLibrary(&library);
    EXPECT_EQ(CVxStringW(L"Cabinet"), CVxPart::TypeLocalNameFromID(ptLibraryObject, 21));
    EXPECT_EQ(CVxStringW(L"From library"), CVxPart::TypeLocalNameFromID(ptLibraryObject, 22));

    CVxPart part = MakePart(ptLibraryObject, 21);
    part.LibSetCaption();
    EXPECT_EQ(CVxStringW(L"Cabinet"), part.caption);
    part.caption = L"Mine";
    part.libraryMask = CVxPart::libMaskPrivate;
    part.LibSetCaption();
    EXPECT_EQ(CVxStringW(L"Mine"), part.caption);
    CVxPart::SetLibrary(nullptr);
}

TEST(PartTypes, CapabilitiesFollowTypeAndLibraryNumber)
{
    // Door-like: type Door and the swinging doors of the library, 246 too.
    EXPECT_TRUE(MakePart(ptDoor).HasCap(capHandle));
    EXPECT_TRUE(MakePart(ptLibraryObject, 246).HasCap(capDoorSwing));
    EXPECT_TRUE(MakePart(ptLibraryObject, 283).HasCap(capHandle));
    EXPECT_FALSE(MakePart(ptLibraryObject, 201).HasCap(capHandle));
    EXPECT_FALSE(MakePart(ptLibraryObject, 246).HasCap(capDoorFrame));

    // Windows turn only in their two hinged models; page areas never.
    EXPECT_FALSE(MakePart(ptWindow).HasCap(capRotate));
    EXPECT_TRUE(MakePart(ptWindow, 279).HasCap(capResize));
    EXPECT_FALSE(MakePart(ptPageArea).HasCap(capRotate));
    EXPECT_TRUE(MakePart(ptArrow).HasCap(capRotate));

    EXPECT_TRUE(MakePart(ptRectangle, 129).HasCap(capSkew));
    EXPECT_FALSE(MakePart(ptRectangle, 130).HasCap(capSkew));
    EXPECT_FALSE(MakePart(ptLabel).HasCap(capResizeAnyDirection));
    EXPECT_TRUE(MakePart(ptPolyline).HasCap(capMirror));

    CVxPart door = MakePart(ptDoor);
    EXPECT_TRUE(door.HasCap(capGroup));
    door.snapToWall = true;
    EXPECT_FALSE(door.HasCap(capGroup));
    EXPECT_FALSE(MakePart(ptAngle).HasCap(capGroup));

    EXPECT_FALSE(MakePart(ptLabel).HasCap(capLineColor));
    EXPECT_FALSE(MakePart(ptCompass).HasCap(capFillColor));
    EXPECT_TRUE(MakePart(ptLibraryObject, 900).HasCap(capFrontColor));
    EXPECT_TRUE(MakePart(ptWindow).HasCap(capFrontColor));
    EXPECT_FALSE(MakePart(ptLibraryObject, 944).HasCap(capFrontColor));
    EXPECT_TRUE(MakePart(ptTable).HasCap(capLineThickness));
    EXPECT_FALSE(MakePart(ptArrow).HasCap(capLineThickness));

    CVxPart box = MakePart(ptRectangle);
    EXPECT_TRUE(box.HasCap(capVisibleIn3D));
    box.SetFillColor(VX_ColorSwitchOff(0x123456));
    EXPECT_FALSE(box.HasCap(capVisibleIn3D));
    EXPECT_TRUE(box.HasCap(capHas3D));
    box.specificDisability = CVxPart::disable3D;
    EXPECT_FALSE(box.HasCap(capHas3D));
    EXPECT_FALSE(MakePart(ptLibraryObject, 226).HasCap(capHas3D));
    EXPECT_FALSE(MakePart(ptTable).HasCap(capHas3D));

    EXPECT_TRUE(MakePart(ptLibraryObject, 272).HasCap(capWindowFrame));
    EXPECT_TRUE(MakePart(ptLibraryObject, 298).HasCap(capThickness));
    EXPECT_TRUE(MakePart(ptLibraryObject, 267).HasCap(capPicture));

    CVxPart group = MakePart(ptComplexObject);
    EXPECT_FALSE(group.HasCap(capTileTexture));
    group.appearFill.tileMode = 1;
    EXPECT_TRUE(group.HasCap(capTileTexture));
    EXPECT_TRUE(MakePart(ptLibraryObject, 1101).HasCap(capPayload));
    EXPECT_FALSE(MakePart(ptLibraryObject, 1101).HasCap(-1));
    EXPECT_TRUE(MakePart(ptLibraryObject, 0).HasCap(22));
}

TEST(PartTypes, VariantsShapesAndMirrorTwins)
{
    EXPECT_EQ(20, CVxPart::GetSubTypeCount(ptDoor, 0));
    EXPECT_EQ(20, CVxPart::GetSubTypeCount(ptWindow, 264));
    EXPECT_EQ(27, CVxPart::GetSubTypeCount(ptWindow, 0));
    EXPECT_EQ(4, CVxPart::GetSubTypeCount(ptCompass, 0));
    EXPECT_EQ(3, CVxPart::GetSubTypeCount(ptLibraryObject, 246));
    EXPECT_EQ(4, CVxPart::GetSubTypeCount(ptLibraryObject, 65));
    EXPECT_EQ(1, CVxPart::GetSubTypeCount(ptLibraryObject, 21));
    EXPECT_EQ(9, CVxPart::GetHandleTypeCount(ptLibraryObject, 281));
    EXPECT_EQ(1, CVxPart::GetHandleTypeCount(ptLibraryObject, 246));
    EXPECT_FALSE(CVxPart::AreSubTypesForFrontView(ptLibraryObject, 69));
    EXPECT_TRUE(CVxPart::AreSubTypesForFrontView(ptWindow, 0));

    EXPECT_EQ(ptCircle, MakePart(ptLibraryObject, 97).GetShape(false));
    EXPECT_EQ(ptEllipse, MakePart(ptLibraryObject, 249).GetShape(false));
    EXPECT_EQ(ptHexagon, MakePart(ptLibraryObject, 152).GetShape(false));
    EXPECT_EQ(ptOctagon, MakePart(ptLibraryObject, 107).GetShape(false));
    EXPECT_EQ(ptRectangle, MakePart(ptLibraryObject, 21).GetShape(false));
    EXPECT_EQ(ptRectangle, MakePart(ptCircle).GetShape(true));
    EXPECT_EQ(ptTriangle, MakePart(ptTriangle, 97).GetShape(false));

    EXPECT_EQ(279, MakePart(ptWindow, 278).GetSnapMirrorPartId());
    EXPECT_EQ(263, MakePart(ptLibraryObject, 264).GetSnapMirrorPartId());
    EXPECT_EQ(-1, MakePart(ptLibraryObject, 282).GetSnapMirrorPartId());
}

TEST(PartTypes, AspectOfShapesPicturesAndGroups)
{
    EXPECT_TRUE(MakePart(ptCompass).KeepAspect());
    CVxPart picture = MakePart(ptLibraryObject, 171);
    EXPECT_FALSE(picture.KeepAspect());
    picture.appearFill.SetTexture(L"/pictures/photo.png");
    EXPECT_TRUE(picture.KeepAspect());

    CVxPart group = MakePart(ptComplexObject);
    EXPECT_FALSE(group.KeepAspect());
    group.subParts.push_back(MakePart(ptRectangle));
    group.subParts.back().rotation = 180;
    EXPECT_FALSE(group.KeepAspect());
    group.subParts.back().rotation = 90;
    EXPECT_TRUE(group.KeepAspect());
    group.subParts.back().rotation = 0;
    group.subParts.push_back(MakePart(ptCircle));
    EXPECT_TRUE(group.KeepAspect());

    CVxPart billboard = MakePart(ptLibraryObject, 900);
    billboard.appearFill.SetTexture(L"/pictures/tree.png");
    billboard.wrl3dAsBillboard = true;
    EXPECT_FALSE(billboard.KeepXZAspect(false));
    EXPECT_TRUE(billboard.KeepXZAspect(true));
}

TEST(PartCopy, IsDeepForMembersFontAndPayload)
{
    CVxPart group = MakePart(ptComplexObject);
    group.CreateFont()->m_size = 20;
    auto* payload = new CTestPayload;
    payload->steps = 12;
    group.SetPayload(payload);
    group.subParts.push_back(MakePart(ptRectangle));
    group.subParts[0].subParts.push_back(MakePart(ptCircle));
    group.subParts[0].subParts[0].caption = L"inner";

    CVxPart copy = group;
    ASSERT_NE(nullptr, copy.GetFont());
    ASSERT_NE(nullptr, copy.GetPayload());
    EXPECT_NE(group.GetFont(), copy.GetFont());
    EXPECT_NE(group.GetPayload(), copy.GetPayload());
    EXPECT_EQ(CVxStringW(L"TestPayload:C"), copy.GetPayload()->Serialize());

    copy.GetFont()->m_size = 8;
    copy.subParts[0].subParts[0].caption = L"changed";
    EXPECT_EQ(20, group.GetFont()->m_size);
    EXPECT_EQ(CVxStringW(L"inner"), group.subParts[0].subParts[0].caption);

    // Assigning a member to its own group must not read freed memory.
    group = group.subParts[0];
    EXPECT_EQ(CVxStringW(L"inner"), group.subParts[0].caption);
    EXPECT_EQ(nullptr, group.GetFont());

    CVxPart moved = std::move(copy);
    EXPECT_EQ(nullptr, copy.GetFont());
    EXPECT_EQ(8, moved.GetFont()->m_size);
}

TEST(PartGroup, MembersFollowTheGroupUnlessTheyHaveTheirOwn)
{
    CVxPart group = MakePart(ptComplexObject);
    group.lineColor = 0x0000FF;
    group.subParts.push_back(MakePart(ptRectangle));
    group.subParts.push_back(MakePart(ptRectangle));
    group.subParts.push_back(MakePart(ptComplexObject));
    group.subParts[0].lineColor = 0x0000FF;
    group.subParts[1].lineColor = 0x00FF00;
    group.subParts[2].lineColor = 0x0000FF;
    group.subParts[2].subParts.push_back(MakePart(ptCircle));
    group.subParts[2].subParts[0].lineColor = 0x0000FF;
    group.subParts[2].subParts[0].textColor = clrUndefined;
    group.subParts[2].SetPropertiesToSubParts();
    group.SetPropertiesToSubParts();

    for (unsigned colour : {0xFF0000u, 0x00FFFFu}) {
        group.lineColor = colour;
        group.SetPropertiesToSubParts();
        EXPECT_EQ(colour, group.subParts[0].lineColor);
        EXPECT_EQ(0x00FF00u, group.subParts[1].lineColor);
        EXPECT_EQ(colour, group.subParts[2].subParts[0].lineColor);
        EXPECT_EQ(colour, group.baseLineColor);
    }
    EXPECT_EQ(group.textColor, group.subParts[2].subParts[0].textColor);

    // A member appearance that was the group's goes along with it.
    CVxAppearance wood(0x3366AA);
    group.appearFill = wood;
    group.subParts[1].appearFill.SetColor(0x010101);
    group.SetPropertiesToSubParts();
    EXPECT_EQ(wood, group.subParts[0].appearFill);
    EXPECT_EQ(0x010101u, group.subParts[1].appearFill.GetColor());
}

TEST(PartGroup, CopiedMembersFitTheNewSize)
{
    CVxPart source = MakePart(ptComplexObject);
    source.width = 200;
    source.height = 100;
    source.subParts.push_back(MakePart(ptRectangle));
    source.subParts[0].y = 100;
    source.subParts[0].height = 400;

    CVxPart target = MakePart(ptComplexObject);
    target.width = 200;
    target.height = 200;
    target.CopySubPartsWithProperties(&source);
    ASSERT_EQ(1u, target.subParts.size());
    // Twice as deep in the same width: the 1000-wide frame doubles in y.
    EXPECT_DOUBLE_EQ(200, target.subParts[0].y);
    EXPECT_DOUBLE_EQ(800, target.subParts[0].height);
    EXPECT_DOUBLE_EQ(200, target.height);

    source.subParts[0].rotation = 45;
    target.width = 50;
    target.CopySubPartsWithProperties(&source);
    EXPECT_DOUBLE_EQ(25, target.height);
    EXPECT_DOUBLE_EQ(100, target.subParts[0].y);
}

TEST(PartSlots, DeletedSlotsAreReusedUnlessAppending)
{
    std::vector<CVxPart> parts;
    for (int i = 0; i < 5; ++i) {
        int index = -1;
        CVxPart::GetNewObject(parts, &index, false);
        EXPECT_EQ(i, index);
    }
    parts[3].inUse = false;
    parts[3].caption = L"deleted";
    int index = -1;
    CVxPart* part = CVxPart::GetNewObject(parts, &index, false);
    EXPECT_EQ(3, index);
    EXPECT_TRUE(part->inUse);
    EXPECT_TRUE(part->caption.IsEmpty());
    parts[3].inUse = false;
    CVxPart::GetNewObject(parts, &index, true);
    EXPECT_EQ(5, index);
    EXPECT_EQ(nullptr, CVxPart::SafeGetPart(parts, 6));
    EXPECT_EQ(nullptr, CVxPart::SafeGetPart(parts, -1));
}

TEST(PartTable, CellsKeepTheirRowAndColumn)
{
    CVxPart table = MakePart(ptTable);
    table.SetTableRowsCols(3, 3);
    ASSERT_EQ(9u, table.subParts.size());
    table.subParts[1 * 3 + 1].caption = L"centre";
    table.SetTableRowsCols(2, 4);
    int rows = 0, cols = 0;
    table.GetTableRowsCols(rows, cols);
    EXPECT_EQ(2, rows);
    EXPECT_EQ(4, cols);
    ASSERT_EQ(8u, table.subParts.size());
    EXPECT_EQ(CVxStringW(L"centre"), table.subParts[1 * 4 + 1].caption);
    const CVxPart& added = table.subParts[3];
    EXPECT_EQ(ptLabel, added.type);
    EXPECT_EQ(0xEFFFFFFFu, added.GetFillColor());
    EXPECT_EQ(8u, added.appTag);
    EXPECT_DOUBLE_EQ(0.0001, added.width);

    table.SetTableRowsCols(300, 0);
    table.GetTableRowsCols(rows, cols);
    EXPECT_EQ(255, rows);
    EXPECT_EQ(1, cols);
    EXPECT_EQ(255u, table.subParts.size());
}

TEST(PartLocks, LockCommandsExcludeEachOther)
{
    CVxPart part;
    part.ApplyLockCommand(CVxPart::ctxLockSize, 0);
    EXPECT_EQ(CVxPart::ctxLockSize, part.locked);
    part.ApplyLockCommand(CVxPart::ctxLock, 0);
    EXPECT_EQ(CVxPart::ctxLock, part.locked);
    // The primary selection is locked already: the command unlocks.
    part.ApplyLockCommand(CVxPart::ctxLock, CVxPart::ctxLock);
    EXPECT_EQ(0u, part.locked);
    part.locked = CVxPart::ctxLock | CVxPart::ctxLockSize | CVxPart::ctxLockGroup;
    part.ApplyLockCommand(0, 0);
    EXPECT_EQ(CVxPart::ctxLockGroup, part.locked);
    part.locked = CVxPart::ctxLock | CVxPart::ctxLockGroup;
    part.PrepareAsDuplicate();
    EXPECT_EQ(CVxPart::ctxLockGroup, part.locked);
}
