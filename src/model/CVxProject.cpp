#include "CVxProject.h"

#include "CVxFloorPlan.h"

#include "CVxCompressIniWriter.h"
#include "CVxCompressedFileReader.h"
#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxLocFileInfo.h"
#include "CVxLocStrings.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxUnits.h"
#include "CVxUtils.h"
#include "IVxAppHelperCallback.h"
#include "VxReferencedFile.h"
#include "VxSafeSave.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <memory>

namespace {
constexpr unsigned kGroundColor = 0xD2C6C4;
constexpr unsigned kWhite = 0xFFFFFF;
// Inch fractions finer than 1/65536 are no fractions a plan can show.
constexpr int kMaxInchesPrecision = 16;
// Digits and fractions that a file may ask for.
constexpr int kMaxPrecision = kMaxInchesPrecision;
// No room of a plan, in any unit, comes near this size.
constexpr double kMaxRoomSize = 1e9;
// The finest grid a file may set; finer cells are never drawn anyway.
constexpr double kMinGridSize = 1e-4;

CVxStringW ColorToString(unsigned colour)
{
    return CVxStringW::IntToHex(colour, 6, true);
}

unsigned ReadColor(const CVxStringW& value, unsigned def)
{
    return static_cast<unsigned>(CVxIniFileReader::ToInt(value, static_cast<int>(def)));
}

// The colour of the appearance that new floors get from the settings.
unsigned OptionsFloorColor()
{
    CVxAppearance appearance;
    const CVxStringW& text = VX_GetOptions()->m_floorAppear;
    if (!text.IsEmpty())
        appearance.LoadFromString(text, nullptr);
    return appearance.GetColor();
}

double RoundTo(double value, double steps)
{
    return std::round(value * steps) / steps;
}
} // namespace

CVxProject::CVxProject()
{
    Reset();
}

CVxProject::CVxProject(const CVxProject& other) : IVxReadIniClient(other), IVxCompressedFileOwner(other)
{
    other.CopyTo(this);
}

CVxProject& CVxProject::operator=(const CVxProject& other)
{
    other.CopyTo(this);
    return *this;
}

CVxProject::~CVxProject()
{
    DeleteFloors();
}

void CVxProject::DeleteFloors()
{
    for (CVxFloor* floor : m_floors)
        delete floor;
    m_floors.clear();
}

CVxFloor* CVxProject::AddNewFloor()
{
    CVxFloor* floor = new CVxFloor;
    floor->Reset(this);
    m_floors.push_back(floor);
    return floor;
}

bool CVxProject::RemoveFloor(int index)
{
    if (GetFloorCount() < 2 || index < 0 || index >= GetFloorCount())
        return false;
    delete m_floors[static_cast<size_t>(index)];
    m_floors.erase(m_floors.begin() + index);
    if (m_currentFloor > index || m_currentFloor >= GetFloorCount())
        --m_currentFloor;
    m_currentFloor = std::max(0, m_currentFloor);
    return true;
}

bool CVxProject::SwapFloors(int first, int second)
{
    const int count = GetFloorCount();
    if (first == second || first < 0 || second < 0 || first >= count || second >= count)
        return false;
    std::swap(m_floors[static_cast<size_t>(first)], m_floors[static_cast<size_t>(second)]);
    if (m_currentFloor == first)
        m_currentFloor = second;
    else if (m_currentFloor == second)
        m_currentFloor = first;
    return true;
}

void CVxProject::Reset()
{
    const CVxOptions* options = VX_GetOptions();
    DeleteFloors();
    m_refusedFiles.clear();
    m_currentFloor = 0;
    m_viewpoints.Reset();
    m_attachments.Reset();
    m_walls3DStyle = options->m_3DWallsTransp;
    m_width = 500;
    m_height = 300;
    m_gridColor = 0xE0E0E0;
    m_gridSize = 50;
    m_gridLineStyle = 0;
    m_spaceLeft = m_spaceTop = m_spaceRight = m_spaceBottom = 60;
    m_unit = CVxUnits::GetUnitEngTextIdx(CVxStringA(options->m_defaultUnit));
    m_subUnitMoves = false;
    m_decimalPrecision = 2;
    m_inchesPrecision = 4;
    m_baseZoom = 1.0;
    m_userCoord = false;
    m_bkgScanVisible = false;
    m_printSetup.Empty();
    m_printTitle.Empty();
    m_printNote1.Empty();
    m_printNote2.Empty();
    m_printTitleFont = options->m_defPrintTitleFont;
    m_printNotesFont = options->m_defPrintNoteFont;
    m_captionFont = CVxFont(options->m_defCaptionFont);
    m_captionPrintFont = CVxFont(options->m_defCaptionPrintFont);
    m_modified = false;
    m_damagedOnLoad = false;
    m_groundPosZ = 0;
    m_groundAppear.Reset();
    m_groundAppear.SetColor(kGroundColor);
    m_skyColor = 0xFF0000;
    m_skyBoxLeft.Empty();
    m_skyBoxRight.Empty();
    m_skyBoxFront.Empty();
    m_skyBoxBack.Empty();
    m_skyBoxTop.Empty();
    m_skyBoxBottom.Empty();
    m_comments.Empty();
    m_storagePath.Empty();
    m_thumbnailPath.Empty();
    m_storedFiles.clear();
    m_defFloorColor = OptionsFloorColor();
    m_defWallsColor = options->m_defWallColor;
    m_defWalls3DColor = kWhite;
    m_defWallThickness = 10;
    m_defWallHeight = 265;
    m_compressed = false;
    m_terrain.Reset();
    m_globalShadow.Reset();
    m_pictureResizeCache.Reset();
    AddNewFloor();
}

