#include "VxSettingsPages.h"

namespace {
using K = EVxSettingKind;
using O = CVxOptions;

SVxSettingItem Base(int page, int row, const wchar_t* english, K kind, const char* key)
{
    SVxSettingItem item;
    item.page = page;
    item.row = row;
    item.english = english;
    item.kind = kind;
    item.key = key;
    return item;
}

SVxSettingItem Flag(int page, int row, const wchar_t* english, const char* key, bool O::*value)
{
    SVxSettingItem item = Base(page, row, english, K::Bool, key);
    item.boolValue = value;
    return item;
}

SVxSettingItem Number(int page, int row, const wchar_t* english, const char* key, int O::*value, int minimum,
                      int maximum)
{
    SVxSettingItem item = Base(page, row, english, K::Int, key);
    item.intValue = value;
    item.minimum = minimum;
    item.maximum = maximum;
    return item;
}

SVxSettingItem Real(int page, int row, const wchar_t* english, const char* key, double O::*value,
                    double minimum, double maximum, K kind = K::Double)
{
    SVxSettingItem item = Base(page, row, english, kind, key);
    item.doubleValue = value;
    item.minimum = minimum;
    item.maximum = maximum;
    return item;
}

SVxSettingItem Text(int page, int row, const wchar_t* english, const char* key, CVxStringW O::*value, K kind)
{
    SVxSettingItem item = Base(page, row, english, kind, key);
    item.textValue = value;
    return item;
}

SVxSettingItem Colour(int page, int row, const wchar_t* english, const char* key, unsigned O::*value)
{
    SVxSettingItem item = Base(page, row, english, K::Color, key);
    item.colorValue = value;
    return item;
}

SVxSettingItem Choice(int page, int row, const wchar_t* english, const char* key, int O::*value,
                      std::vector<SVxSettingChoice> choices)
{
    SVxSettingItem item = Base(page, row, english, K::Choice, key);
    item.intValue = value;
    item.choices = std::move(choices);
    return item;
}
} // namespace

const std::vector<SVxSettingPage>& VX_GetSettingPages()
{
    static const std::vector<SVxSettingPage> pages = {
        {1, L"Units"}, {2, L"Editing"}, {3, L"View"}, {4, L"Files"}, {5, L"3D View"}, {6, L"Sun"},
    };
    return pages;
}

