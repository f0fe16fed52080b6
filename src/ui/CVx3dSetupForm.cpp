#include "CVx3dSetupForm.h"

#include "CVxAppCore.h"
#include "CVxGlobalShadow.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxTimeAndPosDlg.h"
#include "IVxAppHelperCallback.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

// Rows of the table Setup3DForm.
enum EVxSetupRow
{
    ROW_TITLE = 1,
    ROW_OPEN_IN,
    ROW_OPEN_VIEWER,
    ROW_OPEN_PLUGIN,
    ROW_OPEN_BROWSER,
    ROW_VIEWPOINTS,
    ROW_ADD,
    ROW_REMOVE,
    ROW_UP,
    ROW_DOWN,
    ROW_ALL_FLOORS,
    ROW_INCLUDE_STD,
    ROW_GLOBAL_SHADOW,
    ROW_SHADOW_POS,
    ROW_WALLS,
    ROW_WALLS_SOLID,
    ROW_WALLS_INVISIBLE,
    ROW_WALLS_HALVED,
    ROW_ROTATED_DOWN,
    ROW_WALK_THROUGH_WALLS,
    ROW_ADD_VIEWPOINT,
    ROW_ENTER_NAME
};

QString Text(int row, const wchar_t* english)
{
    CVxLocalize* loc = VX_GetLoc();
    return loc->LocalizeDlgString(loc->GetDlgIndex("Setup3DForm"), row, english).ToQString();
}

} // namespace