void CVxProject::CopyTo(CVxProject* target) const
{
    if (!target || target == this)
        return;
    target->DeleteFloors();
    for (const CVxFloor* floor : m_floors)
        target->m_floors.push_back(new CVxFloor(*floor));
    target->m_currentFloor = m_currentFloor;
    target->m_viewpoints = m_viewpoints;

    target->m_attachments = m_attachments;
    target->m_refusedFiles = m_refusedFiles;

    target->m_walls3DStyle = m_walls3DStyle;
    target->m_width = m_width;
    target->m_height = m_height;
    target->m_gridColor = m_gridColor;
    target->m_gridSize = m_gridSize;
    target->m_gridLineStyle = m_gridLineStyle;
    target->m_spaceLeft = m_spaceLeft;
    target->m_spaceTop = m_spaceTop;
    target->m_spaceRight = m_spaceRight;
    target->m_spaceBottom = m_spaceBottom;
    target->m_unit = m_unit;
    target->m_subUnitMoves = m_subUnitMoves;
    target->m_decimalPrecision = m_decimalPrecision;
    target->m_inchesPrecision = m_inchesPrecision;
    target->m_baseZoom = m_baseZoom;
    target->m_userCoord = m_userCoord;
    target->m_bkgScanVisible = m_bkgScanVisible;
    target->m_printSetup = m_printSetup;
    target->m_printTitle = m_printTitle;
    target->m_printNote1 = m_printNote1;
    target->m_printNote2 = m_printNote2;
    target->m_printTitleFont = m_printTitleFont;
    target->m_printNotesFont = m_printNotesFont;
    target->m_captionFont = m_captionFont;
    target->m_captionPrintFont = m_captionPrintFont;
    target->m_modified = m_modified;
    target->m_groundPosZ = m_groundPosZ;
    target->m_groundAppear = m_groundAppear;
    target->m_skyColor = m_skyColor;
    target->m_skyBoxLeft = m_skyBoxLeft;
    target->m_skyBoxRight = m_skyBoxRight;
    target->m_skyBoxFront = m_skyBoxFront;
    target->m_skyBoxBack = m_skyBoxBack;
    target->m_skyBoxTop = m_skyBoxTop;
    target->m_skyBoxBottom = m_skyBoxBottom;
    target->m_comments = m_comments;
    target->m_storagePath = m_storagePath;
    target->m_thumbnailPath = m_thumbnailPath;
    target->m_storedFiles = m_storedFiles;
    target->m_defFloorColor = m_defFloorColor;
    target->m_defWallsColor = m_defWallsColor;
    target->m_defWalls3DColor = m_defWalls3DColor;
    target->m_defWallThickness = m_defWallThickness;
    target->m_defWallHeight = m_defWallHeight;
    target->m_compressed = m_compressed;
    target->m_terrain = m_terrain;
    target->m_globalShadow = m_globalShadow;
    target->m_pictureResizeCache = m_pictureResizeCache;
}

