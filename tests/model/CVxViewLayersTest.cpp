// View layers: their keys, the safe accessors and the list operations of the
// layers window.

#include "CVxViewLayers.h"
#include "CVxFloor.h"
#include "VxModelTestUtil.h"
#include "VxTestEnv.h"

#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

CVxViewLayers ReadLayers(const char* keys)
{
    CVxViewLayers layers;
    VxReadSection(CVxStringA("[ViewLayers]\r\n") + keys, "ViewLayers", &layers);
    return layers;
}

} // namespace

TEST(ViewLayers, ResetLeavesOneGeneralLayer)
{
    CVxViewLayers layers;
    layers.AddLayer(L"Furniture", false, 30);
    layers.SetActiveLayer(1);
    layers.SetVisibility3D(false);
    layers.Reset();
    ASSERT_EQ(layers.GetLayerCount(), 1);
    EXPECT_EQ(layers.GetActiveLayer(), 0);
    EXPECT_TRUE(layers.GetVisibility3D());
    EXPECT_TRUE(layers.m_layers[0].m_name.IsEmpty());
    EXPECT_EQ(layers.GetLayerName(0), L"General Layer");
}

TEST(ViewLayers, KeysOfLayers)
{
    const CVxViewLayers layers = ReadLayers("Count=9\r\nActive=2\r\nVisibility3D=0\r\n"
                                            "Layer00=1\r\n"
                                            "Layer01=0|Walls\r\n"
                                            "Layer02=1|Furniture|abc\r\n"
                                            "Layer03=1|Notes|40\r\n"
                                            "Layer=1|NotALayer\r\n"
                                            "LayerX=1|\r\n");
    ASSERT_EQ(layers.GetLayerCount(), 4);
    EXPECT_EQ(layers.GetActiveLayer(), 2);
    EXPECT_FALSE(layers.GetVisibility3D());
    EXPECT_FALSE(layers.m_layers[0].m_visible);
    EXPECT_EQ(layers.m_layers[0].m_transparency, 0);
    EXPECT_EQ(layers.m_layers[1].m_transparency, 100);
    EXPECT_EQ(layers.m_layers[2].m_name, L"Notes");
    EXPECT_EQ(layers.m_layers[2].m_transparency, 40);
    EXPECT_TRUE(layers.m_layers[3].m_visible);
    EXPECT_TRUE(layers.m_layers[3].m_name.IsEmpty());
}

TEST(ViewLayers, CountClearsTheDefaultLayer)
{
    const CVxViewLayers layers = ReadLayers("Active=3\r\nCount=1\r\nLayer00=1|Only\r\n");
    ASSERT_EQ(layers.GetLayerCount(), 1);
    EXPECT_EQ(layers.GetActiveLayer(), 0);
    EXPECT_EQ(layers.GetLayerName(0), L"Only");
}

TEST(ViewLayers, AFloorKeepsAtLeastOneLayer)
{
    CVxStringReader reader(CVxStringA("[ViewLayers]\r\nCount=0\r\nActive=5\r\n[EndFloor]\r\n"), 0);
    reader.Start();
    CVxFloor floor;
    floor.LoadFromFile(&reader, nullptr);
    EXPECT_EQ(floor.m_layers.GetLayerCount(), 1);
    EXPECT_EQ(floor.m_layers.GetActiveLayer(), 0);
    EXPECT_FALSE(floor.RemoveLayer(0));
}

TEST(ViewLayers, SectionRoundTrip)
{
    CVxViewLayers layers;
    layers.AddLayer(L"Doors", false, 25);
    layers.AddLayer(L"Lights", true, 0, true);
    layers.SetActiveLayer(1);
    CVxStringWriter writer;
    layers.SaveToFile(&writer, "ViewLayers");
    CVxViewLayers read;
    ASSERT_TRUE(VxReadSection(writer.GetString(), "ViewLayers", &read));
    EXPECT_EQ(read, layers);
}

TEST(ViewLayers, IndexesOutOfRangeAreHarmless)
{
    CVxViewLayers layers;
    EXPECT_TRUE(layers.IsLayerVisible(5));
    EXPECT_TRUE(layers.IsLayerVisible3D(-1));
    EXPECT_EQ(layers.GetLayerTransparency(5), 0);
    EXPECT_TRUE(layers.GetLayerName(5).IsEmpty());
    layers.SetLayerVisible(5, false);
    layers.SetLayerName(-1, L"x");
    layers.SetLayerTransparency(1, 50);
    layers.SetActiveLayer(3);
    EXPECT_EQ(layers.GetLayerCount(), 1);
    EXPECT_EQ(layers.GetActiveLayer(), 0);
    EXPECT_EQ(layers.SafeGetLayer(1), nullptr);
}

