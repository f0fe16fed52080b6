// plaveno-mklibrary: writes the standard object library, Library.pvl, from
// the catalogue below through the program's own part writer, so that the
// file is exactly what the program itself would save.
//
//     plaveno-mklibrary OUTPUT.pvl
//
// Sizes are centimetres: width along the object's front, depth from the wall
// into the room, height, and the elevation of wall-hung things above the
// floor. Colours are colour words, 0x00BBGGRR.

#include "CVxAppHelperHeadless.h"
#include "CVxIniWriter.h"
#include "CVxPart.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <clocale>
#include <cstdio>

namespace {

constexpr unsigned kNoFront = 0xEF000000;

// Surfaces.
constexpr unsigned kWhite = 0xFFFFFF;
constexpr unsigned kOak = 0x6A9ACB;
constexpr unsigned kWalnut = 0x2E517B;
constexpr unsigned kBeech = 0x9CC4E0;
constexpr unsigned kLightGrey = 0xE0E0E0;
constexpr unsigned kGrey = 0xB0B0B0;
constexpr unsigned kSteel = 0xC8C8C0;
constexpr unsigned kBlack = 0x202020;
constexpr unsigned kFabricBlue = 0xA87D5B;
constexpr unsigned kFabricBeige = 0xB0D0E0;
constexpr unsigned kFabricRed = 0x3C3CA0;
constexpr unsigned kFabricGreen = 0x5A8A5A;
constexpr unsigned kLeather = 0x2A4A7A;
constexpr unsigned kLinen = 0xE8F4FA;
constexpr unsigned kKitchenFront = 0xE6F0F5;
constexpr unsigned kGlass = 0xF0E8D8;
constexpr unsigned kWater = 0xF0C890;
constexpr unsigned kPlant = 0x3C9A4C;
constexpr unsigned kTree = 0x327D2E;
constexpr unsigned kGrass = 0x42B37C;
constexpr unsigned kStone = 0xA8A8A8;
constexpr unsigned kSand = 0xA0D4E8;
constexpr unsigned kTerracotta = 0x4B6EC8;
constexpr unsigned kBrick = 0x3A4BB2;
constexpr unsigned kRoof = 0x3050A0;
constexpr unsigned kCarRed = 0x3030C0;
constexpr unsigned kYellow = 0x40D0F0;

struct SEntry
{
    int lib;
    int type;
    const char* caption;
    // Library pages by their names in files, joined by "|".
    const char* pages;
    double width, depth, height, elevation;
    unsigned fill;
    unsigned front;
    int subType;
};

constexpr int L = ptLibraryObject;

// clang-format off
const SEntry kCatalogue[] = {
    // Basic shapes, valid in any unit.
    {0, ptRectangle, "Rectangle", "Basic", 100, 100, 100, 0, kLightGrey, kNoFront, 0},
    {0, ptCircle, "Circle", "Basic", 100, 100, 100, 0, kLightGrey, kNoFront, 0},
    {0, ptEllipse, "Ellipse", "Basic", 150, 100, 100, 0, kLightGrey, kNoFront, 0},
    {0, ptTriangle, "Triangle", "Basic", 100, 100, 100, 0, kLightGrey, kNoFront, 0},
    {0, ptHexagon, "Hexagon", "Basic", 100, 100, 100, 0, kLightGrey, kNoFront, 0},
    {0, ptOctagon, "Octagon", "Basic", 100, 100, 100, 0, kLightGrey, kNoFront, 0},
    {0, ptPolygon, "Polygon", "Basic", 100, 100, 100, 0, kLightGrey, kNoFront, 0},
    {0, ptArrow, "Arrow", "Basic|Symbols", 40, 100, 1, 0, kGrey, kNoFront, 0},
    {0, ptLine, "Line", "Basic", 0, 100, 1, 0, kBlack, kNoFront, 0},
    {0, ptPolyline, "Polyline", "Basic", 100, 100, 1, 0, kBlack, kNoFront, 0},

    // Doors and windows.
    {280, L, "Door", "Doors", 80, 12, 205, 0, kWhite, kNoFront, 0},
    {281, L, "Door, right hand", "Doors", 80, 12, 205, 0, kWhite, kNoFront, 0},
    {280, L, "Glazed door", "Doors", 80, 12, 205, 0, kWhite, kNoFront, 3},
    {280, L, "Panelled door", "Doors", 90, 12, 205, 0, kOak, kNoFront, 1},
    {282, L, "Entrance door", "Doors", 100, 15, 210, 0, kWalnut, kNoFront, 2},
    {200, L, "Double door", "Doors", 140, 12, 205, 0, kWhite, kNoFront, 0},
    {283, L, "Double glazed door", "Doors", 160, 12, 210, 0, kWhite, kNoFront, 3},
    {195, L, "Sliding door", "Doors", 90, 12, 205, 0, kOak, kNoFront, 0},
    {196, L, "Sliding door, right hand", "Doors", 90, 12, 205, 0, kOak, kNoFront, 0},
    {199, L, "Double sliding door", "Doors", 180, 12, 205, 0, kWhite, kNoFront, 4},
    {197, L, "Folding door, two panels", "Doors", 90, 12, 205, 0, kWhite, kNoFront, 0},
    {198, L, "Folding door, two panels, right hand", "Doors", 90, 12, 205, 0, kWhite, kNoFront, 0},
    {263, L, "Folding door, three panels", "Doors", 120, 12, 205, 0, kWhite, kNoFront, 0},
    {264, L, "Folding door, three panels, right hand", "Doors", 120, 12, 205, 0, kWhite, kNoFront, 0},
    {265, L, "Folding door, four panels", "Doors", 160, 12, 205, 0, kWhite, kNoFront, 0},
    {266, L, "Folding door, four panels, right hand", "Doors", 160, 12, 205, 0, kWhite, kNoFront, 0},
    {246, L, "Garage door", "Doors|Garden", 250, 20, 210, 0, kWhite, kNoFront, 0},
    {106, L, "Wall opening", "Doors", 90, 12, 210, 0, kWhite, kNoFront, 0},
    {0, ptDoor, "Door (plan symbol)", "Doors", 80, 12, 205, 0, kWhite, kNoFront, 0},
    {278, ptWindow, "Window", "Doors", 90, 12, 120, 90, kWhite, kWhite, 0},
    {279, ptWindow, "Window, right hand", "Doors", 90, 12, 120, 90, kWhite, kWhite, 0},
    {278, ptWindow, "Double window", "Doors", 140, 12, 140, 85, kWhite, kWhite, 2},
    {278, ptWindow, "Triple window", "Doors", 210, 12, 140, 85, kWhite, kWhite, 5},
    {278, ptWindow, "Small window", "Doors|Bathroom", 60, 12, 60, 150, kWhite, kWhite, 1},
    {278, ptWindow, "French window", "Doors", 140, 12, 220, 0, kWhite, kWhite, 8},
    {278, ptWindow, "Wooden window", "Doors", 120, 12, 140, 85, kOak, kOak, 3},

    // Cabinets.
    {20, L, "Tall cabinet", "Cabinets|Kitchen", 60, 60, 210, 0, kWhite, kKitchenFront, 0},
    {21, L, "Base cabinet", "Cabinets|Kitchen", 60, 60, 85, 0, kWhite, kKitchenFront, 0},
    {202, L, "Wall cabinet", "Cabinets|Kitchen", 60, 35, 70, 145, kWhite, kKitchenFront, 0},
    {203, L, "Chest of drawers", "Cabinets|Bedroom", 100, 50, 90, 0, kOak, kOak, 0},
    {205, L, "Sideboard", "Cabinets", 180, 45, 85, 0, kWalnut, kWalnut, 0},
    {206, L, "Bedside table", "Cabinets|Bedroom", 45, 40, 55, 0, kOak, kOak, 0},
    {217, L, "TV cabinet", "Cabinets", 160, 45, 50, 0, kWalnut, kBlack, 0},
    {22, L, "Bookcase", "Cabinets", 100, 35, 200, 0, kOak, kNoFront, 0},
    {204, L, "Shelf unit", "Cabinets", 80, 35, 180, 0, kWhite, kNoFront, 0},
    {23, L, "Corner cabinet", "Cabinets", 90, 90, 85, 0, kWhite, kKitchenFront, 0},
    {24, L, "Glass cabinet", "Cabinets", 90, 40, 190, 0, kWalnut, kGlass, 0},
    {207, L, "Wardrobe, two doors", "Cabinets|Bedroom", 100, 60, 210, 0, kWhite, kOak, 0},
    {208, L, "Wardrobe, three doors", "Cabinets|Bedroom", 150, 60, 210, 0, kWhite, kOak, 0},
    {277, L, "Wardrobe", "Cabinets|Bedroom", 200, 65, 230, 0, kWhite, kGlass, 0},
    {1101, L, "Made-to-measure wardrobe", "Cabinets|Bedroom", 200, 65, 250, 0, 0xEEDEDE, kNoFront, 0},
    {286, L, "Coat cupboard", "Cabinets|Accessories", 80, 60, 200, 0, kWhite, kNoFront, 0},
    {116, L, "Blanket chest", "Cabinets|Bedroom", 100, 45, 50, 0, kOak, kWalnut, 0},
    {254, L, "Filing cabinet", "Cabinets|Other", 45, 60, 130, 0, kGrey, kNoFront, 0},
    {256, L, "Safe", "Cabinets|Other", 50, 50, 70, 0, kBlack, kNoFront, 0},
    {234, L, "Shoe cabinet", "Cabinets", 80, 30, 100, 0, kWhite, kOak, 0},
    {275, L, "Wall shelf", "Cabinets|Accessories", 80, 22, 3, 150, kOak, kNoFront, 0},
    {814, L, "Wine rack", "Cabinets|Kitchen", 60, 30, 90, 0, kOak, kNoFront, 0},

    // Chairs and sofas.
    {39, L, "Chair", "Chairs", 45, 50, 90, 0, kOak, kNoFront, 0},
    {43, L, "Dining chair with arms", "Chairs", 55, 55, 90, 0, kWalnut, kNoFront, 0},
    {40, L, "Armchair", "Chairs", 85, 85, 80, 0, kFabricBlue, kNoFront, 0},
    {243, L, "Wing chair", "Chairs", 80, 85, 110, 0, kFabricGreen, kNoFront, 0},
    {244, L, "Recliner", "Chairs", 85, 95, 100, 0, kLeather, kNoFront, 0},
    {801, L, "Lounge armchair", "Chairs", 75, 80, 75, 0, kFabricBeige, kNoFront, 0},
    {803, L, "Club chair", "Chairs", 80, 80, 75, 0, kLeather, kNoFront, 0},
    {41, L, "Office chair", "Chairs|Other", 65, 65, 110, 0, kBlack, kNoFront, 0},
    {806, L, "Mesh office chair", "Chairs|Other", 65, 65, 115, 0, kGrey, kNoFront, 0},
    {33, L, "Stool", "Chairs", 35, 35, 45, 0, kOak, kFabricRed, 0},
    {42, L, "Bar stool", "Chairs|Kitchen", 40, 40, 75, 0, kSteel, kNoFront, 0},
    {253, L, "Vanity stool", "Chairs|Bedroom", 40, 40, 45, 0, kWhite, kNoFront, 0},
    {81, L, "Pouf", "Chairs", 50, 50, 42, 0, kFabricBeige, kFabricRed, 0},
    {291, L, "Footstool", "Chairs", 60, 45, 40, 0, kFabricBlue, kNoFront, 0},
    {44, L, "Rocking chair", "Chairs", 65, 100, 100, 0, kOak, kNoFront, 0},
    {245, L, "Beanbag", "Chairs", 90, 90, 60, 0, kFabricRed, kNoFront, 0},
    {160, L, "Highchair", "Chairs|Bedroom", 55, 75, 100, 0, kWhite, kNoFront, 0},
    {47, L, "Sofa, two seats", "Chairs", 160, 90, 80, 0, kFabricBlue, kNoFront, 0},
    {290, L, "Loveseat", "Chairs", 140, 85, 80, 0, kFabricBeige, kNoFront, 0},
    {48, L, "Sofa, three seats", "Chairs", 220, 90, 80, 0, kFabricBeige, kNoFront, 0},
    {289, L, "Sofa, four seats", "Chairs", 280, 95, 80, 0, kFabricGreen, kNoFront, 0},
    {808, L, "Sectional sofa", "Chairs", 300, 100, 80, 0, kGrey, kNoFront, 0},
    {298, L, "Corner sofa, left", "Chairs", 260, 200, 80, 0, kFabricBlue, kNoFront, 0},
    {299, L, "Corner sofa, right", "Chairs", 260, 200, 80, 0, kFabricBlue, kNoFront, 0},
    {49, L, "Chaise longue", "Chairs", 170, 70, 75, 0, kLeather, kNoFront, 0},
    {46, L, "Bench", "Chairs", 150, 40, 45, 0, kOak, kNoFront, 0},
    {288, L, "Dining bench", "Chairs|Tables", 160, 35, 45, 0, kOak, kNoFront, 0},
    {201, L, "Corner bench", "Chairs|Kitchen", 180, 150, 90, 0, kOak, kNoFront, 0},
    {284, L, "Hall bench", "Chairs|Accessories", 100, 40, 48, 0, kWhite, kOak, 0},

    // Tables and desks.
    {31, L, "Table", "Tables", 160, 90, 75, 0, kOak, kNoFront, 0},
    {26, L, "Round table", "Tables", 100, 100, 75, 0, kOak, kNoFront, 0},
    {27, L, "Round table with four chairs", "Tables", 180, 180, 75, 0, kOak, kNoFront, 0},
    {28, L, "Dining table with four chairs", "Tables|Kitchen", 140, 190, 75, 0, kOak, kNoFront, 0},
    {29, L, "Dining table with six chairs", "Tables", 200, 190, 75, 0, kWalnut, kNoFront, 0},
    {30, L, "Square table with four chairs", "Tables", 200, 200, 75, 0, kBeech, kNoFront, 0},
    {50, L, "Oval table", "Tables", 180, 100, 75, 0, kWalnut, kNoFront, 0},
    {51, L, "Oval table with six chairs", "Tables", 280, 200, 75, 0, kWalnut, kNoFront, 0},
    {25, L, "Octagonal table", "Tables", 120, 120, 75, 0, kOak, kNoFront, 0},
    {68, L, "Hexagonal table", "Tables", 120, 110, 75, 0, kBeech, kNoFront, 0},
    {69, L, "Octagonal table with chairs", "Tables", 220, 220, 75, 0, kOak, kNoFront, 0},
    {52, L, "Coffee table", "Tables", 110, 60, 45, 0, kWalnut, kNoFront, 0},
    {248, L, "Oval coffee table", "Tables", 120, 70, 42, 0, kGlass, kNoFront, 0},
    {292, L, "Side table", "Tables", 50, 50, 55, 0, kOak, kNoFront, 0},
    {294, L, "Round side table", "Tables", 50, 50, 55, 0, kWhite, kNoFront, 0},
    {295, L, "Nest of tables", "Tables", 55, 40, 50, 0, kWalnut, kNoFront, 0},
    {293, L, "Console table", "Tables|Accessories", 120, 35, 80, 0, kWalnut, kNoFront, 0},
    {810, L, "Hall console", "Tables|Accessories", 100, 30, 80, 0, kOak, kNoFront, 0},
    {32, L, "Desk", "Tables|Other", 140, 70, 75, 0, kBeech, kWhite, 0},
    {34, L, "Office desk", "Tables|Other", 160, 80, 75, 0, kGrey, kLightGrey, 0},
    {816, L, "Standing desk", "Tables|Other", 140, 70, 110, 0, kWhite, kBlack, 0},
    {35, L, "Corner desk", "Tables|Other", 160, 140, 75, 0, kBeech, kWhite, 0},
    {252, L, "Dressing table", "Tables|Bedroom", 120, 45, 75, 0, kWhite, kOak, 0},

    // Bedroom.
    {55, L, "Single bed", "Bedroom", 100, 210, 50, 0, kLinen, kNoFront, 0},
    {56, L, "Double bed", "Bedroom", 160, 210, 50, 0, kLinen, kNoFront, 0},
    {59, L, "King-size bed", "Bedroom", 190, 215, 50, 0, kLinen, kNoFront, 0},
    {809, L, "Platform bed", "Bedroom", 200, 230, 35, 0, kOak, kNoFront, 0},
    {57, L, "Bunk bed", "Bedroom", 110, 205, 160, 0, kBeech, kNoFront, 0},
    {58, L, "Cot", "Bedroom", 70, 130, 90, 0, kWhite, kNoFront, 0},
    {247, L, "Futon", "Bedroom", 140, 200, 25, 0, kFabricBeige, kNoFront, 0},
    {259, L, "Play pen", "Bedroom", 100, 100, 70, 0, kBeech, kNoFront, 0},
    {161, L, "Toy chest", "Bedroom", 80, 45, 45, 0, kWhite, kFabricRed, 0},

    // Kitchen.
    {209, L, "Kitchen base unit", "Kitchen", 60, 60, 88, 0, kWhite, kKitchenFront, 0},
    {210, L, "Narrow base unit", "Kitchen", 40, 60, 88, 0, kWhite, kKitchenFront, 0},
    {211, L, "Kitchen wall unit", "Kitchen", 80, 35, 70, 145, kWhite, kKitchenFront, 0},
    {212, L, "Kitchen tall unit", "Kitchen", 60, 60, 215, 0, kWhite, kKitchenFront, 0},
    {215, L, "Drawer unit", "Kitchen", 60, 60, 88, 0, kWhite, kKitchenFront, 0},
    {216, L, "Sink base unit", "Kitchen", 80, 60, 88, 0, kWhite, kKitchenFront, 0},
    {213, L, "Sink unit with drainer", "Kitchen", 120, 60, 90, 0, kWhite, kKitchenFront, 0},
    {214, L, "Hob unit", "Kitchen", 60, 60, 90, 0, kWhite, kKitchenFront, 0},
    {218, L, "Oven housing", "Kitchen", 60, 60, 215, 0, kWhite, kKitchenFront, 0},
    {219, L, "Built-in dishwasher", "Kitchen", 60, 60, 88, 0, kWhite, kKitchenFront, 0},
    {228, L, "Kitchen corner unit", "Kitchen", 100, 100, 88, 0, kWhite, kKitchenFront, 0},
    {233, L, "Built-in fridge", "Kitchen", 60, 60, 215, 0, kWhite, kKitchenFront, 0},
    {230, L, "Kitchen island", "Kitchen", 200, 100, 90, 0, kWhite, kWalnut, 0},
    {229, L, "Breakfast bar", "Kitchen", 180, 60, 105, 0, kOak, kWalnut, 0},
    {140, L, "Worktop", "Kitchen", 120, 62, 4, 86, kStone, kNoFront, 0},
    {108, L, "Corner base cabinet", "Kitchen|Cabinets", 90, 90, 88, 0, kWhite, kKitchenFront, 0},
    {83, L, "Corner wall cabinet", "Kitchen|Cabinets", 65, 65, 70, 145, kWhite, kKitchenFront, 0},
    {85, L, "Kitchen sink", "Kitchen", 100, 50, 20, 70, kSteel, kNoFront, 0},
    {86, L, "Double kitchen sink", "Kitchen", 120, 50, 20, 70, kSteel, kNoFront, 0},
    {87, L, "Hob", "Kitchen", 58, 51, 5, 88, kBlack, kNoFront, 0},
    {88, L, "Gas hob, five burners", "Kitchen", 75, 51, 5, 88, kSteel, kNoFront, 0},
    {67, L, "Cooker", "Kitchen", 60, 60, 85, 0, kWhite, kBlack, 0},
    {60, L, "Refrigerator", "Kitchen", 60, 65, 145, 0, kWhite, kWhite, 0},
    {61, L, "Fridge-freezer", "Kitchen", 70, 70, 190, 0, kSteel, kSteel, 0},
    {139, L, "Dishwasher", "Kitchen", 60, 60, 85, 0, kWhite, kSteel, 0},
    {143, L, "Microwave oven", "Kitchen", 50, 40, 30, 90, kWhite, kBlack, 0},
    {89, L, "Extractor hood", "Kitchen", 60, 50, 60, 150, kSteel, kNoFront, 0},

    // Bathroom.
    {70, L, "Toilet", "Bathroom", 40, 70, 80, 0, kWhite, kNoFront, 0},
    {71, L, "Wall-hung toilet", "Bathroom", 38, 55, 40, 0, kWhite, kNoFront, 0},
    {72, L, "Bidet", "Bathroom", 38, 55, 40, 0, kWhite, kNoFront, 0},
    {75, L, "Urinal", "Bathroom", 40, 35, 65, 50, kWhite, kNoFront, 0},
    {73, L, "Washbasin", "Bathroom", 60, 45, 20, 65, kWhite, kNoFront, 0},
    {74, L, "Double washbasin", "Bathroom", 130, 50, 20, 65, kWhite, kNoFront, 0},
    {812, L, "Countertop basin", "Bathroom", 45, 45, 15, 85, kWhite, kNoFront, 0},
    {63, L, "Bathtub", "Bathroom", 170, 75, 60, 0, kWhite, kNoFront, 0},
    {225, L, "Bathtub with screen", "Bathroom", 170, 75, 60, 0, kWhite, kNoFront, 0},
    {120, L, "Oval bathtub", "Bathroom", 180, 85, 60, 0, kWhite, kNoFront, 0},
    {811, L, "Freestanding bathtub", "Bathroom", 170, 80, 62, 0, kWhite, kNoFront, 0},
    {64, L, "Corner bathtub", "Bathroom", 140, 140, 60, 0, kWhite, kNoFront, 0},
    {107, L, "Hot tub", "Bathroom|Garden", 220, 220, 90, 0, kWalnut, kNoFront, 0},
    {66, L, "Shower tray", "Bathroom", 90, 90, 5, 0, kWhite, kNoFront, 0},
    {268, L, "Shower cubicle", "Bathroom", 90, 90, 200, 0, kWhite, kNoFront, 0},
    {77, L, "Quadrant shower", "Bathroom", 90, 90, 200, 0, kWhite, kNoFront, 0},
    {80, L, "Quadrant shower tray", "Bathroom", 90, 90, 5, 0, kWhite, kNoFront, 0},
    {223, L, "Walk-in shower", "Bathroom", 140, 90, 200, 0, kWhite, kNoFront, 0},
    {813, L, "Rain shower", "Bathroom", 100, 100, 210, 0, kLightGrey, kNoFront, 0},
    {231, L, "Vanity unit", "Bathroom|Cabinets", 80, 46, 85, 0, kWhite, kOak, 0},
    {232, L, "Bathroom wall cabinet", "Bathroom|Cabinets", 60, 18, 70, 130, kWhite, kGlass, 0},
    {227, L, "Wall mirror", "Bathroom|Accessories", 60, 3, 80, 120, kGlass, kNoFront, 0},
    {222, L, "Towel radiator", "Bathroom", 50, 8, 120, 20, kWhite, kNoFront, 0},
    {224, L, "Laundry basket", "Bathroom", 45, 35, 60, 0, kBeech, kNoFront, 0},
    {269, L, "Sauna", "Bathroom", 200, 200, 210, 0, kBeech, kNoFront, 0},
    {53, L, "Washing machine", "Bathroom|Kitchen", 60, 60, 85, 0, kWhite, kGrey, 0},
    {54, L, "Tumble dryer", "Bathroom", 60, 60, 85, 0, kWhite, kGrey, 0},
    {804, L, "Bath mat", "Bathroom", 80, 50, 1, 0, kLinen, kNoFront, 0},

    // Accessories.
    {92, L, "Rug", "Accessories", 200, 140, 1, 0, kFabricRed, kNoFront, 0},
    {805, L, "Large rug", "Accessories", 300, 200, 1, 0, kFabricBeige, kNoFront, 0},
    {807, L, "Runner", "Accessories", 250, 80, 1, 0, kFabricBlue, kNoFront, 0},
    {117, L, "Doormat", "Accessories", 80, 50, 1, 0, kSand, kNoFront, 0},
    {104, L, "Round rug", "Accessories", 160, 160, 1, 0, kFabricBlue, kNoFront, 0},
    {249, L, "Oval rug", "Accessories", 200, 140, 1, 0, kFabricGreen, kNoFront, 0},
    {267, L, "Carpet with picture", "Accessories", 200, 150, 1, 0, kWhite, kNoFront, 0},
    {93, L, "Framed picture", "Accessories", 60, 4, 45, 140, kWhite, kWalnut, 0},
    {272, L, "Mirror with frame", "Accessories", 70, 4, 100, 110, kGlass, kOak, 0},
    {171, L, "Photo", "Accessories", 100, 70, 1, 0, kWhite, kNoFront, 0},
    {172, L, "Poster", "Accessories", 60, 2, 85, 130, kWhite, kNoFront, 0},
    {144, L, "Television", "Accessories", 70, 25, 50, 50, kBlack, kNoFront, 0},
    {274, L, "Flat-screen TV", "Accessories", 124, 24, 72, 90, kBlack, kBlack, 0},
    {145, L, "Computer", "Accessories|Other", 60, 45, 45, 75, kGrey, kNoFront, 0},
    {146, L, "Laptop", "Accessories|Other", 35, 25, 2, 75, kSteel, kNoFront, 0},
    {255, L, "Printer", "Accessories|Other", 45, 40, 25, 75, kLightGrey, kNoFront, 0},
    {147, L, "Loudspeaker", "Accessories", 25, 30, 100, 0, kBlack, kNoFront, 0},
    {130, L, "Floor lamp", "Accessories", 40, 40, 170, 0, kFabricBeige, kNoFront, 0},
    {131, L, "Table lamp", "Accessories", 30, 30, 45, 75, kFabricBeige, kNoFront, 0},
    {815, L, "Pendant lamp", "Accessories", 45, 45, 30, 200, kWhite, kNoFront, 0},
    {118, L, "Ceiling light", "Accessories", 40, 40, 10, 240, kWhite, kNoFront, 0},
    {132, L, "Wall light", "Accessories", 20, 15, 20, 180, kWhite, kNoFront, 0},
    {133, L, "Ceiling fan", "Accessories", 120, 120, 35, 215, kWhite, kNoFront, 0},
    {126, L, "Fireplace", "Accessories", 150, 60, 120, 0, kBrick, kNoFront, 0},
    {270, L, "Fireplace with surround", "Accessories", 160, 50, 120, 0, kWhite, kBlack, 0},
    {271, L, "Wood-burning stove", "Accessories", 55, 50, 100, 0, kBlack, kGrey, 0},
    {82, L, "Radiator", "Accessories|Other", 100, 10, 60, 15, kWhite, kNoFront, 0},
    {155, L, "Clothes rail", "Accessories|Bedroom", 120, 45, 160, 0, kSteel, kNoFront, 0},
    {285, L, "Shoe rack", "Accessories", 80, 30, 50, 0, kOak, kNoFront, 0},
    {158, L, "Coat stand", "Accessories", 50, 50, 180, 0, kWalnut, kNoFront, 0},
    {273, L, "Coat rack", "Accessories", 60, 60, 175, 0, kBlack, kNoFront, 0},
    {159, L, "Umbrella stand", "Accessories", 30, 30, 55, 0, kSteel, kNoFront, 0},
    {154, L, "Aquarium", "Accessories", 100, 40, 50, 75, kGlass, kNoFront, 0},
    {95, L, "Potted plant", "Accessories|Garden", 45, 45, 100, 0, kTerracotta, kNoFront, 0},
    {297, L, "Plant stand", "Accessories", 40, 40, 70, 0, kWalnut, kNoFront, 0},
    {296, L, "Drinks trolley", "Accessories|Kitchen", 70, 45, 80, 0, kSteel, kNoFront, 0},
    {153, L, "Dog basket", "Accessories", 80, 60, 25, 0, kFabricRed, kNoFront, 0},
    {258, L, "Cat tree", "Accessories", 60, 60, 150, 0, kFabricBeige, kNoFront, 0},
    {157, L, "Robot vacuum", "Accessories", 35, 35, 10, 0, kBlack, kNoFront, 0},
    {91, L, "Piano", "Accessories", 150, 60, 125, 0, kBlack, kNoFront, 0},
    {94, L, "Grand piano", "Accessories", 150, 200, 100, 0, kBlack, kNoFront, 0},
    {148, L, "Guitar", "Accessories", 40, 105, 12, 0, kOak, kNoFront, 0},
    {149, L, "Drum kit", "Accessories", 180, 150, 120, 0, kCarRed, kNoFront, 0},

    // Stairs.
    {65, L, "Stairs", "Stairs", 300, 100, 280, 0, kOak, kOak, 0},
    {162, L, "Stairs with balusters", "Stairs", 300, 100, 280, 0, kOak, kWhite, 0},
    {163, L, "Spiral staircase", "Stairs", 160, 160, 280, 0, kSteel, kNoFront, 0},
    {164, L, "L-shaped stairs", "Stairs", 250, 250, 280, 0, kOak, kNoFront, 0},
    {165, L, "U-shaped stairs", "Stairs", 300, 220, 280, 0, kOak, kNoFront, 0},
    {166, L, "Ladder", "Stairs", 200, 45, 10, 0, kBeech, kNoFront, 0},
    {167, L, "Ramp", "Stairs|Garden", 300, 120, 30, 0, kStone, kNoFront, 0},
    {168, L, "Lift", "Stairs|Other", 150, 150, 250, 0, kSteel, kNoFront, 0},
    {169, L, "Column", "Stairs|Other", 30, 30, 260, 0, kWhite, kNoFront, 0},
    {170, L, "Round column", "Stairs|Other", 30, 30, 260, 0, kWhite, kNoFront, 0},
    {173, L, "Chimney", "Other", 60, 60, 300, 0, kBrick, kNoFront, 0},

    // Garden.
    {96, L, "Tree", "Garden", 400, 400, 600, 0, kTree, kNoFront, 0},
    {97, L, "Bush", "Garden", 120, 120, 120, 0, kPlant, kNoFront, 0},
    {98, L, "Conifer", "Garden", 200, 200, 500, 0, kTree, kNoFront, 0},
    {100, L, "Palm", "Garden", 300, 300, 500, 0, kPlant, kNoFront, 0},
    {276, L, "Tree (billboard)", "Garden", 300, 300, 500, 0, kTree, kNoFront, 0},
    {99, L, "Round flower bed", "Garden", 150, 150, 30, 0, kGrass, kNoFront, 0},
    {103, L, "Oval flower bed", "Garden", 250, 150, 30, 0, kGrass, kNoFront, 0},
    {152, L, "Hexagonal planter", "Garden", 80, 70, 50, 0, kStone, kNoFront, 0},
    {251, L, "Oval planter", "Garden", 100, 50, 45, 0, kTerracotta, kNoFront, 0},
    {257, L, "Plant shelf", "Garden", 100, 35, 120, 0, kOak, kNoFront, 0},
    {190, L, "Hedge", "Garden", 300, 80, 150, 0, kTree, kNoFront, 0},
    {102, L, "Garden pond", "Garden", 300, 200, 60, 0, kStone, kNoFront, 0},
    {111, L, "Swimming pool", "Garden", 800, 400, 150, 0, kWhite, kNoFront, 0},
    {114, L, "Lawn", "Garden", 500, 500, 1, 0, kGrass, kNoFront, 0},
    {115, L, "Paving", "Garden", 300, 300, 2, 0, kStone, kNoFront, 0},
    {250, L, "Stepping stone", "Garden", 60, 40, 5, 0, kStone, kNoFront, 0},
    {101, L, "Gazebo", "Garden", 350, 350, 300, 0, kWhite, kNoFront, 0},
    {189, L, "Garden shed", "Garden", 250, 200, 230, 0, kOak, kNoFront, 0},
    {191, L, "Fence", "Garden", 250, 10, 120, 0, kOak, kNoFront, 0},
    {192, L, "Garden gate", "Garden", 100, 10, 120, 0, kOak, kNoFront, 0},
    {194, L, "Rainwater tank", "Garden", 100, 100, 150, 0, kGrey, kNoFront, 0},
    {262, L, "Garden table with chairs", "Garden|Tables", 180, 180, 72, 0, kWhite, kNoFront, 0},
    {820, L, "Outdoor dining set", "Garden|Tables", 220, 200, 75, 0, kOak, kNoFront, 0},
    {112, L, "Table with parasol", "Garden", 300, 300, 240, 0, kFabricBeige, kNoFront, 0},
    {261, L, "Garden chair", "Garden|Chairs", 55, 60, 85, 0, kWhite, kNoFront, 0},
    {178, L, "Garden bench", "Garden", 150, 60, 85, 0, kOak, kNoFront, 0},
    {177, L, "Sun lounger", "Garden", 70, 195, 35, 0, kWhite, kNoFront, 0},
    {45, L, "Deck chair", "Garden|Chairs", 60, 130, 80, 0, kFabricBlue, kNoFront, 0},
    {818, L, "Outdoor sofa", "Garden", 200, 85, 75, 0, kFabricBeige, kNoFront, 0},
    {260, L, "Hammock", "Garden", 100, 350, 100, 0, kFabricBeige, kNoFront, 0},
    {182, L, "Barbecue", "Garden", 120, 60, 100, 0, kBlack, kNoFront, 0},
    {819, L, "Fire pit", "Garden", 90, 90, 40, 0, kStone, kNoFront, 0},
    {183, L, "Swing", "Garden", 250, 150, 200, 0, kOak, kNoFront, 0},
    {184, L, "Sandpit", "Garden", 200, 200, 25, 0, kOak, kNoFront, 0},
    {186, L, "Trampoline", "Garden", 300, 300, 90, 0, kSteel, kNoFront, 0},
    {105, L, "Car", "Garden|Other", 450, 180, 145, 0, kCarRed, kNoFront, 0},
    {109, L, "Motorbike", "Garden|Other", 210, 80, 110, 0, kBlack, kNoFront, 0},
    {110, L, "Bicycle", "Garden|Other", 175, 60, 100, 0, kYellow, kNoFront, 0},
    {193, L, "Parking space", "Garden", 500, 250, 1, 0, kStone, kNoFront, 0},

    // Other: sport, utilities.
    {150, L, "Billiard table", "Other", 270, 150, 80, 0, kWalnut, kNoFront, 0},
    {151, L, "Table tennis table", "Other|Garden", 274, 153, 76, 0, kFabricGreen, kNoFront, 0},
    {141, L, "Treadmill", "Other", 180, 80, 140, 0, kGrey, kNoFront, 0},
    {142, L, "Exercise bike", "Other", 110, 60, 120, 0, kBlack, kNoFront, 0},
    {156, L, "Ironing board", "Other", 120, 38, 90, 0, kLightGrey, kNoFront, 0},
    {220, L, "Clothes airer", "Other", 140, 55, 100, 0, kSteel, kNoFront, 0},
    {134, L, "Air conditioner", "Other", 80, 25, 30, 210, kWhite, kNoFront, 0},
    {135, L, "Boiler", "Other|Kitchen", 45, 35, 75, 140, kWhite, kNoFront, 0},
    {136, L, "Water heater", "Other|Bathroom", 50, 50, 100, 110, kWhite, kNoFront, 0},
    {137, L, "Electrical panel", "Other", 40, 12, 60, 140, kLightGrey, kNoFront, 0},

    // Additional 3D shapes.
    {122, ptRectangle, "Box", "Shapes3D", 100, 100, 100, 0, kLightGrey, kNoFront, 0},
    {129, ptRectangle, "Slab", "Shapes3D", 200, 200, 20, 0, kStone, kNoFront, 0},
    {121, L, "Pyramid", "Shapes3D", 100, 100, 100, 0, kSand, kNoFront, 0},
    {123, L, "Lean-to roof", "Shapes3D|Garden", 400, 300, 100, 240, kRoof, kWhite, 0},
    {124, L, "Gable roof", "Shapes3D|Garden", 600, 400, 200, 270, kRoof, kWhite, 0},
    {128, L, "Roof slope", "Shapes3D", 400, 300, 10, 270, kRoof, kNoFront, 0},
    {0, ptCircle, "Cylinder", "Shapes3D", 100, 100, 200, 0, kLightGrey, kNoFront, 0},
    {0, ptTriangle, "Prism", "Shapes3D", 100, 100, 100, 0, kLightGrey, kNoFront, 0},

    // Symbols of the drawing.
    {0, ptCompass, "Compass", "Symbols", 100, 100, 1, 0, kWhite, kNoFront, 0},
    {0, ptEntrTriangle, "Entrance", "Symbols", 60, 50, 1, 0, kBlack, kNoFront, 0},
    {0, ptLabel, "Label", "Symbols|Basic", 100, 30, 1, 0, kWhite, kNoFront, 0},
    {0, ptMeasLine, "Dimension line", "Symbols|Basic", 0, 100, 1, 0, kBlack, kNoFront, 0},
    {0, ptAngle, "Angle", "Symbols", 100, 100, 1, 0, kBlack, kNoFront, 0},
    {0, ptEnergyLabel, "Energy label", "Symbols", 60, 90, 1, 0, kWhite, kNoFront, 0},
    {226, L, "Socket", "Symbols", 20, 12, 1, 30, kWhite, kNoFront, 0},
    {399, L, "Person", "Symbols", 60, 35, 175, 0, kFabricBlue, kNoFront, 0},
};
// clang-format on

CVxStringW Text(const char* utf8)
{
    return CVxStringW(QString::fromUtf8(utf8));
}

void Fill(CVxPart& part, const SEntry& e)
{
    part.type = static_cast<uint16_t>(e.type);
    part.libObjID = e.lib;
    part.caption = Text(e.caption);
    part.width = e.width;
    part.height = e.depth;
    part.zHeight = e.height;
    part.z = e.elevation;
    part.subType = static_cast<int16_t>(e.subType);
    part.lineColor = 0;
    part.textColor = 0;
    part.fillStyle = 0;
    part.lineStyle = lsSolid;
    part.SetFillColor(e.fill);
    part.frontColorEnable = e.front != kNoFront;
    part.appearFront.SetColor(part.frontColorEnable ? e.front : (e.fill | 0xEF000000));
    // Doors and windows hang in walls, most of them with a frame of their own.
    part.snapToWall =
        part.type == ptWindow || part.type == ptDoor || CVxPart::IsDoorLike(e.type, e.lib) || e.lib == 106;
    if (part.HasCap(capDoorFrame)) {
        part.doorframe = true;
        part.thickness = part.HasCap(capWindowFrame) && part.type != ptWindow ? 2.54 : 7.0;
    }
    if (part.type == ptArrow || part.type == ptLine || part.type == ptMeasLine || part.type == ptAngle)
        part.lineColor = e.fill;
}

bool WriteLibrary(const CVxStringW& path)
{
    CVxIniWriter writer(path);
    if (!writer.IsOpened())
        return false;
    static const char* const pageNames[15][2] = {{"UserDef", "User Library"},
                                                 {"Basic", "Basic Objects"},
                                                 {"Doors", "Doors and Windows"},
                                                 {"Cabinets", "Cabinets"},
                                                 {"Chairs", "Chairs"},
                                                 {"Tables", "Tables"},
                                                 {"Bathroom", "Bathroom"},
                                                 {"Bedroom", "Bedroom"},
                                                 {"Kitchen", "Kitchen"},
                                                 {"Accessories", "Accessories"},
                                                 {"Stairs", "Stairs"},
                                                 {"Garden", "Garden"},
                                                 {"Other", "Other"},
                                                 {"Shapes3D", "Additional 3D Shapes"},
                                                 {"Symbols", "Symbols"}};
    writer.StartSection("LibSetup");
    writer.WriteInteger("FileVersion", 1020);
    writer.WriteString("Encoding", Text("utf-8"));
    writer.WriteString("LibName", Text("Standard"));
    writer.WriteInteger("LibVersion", 1);
    for (int i = 0; i < 15; ++i) {
        char key[32];
        snprintf(key, sizeof key, "Page%d", i);
        writer.WriteString(key, Text(pageNames[i][1]));
        snprintf(key, sizeof key, "UniquePageName%d", i);
        writer.WriteString(key, Text(pageNames[i][0]));
    }
    writer.WriteInteger("ObjAddDimensions", 1);
    writer.WriteInteger("Hide3DThumbs", 0);

    int index = 1;
    for (const SEntry& e : kCatalogue) {
        CVxPart part;
        Fill(part, e);
        CVxStringA section;
        section.sprintf("Part%d", index++);
        part.SaveToFile(&writer, section, true, nullptr);
        // The pages a standard object appears on, by their names in files.
        writer.WriteString("Library", Text(e.pages));
    }
    writer.Finalize();
    return true;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    setlocale(LC_NUMERIC, "C");
    if (argc != 2) {
        fputs("Usage: plaveno-mklibrary OUTPUT.pvl\n", stderr);
        return 2;
    }
    QTemporaryDir scratch;
    const CVxStringW root = CVxStringW(scratch.path()) + L"/";
    static CVxAppHelperHeadless host(root, root);
    VX_SetAppHelperCallback(&host);
    if (!WriteLibrary(CVxStringW(QString::fromLocal8Bit(argv[1])))) {
        fprintf(stderr, "plaveno-mklibrary: can't write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