CVx3dSetupForm::CVx3dSetupForm(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(Text(ROW_TITLE, L"Explore in 3D - Setup"));
    auto* layout = new QVBoxLayout(this);

    auto* target = new QFormLayout;
    m_openTarget = new QComboBox(this);
    m_openTarget->addItem(Text(ROW_OPEN_VIEWER, L"Plaveno 3D Viewer"));
    if (CheckVrmlOptions())
        m_openTarget->addItem(Text(ROW_OPEN_PLUGIN, L"VRML plugin"));
    m_openTarget->addItem(Text(ROW_OPEN_BROWSER, L"Open in web browser"));
    connect(m_openTarget, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (m_updating || index < 0)
            return;
        VX_GetOptions()->m_open3DViewMode = index;
        EnableControls();
    });
    target->addRow(Text(ROW_OPEN_IN, L"Open in:"), m_openTarget);
    layout->addLayout(target);

    auto* viewpoints = new QGroupBox(Text(ROW_VIEWPOINTS, L"Viewpoints"), this);
    auto* grid = new QGridLayout(viewpoints);
    m_list = new QListWidget(viewpoints);
    grid->addWidget(m_list, 0, 0, 5, 1);
    m_btnAdd = new QPushButton(Text(ROW_ADD, L"Add..."), viewpoints);
    m_btnRemove = new QPushButton(Text(ROW_REMOVE, L"Remove"), viewpoints);
    m_btnUp = new QPushButton(Text(ROW_UP, L"Up"), viewpoints);
    m_btnDown = new QPushButton(Text(ROW_DOWN, L"Down"), viewpoints);
    grid->addWidget(m_btnAdd, 0, 1);
    grid->addWidget(m_btnRemove, 1, 1);
    grid->addWidget(m_btnUp, 2, 1);
    grid->addWidget(m_btnDown, 3, 1);
    connect(m_btnAdd, &QPushButton::clicked, this, &CVx3dSetupForm::BtnItemAddClick);
    connect(m_btnRemove, &QPushButton::clicked, this, [this] { RemoveViewpoint(m_list->currentRow()); });
    connect(m_btnUp, &QPushButton::clicked, this, [this] { MoveViewpoint(m_list->currentRow(), -1); });
    connect(m_btnDown, &QPushButton::clicked, this, [this] { MoveViewpoint(m_list->currentRow(), 1); });
    connect(m_list, &QListWidget::currentRowChanged, this, &CVx3dSetupForm::EnableControls);
    m_chkAllFloors = new QCheckBox(Text(ROW_ALL_FLOORS, L"All floors"), viewpoints);
    m_chkIncludeStd = new QCheckBox(Text(ROW_INCLUDE_STD, L"Include standard views"), viewpoints);
    grid->addWidget(m_chkAllFloors, 5, 0, 1, 2);
    grid->addWidget(m_chkIncludeStd, 6, 0, 1, 2);
    connect(m_chkAllFloors, &QCheckBox::toggled, this, [this](bool on) {
        if (m_updating)
            return;
        VX_GetCore()->GetProject().m_viewpoints.m_allFloors = on;
        ProjectChanged(true);
    });
    connect(m_chkIncludeStd, &QCheckBox::toggled, this, [this](bool on) {
        if (m_updating)
            return;
        VX_GetCore()->GetProject().m_viewpoints.m_includeStd = on;
        ProjectChanged(false);
    });
    layout->addWidget(viewpoints, 1);

    auto* sun = new QHBoxLayout;
    m_chkGlobalShadow = new QCheckBox(Text(ROW_GLOBAL_SHADOW, L"Sun and shadows"), this);
    m_btnShadowPos = new QPushButton(Text(ROW_SHADOW_POS, L"Location and Time..."), this);
    sun->addWidget(m_chkGlobalShadow);
    sun->addWidget(m_btnShadowPos);
    layout->addLayout(sun);
    connect(m_chkGlobalShadow, &QCheckBox::toggled, this, [this](bool on) {
        if (m_updating)
            return;
        CVxProject& project = VX_GetCore()->GetProject();
        CVxGlobalShadow shadow = CVxTimeAndPosDlg::ProjectShadow();
        shadow.enabled = on;
        shadow.StoreToKept(project.m_globalShadow);
        ProjectChanged(false);
    });
    connect(m_btnShadowPos, &QPushButton::clicked, this, &CVx3dSetupForm::BtnShadowPosClick);

    auto* options = new QFormLayout;
    m_wallsMode = new QComboBox(this);
    m_wallsMode->addItems({Text(ROW_WALLS_SOLID, L"Solid"), Text(ROW_WALLS_INVISIBLE, L"Invisible"),
                           Text(ROW_WALLS_HALVED, L"Halved")});
    connect(m_wallsMode, &QComboBox::currentIndexChanged, this, [this](int mode) {
        if (m_updating || mode < 0)
            return;
        VX_GetCore()->GetProject().m_walls3DStyle = mode;
        VX_GetOptions()->m_3DWallsTransp = mode;
        ProjectChanged(false);
    });
    options->addRow(Text(ROW_WALLS, L"Walls:"), m_wallsMode);
    layout->addLayout(options);
    m_chkRotatedDown = new QCheckBox(Text(ROW_ROTATED_DOWN, L"Look slightly downwards"), this);
    m_chkWalkThroughWalls = new QCheckBox(Text(ROW_WALK_THROUGH_WALLS, L"Walk through walls"), this);
    layout->addWidget(m_chkRotatedDown);
    layout->addWidget(m_chkWalkThroughWalls);
    connect(m_chkRotatedDown, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_updating)
            VX_GetOptions()->m_3DViewRotatedDown = on;
    });
    connect(m_chkWalkThroughWalls, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_updating)
            VX_GetOptions()->m_3DWalkThroughWalls = on;
    });
    Refresh();
}

void CVx3dSetupForm::Refresh()
{
    m_updating = true;
    const CVxOptions* options = VX_GetOptions();
    const CVxProject& project = VX_GetCore()->GetProject();
    m_openTarget->setCurrentIndex(std::clamp(options->m_open3DViewMode, 0, m_openTarget->count() - 1));
    m_chkAllFloors->setChecked(project.m_viewpoints.m_allFloors);
    m_chkIncludeStd->setChecked(project.m_viewpoints.m_includeStd);
    CVxGlobalShadow shadow = CVxTimeAndPosDlg::ProjectShadow();
    m_chkGlobalShadow->setChecked(shadow.enabled);
    m_wallsMode->setCurrentIndex(std::clamp(project.m_walls3DStyle, 0, 2));
    m_chkRotatedDown->setChecked(options->m_3DViewRotatedDown);
    m_chkWalkThroughWalls->setChecked(options->m_3DWalkThroughWalls);
    m_updating = false;
    FillList();
}