void CVxProject::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader)
{
    if (key == "FileVersion") {
        const int version = CVxIniFileReader::ToInt(value, 1);
        if (!reader)
            return;
        reader->SetProjectVersion(version);
        if (version > fileVersion && !reader->HasFlag(CVxIniFileReader::VX_READ_NO_NEWER_VERSION_WARNING)) {
            if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
                host->HideSplashScreen();
                CVxLocalize* loc = VX_GetLoc();
                host->MsgBox(loc->LocalizeMessage(32, L"The file was created using a higher version of "
                                                      L"Plaveno.\nThe room and objects can be incorrect!"),
                             loc->LocalizeMessage(33, L"Warning"), VX_MB_ICON_WARNING);
            }
            // One warning per file, however many heads it has.
            reader->AddFlags(CVxIniFileReader::VX_READ_NO_NEWER_VERSION_WARNING);
        }
    } else if (key == "Encoding") {
        if (reader)
            reader->ChangeCodePage(static_cast<unsigned>(CVxLocFileInfo::EncodingToCodePage(value.c_str())));
    } else if (key == "Compression") {
        m_compressed = value == L"zlib";
    } else if (key == "Width") {
        m_width = CVxIniFileReader::ToDoubleInRange(value, m_width, -kMaxRoomSize, kMaxRoomSize, "Width");
    } else if (key == "Height") {
        m_height = CVxIniFileReader::ToDoubleInRange(value, m_height, -kMaxRoomSize, kMaxRoomSize, "Height");
    } else if (key == "GridColor") {
        m_gridColor = ReadColor(value, m_gridColor);
    } else if (key == "GridSize") {
        // The grid is drawn and labelled cell by cell.
        m_gridSize =
            CVxIniFileReader::ToDoubleInRange(value, m_gridSize, kMinGridSize, kMaxRoomSize, "GridSize");
    } else if (key == "GridLineStyle") {
        m_gridLineStyle = CVxIniFileReader::ToInt(value, m_gridLineStyle);
    } else if (key == "GroundPosZ") {
        m_groundPosZ = CVxIniFileReader::ToDouble(value, m_groundPosZ);
    } else if (key == "GroundAppear") {
        m_groundAppear.LoadFromString(value, reader);
    } else if (key == "SkyColor") {
        m_skyColor = ReadColor(value, m_skyColor);
    } else if (key.StartsWith("SkyBox")) {
        CVxStringW* paths[] = {&m_skyBoxLeft, &m_skyBoxRight, &m_skyBoxFront,
                               &m_skyBoxBack, &m_skyBoxTop,   &m_skyBoxBottom};
        const char* names[] = {"SkyBoxLeft", "SkyBoxRight", "SkyBoxFront",
                               "SkyBoxBack", "SkyBoxTop",   "SkyBoxBottom"};
        for (int i = 0; i < 6; ++i)
            if (key == names[i])
                *paths[i] = reader ? reader->MakeAbsolutePath(value) : value;
    } else if (key == "SubUnitMoves") {
        m_subUnitMoves = CVxIniFileReader::ToInt(value, 0) > 0;
    } else if (key == "DecimalPrecision") {
        m_decimalPrecision =
            CVxIniFileReader::ToIntInRange(value, m_decimalPrecision, 0, kMaxPrecision, "DecimalPrecision");
    } else if (key == "InchesPrecision") {
        m_inchesPrecision =
            CVxIniFileReader::ToIntInRange(value, m_inchesPrecision, 0, kMaxPrecision, "InchesPrecision");
    } else if (key == "UserCoord") {
        m_userCoord = CVxIniFileReader::ToInt(value, 0) > 0;
    } else if (key == "BkgScanVisible") {
        m_bkgScanVisible = CVxIniFileReader::ToInt(value, 0) > 0;
    } else if (key == "Unit") {
        m_unit = CVxUnits::GetUnitEngTextIdx(CVxStringA(value));
        if (reader)
            reader->SetUnit(m_unit);
    } else if (key == "BaseZoom") {
        // Every default size is divided by it.
        const double zoom = CVxIniFileReader::ToDouble(value, m_baseZoom);
        if (std::isfinite(zoom) && zoom > 0)
            m_baseZoom = zoom;
    } else if (key == "SpaceAround") {
        double space[4] = {0, 0, 0, 0};
        const int read =
            swscanf(value.c_str(), L"%lf|%lf|%lf|%lf", &space[0], &space[1], &space[2], &space[3]);
        // The margins place the grid's labels, counted in cells.
        const bool sane = std::all_of(space, space + std::max(read, 0), [](double margin) {
            return std::isfinite(margin) && std::fabs(margin) <= kMaxRoomSize;
        });
        if (!sane) {
            CVxIniFileReader::TraceOutOfRange("SpaceAround", value);
        } else if (read >= 4) {
            m_spaceLeft = space[0];
            m_spaceTop = space[1];
            m_spaceRight = space[2];
            m_spaceBottom = space[3];
        } else if (read >= 1) {
            m_spaceLeft = m_spaceTop = m_spaceRight = m_spaceBottom = space[0];
        }
    } else if (key == "PrintSetup") {
        m_printSetup = value;
    } else if (key == "PrintTitle") {
        m_printTitle = value;
    } else if (key == "PrintNote1") {
        m_printNote1 = value;
    } else if (key == "PrintNote2") {
        m_printNote2 = value;
    } else if (key == "PrintTitleFont") {
        m_printTitleFont = value;
    } else if (key == "PrintNotesFont") {
        m_printNotesFont = value;
    } else if (key == "CaptionFont") {
        // Files from before the print font had only this one.
        m_captionFont.LoadFromString(value);
        m_captionPrintFont = m_captionFont;
    } else if (key == "CaptionPrintFont") {
        m_captionPrintFont.LoadFromString(value);
    } else if (key == "Comments") {
        m_comments = ReplaceNewLinesAndComments(value, false);
    } else if (key == "CurrentFloor") {
        m_currentFloor = CVxIniFileReader::ToInt(value, 0);
    } else if (key == "Walls3dStyle") {
        m_walls3DStyle = CVxIniFileReader::ToInt(value, m_walls3DStyle);
    } else if (key == "Color") {
        m_defFloorColor = ReadColor(value, m_defFloorColor);
    } else if (key == "WallsColor") {
        m_defWallsColor = ReadColor(value, m_defWallsColor);
    } else if (key == "WallsColor3D") {
        m_defWalls3DColor = ReadColor(value, m_defWalls3DColor);
    } else if (key == "WallThickness") {
        m_defWallThickness = CVxIniFileReader::ToDouble(value, m_defWallThickness);
    } else if (key == "WallZHeight") {
        m_defWallHeight = CVxIniFileReader::ToDouble(value, m_defWallHeight);
    } else if (key == "GroundColor") {
        m_groundAppear.SetColor(ReadColor(value, m_groundAppear.GetColor()));
    } else if (key == "3DStart") {
        // The one start position of old files becomes a viewpoint.
        CVxViewpoint start;
        double x = 0, y = 0, yaw = 0;
        if (swscanf(value.c_str(), L"%lf|%lf|%lf", &x, &y, &yaw) < 3) {
            x = m_width / 2;
            y = m_height / 2;
            yaw = 0;
        }
        start.m_x = x;
        start.m_y = y;
        start.m_yaw = yaw;
        start.m_name = VX_GetLoc()->LocalizeMessage(49, L"Start");
        start.m_height = 0;
        start.m_autoHeight = true;
        start.m_navigation = CVxViewpoint::NAV_WALK;
        start.m_floor = 0;
        m_viewpoints.m_viewpoints.push_back(start);
    }
}

