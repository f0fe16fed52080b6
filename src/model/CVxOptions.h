#pragma once
// The user's settings: one "Options" section in config.ini in the user's
// application data folder, read once at start and written once at exit.
// Every key has one member; the binding table in the constructor gives the
// keys their order in the file, their types and their defaults.

#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <cstdint>
#include <vector>

class CVxIniWriter;

class CVxOptions : public IVxReadIniClient
{
public:
    CVxOptions();

    bool LoadFromRegistry();
    bool SaveToRegistry();
    void SaveToRegistry(CVxIniWriter* writer);
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;

    // Reads the "Options" section of any record text, as LoadFromRegistry
    // does with the file.
    void LoadFromReader(CVxIniFileReader* reader);
    // Every key back at its default.
    void ResetToDefaults();
    static CVxStringW GetConfigFilePath();

    unsigned m_defLineColor, m_defFillColor, m_defTextColor, m_defWallColor;
    CVxStringW m_floorAppear;
    int m_defFillStyle, m_defWallFillStyle;
    int m_defMeasLineEnds;
    double m_defMeasLineWidth;
    int m_defMeasLineWidthUnit;
    int m_lastLibraryPage;
    CVxStringW m_labelFont;
    CVxStringW m_lastOpenFolder;
    bool m_autosize, m_openInBestFit, m_autoOpenLastProject;
    CVxStringW m_defPrintTitleFont, m_defPrintNoteFont;
    CVxStringW m_defCaptionFont;
    CVxStringW m_defCaptionPrintFont;
    CVxStringW m_defaultUnit;
    bool m_alignWithRespectToRoom, m_alignWithRespectToDrawing;
    bool m_expIn100, m_expAddText;
    int m_printMethod, m_paperOrientation;
    int m_pageBorder;
    int m_printPaperSize;
    bool m_printScale, m_printToPDF, m_printCustomLayout;
    CVxStringW m_printCustomLayoutFile;
    bool m_3DUsePhongShaderPipeline, m_3DWalkThroughWalls;
    int m_3DWallsTransp, m_3DZoom;
    double m_3DAvatarHeight;
    double m_3DFieldOfView;
    bool m_3DViewRotatedDown, m_3DExportFileLinks;
    bool m_moveNonSelected, m_subUnitMoves;
    int m_decimalPrecision, m_inchesPrecision;
    int m_areaLabelsDecimalPrec;
    int m_feetConvX, m_feetConvY, m_alignPaletteX, m_alignPaletteY;
    bool m_showAlignPalette, m_alignPaletteDock, m_showUserLibCaptions, m_rotatedMeasLineCaption;
    CVxStringW m_textureLibOptions, m_listExportOptions, m_partListingOptions;
    bool m_showPartListing, m_partListingDocked;
    CVxStringW m_layerFormOptions;
    int m_layerFormDocked;
    bool m_commentsFormVisible;
    CVxStringW m_commentsFormOptions, m_exportHTMLOptions, m_swatchOptions, m_roomMngFormOptions,
        m_roomMngSplitterState, m_view3DFormOptions, m_view3DFormSize, m_3DViewerOptions, m_3DViewerWndSize,
        m_projBrowserOptions;
    double m_shadowTimeZone;
    bool m_shadowDaylightSaving;
    double m_shadowLatitude, m_shadowLongitude;
    int m_videoCodec;
    CVxStringW m_roomStatUnit;
    bool m_newProjectsWithWizard, m_mainWndBackground, m_useIntegratedCalc, m_convertFeetInEdit;
    bool m_antiAliasing;
    int m_open3DViewMode;
    int m_autoSaveInterval;         // minutes; below 0 never
    int m_autoCheckVersionInterval; // days
    int m_autoCheckNewVersionLast, m_downLibCheckedDate, m_downLibCheckedCount;
    bool m_propFormShowExtInfo;
    int m_colorPickerMode;
    bool m_colorPickerSlidersInHSB;
    bool m_autoSaveFileWasModified;
    CVxStringW m_autoSaveFileRevision;
    bool m_crashWhileAppStart;
    int64_t m_lastTimeCheckForCrash;
    // Additional libraries and their options, kept and written back as read.
    std::vector<CVxStringW> m_libAddLib;
    std::vector<CVxStringW> m_extLibOpt;
    CVxStringW m_recent[4];
    bool m_drawFloorTextures, m_showGrid, m_showGridLabels, m_showCaptions;
    bool m_lib3DChecked, m_showLibTab;
    bool m_wallEditShowObjects, m_polyEditShowObjects, m_terrEditShowObjects;
    int m_lastVersion;
    int m_language; // language id; 1 means not chosen yet
    CVxStringW m_country;
    bool m_mainWndMax;
    int m_mainWndLeft, m_mainWndTop, m_mainWndWidth, m_mainWndHeight;
    int m_mainWndLeftDockHeight, m_leftDockWidth, m_rightDockWidth;
    bool m_calcNotFeetConv;
    bool m_homeHideBuildSection, m_homeHideEditSection;
    bool m_touchInterface;
    bool m_3dViewCrashedLastTime;
    bool m_appUseCustomOpenSaveDlg;

private:
    enum EVxOptionType
    {
        OPT_BOOL,
        OPT_INT,
        OPT_INT_AS_DOUBLE,
        OPT_INT64,
        OPT_DOUBLE,
        OPT_STRING,
        OPT_COLOR
    };
    struct SVxOptionBinding
    {
        const char* key;
        EVxOptionType type;
        void* value;
        double numberDefault;
        const wchar_t* textDefault;
    };

    void Bind(const char* key, bool* value, bool def);
    void Bind(const char* key, int* value, int def);
    void Bind(const char* key, int64_t* value, int64_t def);
    void Bind(const char* key, double* value, double def, EVxOptionType type = OPT_DOUBLE);
    void Bind(const char* key, unsigned* value, unsigned def);
    void Bind(const char* key, CVxStringW* value, const wchar_t* def);
    void WriteBinding(CVxIniWriter* writer, const SVxOptionBinding& binding) const;
    void WriteLists(CVxIniWriter* writer) const;

    // In file order; the list keys of the libraries and the recent files are
    // written where they stand in that order, by WriteLists.
    std::vector<SVxOptionBinding> m_bindings;
    size_t m_listsPosition = 0;
};

CVxOptions* VX_GetOptions();