TEST(ViewLayers, HiddenLayersIn3DAndAnyVisibleLayer)
{
    CVxViewLayers layers;
    layers.AddLayer(L"Hidden", false);
    EXPECT_TRUE(layers.IsLayerVisible3D(1));
    layers.SetVisibility3D(false);
    EXPECT_FALSE(layers.IsLayerVisible3D(1));
    EXPECT_TRUE(layers.IsLayerVisible3D(0));

    // Any visible layer: the active one first, then the first visible.
    layers.AddLayer(L"B");
    layers.SetLayerVisible(1, true);
    layers.SetActiveLayer(2);
    EXPECT_EQ(layers.GetAnyVisibleLayer(), 2);
    layers.SetLayerVisible(2, false);
    layers.SetLayerVisible(0, false);
    EXPECT_EQ(layers.GetAnyVisibleLayer(), 1);
    layers.SetLayerVisible(1, false);
    EXPECT_EQ(layers.GetAnyVisibleLayer(), 0);
}

TEST(ViewLayers, TheLastLayerCantBeRemoved)
{
    CVxFloor floor;
    EXPECT_FALSE(floor.RemoveLayer(0));
    EXPECT_EQ(floor.m_layers.GetLayerCount(), 1);
    floor.m_layers.AddLayer(L"Second");
    EXPECT_FALSE(floor.RemoveLayer(2));
    EXPECT_FALSE(floor.RemoveLayer(-1));
    EXPECT_TRUE(floor.RemoveLayer(0));
    ASSERT_EQ(floor.m_layers.GetLayerCount(), 1);
    EXPECT_EQ(floor.m_layers.GetLayerName(0), L"Second");
    EXPECT_FALSE(floor.RemoveLayer(0));

    // Removal keeps the active layer.
    CVxViewLayers layers;
    layers.AddLayer(L"A");
    layers.AddLayer(L"B");
    layers.SetActiveLayer(2);
    EXPECT_TRUE(layers.RemoveLayer(0));
    EXPECT_EQ(layers.GetActiveLayer(), 1);
    EXPECT_EQ(layers.GetLayerName(1), L"B");
    EXPECT_TRUE(layers.RemoveLayer(1));
    EXPECT_EQ(layers.GetActiveLayer(), 0);
}

TEST(ViewLayers, SwitchMakesTheSecondActive)
{
    CVxFloor floor;
    floor.m_layers.AddLayer(L"A");
    floor.m_layers.AddLayer(L"B");
    EXPECT_TRUE(floor.SwitchLayers(0, 2));
    EXPECT_EQ(floor.m_layers.GetActiveLayer(), 2);
    EXPECT_EQ(floor.m_layers.GetLayerName(0), L"B");
    EXPECT_TRUE(floor.m_layers.m_layers[2].m_name.IsEmpty());
    EXPECT_FALSE(floor.SwitchLayers(0, 3));
}

TEST(ViewLayers, ReorderMovesOneLayer)
{
    CVxFloor floor;
    floor.m_layers.AddLayer(L"A");
    floor.m_layers.AddLayer(L"B");
    floor.m_layers.AddLayer(L"C");
    floor.m_layers.SetActiveLayer(1);
    EXPECT_TRUE(floor.ReorderLayer(1, 3));
    EXPECT_EQ(floor.m_layers.GetLayerName(1), L"B");
    EXPECT_EQ(floor.m_layers.GetLayerName(2), L"C");
    EXPECT_EQ(floor.m_layers.GetLayerName(3), L"A");
    EXPECT_EQ(floor.m_layers.GetActiveLayer(), 3);
    EXPECT_TRUE(floor.ReorderLayer(3, 0));
    EXPECT_EQ(floor.m_layers.GetLayerName(0), L"A");
    EXPECT_EQ(floor.m_layers.GetActiveLayer(), 0);
    EXPECT_FALSE(floor.ReorderLayer(0, 4));

    EXPECT_EQ(CVxViewLayers::ReorderedIndex(2, 1, 3), 1);
    EXPECT_EQ(CVxViewLayers::ReorderedIndex(0, 1, 3), 0);
    EXPECT_EQ(CVxViewLayers::ReorderedIndex(1, 3, 0), 2);
    EXPECT_EQ(CVxViewLayers::ReorderedIndex(3, 3, 0), 0);
}