void CVxProject::SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const
{
    writer->StartSection(section);
    writer->WriteInteger("FileVersion", fileVersion);
    writer->WriteString("Encoding", L"utf-8");
    writer->WriteDouble("Width", m_width);
    writer->WriteDouble("Height", m_height);
    writer->WriteString("GridColor", ColorToString(m_gridColor));
    writer->WriteDouble("GridSize", m_gridSize);
    writer->WriteInteger("GridLineStyle", m_gridLineStyle);
    writer->WriteDouble("GroundPosZ", m_groundPosZ);
    writer->WriteString("GroundAppear", m_groundAppear.SaveToString(writer));
    writer->WriteString("SkyColor", ColorToString(m_skyColor));
    const std::pair<const char*, const CVxStringW*> skyBox[] = {
        {"SkyBoxLeft", &m_skyBoxLeft}, {"SkyBoxRight", &m_skyBoxRight}, {"SkyBoxFront", &m_skyBoxFront},
        {"SkyBoxBack", &m_skyBoxBack}, {"SkyBoxTop", &m_skyBoxTop},     {"SkyBoxBottom", &m_skyBoxBottom}};
    for (const auto& [key, path] : skyBox) {
        if (path->IsEmpty())
            continue;
        CVxStringW stored = *path;
        writer->WriteString(key, writer->MakeRelativePathAs(stored, EVxFileRole::Picture));
    }
    writer->WriteInteger("SubUnitMoves", m_subUnitMoves ? 1 : 0);
    writer->WriteInteger("DecimalPrecision", m_decimalPrecision);
    writer->WriteInteger("InchesPrecision", m_inchesPrecision);
    if (m_userCoord)
        writer->WriteInteger("UserCoord", 1);
    if (m_bkgScanVisible)
        writer->WriteInteger("BkgScanVisible", 1);
    const int unit = CVxUnits::IsValid(m_unit) ? m_unit : static_cast<int>(CVxUnits::UNIT_CM);
    writer->WriteString("Unit", CVxStringW(CVxStringA(CVxUnits::sUnitEngText[unit])));
    if (m_baseZoom != 1.0)
        writer->WriteDouble("BaseZoom", m_baseZoom);
    CVxStringW space = DblSaveW(m_spaceLeft);
    for (double value : {m_spaceTop, m_spaceRight, m_spaceBottom}) {
        space += L'|';
        space += DblSaveW(value);
    }
    writer->WriteString("SpaceAround", space);
    const std::pair<const char*, const CVxStringW*> printTexts[] = {
        {"PrintSetup", &m_printSetup},         {"PrintTitle", &m_printTitle},
        {"PrintNote1", &m_printNote1},         {"PrintNote2", &m_printNote2},
        {"PrintTitleFont", &m_printTitleFont}, {"PrintNotesFont", &m_printNotesFont}};
    for (const auto& [key, text] : printTexts)
        if (!text->IsEmpty())
            writer->WriteString(key, *text);
    writer->WriteString("CaptionFont", m_captionFont.SaveToString());
    writer->WriteString("CaptionPrintFont", m_captionPrintFont.SaveToString());
    writer->WriteString("Comments", CVxLocStrings::AddNewLines(m_comments));
    writer->WriteInteger("CurrentFloor", m_currentFloor);
    writer->WriteInteger("Walls3dStyle", m_walls3DStyle);
}

CVxFloor* CVxProject::GetFloor()
{
    if (m_floors.empty())
        return AddNewFloor();
    if (m_currentFloor < 0 || m_currentFloor >= GetFloorCount())
        return m_floors.front();
    return m_floors[static_cast<size_t>(m_currentFloor)];
}

CVxFloor* CVxProject::GetSafeFloor(int index)
{
    if (index < 0 || index >= GetFloorCount())
        return GetFloor();
    return m_floors[static_cast<size_t>(index)];
}

double CVxProject::GetFloorZOffset(int n) const
{
    double offset = 0;
    for (int i = 1; i <= n && i < GetFloorCount(); ++i) {
        // A storey without walls stands on the one below at no height.
        offset += std::max(0.0, m_floors[static_cast<size_t>(i - 1)]->m_walls.GetMaxWallZHeight());
        offset += m_floors[static_cast<size_t>(i)]->m_floorThickness;
    }
    return offset;
}

bool CVxProject::GetUnionWallBoundRect(CVxDRect& out) const
{
    bool any = false;
    for (const CVxFloor* floor : m_floors) {
        CVxDRect dims;
        if (!floor->m_walls.GetRoomDims(dims))
            continue;
        if (!any)
            out = dims;
        else
            out.UnionRect(out, dims);
        any = true;
    }
    return any;
}

void CVxProject::RebuildAllFloorsWalls()
{
    for (CVxFloor* floor : m_floors)
        floor->m_walls.RebuildWalls();
}

void CVxProject::ResnapAllParts()
{
    for (CVxFloor* floor : m_floors)
        floor->ResnapAllParts(nullptr);
}

void CVxProject::SizeToWalls()
{
    CVxDRect bounds;
    if (!GetUnionWallBoundRect(bounds))
        return;
    m_width = bounds.right;
    m_height = bounds.bottom;
}

void CVxProject::MoveToOrigin()
{
    CVxDRect bounds;
    if (GetUnionWallBoundRect(bounds) && (bounds.left != 0 || bounds.top != 0))
        MoveAllObjects(-bounds.left, -bounds.top, 0);
}

double CVxProject::GetTotalZHeight()
{
    return GetFloor()->GetTotalZHeight();
}

bool CVxProject::HasSkyBox() const
{
    return !m_skyBoxLeft.IsEmpty() || !m_skyBoxRight.IsEmpty() || !m_skyBoxFront.IsEmpty() ||
           !m_skyBoxBack.IsEmpty() || !m_skyBoxTop.IsEmpty() || !m_skyBoxBottom.IsEmpty();
}

