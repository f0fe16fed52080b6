// Builds the sample projects through the program's own model and writes
// them with the project writer; with --check, reads them back and counts
// their rooms and objects.
//   plaveno-mksamples LIBRARY.pvl OUTPUT_FOLDER
//   plaveno-mksamples --check LIBRARY.pvl SAMPLES_FOLDER

#include "CVxAppCore.h"
#include "CVxAppHelperHeadless.h"
#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxHoleInFloor.h"
#include "CVxIniFileReader.h"
#include "CVxOptions.h"
#include "CVxPart.h"
#include "CVxProject.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <list>
#include <map>
#include <vector>

namespace {

// Colours as the project stores them, blue in the high byte.
constexpr unsigned kOakFloor = 0x7FB2D9;
constexpr unsigned kWalnutFloor = 0x5A7FA6;
constexpr unsigned kKitchenTiles = 0xD0D8DC;
constexpr unsigned kBathTiles = 0xF0E4CC;
constexpr unsigned kCarpet = 0xC8D8E8;
constexpr unsigned kHallStone = 0xB4BEC8;

constexpr double kOuterWall = 20;
constexpr double kInnerWall = 10;
constexpr double kWallHeight = 265;
// Everything lies this far in, so the outer faces of the walls start at the
// sheet's origin.
constexpr double kMargin = kOuterWall / 2;

struct SWall
{
    double x1, y1, x2, y2;
    bool outer;
};

struct SRoom
{
    const wchar_t* name;
    double x, y; // a point inside
    unsigned floorColour;
};

// Objects by their centre; doors and windows by the point of the wall
// they hang in, turned to face the room they open into: 0 on the upper
// wall of a room, 90 on its right, 180 on its lower and 270 on its left.
struct SObject
{
    const wchar_t* caption;
    double x, y, rotation;
};

struct SFloorDef
{
    std::vector<SWall> walls;
    std::vector<SRoom> rooms;
    std::vector<SObject> objects;
    // The stair well, an opening in this floor: x, y, width, height.
    double hole[4] = {0, 0, 0, 0};
};

struct SSample
{
    const wchar_t* file;
    double width, height;
    std::vector<SFloorDef> floors;
};

class CVxCatalogue
{
public:
    bool Load(const CVxStringW& path)
    {
        CVxIniFileReader reader(path, 0);
        if (!reader.Start())
            return false;
        while (!reader.GetSectionName().IsEmpty()) {
            if (reader.GetSectionName().Left(4) == "Part") {
                CVxPart part;
                part.LoadFromSection(&reader);
                m_parts.emplace(part.caption, part);
            } else {
                reader.ReadSection(nullptr);
            }
        }
        return !m_parts.empty();
    }
    const CVxPart* Find(const wchar_t* caption) const
    {
        const auto found = m_parts.find(CVxStringW(caption));
        return found == m_parts.end() ? nullptr : &found->second;
    }

private:
    std::map<CVxStringW, CVxPart> m_parts;
};

// The outer walls of a rectangle; where inner walls meet them is left to the
// plan, which finds the crossings itself.
void AddOutline(std::vector<SWall>& walls, double width, double height)
{
    walls.push_back({0, 0, width, 0, true});
    walls.push_back({width, 0, width, height, true});
    walls.push_back({width, height, 0, height, true});
    walls.push_back({0, height, 0, 0, true});
}

SSample Studio()
{
    SSample s{L"Studio.pvp", 650, 480, {}};
    SFloorDef f;
    AddOutline(f.walls, 650, 480);
    f.rooms = {{L"Studio", 325, 240, kOakFloor}};
    f.objects = {
        {L"Entrance door", 560, 480, 180},
        {L"Double window", 180, 0, 0},
        {L"Window", 470, 0, 0},
        {L"Window", 650, 400, 90},
        // Sleeping corner on the left.
        {L"Double bed", 100, 125, 0},
        {L"Bedside table", 203, 35, 0},
        {L"Wardrobe, two doors", 60, 440, 180},
        {L"Rug", 310, 190, 0},
        {L"Sofa, two seats", 310, 285, 180},
        {L"Coffee table", 310, 180, 0},
        {L"TV cabinet", 310, 33, 0},
        {L"Floor lamp", 205, 290, 0},
        // Kitchen along the right wall.
        {L"Fridge-freezer", 600, 45, 90},
        {L"Sink unit with drainer", 605, 140, 90},
        {L"Hob unit", 605, 230, 90},
        {L"Kitchen base unit", 605, 290, 90},
        {L"Round table with four chairs", 485, 370, 0},
        {L"Potted plant", 35, 300, 0},
    };
    s.floors.push_back(f);
    return s;
}

SSample Flat()
{
    SSample s{L"Flat.pvp", 1000, 900, {}};
    SFloorDef f;
    AddOutline(f.walls, 1000, 900);
    f.walls.push_back({0, 450, 1000, 450, false});
    f.walls.push_back({0, 600, 1000, 600, false});
    f.walls.push_back({600, 0, 600, 450, false});
    f.walls.push_back({400, 600, 400, 900, false});
    f.walls.push_back({650, 600, 650, 900, false});
    f.rooms = {
        {L"Living room", 300, 225, kOakFloor}, {L"Kitchen", 800, 225, kKitchenTiles},
        {L"Hall", 500, 525, kHallStone},       {L"Bedroom", 200, 750, kCarpet},
        {L"Bathroom", 525, 750, kBathTiles},   {L"Children's room", 825, 750, kWalnutFloor},
    };
    f.objects = {
        {L"Entrance door", 0, 525, 270},
        {L"Door", 530, 450, 0},
        {L"Door", 680, 450, 0},
        {L"Door", 330, 600, 0},
        {L"Door", 525, 600, 0},
        {L"Door", 720, 600, 0},
        {L"Double window", 300, 0, 0},
        {L"Window", 800, 0, 0},
        {L"Window", 200, 900, 180},
        {L"Small window", 525, 900, 180},
        {L"Window", 825, 900, 180},
        // Living room.
        {L"Rug", 250, 230, 0},
        {L"Sofa, three seats", 250, 380, 180},
        {L"Coffee table", 250, 250, 0},
        {L"Armchair", 60, 220, 270},
        {L"TV cabinet", 250, 35, 0},
        {L"Bookcase", 520, 30, 0},
        {L"Floor lamp", 35, 390, 0},
        {L"Potted plant", 35, 35, 0},
        // Kitchen.
        {L"Fridge-freezer", 650, 50, 0},
        {L"Kitchen base unit", 720, 45, 0},
        {L"Sink unit with drainer", 810, 45, 0},
        {L"Hob unit", 900, 45, 0},
        {L"Kitchen base unit", 955, 115, 90},
        {L"Dining table with four chairs", 820, 300, 90},
        // Hall.
        {L"Shoe cabinet", 900, 580, 180},
        {L"Coat stand", 960, 490, 0},
        {L"Runner", 220, 525, 0},
        // Bedroom.
        {L"Double bed", 200, 785, 180},
        {L"Bedside table", 95, 870, 180},
        {L"Bedside table", 305, 870, 180},
        {L"Wardrobe, three doors", 120, 640, 0},
        // Bathroom.
        {L"Bathtub", 525, 845, 180},
        {L"Toilet", 465, 645, 0},
        {L"Washbasin", 610, 720, 90},
        {L"Washing machine", 600, 640, 0},
        // Children's room.
        {L"Single bed", 935, 775, 0},
        {L"Desk", 760, 855, 180},
        {L"Office chair", 760, 790, 0},
        {L"Chest of drawers", 880, 640, 0},
    };
    s.floors.push_back(f);
    return s;
}

SSample House()
{
    SSample s{L"House.pvp", 1000, 800, {}};
    SFloorDef ground;
    AddOutline(ground.walls, 1000, 800);
    ground.walls.push_back({600, 0, 600, 800, false});
    ground.walls.push_back({600, 350, 1000, 350, false});
    ground.walls.push_back({0, 500, 600, 500, false});
    ground.walls.push_back({250, 500, 250, 800, false});
    ground.rooms = {
        {L"Living room", 300, 250, kOakFloor}, {L"Kitchen", 800, 175, kKitchenTiles},
        {L"Hall", 800, 575, kHallStone},       {L"WC", 125, 650, kBathTiles},
        {L"Study", 425, 650, kWalnutFloor},
    };
    ground.objects = {
        {L"Entrance door", 700, 800, 180},
        {L"Door", 600, 425, 0},
        {L"Door", 600, 560, 0},
        {L"Door", 700, 350, 0},
        {L"Door", 160, 500, 0},
        {L"Double window", 200, 0, 0},
        {L"Double window", 0, 250, 270},
        {L"Window", 800, 0, 0},
        {L"Small window", 125, 800, 180},
        {L"Window", 425, 800, 180},
        {L"Stairs", 940, 600, 90},
        // Living and dining.
        {L"Large rug", 230, 260, 0},
        {L"Sofa, three seats", 230, 400, 180},
        {L"Armchair", 420, 250, 90},
        {L"Coffee table", 230, 270, 0},
        {L"TV cabinet", 230, 35, 0},
        {L"Dining table with four chairs", 470, 120, 90},
        {L"Floor lamp", 35, 455, 0},
        // Kitchen.
        {L"Refrigerator", 645, 45, 0},
        {L"Kitchen base unit", 710, 45, 0},
        {L"Sink unit with drainer", 800, 45, 0},
        {L"Hob unit", 890, 45, 0},
        {L"Kitchen base unit", 955, 110, 90},
        {L"Kitchen base unit", 955, 170, 90},
        // Hall, WC, study.
        {L"Coat stand", 640, 750, 0},
        {L"Shoe cabinet", 622, 680, 270},
        {L"Toilet", 60, 560, 0},
        {L"Washbasin", 200, 610, 90},
        {L"Desk", 450, 745, 180},
        {L"Office chair", 450, 680, 0},
        {L"Bookcase", 430, 530, 0},
    };
    s.floors.push_back(ground);

    SFloorDef upper;
    AddOutline(upper.walls, 1000, 800);
    upper.walls.push_back({0, 400, 1000, 400, false});
    upper.walls.push_back({600, 0, 600, 400, false});
    upper.walls.push_back({450, 400, 450, 800, false});
    upper.walls.push_back({0, 600, 450, 600, false});
    upper.rooms = {
        {L"Bedroom", 300, 200, kCarpet},         {L"Guest room", 800, 200, kWalnutFloor},
        {L"Landing", 725, 600, kOakFloor},       {L"Bathroom", 225, 500, kBathTiles},
        {L"Children's room", 225, 700, kCarpet},
    };
    // The well over the stairs of the ground floor.
    upper.hole[0] = 890;
    upper.hole[1] = 450;
    upper.hole[2] = 100;
    upper.hole[3] = 300;
    upper.objects = {
        {L"Door", 525, 400, 0},
        {L"Door", 700, 400, 0},
        {L"Door", 450, 500, 0},
        {L"Door", 450, 700, 0},
        {L"Double window", 300, 0, 0},
        {L"Window", 800, 0, 0},
        {L"Small window", 0, 500, 270},
        {L"Window", 0, 700, 270},
        {L"Window", 725, 800, 180},
        // Bedroom.
        {L"Double bed", 300, 120, 0},
        {L"Bedside table", 195, 35, 0},
        {L"Bedside table", 405, 35, 0},
        {L"Wardrobe, three doors", 120, 365, 180},
        {L"Chest of drawers", 480, 370, 180},
        // Guest room.
        {L"Single bed", 940, 125, 0},
        {L"Wardrobe, two doors", 660, 365, 180},
        // Bathroom.
        {L"Bathtub", 100, 445, 0},
        {L"Toilet", 330, 445, 0},
        {L"Vanity unit", 300, 570, 180},
        // Children's room.
        {L"Single bed", 70, 690, 0},
        {L"Desk", 300, 765, 180},
        {L"Office chair", 300, 700, 0},
        // Landing.
        {L"Potted plant", 500, 760, 0},
    };
    s.floors.push_back(upper);
    return s;
}

std::vector<SSample> AllSamples()
{
    std::vector<SSample> samples = {Studio(), Flat(), House()};
    // The project that opens at the first start.
    SSample first = Flat();
    first.file = L"Sample.pvp";
    samples.push_back(first);
    return samples;
}

// The furniture and one area label per room.
int CountObjects(const SFloorDef& floor)
{
    return static_cast<int>(floor.objects.size() + floor.rooms.size());
}

void NameRooms(CVxProject& project, CVxFloor& floor, const SFloorDef& def)
{
    floor.m_walls.RebuildWalls();
    CVxFloorPlan plan;
    plan.CreatePlan(floor, project.m_unit);
    for (const SRoom& room : def.rooms) {
        CVxFloorRegion* region =
            plan.SafeGetRegion(plan.FindRegion(CVxDPoint(room.x + kMargin, room.y + kMargin)));
        if (!region)
            continue;
        region->name = room.name;
        region->floorAppearance.SetColor(room.floorColour);
    }
    floor.SetCommonFloorAppearancesAndSave(plan, true);
    floor.ResetWallSnapSegments(&plan);
}

bool PlaceObjects(CVxFloor& floor, const SFloorDef& def, const CVxCatalogue& catalogue)
{
    for (const SObject& object : def.objects) {
        const CVxPart* found = catalogue.Find(object.caption);
        if (!found) {
            fprintf(stderr, "plaveno-mksamples: no \"%ls\" in the library\n", object.caption);
            return false;
        }
        CVxPart* part = floor.GetNewObject();
        *part = *found;
        part->inUse = true;
        const double cx = object.x + kMargin;
        const double cy = object.y + kMargin;
        // A part turns about its first corner, so that corner lies half the
        // turned diagonal away from the centre.
        part->rotation = object.rotation;
        const double angle = object.rotation * M_PI / 180;
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        part->x = cx - part->width / 2 * c + part->height / 2 * s;
        part->y = cy - part->width / 2 * s - part->height / 2 * c;
        if (part->snapToWall)
            part->SnapToWall(&floor.m_walls, cx, cy, true, false, false);
    }
    return true;
}

bool BuildSample(const SSample& sample, const CVxCatalogue& catalogue, CVxProject& project)
{
    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    project.m_width = sample.width + 2 * kMargin;
    project.m_height = sample.height + 2 * kMargin;
    for (size_t i = 0; i < sample.floors.size(); ++i) {
        if (i >= project.m_floors.size()) {
            auto* added = new CVxFloor();
            added->Reset(&project);
            project.m_floors.push_back(added);
        }
        CVxFloor& floor = *project.m_floors[i];
        const SFloorDef& def = sample.floors[i];
        floor.m_walls.RemoveAll();
        floor.RemoveAllObjects();
        for (const SWall& w : def.walls)
            floor.m_walls.GetNewWall()->Set(w.x1 + kMargin, w.y1 + kMargin, w.x2 + kMargin, w.y2 + kMargin,
                                            CVxWall::ALIGN_CENTER, w.outer ? kOuterWall : kInnerWall,
                                            kWallHeight, kWallHeight, true, false);
        if (def.hole[2] > 0) {
            CVxHoleInFloor hole;
            hole.type = CVxHoleInFloor::TYPE_RECTANGLE;
            hole.x = def.hole[0] + kMargin;
            hole.y = def.hole[1] + kMargin;
            hole.width = def.hole[2];
            hole.height = def.hole[3];
            floor.m_walls.holes.push_back(hole);
        }
        NameRooms(project, floor, def);
        if (!PlaceObjects(floor, def, catalogue))
            return false;
    }
    // Every room shows its name and area, as the program's command for
    // area labels puts them.
    for (int i = 0; i < project.GetFloorCount(); ++i) {
        project.m_currentFloor = i;
        core->UpdateFloorPlan();
        core->InsertAreaLabels(false, -1);
    }
    project.m_currentFloor = 0;
    project.m_modified = false;
    core->UpdateFloorPlan();
    return true;
}

int Generate(const CVxCatalogue& catalogue, const CVxStringW& folder)
{
    for (const SSample& sample : AllSamples()) {
        CVxProject& project = VX_GetCore()->GetProject();
        if (!BuildSample(sample, catalogue, project))
            return 1;
        const CVxStringW path = folder + sample.file;
        if (!project.SaveToFile(path, true, nullptr)) {
            fprintf(stderr, "plaveno-mksamples: can't write %ls\n", path.c_str());
            return 1;
        }
    }
    return 0;
}

// Each sample read back has its floors, its named rooms and its objects.
int Check(const CVxStringW& folder)
{
    int failures = 0;
    for (const SSample& sample : AllSamples()) {
        const CVxStringW path = folder + sample.file;
        CVxProject project;
        std::list<CVxMissingFileInfo> missing;
        if (!project.LoadFromFile(path, &missing, nullptr, false, 0)) {
            fprintf(stderr, "%ls: can't be read\n", path.c_str());
            ++failures;
            continue;
        }
        project.RebuildAllFloorsWalls();
        if (project.GetFloorCount() != static_cast<int>(sample.floors.size())) {
            fprintf(stderr, "%ls: %d floors, expected %zu\n", path.c_str(), project.GetFloorCount(),
                    sample.floors.size());
            ++failures;
            continue;
        }
        for (int i = 0; i < project.GetFloorCount(); ++i) {
            CVxFloor& floor = *project.m_floors[i];
            const SFloorDef& def = sample.floors[i];
            CVxFloorPlan plan;
            plan.CreatePlan(floor, project.m_unit);
            int named = 0;
            for (const SRoom& room : def.rooms) {
                const CVxFloorRegion* region =
                    plan.SafeGetRegion(plan.FindRegion(CVxDPoint(room.x + kMargin, room.y + kMargin)));
                if (region && region->name == room.name)
                    ++named;
            }
            int labelled = 0;
            for (const CVxPart& part : floor.m_objects) {
                const CVxFloorRegion* region = plan.SafeGetRegion(part.snapRegion);
                if (part.inUse && part.type == ptLabel && region && !region->name.IsEmpty() &&
                    part.caption.StartsWith(region->name + L"\r\n"))
                    ++labelled;
            }
            if (labelled != static_cast<int>(def.rooms.size())) {
                fprintf(stderr, "%ls floor %d: %d rooms with their area label, expected %zu\n", path.c_str(),
                        i, labelled, def.rooms.size());
                ++failures;
            }
            if (plan.GetRegionCount() != static_cast<int>(def.rooms.size()) ||
                named != static_cast<int>(def.rooms.size())) {
                fprintf(stderr, "%ls floor %d: %d rooms, %d named as built; expected %zu\n", path.c_str(), i,
                        plan.GetRegionCount(), named, def.rooms.size());
                ++failures;
            }
            if (floor.CountUsedObjects() != CountObjects(def)) {
                fprintf(stderr, "%ls floor %d: %d objects, expected %d\n", path.c_str(), i,
                        floor.CountUsedObjects(), CountObjects(def));
                ++failures;
            }
            const int holes = def.hole[2] > 0 ? 1 : 0;
            if (floor.m_walls.GetHoleCount() != holes) {
                fprintf(stderr, "%ls floor %d: %d floor openings, expected %d\n", path.c_str(), i,
                        floor.m_walls.GetHoleCount(), holes);
                ++failures;
            }
        }
    }
    return failures == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char* argv[])
{
    // Area labels are measured in their font, which needs the GUI side of
    // Qt, though nothing is shown.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    setlocale(LC_NUMERIC, "C");
    const bool check = argc == 4 && strcmp(argv[1], "--check") == 0;
    if (argc != 3 && !check) {
        fputs("Usage: plaveno-mksamples LIBRARY.pvl OUTPUT_FOLDER\n"
              "       plaveno-mksamples --check LIBRARY.pvl SAMPLES_FOLDER\n",
              stderr);
        return 2;
    }
    QTemporaryDir scratch;
    const CVxStringW root = CVxStringW(scratch.path()) + L"/";
    static CVxAppHelperHeadless host(root, root);
    VX_SetAppHelperCallback(&host);
    VX_GetOptions()->m_defaultUnit = L"cm";
    CVxCatalogue catalogue;
    const CVxStringW library(QString::fromLocal8Bit(argv[check ? 2 : 1]));
    if (!catalogue.Load(library)) {
        fprintf(stderr, "plaveno-mksamples: can't read %s\n", argv[check ? 2 : 1]);
        return 1;
    }
    CVxStringW folder(QString::fromLocal8Bit(argv[check ? 3 : 2]));
    if (!folder.EndsWith(CVxStringW(L"/")))
        folder += L'/';
    return check ? Check(folder) : Generate(catalogue, folder);
}
