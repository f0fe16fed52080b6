#include "CVxOptions.h"

#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "IVxAppHelperCallback.h"
#include "VxSafeSave.h"

#include <cstdio>
#include <cstring>

namespace {
// Lists from a damaged file never grow past this.
constexpr int kMaxListEntries = 1000;

int ListIndex(const CVxStringA& key, const char* prefix)
{
    const int length = static_cast<int>(strlen(prefix));
    if (!key.StartsWith(CVxStringA(prefix)) || key.GetLength() == length)
        return -1;
    const CVxStringA digits = key.Mid(length);
    for (int i = 0; i < digits.GetLength(); ++i)
        if (digits[i] < '0' || digits[i] > '9')
            return -1;
    const int index = digits.ToIntDef(-1);
    return index < kMaxListEntries ? index : -1;
}

CVxStringW DocumentsFolder()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    return host ? host->GetUserDocsPath() : CVxStringW();
}
} // namespace

CVxOptions::CVxOptions()
{
    Bind("DefLineColor", &m_defLineColor, 0u);
    Bind("DefFillColor", &m_defFillColor, 0xD9FFFFu);
    Bind("DefTextColor", &m_defTextColor, 0u);
    Bind("DefWallColor", &m_defWallColor, 0x808080u);
    Bind("FloorAppear", &m_floorAppear, L"");
    Bind("DefFillStyle", &m_defFillStyle, 0);
    Bind("DefWallFillStyle", &m_defWallFillStyle, 0);
    Bind("DefMeasLineEnds", &m_defMeasLineEnds, 0);
    Bind("DefMeasLineWidth", &m_defMeasLineWidth, 25.0);
    Bind("DefMeasLineWidthUnit", &m_defMeasLineWidthUnit, 1);
    Bind("LastLibraryPage", &m_lastLibraryPage, 0);
    Bind("LabelFont", &m_labelFont, L"Tahoma|12|238|0|0");
    Bind("LastOpenFolder", &m_lastOpenFolder, nullptr);
    Bind("Autosize", &m_autosize, true);
    Bind("OpenInBestFit", &m_openInBestFit, true);
    Bind("AutoOpenLastProject", &m_autoOpenLastProject, true);
    Bind("DefPrintTitleFont", &m_defPrintTitleFont, L"");
    Bind("DefPrintNoteFont", &m_defPrintNoteFont, L"");
    Bind("DefCaptionFont", &m_defCaptionFont, L"Tahoma|8|238|0|0");
    Bind("DefCaptionPrintFont", &m_defCaptionPrintFont, L"Tahoma|10|238|0|0");
    Bind("DefaultUnit", &m_defaultUnit, L"cm");
    Bind("AlignWithRespectToRoom", &m_alignWithRespectToRoom, false);
    Bind("AlignWithRespectToDrawing", &m_alignWithRespectToDrawing, false);
    Bind("ExpIn100", &m_expIn100, true);
    Bind("ExpAddText", &m_expAddText, false);
    Bind("PrintMethod", &m_printMethod, 0);
    Bind("PaperOrientation", &m_paperOrientation, 0);
    Bind("PageBorder", &m_pageBorder, 150);
    Bind("PrintPaperSize", &m_printPaperSize, 9); // A4
    Bind("PrintScale", &m_printScale, true);
    Bind("PrintToPDF", &m_printToPDF, false);
    Bind("PrintCustomLayout", &m_printCustomLayout, false);
    Bind("PrintCustomLayoutFile", &m_printCustomLayoutFile, L"");
    Bind("3DUsePhongShaderPipeline", &m_3DUsePhongShaderPipeline, true);
    Bind("3DWalkThroughWalls", &m_3DWalkThroughWalls, false);
    Bind("3DWallsTransp", &m_3DWallsTransp, 0);
    Bind("3DZoom", &m_3DZoom, 100);
    Bind("3DAvatarHeight", &m_3DAvatarHeight, 160.0, OPT_INT_AS_DOUBLE);
    Bind("3DFieldOfView", &m_3DFieldOfView, 100.0);
    Bind("3DViewRotatedDown", &m_3DViewRotatedDown, true);
    Bind("3DExportFileLinks", &m_3DExportFileLinks, true);
    Bind("MoveNonSelected", &m_moveNonSelected, true);
    Bind("SubUnitMoves", &m_subUnitMoves, false);
    Bind("DecimalPrecision", &m_decimalPrecision, 2);
    Bind("InchesPrecision", &m_inchesPrecision, 3);
    Bind("AreaLabelsDecimalPrec", &m_areaLabelsDecimalPrec, -1);
    Bind("FeetConvX", &m_feetConvX, -1);
    Bind("FeetConvY", &m_feetConvY, 0);
    Bind("AlignPaletteX", &m_alignPaletteX, -1);
    Bind("AlignPaletteY", &m_alignPaletteY, 0);
    Bind("ShowAlignPalette", &m_showAlignPalette, false);
    Bind("AlignPaletteDock", &m_alignPaletteDock, true);
    Bind("ShowUserLibCaptions", &m_showUserLibCaptions, false);
    Bind("RotatedMeasLineCaption", &m_rotatedMeasLineCaption, true);
    Bind("TextureLibOptions", &m_textureLibOptions, L"");
    Bind("ListExportOptions", &m_listExportOptions, L"");
    Bind("PartListingOptions", &m_partListingOptions, L"");
    Bind("ShowPartListing", &m_showPartListing, false);
    Bind("PartListingDocked", &m_partListingDocked, true);
    Bind("LayerFormOptions", &m_layerFormOptions, L"");
    Bind("LayerFormDocked", &m_layerFormDocked, 1);
    Bind("CommentsFormVisible", &m_commentsFormVisible, false);
    Bind("CommentsFormOptions", &m_commentsFormOptions, L"");
    Bind("ExportHTMLOptions", &m_exportHTMLOptions, L"");
    Bind("SwatchOptions", &m_swatchOptions, L"");
    Bind("RoomMngFormOptions", &m_roomMngFormOptions, L"");
    Bind("RoomMngSplitterState", &m_roomMngSplitterState, L"");
    Bind("View3DFormOptions", &m_view3DFormOptions, L"");
    Bind("View3DFormSize", &m_view3DFormSize, L"");
    Bind("3DViewerOptions", &m_3DViewerOptions, L"");
    Bind("3DViewerWndSize", &m_3DViewerWndSize, L"");
    Bind("ProjBrowserOptions", &m_projBrowserOptions, L"");
    Bind("ShadowTimeZone", &m_shadowTimeZone, 1.0);
    Bind("ShadowDaylightSaving", &m_shadowDaylightSaving, false);
    Bind("ShadowLatitude", &m_shadowLatitude, 50.0);
    Bind("ShadowLongitude", &m_shadowLongitude, 14.0);
    Bind("VideoCodec", &m_videoCodec, 0);
    Bind("RoomStatUnit", &m_roomStatUnit, L"");
    Bind("NewProjectsWithWizard", &m_newProjectsWithWizard, true);
    Bind("MainWndBackground", &m_mainWndBackground, true);
    Bind("UseIntegratedCalc", &m_useIntegratedCalc, true);
    Bind("ConvertFeetInEdit", &m_convertFeetInEdit, true);
    Bind("AntiAliasing", &m_antiAliasing, true);
    Bind("Open3DViewMode", &m_open3DViewMode, 0);
    Bind("AutoSaveInterval", &m_autoSaveInterval, 2);
    Bind("AutoCheckVersionInterval", &m_autoCheckVersionInterval, 14);
    Bind("AutoCheckNewVersionLast", &m_autoCheckNewVersionLast, 0);
    Bind("DownLibCheckedDate", &m_downLibCheckedDate, 0);
    Bind("DownLibCheckedCount", &m_downLibCheckedCount, 0);
    Bind("PropFormShowExtInfo", &m_propFormShowExtInfo, false);
    Bind("ColorPickerMode", &m_colorPickerMode, 0);
    Bind("ColorPickerSlidersInHSB", &m_colorPickerSlidersInHSB, true);
    Bind("AutoSaveFileWasModified", &m_autoSaveFileWasModified, false);
    Bind("AutoSaveFileRevision", &m_autoSaveFileRevision, L"");
    Bind("CrashWhileAppStart", &m_crashWhileAppStart, false);
    Bind("LastTimeCheckForCrash", &m_lastTimeCheckForCrash, int64_t(0));
    m_listsPosition = m_bindings.size();
    Bind("Recent0", &m_recent[0], L"");
    Bind("Recent1", &m_recent[1], L"");
    Bind("Recent2", &m_recent[2], L"");
    Bind("Recent3", &m_recent[3], L"");
    Bind("DrawFloorTextures", &m_drawFloorTextures, true);
    Bind("ShowGrid", &m_showGrid, true);
    Bind("ShowGridLabels", &m_showGridLabels, false);
    Bind("ShowCaptions", &m_showCaptions, true);
    Bind("Lib3DChecked", &m_lib3DChecked, true);
    Bind("ShowLibTab", &m_showLibTab, true);
    Bind("WallEditShowObjects", &m_wallEditShowObjects, false);
    Bind("PolyEditShowObjects", &m_polyEditShowObjects, true);
    Bind("TerrEditShowObjects", &m_terrEditShowObjects, false);
    Bind("LastVersion", &m_lastVersion, 110);
    Bind("Language", &m_language, 1);
    Bind("Country", &m_country, L"");
    Bind("MainWndMax", &m_mainWndMax, true);
    Bind("MainWndLeft", &m_mainWndLeft, 0);
    Bind("MainWndTop", &m_mainWndTop, 0);
    Bind("MainWndWidth", &m_mainWndWidth, 0);
    Bind("MainWndHeight", &m_mainWndHeight, 0);
    Bind("MainWndLeftDockHeight", &m_mainWndLeftDockHeight, 0);
    Bind("LeftDockWidth", &m_leftDockWidth, 0);
    Bind("RightDockWidth", &m_rightDockWidth, 0);
    Bind("CalcNotFeetConv", &m_calcNotFeetConv, true);
    Bind("HomeHideBuildSection", &m_homeHideBuildSection, false);
    Bind("HomeHideEditSection", &m_homeHideEditSection, false);
    Bind("TouchInterface", &m_touchInterface, false);
    Bind("3dViewCrashedLastTime", &m_3dViewCrashedLastTime, false);
    Bind("AppUseCustomOpenSaveDlg", &m_appUseCustomOpenSaveDlg, false);
    ResetToDefaults();
}