void CVxProject::MoveAllObjects(double dx, double dy, double dz)
{
    for (CVxFloor* floor : m_floors)
        floor->MoveAllObjects(dx, dy, dz, this);
    m_viewpoints.Move(dx, dy, dz, this);

    m_attachments.Move(dx, dy);
    // The room rectangle spans from the origin to the right and bottom of the
    // walls, which moved with everything else.
    m_width += dx;
    m_height += dy;
    SizeToWalls();
}

void CVxProject::ScaleAllObjects(double sx, double sy, double sz, bool keepDefaults, bool keepObjectSizes)
{
    for (CVxFloor* floor : m_floors)
        floor->ScaleAllObjects(sx, sy, sz, keepDefaults, keepObjectSizes, this);
    m_viewpoints.Scale(sx, sy, sz);

    m_attachments.Scale(sx, sy);
    // The room rectangle scales with the plan. Taking it from the walls
    // instead would cut off what lies outside their reference lines, such as
    // the outer half of centred walls, and a conversion there and back would
    // not give the same room.
    m_width *= sx;
    m_height *= sy;
    if (keepDefaults)
        return;
    m_gridSize *= sx;
    m_defWallThickness *= sx;
    m_defWallHeight *= sz;
    m_spaceLeft *= sx;
    m_spaceRight *= sx;
    m_spaceTop *= sy;
    m_spaceBottom *= sy;
    DblRound2(m_gridSize);
    DblRound2(m_defWallThickness);
    DblRound2(m_defWallHeight);
}

void CVxProject::RotateAllObjects(int degrees)
{
    for (CVxFloor* floor : m_floors)
        floor->RotateAllObjects(degrees, this);
    m_viewpoints.Rotate(degrees);

    m_attachments.Rotate(degrees, this);
    // The turned room rectangle, moved back to the origin.
    const double angle = degrees * M_PI / 180.0;
    const double c = std::fabs(std::cos(angle));
    const double sn = std::fabs(std::sin(angle));
    const double width = m_width * c + m_height * sn;
    const double height = m_width * sn + m_height * c;
    m_width = DblRound2x(width);
    m_height = DblRound2x(height);
    MoveToOrigin();
}

void CVxProject::MirrorAllObjects(bool vertical)
{
    for (CVxFloor* floor : m_floors)
        floor->MirrorAllObjects(vertical, this);
    if (vertical)
        m_viewpoints.Scale(1, -1, 1);
    else
        m_viewpoints.Scale(-1, 1, 1);
    MoveToOrigin();
}

void CVxProject::ConvertUnit(int from, int to, CVxFloorPlan* plan)
{
    if (!CVxUnits::IsValid(from) || !CVxUnits::IsValid(to))
        return;
    const double factor = CVxUnits::dUnitCal[from] / CVxUnits::dUnitCal[to];
    m_unit = to;
    m_baseZoom = GetDeafaultBaseZoom(to);
    if (to > CVxUnits::UNIT_CM)
        m_subUnitMoves = true;
    ScaleAllObjects(factor, factor, factor, false, true);
    if (plan)
        plan->Scale(factor, factor, factor);
}

void CVxProject::SetDefaultsForUnit(int unit)
{
    double space = 0;
    switch (unit) {
    case CVxUnits::UNIT_MM:
        m_baseZoom = 0.1;
        space = 1200;
        m_gridSize = 500;
        break;
    case CVxUnits::UNIT_CM:
        m_subUnitMoves = false;
        m_baseZoom = 1;
        space = 120;
        m_gridSize = 50;
        break;
    case CVxUnits::UNIT_INCH:
        m_subUnitMoves = true;
        m_baseZoom = 2;
        space = 50;
        m_gridSize = 20;
        break;
    case CVxUnits::UNIT_DM:
        m_subUnitMoves = true;
        m_baseZoom = 10;
        space = 12;
        m_gridSize = 10;
        break;
    case CVxUnits::UNIT_FT:
        m_subUnitMoves = true;
        m_baseZoom = 20;
        space = 6;
        m_gridSize = 5;
        break;
    case CVxUnits::UNIT_M:
        m_subUnitMoves = true;
        m_baseZoom = 100;
        space = 2;
        m_gridSize = 2;
        break;
    default:
        return;
    }
    m_spaceLeft = m_spaceTop = m_spaceRight = m_spaceBottom = space;
    for (CVxFloor* floor : m_floors)
        floor->SetDefaultsForUnit(m_baseZoom);
}

double CVxProject::GetDeafaultBaseZoom(int unit)
{
    static const double zooms[] = {0.1, 1, 2, 10, 20, 1, 100};
    return unit >= 0 && unit < 7 ? zooms[unit] : 1.0;
}

int CVxProject::GetStatisticalUnitForUnit(int unit)
{
    if (unit == CVxUnits::UNIT_MM || unit == CVxUnits::UNIT_CM)
        return CVxUnits::UNIT_M;
    if (unit == CVxUnits::UNIT_INCH)
        return CVxUnits::UNIT_FT;
    const CVxStringW& name = VX_GetOptions()->m_roomStatUnit;
    if (!name.IsEmpty()) {
        const CVxStringA narrow(name);
        for (int i = 0; i < CVxUnits::UNIT_COUNT; ++i)
            if (narrow == CVxUnits::sUnitEngText[i])
                return i;
    }
    return unit;
}