TEST(ViewLayers, MergeVisibleKeepsHiddenLayers)
{
    CVxFloor floor;
    floor.m_layers.AddLayer(L"Hidden", false);
    floor.m_layers.AddLayer(L"A");
    floor.m_layers.AddLayer(L"B");
    floor.m_layers.SetActiveLayer(2);
    EXPECT_TRUE(floor.MergeVisibleLayers());
    ASSERT_EQ(floor.m_layers.GetLayerCount(), 2);
    EXPECT_EQ(floor.m_layers.GetLayerName(0), L"Hidden");
    EXPECT_EQ(floor.m_layers.GetLayerName(1), L"A");
    EXPECT_EQ(floor.m_layers.GetActiveLayer(), 1);
    EXPECT_FALSE(floor.MergeVisibleLayers());

    EXPECT_TRUE(floor.MergeAllLayers());
    ASSERT_EQ(floor.m_layers.GetLayerCount(), 1);
    EXPECT_EQ(floor.m_layers.GetLayerName(0), L"A");
    EXPECT_FALSE(floor.MergeAllLayers());
}

namespace {

// A floor with layers A, B, C, D and one object per layer, named by its layer.
CVxFloor FloorWithOneObjectPerLayer()
{
    CVxFloor floor;
    floor.m_layers.m_layers[0].m_name = L"A";
    floor.m_layers.AddLayer(L"B");
    floor.m_layers.AddLayer(L"C");
    floor.m_layers.AddLayer(L"D");
    for (int i = 0; i < 4; ++i) {
        CVxPart* part = floor.GetNewObject(nullptr, true);
        part->layer = i;
        part->caption = floor.m_layers.GetLayerName(i);
    }
    return floor;
}

// The name of every object in use with the name of the layer it lies on.
std::vector<std::pair<CVxStringW, CVxStringW>> ObjectsOnLayers(const CVxFloor& floor)
{
    std::vector<std::pair<CVxStringW, CVxStringW>> result;
    for (const CVxPart& part : floor.m_objects)
        if (part.inUse)
            result.emplace_back(part.caption, floor.m_layers.GetLayerName(part.layer));
    return result;
}

using Pairs = std::vector<std::pair<CVxStringW, CVxStringW>>;

} // namespace

TEST(ViewLayers, LayerOperationsCarryTheirObjects)
{
    CVxFloor floor = FloorWithOneObjectPerLayer();
    ASSERT_TRUE(floor.RemoveLayer(1));
    EXPECT_EQ(ObjectsOnLayers(floor), (Pairs{{L"A", L"A"}, {L"C", L"C"}, {L"D", L"D"}}));
    EXPECT_EQ(floor.m_objectCount, 3);

    floor = FloorWithOneObjectPerLayer();
    ASSERT_TRUE(floor.SwitchLayers(0, 3));
    EXPECT_EQ(ObjectsOnLayers(floor), (Pairs{{L"A", L"A"}, {L"B", L"B"}, {L"C", L"C"}, {L"D", L"D"}}));
    EXPECT_EQ(floor.m_objects[0].layer, 3);

    floor = FloorWithOneObjectPerLayer();
    ASSERT_TRUE(floor.ReorderLayer(0, 2));
    EXPECT_EQ(ObjectsOnLayers(floor), (Pairs{{L"A", L"A"}, {L"B", L"B"}, {L"C", L"C"}, {L"D", L"D"}}));
    ASSERT_TRUE(floor.ReorderLayer(3, 1));
    EXPECT_EQ(ObjectsOnLayers(floor), (Pairs{{L"A", L"A"}, {L"B", L"B"}, {L"C", L"C"}, {L"D", L"D"}}));

    floor = FloorWithOneObjectPerLayer();
    floor.m_layers.SetActiveLayer(2);
    ASSERT_TRUE(floor.MergeAllLayers());
    EXPECT_EQ(ObjectsOnLayers(floor), (Pairs{{L"A", L"C"}, {L"B", L"C"}, {L"C", L"C"}, {L"D", L"C"}}));

    floor = FloorWithOneObjectPerLayer();
    floor.m_layers.SetLayerVisible(1, false);
    floor.m_layers.SetActiveLayer(3);
    ASSERT_TRUE(floor.MergeVisibleLayers());
    EXPECT_EQ(ObjectsOnLayers(floor), (Pairs{{L"A", L"D"}, {L"B", L"B"}, {L"C", L"D"}, {L"D", L"D"}}));
}
