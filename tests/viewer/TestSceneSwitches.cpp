// The Switch nodes the viewer finds in a scene file and how it sets the
// walls of each floor: a hostile file yields a bounded list, and the halved
// walls follow the visible floor above.

#include "CVx3dSceneSwitches.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

CVx3dSceneSwitches Scan(const QByteArray& text)
{
    QTemporaryDir dir;
    const QString path = dir.path() + QStringLiteral("/scene.wrl");
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    CVx3dSceneSwitches switches;
    EXPECT_TRUE(switches.ScanSceneFile(path));
    return switches;
}

} // namespace

TEST(SceneSwitches, ScanFindsFloorsAndLayersAndResistsHostileFiles)
{
    const CVx3dSceneSwitches found = Scan("#VRML V2.0 utf8\r\n"
                                          "DEF VX_FLOOR_00 Switch { whichChoice 0 choice [ Transform {\r\n"
                                          "DEF VX_LAYER_F00L00 Switch { whichChoice 0 choice [ Group {\r\n"
                                          "DEF VX_LAYER_F00L03 Switch { whichChoice -1 choice [ Group {\r\n"
                                          "DEF VX_LAYER_F00L03 Switch { whichChoice 0 choice [ Group {\r\n"
                                          "DEF VX_LAYER_F07L01 Switch { whichChoice 0 choice [ Group {\r\n"
                                          "DEF VX_FLOOR_01 Switch { whichChoice -1 choice [ Transform {\r\n");
    ASSERT_EQ(found.floors.size(), 2u);
    EXPECT_EQ(found.floors[0].floor, 0);
    EXPECT_TRUE(found.floors[0].visible);
    ASSERT_EQ(found.floors[0].layers.size(), 2u); // the repeated layer once, the orphan not at all
    EXPECT_EQ(found.floors[0].layers[1].layer, 3);
    EXPECT_FALSE(found.floors[0].layers[1].visible);
    EXPECT_FALSE(found.floors[1].visible);

    // Thousands of layer lines for one floor, a line without an end, and
    // names beyond two digits stay bounded.
    QByteArray hostile = "DEF VX_FLOOR_05 Switch { whichChoice 0\n";
    for (int i = 0; i < 5000; ++i)
        hostile += QStringLiteral("DEF VX_LAYER_F05L%1 Switch { whichChoice 0\n")
                       .arg(i % 100, 2, 10, QChar('0'))
                       .toLatin1();
    hostile += "DEF VX_FLOOR_123 Switch { whichChoice 0\n";
    hostile += QByteArray(1 << 20, 'D');
    const CVx3dSceneSwitches bounded = Scan(hostile);
    ASSERT_EQ(bounded.floors.size(), 1u);
    EXPECT_EQ(bounded.floors[0].layers.size(), 100u);

    CVx3dSceneSwitches missing;
    EXPECT_FALSE(missing.ScanSceneFile(QStringLiteral("/nonexistent/scene.wrl")));
    EXPECT_TRUE(missing.floors.empty());

    // Compatibility ignores visibility but not the layers' order.
    CVx3dSceneSwitches other = found;
    other.floors[0].visible = false;
    EXPECT_TRUE(found.IsCompatible(other));
    std::swap(other.floors[0].layers[0], other.floors[0].layers[1]);
    EXPECT_FALSE(found.IsCompatible(other));
}

TEST(SceneSwitches, HalvedWallsFollowTheVisibleFloorAbove)
{
    CVx3dSceneSwitches house;
    house.floors = {{0, true, {}}, {1, true, {}}, {2, false, {}}};
    house.wallsMode = 2;
    // The top floor hidden: the middle floor's upper walls go, the ground
    // floor's stay; lower walls always stand.
    EXPECT_EQ(house.WallChoice(0, true), 0);
    EXPECT_EQ(house.WallChoice(1, true), -1);
    EXPECT_EQ(house.WallChoice(2, true), -1);
    EXPECT_EQ(house.WallChoice(1, false), 0);
    house.wallsMode = 1;
    EXPECT_EQ(house.WallChoice(0, false), -1);
    house.wallsMode = 0;
    EXPECT_EQ(house.WallChoice(2, true), 0);
    EXPECT_EQ(CVx3dSceneSwitches::WallNodeName(3, true), QStringLiteral("VX_WALLS_F03H1"));
    EXPECT_EQ(CVx3dSceneSwitches::LayerNodeName(1, 12), QStringLiteral("VX_LAYER_F01L12"));
}