void CVxProject::SubUnitCorrection(double& x, double& y, EVxDblFormat format) const
{
    SubUnitCorrection(x, format);
    SubUnitCorrection(y, format);
}

void CVxProject::SubUnitCorrection(double& value, EVxDblFormat format) const
{
    if (!m_subUnitMoves) {
        DblRound(value);
        return;
    }
    if (m_unit == CVxUnits::UNIT_INCH && format != VX_DF_DECIMAL && VX_GetOptions()->m_convertFeetInEdit) {
        int power = m_inchesPrecision < 0 ? 0 : m_inchesPrecision;
        if (power > kMaxInchesPrecision)
            power = kMaxInchesPrecision;
        value = RoundTo(value, std::ldexp(1.0, power));
        DblRound2(value);
        return;
    }
    value = RoundTo(value, m_decimalPrecision == 1 ? 10.0 : 100.0);
}

void CVxProject::SubUnitCorrection(CVxDPoint* point, EVxDblFormat format) const
{
    if (point)
        SubUnitCorrection(point->x, point->y, format);
}

// Sections kept for others

void CVxKeptSection::Reset()
{
    m_values.clear();
    m_present = false;
}

void CVxKeptSection::Read(CVxIniFileReader* reader)
{
    m_present = true;
    reader->ReadSection(this);
}

void CVxKeptSection::OnReadIniValue(const CVxStringA& key, const CVxStringW& value,
                                    CVxIniFileReader* /*reader*/)
{
    m_present = true;
    m_values.emplace_back(key, value);
}

void CVxKeptSection::SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const
{
    writer->StartSection(section);
    for (const auto& [key, value] : m_values)
        writer->WriteString(key.c_str(), value);
}

// The project file

namespace {

// More storeys than any house has; a file that claims more is damaged, and
// each floor costs memory.
constexpr int s_maxFloors = 200;
// The project's own text among the entries of its container.
const wchar_t* const s_innerTextName = L"project.pvp";

CVxStringA Utf8(const CVxStringW& text)
{
    return VX_StringToUTF8(text);
}

IVxAppHelperCallback* Host()
{
    return VX_GetAppHelper();
}

bool FileExists(const CVxStringW& path)
{
    IVxAppHelperCallback* host = Host();
    return host && !path.IsEmpty() && host->FileExists(path);
}

// Whether `path` lies inside the folder where projects unpack: only there
// does the program create and delete folders of its own. Paths that step
// back with ".." never count, whatever they start with.
bool IsInsideProjectsTemp(const CVxStringW& path)
{
    const CVxStringW clean = path.FromWinPath();
    if (clean.Contains(CVxStringW(L"/../")) || clean.EndsWith(CVxStringW(L"/..")) ||
        clean.Contains(CVxStringW(L"/./")))
        return false;
    return CVxUtils::ContainsPath(clean, CVxUtils::GetProjectsTempPath());
}

// A plain writer that can tell whether every byte reached the file.
class CVxCheckedIniWriter : public CVxIniWriter
{
public:
    using CVxIniWriter::CVxIniWriter;
    bool Close()
    {
        if (!m_file)
            return false;
        bool ok = fflush(m_file) == 0 && !ferror(m_file);
        ok = (fclose(m_file) == 0) && ok;
        m_file = nullptr;
        return ok;
    }
};

} // namespace

void CVxProject::WriteCompressedFileHeader(FILE* file) const
{
    if (file)
        fprintf(file, "[Room]\r\nFileVersion=%d\r\nEncoding=utf-8\r\nCompression=zlib\r\n", fileVersion);
}

void CVxProject::VerifyStoragePathExists()
{
    IVxAppHelperCallback* host = Host();
    if (!host)
        return;
    if (m_storagePath.IsEmpty()) {
        const CVxStringW root = CVxUtils::GetProjectsTempPath();
        if (root.IsEmpty())
            return;
        m_storagePath = CVxUtils::GetUniqueFolderName(root + L"NewProj");
        host->CreateFolder(m_storagePath);
        m_storagePath += L'/';
    } else if (!host->FolderExists(m_storagePath)) {
        host->CreateFolder(m_storagePath);
    }
}

void CVxProject::RemoveTempFiles()
{
    IVxAppHelperCallback* host = Host();
    if (!host || m_storagePath.IsEmpty())
        return;
    CVxStringW folder = m_storagePath;
    if (folder.EndsWith(CVxStringW(L"/")))
        folder = folder.Left(folder.GetLength() - 1);
    if (!IsInsideProjectsTemp(folder))
        return;
    host->DeleteDirectory(folder + L"/tmp");
    host->DeleteDirectory(folder);
    m_storagePath.Empty();
    m_storedFiles.clear();
}

CVxStringW CVxProject::AddFileToProject(const CVxStringW& path)
{
    if (path.GetLength() < 3 || path.Contains(CVxStringW(L"rXrsz")))
        return path;
    VerifyStoragePathExists();
    IVxAppHelperCallback* host = Host();
    if (!host || m_storagePath.IsEmpty() || CVxUtils::ContainsPath(path, m_storagePath) ||
        !FileExists(path) || !MayEmbed(path) || !VX_IsPlainFile(path))
        return path;
    for (const auto& [source, stored] : m_storedFiles)
        if (source == path && CVxUtils::CheckTwoFilesIdentical(path, stored))
            return stored;
    CVxStringW target = m_storagePath + path.FromWinPath().ExtractFileTitle();
    if (!FileExists(target) || !CVxUtils::CheckTwoFilesIdentical(path, target)) {
        // A different picture of the same name from another folder: both
        // must survive in the one folder of the project.
        if (FileExists(target))
            target = CVxUtils::GetUniqueFileName(target);
        if (!host->FileCopy(path, target))
            return path;
    }
    bool listed = false;
    for (auto& [source, stored] : m_storedFiles) {
        if (source == path) {
            stored = target;
            listed = true;
        }
    }
    if (!listed)
        m_storedFiles.emplace_back(path, target);
    return target;
}