const std::vector<SVxSettingItem>& VX_GetSettingItems()
{
    static const std::vector<SVxSettingItem> items = {
        Text(0, 10, L"Unit of new projects:", "DefaultUnit", &O::m_defaultUnit, K::Unit),
        Text(0, 11, L"Unit of room areas:", "RoomStatUnit", &O::m_roomStatUnit, K::UnitOrAuto),
        Flag(0, 12, L"Show inches as feet and fractions", "ConvertFeetInEdit", &O::m_convertFeetInEdit),
        Flag(0, 13, L"Positions may be fractions of a unit", "SubUnitMoves", &O::m_subUnitMoves),
        Choice(0, 14, L"Decimal places:", "DecimalPrecision", &O::m_decimalPrecision,
               {{1, 15, L"Tenths"}, {2, 16, L"Hundredths"}}),
        Choice(0, 17, L"Smallest fraction of an inch:", "InchesPrecision", &O::m_inchesPrecision,
               {{1, 18, L"1/2"}, {2, 19, L"1/4"}, {3, 20, L"1/8"}, {4, 21, L"1/16"}, {5, 22, L"1/32"}}),
        Number(0, 23, L"Decimal places of area labels (-1 automatic):", "AreaLabelsDecimalPrec",
               &O::m_areaLabelsDecimalPrec, -1, 4),

        Flag(1, 30, L"Move objects without selecting them first", "MoveNonSelected", &O::m_moveNonSelected),
        Flag(1, 31, L"Align with respect to the room", "AlignWithRespectToRoom",
             &O::m_alignWithRespectToRoom),
        Flag(1, 32, L"Align with respect to the entire drawing", "AlignWithRespectToDrawing",
             &O::m_alignWithRespectToDrawing),
        Flag(1, 33, L"Turn dimension captions with their lines", "RotatedMeasLineCaption",
             &O::m_rotatedMeasLineCaption),
        Real(1, 34, L"Width of new dimension lines:", "DefMeasLineWidth", &O::m_defMeasLineWidth, 0, 1000),
        Flag(1, 35, L"Show objects in the wall editor", "WallEditShowObjects", &O::m_wallEditShowObjects),
        Flag(1, 36, L"Show objects in the polygon editor", "PolyEditShowObjects", &O::m_polyEditShowObjects),
        Flag(1, 37, L"Use the integrated calculator in number fields", "UseIntegratedCalc",
             &O::m_useIntegratedCalc),
        Colour(1, 38, L"Line colour of new objects:", "DefLineColor", &O::m_defLineColor),
        Colour(1, 39, L"Fill colour of new objects:", "DefFillColor", &O::m_defFillColor),
        Colour(1, 40, L"Text colour of new objects:", "DefTextColor", &O::m_defTextColor),
        Colour(1, 41, L"Colour of new walls:", "DefWallColor", &O::m_defWallColor),

        Flag(2, 50, L"Show the grid", "ShowGrid", &O::m_showGrid),
        Flag(2, 51, L"Show grid labels", "ShowGridLabels", &O::m_showGridLabels),
        Flag(2, 52, L"Show captions", "ShowCaptions", &O::m_showCaptions),
        Flag(2, 53, L"Draw floor textures", "DrawFloorTextures", &O::m_drawFloorTextures),
        Flag(2, 54, L"Shaded background around the plan", "MainWndBackground", &O::m_mainWndBackground),
        Flag(2, 55, L"Fit the whole plan into the window after opening", "OpenInBestFit",
             &O::m_openInBestFit),
        Flag(2, 56, L"Show captions in the user library", "ShowUserLibCaptions", &O::m_showUserLibCaptions),
        Flag(2, 57, L"Show 3D pictures in the library", "Lib3DChecked", &O::m_lib3DChecked),

        Flag(3, 60, L"Open the last project at start", "AutoOpenLastProject", &O::m_autoOpenLastProject),
        Flag(3, 61, L"Start new projects with the wizard", "NewProjectsWithWizard",
             &O::m_newProjectsWithWizard),
        Number(3, 62, L"Save a backup every (minutes, -1 never):", "AutoSaveInterval", &O::m_autoSaveInterval,
               -1, 120),
        Number(3, 63, L"Look for a new version every (days, 0 never):", "AutoCheckVersionInterval",
               &O::m_autoCheckVersionInterval, 0, 365),
        Flag(3, 64, L"Use the program's own file dialogues", "AppUseCustomOpenSaveDlg",
             &O::m_appUseCustomOpenSaveDlg),
        Flag(3, 65, L"Link files in 3D exports instead of copying them", "3DExportFileLinks",
             &O::m_3DExportFileLinks),

        Flag(4, 70, L"Smooth lighting (Phong shading)", "3DUsePhongShaderPipeline",
             &O::m_3DUsePhongShaderPipeline),
        Flag(4, 71, L"Walk through walls", "3DWalkThroughWalls", &O::m_3DWalkThroughWalls),
        Flag(4, 72, L"Look slightly down at start", "3DViewRotatedDown", &O::m_3DViewRotatedDown),
        Real(4, 73, L"Eye height of the visitor:", "3DAvatarHeight", &O::m_3DAvatarHeight, 10, 1000,
             K::LengthCm),
        Real(4, 74, L"Field of view (degrees):", "3DFieldOfView", &O::m_3DFieldOfView, 20, 170),
        Number(4, 75, L"Zoom (%):", "3DZoom", &O::m_3DZoom, 10, 1000),
        Choice(4, 76, L"Walls in 3D:", "3DWallsTransp", &O::m_3DWallsTransp,
               {{0, 77, L"Solid"}, {1, 78, L"Transparent"}, {2, 79, L"Low"}}),
        Choice(4, 80, L"Open the 3D view:", "Open3DViewMode", &O::m_open3DViewMode,
               {{0, 81, L"In a window"}, {1, 82, L"Docked"}, {2, 83, L"Full screen"}}),

        Real(5, 90, L"Latitude:", "ShadowLatitude", &O::m_shadowLatitude, -90, 90),
        Real(5, 91, L"Longitude:", "ShadowLongitude", &O::m_shadowLongitude, -180, 180),
        Real(5, 92, L"Time zone (hours from UTC):", "ShadowTimeZone", &O::m_shadowTimeZone, -12, 14),
        Flag(5, 93, L"Daylight saving time", "ShadowDaylightSaving", &O::m_shadowDaylightSaving),
    };
    return items;
}