void CVx3dSetupForm::FillList()
{
    const int row = m_list->currentRow();
    m_list->clear();
    for (const CVxViewpoint& viewpoint : VX_GetCore()->GetProject().m_viewpoints.m_viewpoints)
        m_list->addItem(viewpoint.m_name.ToQString());
    m_list->setCurrentRow(std::min(row, m_list->count() - 1));
    EnableControls();
}

void CVx3dSetupForm::EnableControls()
{
    const int row = m_list->currentRow();
    m_btnRemove->setEnabled(row >= 0);
    m_btnUp->setEnabled(row > 0);
    m_btnDown->setEnabled(row >= 0 && row < m_list->count() - 1);
    // The sun and its shadow are drawn by the program's own viewer only.
    const bool ownViewer = m_openTarget->currentIndex() == 0;
    m_chkGlobalShadow->setEnabled(ownViewer);
    m_btnShadowPos->setEnabled(ownViewer);
}

void CVx3dSetupForm::BtnItemAddClick()
{
    bool ok = false;
    const QString name =
        QInputDialog::getText(this, Text(ROW_ADD_VIEWPOINT, L"Add Viewpoint"),
                              Text(ROW_ENTER_NAME, L"Enter new name"), QLineEdit::Normal, QString(), &ok);
    if (ok && !name.trimmed().isEmpty())
        AddViewpoint(name.trimmed());
}

void CVx3dSetupForm::AddViewpoint(const QString& name)
{
    CVxAppCore* core = VX_GetCore();
    core->CatchUndoRoom(true);
    CVxProject& project = core->GetProject();
    CVxViewpoint viewpoint;
    viewpoint.m_name = CVxStringW(name);
    viewpoint.m_floor = std::max(0, project.m_currentFloor);
    viewpoint.m_x = project.m_width / 2;
    viewpoint.m_y = project.m_height / 2;
    project.m_viewpoints.m_viewpoints.push_back(viewpoint);
    FillList();
    m_list->setCurrentRow(m_list->count() - 1);
    ProjectChanged(false);
}

void CVx3dSetupForm::RemoveViewpoint(int index)
{
    auto& list = VX_GetCore()->GetProject().m_viewpoints.m_viewpoints;
    if (index < 0 || index >= static_cast<int>(list.size()))
        return;
    VX_GetCore()->CatchUndoRoom(true);
    list.erase(list.begin() + index);
    FillList();
    ProjectChanged(false);
}

void CVx3dSetupForm::MoveViewpoint(int index, int by)
{
    auto& list = VX_GetCore()->GetProject().m_viewpoints.m_viewpoints;
    const int to = index + by;
    if (index < 0 || to < 0 || index >= static_cast<int>(list.size()) || to >= static_cast<int>(list.size()))
        return;
    VX_GetCore()->CatchUndoRoom(true);
    std::swap(list[index], list[to]);
    FillList();
    m_list->setCurrentRow(to);
    ProjectChanged(false);
}

void CVx3dSetupForm::BtnShadowPosClick()
{
    CVxProject& project = VX_GetCore()->GetProject();
    CVxGlobalShadow shadow = CVxTimeAndPosDlg::ProjectShadow();
    CVxTimeAndPosDlg dialog(shadow, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    dialog.GetResult().StoreToKept(project.m_globalShadow);
    ProjectChanged(false);
}

void CVx3dSetupForm::ProjectChanged(bool sceneChanged)
{
    VX_GetCore()->GetProject().m_modified = true;
    // The viewpoints of the floors shown stand on the plan.
    if (sceneChanged)
        if (IVxAppHelperCallback* helper = VX_GetAppHelper())
            helper->DrawRoom(nullptr);
}