bool CVxProject::MayEmbed(const CVxStringW& path) const
{
    return std::find(m_refusedFiles.begin(), m_refusedFiles.end(), path) == m_refusedFiles.end();
}

bool CVxProject::OnPathTransformToAbsolute(CVxStringW& result, const CVxStringW& path,
                                           const CVxStringW& baseFolder)
{
    if (path.IsEmpty())
        return false;
    const CVxStringW full = CVxUtils::MakeFullPath(path, baseFolder);
    if (!FileExists(full) || !VX_IsPlainFile(full))
        return false;
    result = AddFileToProject(full);
    return true;
}

void CVxProject::WriteProjectText(CVxIniWriter* writer)
{
    SaveToFile(writer, "Room");
    m_viewpoints.SaveToFile(writer, "Viewpoints");
    if (m_terrain.IsPresent())
        m_terrain.SaveToFile(writer, "Terrain");
    if (m_globalShadow.IsPresent())
        m_globalShadow.SaveToFile(writer, "GlobalShadow");
    m_attachments.SaveToFile(writer, "Attachments");
    for (const CVxFloor* floor : m_floors)
        floor->SaveToFile(writer);
    m_pictureResizeCache.SaveToFile(writer, "PictureResizeCache");
}

bool CVxProject::SaveToFile(const CVxStringW& path, bool compressed,
                            std::list<CVxMissingFileInfo>* missingFiles)
{
    IVxAppHelperCallback* host = Host();
    if (path.IsEmpty() || !host)
        return false;
    // Everything goes to a file beside the target, which replaces the
    // target only once it is complete and on the disk.
    const CVxStringW temp = VX_SafeSaveTempPath(path);
    if (!VX_SafeSaveCreateTemp(path)) {
        VxTrace("Error opening file for writing: %s\n", Utf8(path).c_str());
        return false;
    }
    CVxStringW textPath;
    std::unique_ptr<CVxIniWriter> writer;
    CVxCompressIniWriter* container = nullptr;
    CVxCheckedIniWriter* plain = nullptr;
    if (compressed) {
        const CVxStringW projectsTemp = CVxUtils::GetProjectsTempPath();
        if (projectsTemp.IsEmpty())
            return false;
        textPath = CVxUtils::GetUniqueFileName(projectsTemp + s_innerTextName);
        auto owned = std::make_unique<CVxCompressIniWriter>(temp, textPath, this);
        container = owned.get();
        writer = std::move(owned);
    } else {
        auto owned = std::make_unique<CVxCheckedIniWriter>(temp);
        plain = owned.get();
        writer = std::move(owned);
    }
    auto cleanUp = [&]() {
        writer.reset();
        if (!textPath.IsEmpty())
            host->FileDelete(textPath);
    };
    if (!writer->IsOpened()) {
        VxTrace("Error opening file for writing: %s\n", Utf8(path).c_str());
        cleanUp();
        VX_SafeSaveAbandon(temp);
        return false;
    }
    writer->SetMissingFiles(missingFiles);
    if (compressed && !m_thumbnailPath.IsEmpty()) {
        // First entry; found again by its name, not through the text.
        CVxStringW thumbnail = m_thumbnailPath;
        writer->MakeRelativePath(thumbnail);
    }
    WriteProjectText(writer.get());
    writer->Finalize();
    const bool written = container ? container->Succeeded() : plain->Close();
    cleanUp();
    if (!written) {
        VxTrace("Error writing file: %s\n", Utf8(path).c_str());
        VX_SafeSaveAbandon(temp);
        return false;
    }
    if (!VX_SafeSaveCommit(temp, path)) {
        VxTrace("Error replacing file: %s\n", Utf8(path).c_str());
        return false;
    }
    m_modified = false;
    return true;
}

void CVxProject::SetStoragePathForFile(const CVxStringW& path, bool nested)
{
    const CVxStringW folder = path.ExtractFileFolder();
    if (nested || IsInsideProjectsTemp(folder)) {
        m_storagePath = folder;
        return;
    }
    IVxAppHelperCallback* host = Host();
    const CVxStringW root = CVxUtils::GetProjectsTempPath();
    if (!host || root.IsEmpty())
        return;
    // Each opened project unpacks into a folder named like its file.
    m_storagePath = CVxUtils::GetUniqueFolderName(root + path.ExtractFileTitle());
    host->CreateFolder(m_storagePath);
    m_storagePath += L'/';
}

bool CVxProject::ReadProjectSection(CVxIniFileReader* reader)
{
    const CVxStringA& section = reader->GetSectionName();
    if (section == "Viewpoints")
        reader->ReadSection(&m_viewpoints);
    else if (section == "Attachments")
        reader->ReadSection(&m_attachments);
    else if (section == "Terrain")
        m_terrain.Read(reader);
    else if (section == "GlobalShadow")
        m_globalShadow.Read(reader);
    else if (section == "PictureResizeCache")
        m_pictureResizeCache.Read(reader);
    else
        return false;
    return true;
}