void CVxOptions::Bind(const char* key, bool* value, bool def)
{
    m_bindings.push_back({key, OPT_BOOL, value, def ? 1.0 : 0.0, nullptr});
}

void CVxOptions::Bind(const char* key, int* value, int def)
{
    m_bindings.push_back({key, OPT_INT, value, static_cast<double>(def), nullptr});
}

void CVxOptions::Bind(const char* key, int64_t* value, int64_t def)
{
    m_bindings.push_back({key, OPT_INT64, value, static_cast<double>(def), nullptr});
}

void CVxOptions::Bind(const char* key, double* value, double def, EVxOptionType type)
{
    m_bindings.push_back({key, type, value, def, nullptr});
}

void CVxOptions::Bind(const char* key, unsigned* value, unsigned def)
{
    m_bindings.push_back({key, OPT_COLOR, value, static_cast<double>(def), nullptr});
}

void CVxOptions::Bind(const char* key, CVxStringW* value, const wchar_t* def)
{
    m_bindings.push_back({key, OPT_STRING, value, 0.0, def});
}

void CVxOptions::ResetToDefaults()
{
    for (const SVxOptionBinding& b : m_bindings) {
        switch (b.type) {
        case OPT_BOOL:
            *static_cast<bool*>(b.value) = b.numberDefault != 0;
            break;
        case OPT_INT:
            *static_cast<int*>(b.value) = static_cast<int>(b.numberDefault);
            break;
        case OPT_INT64:
            *static_cast<int64_t*>(b.value) = static_cast<int64_t>(b.numberDefault);
            break;
        case OPT_INT_AS_DOUBLE:
        case OPT_DOUBLE:
            *static_cast<double*>(b.value) = b.numberDefault;
            break;
        case OPT_COLOR:
            *static_cast<unsigned*>(b.value) = static_cast<unsigned>(b.numberDefault);
            break;
        case OPT_STRING:
            *static_cast<CVxStringW*>(b.value) =
                b.textDefault ? CVxStringW(b.textDefault) : DocumentsFolder();
            break;
        }
    }
    m_libAddLib.clear();
    m_extLibOpt.clear();
}