bool CVxProject::LoadFromFile(const CVxStringW& path, std::list<CVxMissingFileInfo>* missingFiles,
                              const CVxStringW* baseFolder, bool nested, int flags)
{
    if (missingFiles)
        missingFiles->clear();
    CVxIniFileReader reader(path, 0);
    if (!reader.IsOpened()) {
        VxTrace("Error opening file for reading: %s\n", Utf8(path).c_str());
        return false;
    }
    const unsigned readFlags = static_cast<unsigned>(flags);
    const bool innerText = (readFlags & CVxIniFileReader::VX_READ_INNER_COMPRESSED_FILE) != 0;
    if (!innerText)
        RemoveTempFiles();
    Reset();
    reader.SetReadingProject(true);
    reader.AddFlags(readFlags);
    if (baseFolder)
        reader.SetAltBaseFolder(*baseFolder);
    if (innerText)
        reader.SetPackedEntries(m_packedEntries);
    SetStoragePathForFile(path, nested);
    reader.SetPathTransformer(this);
    reader.Start();

    while (!reader.GetSectionName().IsEmpty()) {
        const CVxStringA section = reader.GetSectionName();
        if (section == "Room") {
            m_compressed = false;
            reader.ReadSection(this);
            // The text inside a container is plain by definition; a container
            // that claims otherwise would unpack itself without end.
            if (m_compressed && !innerText) {
                const bool loaded =
                    LoadFromCompressedFile(&reader, missingFiles, flags, path.ExtractFileFolder());
                m_compressed = false;
                return loaded;
            }
            m_compressed = false;
            if (reader.GetProjectVersion() == 0)
                reader.SetProjectVersion(1);
            if (!(m_width > 0) || !std::isfinite(m_width))
                m_width = 1;
            if (!(m_height > 0) || !std::isfinite(m_height))
                m_height = 1;
            if (reader.GetProjectVersion() < 702)
                m_gridLineStyle = 1;
            // The sets of the project that stand between the head and the
            // first floor; the floor's loader would pass over some of them.
            while (ReadProjectSection(&reader)) {
            }
            m_floors.front()->LoadFromFile(&reader, this);
        } else if (ReadProjectSection(&reader)) {
        } else if (section == "Floor") {
            if (GetFloorCount() < s_maxFloors) {
                AddNewFloor()->LoadFromFile(&reader, this);
            } else {
                CVxFloor surplus;
                surplus.LoadFromFile(&reader, this);
            }
        } else {
            reader.ReadSection(nullptr);
        }
    }
    if (missingFiles)
        *missingFiles = reader.GetMissingFiles();
    m_refusedFiles = reader.GetRefusedFiles();
    // A line too long to hold was skipped: a floor opening, an object or a
    // setting of the file is not in the project.
    if (reader.GetOverlongLineCount() > 0)
        m_damagedOnLoad = true;
    m_modified = false;
    return true;
}

bool CVxProject::HoldsNothing() const
{
    for (const CVxFloor* floor : m_floors)
        if (floor->m_walls.GetWallCount() > 0 || floor->m_walls.GetHoleCount() > 0 ||
            floor->CountUsedObjects() > 0)
            return false;
    return true;
}

bool CVxProject::LoadFromCompressedFile(CVxIniFileReader* reader, std::list<CVxMissingFileInfo>* missingFiles,
                                        int flags, const CVxStringW& sourceFolder)
{
    // Without a folder of its own the entries would land wherever the
    // program happens to run.
    if (m_storagePath.IsEmpty())
        return false;
    CVxStringW mainFile;
    bool damaged = false;
    IVxAppHelperCallback* host = Host();
    reader->SetUnpackBudget(
        CVxCompressedFileReader::UnpackBudgetFor(host ? host->FileSize(reader->GetPath()) : 0));
    // Side entries wait until the text refers to them.
    CVxPackedEntries packed(reader->GetPath(), m_storagePath);
    const bool mainOnly = reader->HasFlag(CVxIniFileReader::VX_READ_UNPACK_MAIN_FILE_ONLY);
    while (!reader->GetSectionName().IsEmpty()) {
        if (reader->GetSectionName() == "File") {
            CVxCompressedFileReader entry(m_storagePath, CVxStringW(L".pvp"));
            if (!mainOnly)
                entry.SetPackedEntries(&packed);
            reader->ReadSection(&entry);
            if (!entry.GetMainFile().IsEmpty())
                mainFile = entry.GetMainFile();
            damaged = damaged || entry.IsDamaged();
        } else {
            reader->ReadSection(nullptr);
        }
    }
    if (mainFile.IsEmpty())
        return false;
    // What the main file left of the budget is for the side entries.
    packed.SetBudget(reader->GetUnpackBudget());
    const CVxStringW folder = sourceFolder;
    m_packedEntries = &packed;
    const bool loaded = LoadFromFile(mainFile, missingFiles, &folder, true,
                                     flags | CVxIniFileReader::VX_READ_NO_NEWER_VERSION_WARNING |
                                         CVxIniFileReader::VX_READ_INNER_COMPRESSED_FILE);
    m_packedEntries = nullptr;
    // The inner load starts from a reset project, so the finding is kept
    // only now.
    m_damagedOnLoad = m_damagedOnLoad || damaged || packed.IsDamaged() || reader->GetOverlongLineCount() > 0;
    return loaded;
}

namespace {
CVxProject* g_activeProject = nullptr;
}

CVxProject* VX_GetActiveProject()
{
    return g_activeProject;
}

void VX_SetActiveProject(CVxProject* project)
{
    g_activeProject = project;
}