CVxStringW CVxOptions::GetConfigFilePath()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return CVxStringW();
    return host->GetUserAppRoamingDataPath() + L"config.ini";
}

bool CVxOptions::LoadFromRegistry()
{
    const CVxStringW path = GetConfigFilePath();
    if (path.IsEmpty())
        return false;
    CVxIniFileReader reader(path, 65001);
    if (!reader.IsOpened())
        return false;
    LoadFromReader(&reader);
    return true;
}

void CVxOptions::LoadFromReader(CVxIniFileReader* reader)
{
    reader->Start();
    while (!reader->GetSectionName().IsEmpty()) {
        if (reader->GetSectionName() == "Options")
            reader->ReadSection(this);
        else
            reader->ReadSection(nullptr);
    }
    // An empty font would leave labels without a face.
    if (m_defCaptionFont.IsEmpty())
        m_defCaptionFont = L"Tahoma|8|238|0|0";
    if (m_labelFont.IsEmpty())
        m_labelFont = L"Tahoma|12|238|0|0";
}

void CVxOptions::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* /*reader*/)
{
    for (const SVxOptionBinding& b : m_bindings) {
        if (key != b.key)
            continue;
        switch (b.type) {
        case OPT_BOOL:
            *static_cast<bool*>(b.value) = CVxIniFileReader::ToBool(value, b.numberDefault != 0);
            break;
        case OPT_INT:
            *static_cast<int*>(b.value) = CVxIniFileReader::ToInt(value, static_cast<int>(b.numberDefault));
            break;
        case OPT_INT_AS_DOUBLE:
            *static_cast<double*>(b.value) =
                CVxIniFileReader::ToInt(value, static_cast<int>(b.numberDefault));
            break;
        case OPT_INT64:
            *static_cast<int64_t*>(b.value) = value.ToInt64Def(static_cast<int64_t>(b.numberDefault));
            break;
        case OPT_DOUBLE:
            *static_cast<double*>(b.value) = CVxIniFileReader::ToDouble(value, b.numberDefault);
            break;
        case OPT_COLOR:
            *static_cast<unsigned*>(b.value) =
                static_cast<unsigned>(CVxIniFileReader::ToInt(value, static_cast<int>(b.numberDefault)));
            break;
        case OPT_STRING:
            *static_cast<CVxStringW*>(b.value) = value;
            break;
        }
        return;
    }

    if (key == "LibAddCount" || key == "ExtLibOptCount") {
        int count = value.ToIntDef(0);
        count = count < 0 ? 0 : (count > kMaxListEntries ? kMaxListEntries : count);
        (key == "LibAddCount" ? m_libAddLib : m_extLibOpt).resize(static_cast<size_t>(count));
        return;
    }
    for (auto [prefix, list] : {std::pair{"LibAddLib", &m_libAddLib}, std::pair{"ExtLibOpt", &m_extLibOpt}}) {
        const int index = ListIndex(key, prefix);
        if (index >= 0 && index < static_cast<int>(list->size())) {
            (*list)[static_cast<size_t>(index)] = value;
            return;
        }
    }
}

bool CVxOptions::SaveToRegistry()
{
    const CVxStringW path = GetConfigFilePath();
    if (path.IsEmpty())
        return false;
    const CVxStringW temp = VX_SafeSaveTempPath(path);
    {
        CVxIniWriter writer(temp);
        if (!writer.IsOpened())
            return false;
        SaveToRegistry(&writer);
        writer.Finalize();
    }
    return VX_SafeSaveCommit(temp, path);
}

void CVxOptions::SaveToRegistry(CVxIniWriter* writer)
{
    writer->StartSection("Options");
    for (size_t i = 0; i < m_bindings.size(); ++i) {
        if (i == m_listsPosition)
            WriteLists(writer);
        WriteBinding(writer, m_bindings[i]);
    }
}

void CVxOptions::WriteLists(CVxIniWriter* writer) const
{
    char key[32];
    writer->WriteInteger("LibAddCount", static_cast<int>(m_libAddLib.size()));
    for (size_t i = 0; i < m_libAddLib.size(); ++i) {
        snprintf(key, sizeof(key), "LibAddLib%d", static_cast<int>(i));
        writer->WriteString(key, m_libAddLib[i]);
    }
    writer->WriteInteger("ExtLibOptCount", static_cast<int>(m_extLibOpt.size()));
    for (size_t i = 0; i < m_extLibOpt.size(); ++i) {
        snprintf(key, sizeof(key), "ExtLibOpt%d", static_cast<int>(i));
        writer->WriteString(key, m_extLibOpt[i]);
    }
}

void CVxOptions::WriteBinding(CVxIniWriter* writer, const SVxOptionBinding& b) const
{
    switch (b.type) {
    case OPT_BOOL:
        writer->WriteBool(b.key, *static_cast<const bool*>(b.value));
        break;
    case OPT_INT:
        writer->WriteInteger(b.key, *static_cast<const int*>(b.value));
        break;
    case OPT_INT_AS_DOUBLE:
        writer->WriteInteger(b.key, static_cast<int>(*static_cast<const double*>(b.value)));
        break;
    case OPT_INT64:
        writer->WriteInteger64(b.key, *static_cast<const int64_t*>(b.value));
        break;
    case OPT_DOUBLE:
        writer->WriteDouble(b.key, *static_cast<const double*>(b.value));
        break;
    case OPT_COLOR:
        writer->WriteString(b.key, CVxStringW::IntToHex(*static_cast<const unsigned*>(b.value), 6, true));
        break;
    case OPT_STRING:
        writer->WriteString(b.key, *static_cast<const CVxStringW*>(b.value));
        break;
    }
}

CVxOptions* VX_GetOptions()
{
    static CVxOptions* options = new CVxOptions;
    return options;
}
