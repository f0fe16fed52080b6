#include "CVxWallEditorDlgs.h"

#include "CVxAppCore.h"
#include "CVxLocalize.h"
#include "CVxUnits.h"
#include "CVxWallEditor.h"
#include "VxLocalizeWidgets.h"
#include "VxNumbers.h"
#include "VxTypedLength.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {
constexpr double kUnset = -19182.0;
// What a blank field reads as, so that a check tells it from a number.
constexpr double kBlank = 16777215.0;
constexpr double kPi = 3.14159265358979323846;

QString Loc(int row, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeMessage(row, english);
}

QString Text(double value)
{
    if (value == kUnset || !std::isfinite(value))
        return QString();
    return VX_DblFormat(value, VX_DF_DECIMAL, false);
}

double Read(const QLineEdit* edit)
{
    const QString text = edit->text().trimmed();
    if (text.isEmpty())
        return kBlank;
    bool ok = false;
    const double value = VX_DblReadText(CVxStringW(text), kBlank, &ok);
    return ok && std::isfinite(value) ? value : kBlank;
}

QLineEdit* NumberEdit(QWidget* parent, double value)
{
    auto* edit = new QLineEdit(Text(value), parent);
    edit->setMaxLength(24);
    return edit;
}

QDialogButtonBox* OkCancel(QDialog* dialog)
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return buttons;
}

QWidget* Pair(QWidget* parent, QLineEdit* x, QLineEdit* y)
{
    auto* box = new QWidget(parent);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new QLabel(QStringLiteral("x:"), box));
    row->addWidget(x);
    row->addWidget(new QLabel(QStringLiteral("y:"), box));
    row->addWidget(y);
    return box;
}
} // namespace

CVxWallVertexDlg::CVxWallVertexDlg(double x, double y, double height, const QString& title, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(title);
    setObjectName(QStringLiteral("CVxWallVertexDlg"));
    auto* form = new QFormLayout(this);
    m_x = NumberEdit(this, x);
    m_y = NumberEdit(this, y);
    m_x->setObjectName(QStringLiteral("EdX"));
    m_y->setObjectName(QStringLiteral("EdY"));
    form->addRow(QString(), Pair(this, m_x, m_y));
    m_height = NumberEdit(this, height);
    m_height->setObjectName(QStringLiteral("EdHeight"));
    if (height != kUnset)
        form->addRow(Loc(1011, L"Height:"), m_height);
    else
        m_height->hide();
    QDialogButtonBox* buttons = OkCancel(this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    form->addRow(buttons);
}

double CVxWallVertexDlg::GetX() const
{
    const double v = Read(m_x);
    return v == kBlank ? kUnset : v;
}

double CVxWallVertexDlg::GetY() const
{
    const double v = Read(m_y);
    return v == kBlank ? kUnset : v;
}

double CVxWallVertexDlg::GetHeight() const
{
    const double v = m_height->isVisible() || !m_height->isHidden() ? Read(m_height) : kBlank;
    return v == kBlank ? kUnset : v;
}

CVxWallEdgeDlg::CVxWallEdgeDlg(const CVxWall& wall, unsigned differ, const QString& title, QWidget* parent)
    : QDialog(parent), m_wall(wall)
{
    setWindowTitle(title.isEmpty() ? Loc(1003, L"Wall Properties") : title);
    setObjectName(QStringLiteral("CVxWallEdgeDlg"));
    auto* form = new QFormLayout(this);
    const bool ends = (differ & 4) == 0;
    m_fromX = NumberEdit(this, ends ? wall.start.x : kUnset);
    m_fromY = NumberEdit(this, ends ? wall.start.y : kUnset);
    m_toX = NumberEdit(this, ends ? wall.end.x : kUnset);
    m_toY = NumberEdit(this, ends ? wall.end.y : kUnset);
    m_length = NumberEdit(this, ends ? wall.length : kUnset);
    m_rotation = NumberEdit(this, ends ? wall.angle : kUnset);
    m_thickness = NumberEdit(this, (differ & 1) ? kUnset : wall.thickness);
    m_thickness->setObjectName(QStringLiteral("EdThickness"));
    form->addRow(Loc(1012, L"From"), Pair(this, m_fromX, m_fromY));
    form->addRow(Loc(1013, L"To"), Pair(this, m_toX, m_toY));
    form->addRow(Loc(1014, L"Length:"), m_length);
    form->addRow(Loc(1015, L"Rotation:"), m_rotation);
    form->addRow(Loc(1016, L"Thickness:"), m_thickness);
    m_align = new QComboBox(this);
    m_align->addItems(
        {Loc(1017, L"Side A"), Loc(1018, L"Centre"), Loc(1019, L"Side B"), Loc(1020, L"Custom")});
    m_align->setCurrentIndex(std::clamp(wall.align, 0, 3));
    form->addRow(Loc(1021, L"Alignment:"), m_align);
    m_sideA = NumberEdit(this, wall.align == CVxWall::ALIGN_CUSTOM ? wall.customOffset : kUnset);
    m_sideB =
        NumberEdit(this, wall.align == CVxWall::ALIGN_CUSTOM ? wall.thickness - wall.customOffset : kUnset);
    auto* custom = new QWidget(this);
    auto* row = new QHBoxLayout(custom);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new QLabel(Loc(1022, L"A:"), custom));
    row->addWidget(m_sideA);
    row->addWidget(new QLabel(Loc(1023, L"B:"), custom));
    row->addWidget(m_sideB);
    form->addRow(QString(), custom);
    m_lineStyle = new QComboBox(this);
    m_lineStyle->addItems({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
    m_lineStyle->setCurrentIndex(std::clamp(wall.lineStyle, 0, 2));
    form->addRow(Loc(1024, L"Line style:"), m_lineStyle);
    m_fillStyle = new QComboBox(this);
    for (int i = 0; i < 20; ++i)
        m_fillStyle->addItem(QString::number(i));
    m_fillStyle->setCurrentIndex(std::clamp(wall.fillStyle, 0, 19));
    form->addRow(Loc(1025, L"Fill style:"), m_fillStyle);
    m_heightFrom = NumberEdit(this, (differ & 2) ? kUnset : wall.startHeight);
    m_heightTo = NumberEdit(this, (differ & 2) ? kUnset : wall.endHeight);
    auto* copy = new QPushButton(QStringLiteral("\u2192"), this);
    auto* heights = new QWidget(this);
    auto* hrow = new QHBoxLayout(heights);
    hrow->setContentsMargins(0, 0, 0, 0);
    hrow->addWidget(m_heightFrom);
    hrow->addWidget(copy);
    form->addRow(Loc(1026, L"Height (From):"), heights);
    form->addRow(Loc(1027, L"Height (To):"), m_heightTo);
    m_invisible = new QCheckBox(Loc(1028, L"Invisible"), this);
    m_invisible->setChecked(!wall.visible);
    m_curved = new QCheckBox(Loc(1029, L"Curved Segment"), this);
    m_curved->setChecked(wall.curved);
    form->addRow(m_invisible);
    form->addRow(m_curved);
    QDialogButtonBox* buttons = OkCancel(this);
    connect(buttons, &QDialogButtonBox::accepted, this, &CVxWallEdgeDlg::BtnOKClick);
    form->addRow(buttons);
    connect(copy, &QPushButton::clicked, this, &CVxWallEdgeDlg::BtnCopyHeightClick);
    for (QLineEdit* edit : {m_fromX, m_fromY, m_toX, m_toY})
        connect(edit, &QLineEdit::textEdited, this, &CVxWallEdgeDlg::EdFromXChange);
    for (QLineEdit* edit : {m_length, m_rotation})
        connect(edit, &QLineEdit::textEdited, this, &CVxWallEdgeDlg::EdRotationChange);
    connect(m_thickness, &QLineEdit::textEdited, this, &CVxWallEdgeDlg::on_EdThickness_textEdited);
}

void CVxWallEdgeDlg::EdFromXChange()
{
    const double x1 = Read(m_fromX), y1 = Read(m_fromY), x2 = Read(m_toX), y2 = Read(m_toY);
    if (x1 == kBlank || y1 == kBlank || x2 == kBlank || y2 == kBlank)
        return;
    m_length->setText(Text(std::hypot(x2 - x1, y2 - y1)));
    m_rotation->setText(Text(std::atan2(y2 - y1, x2 - x1) * 180.0 / kPi));
}

void CVxWallEdgeDlg::EdRotationChange()
{
    const double x1 = Read(m_fromX), y1 = Read(m_fromY), length = Read(m_length), rotation = Read(m_rotation);
    if (x1 == kBlank || y1 == kBlank || length == kBlank || rotation == kBlank)
        return;
    const double r = rotation * kPi / 180.0;
    m_toX->setText(Text(x1 + std::cos(r) * length));
    m_toY->setText(Text(y1 + std::sin(r) * length));
}

void CVxWallEdgeDlg::on_EdThickness_textEdited()
{
    // A and B share the thickness.
    const double thickness = Read(m_thickness);
    const double a = Read(m_sideA);
    if (thickness == kBlank || a == kBlank)
        return;
    m_sideB->setText(Text(thickness - a));
}

void CVxWallEdgeDlg::BtnCopyHeightClick()
{
    m_heightTo->setText(m_heightFrom->text());
}

void CVxWallEdgeDlg::BtnOKClick()
{
    const double x1 = Read(m_fromX), y1 = Read(m_fromY), x2 = Read(m_toX), y2 = Read(m_toY);
    const double thickness = Read(m_thickness);
    const bool endsShown = !m_fromX->text().isEmpty() || !m_toX->text().isEmpty();
    if ((endsShown && (x1 == kBlank || y1 == kBlank || x2 == kBlank || y2 == kBlank)) ||
        thickness == kBlank || thickness < 0) {
        QMessageBox::warning(this, Loc(34, L"Error"),
                             Loc(36, L"You must enter both wall coordinates and its thickness."));
        return;
    }
    if (m_align->currentIndex() == CVxWall::ALIGN_CUSTOM) {
        const double a = Read(m_sideA), b = Read(m_sideB);
        if (a == kBlank || b == kBlank || std::fabs(a + b - thickness) > 1e-6) {
            QMessageBox::warning(this, Loc(34, L"Error"),
                                 Loc(1030, L"A and B must add up to the thickness."));
            return;
        }
    }
    accept();
}

CVxWall CVxWallEdgeDlg::GetWall() const
{
    CVxWall wall = m_wall;
    const auto or_unset = [](double v) { return v == kBlank ? kUnset : v; };
    wall.start = CVxDPoint(or_unset(Read(m_fromX)), or_unset(Read(m_fromY)));
    wall.end = CVxDPoint(or_unset(Read(m_toX)), or_unset(Read(m_toY)));
    wall.thickness = or_unset(Read(m_thickness));
    wall.align = m_align->currentIndex();
    if (wall.align == CVxWall::ALIGN_CUSTOM)
        wall.customOffset = Read(m_sideA);
    wall.lineStyle = m_lineStyle->currentIndex();
    wall.fillStyle = m_fillStyle->currentIndex();
    wall.startHeight = or_unset(Read(m_heightFrom));
    wall.endHeight = or_unset(Read(m_heightTo));
    wall.visible = !m_invisible->isChecked();
    wall.curved = m_curved->isChecked();
    return wall;
}

CVxWallHoleDlg::CVxWallHoleDlg(const CVxHoleInFloor& hole, const QString& title, QWidget* parent)
    : QDialog(parent), m_hole(hole)
{
    setWindowTitle(title);
    setObjectName(QStringLiteral("CVxWallHoleDlg"));
    auto* form = new QFormLayout(this);
    const bool polygon = hole.type == CVxHoleInFloor::TYPE_POLYGON;
    CVxDPoint at(hole.x, hole.y);
    if (polygon && !hole.polygon.points.empty())
        at = hole.polygon.points.front();
    m_x = NumberEdit(this, at.x);
    m_y = NumberEdit(this, at.y);
    m_width = NumberEdit(this, hole.width);
    m_height = NumberEdit(this, hole.height);
    m_rotation = NumberEdit(this, hole.rotation);
    form->addRow(Loc(1031, L"Position:"), Pair(this, m_x, m_y));
    form->addRow(Loc(1032, L"Width:"), m_width);
    form->addRow(Loc(1033, L"Depth:"), m_height);
    form->addRow(Loc(1015, L"Rotation:"), m_rotation);
    // A polygon is moved here; its points are dragged in the plan.
    m_width->setEnabled(!polygon);
    m_height->setEnabled(!polygon);
    m_rotation->setEnabled(!polygon);
    QDialogButtonBox* buttons = OkCancel(this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    form->addRow(buttons);
}

CVxHoleInFloor CVxWallHoleDlg::GetHole() const
{
    CVxHoleInFloor hole = m_hole;
    const double x = Read(m_x), y = Read(m_y);
    if (hole.type == CVxHoleInFloor::TYPE_POLYGON) {
        if (x != kBlank && y != kBlank && !hole.polygon.points.empty()) {
            const CVxDPoint by = CVxDPoint(x, y) - hole.polygon.points.front();
            hole.polygon.Offset(by.x, by.y);
        }
    } else {
        if (x != kBlank)
            hole.x = x;
        if (y != kBlank)
            hole.y = y;
        const double w = Read(m_width), h = Read(m_height), r = Read(m_rotation);
        if (w != kBlank && w > 0)
            hole.width = w;
        if (h != kBlank && h > 0)
            hole.height = h;
        if (r != kBlank)
            hole.rotation = r;
    }
    hole.InvalidateCache();
    return hole;
}

CVxScanCalibrateDlg::CVxScanCalibrateDlg(QWidget* parent) : QDialog(parent)
{
    CVxLocalize* loc = VX_GetLoc();
    setWindowTitle(loc->LocalizeMessage(1414, L"Set Image Size and Position").ToQString());
    auto* layout = new QVBoxLayout(this);
    auto* hint =
        new QLabel(loc->LocalizeMessage(1411, L"Drag the ends of the line onto a length you know in the "
                                              L"picture, then type that length.")
                       .ToQString(),
                   this);
    hint->setWordWrap(true);
    layout->addWidget(hint);
    auto* form = new QFormLayout;
    m_length = new QLineEdit(this);
    m_length->setMaxLength(24);
    m_length->setPlaceholderText(CVxUnits::GetUnitText(VX_GetCore()->GetProject().m_unit).ToQString());
    form->addRow(loc->LocalizeMessage(1415, L"Length:").ToQString(), m_length);
    layout->addLayout(form);
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* apply =
        buttons->addButton(loc->LocalizeMessage(1416, L"Apply").ToQString(), QDialogButtonBox::AcceptRole);
    buttons->addButton(loc->LocalizeMessage(1404, L"Close").ToQString(), QDialogButtonBox::RejectRole);
    apply->setDefault(true);
    connect(apply, &QPushButton::clicked, this, &CVxScanCalibrateDlg::Apply);
    connect(buttons, &QDialogButtonBox::rejected, this, &CVxScanCalibrateDlg::reject);
    layout->addWidget(buttons);
    setAttribute(Qt::WA_DeleteOnClose);
}

bool CVxScanCalibrateDlg::Apply()
{
    CVxAppCore* core = VX_GetCore();
    double length = 0;
    CVxWallEditor* editor = core->GetWallEditor();
    const bool done = VX_ParseTypedLength(CVxStringW(m_length->text()), core->GetProject().m_unit, length) &&
                      editor && editor->SetCalibrationSize(length);
    m_length->setStyleSheet(done ? QString() : QStringLiteral("QLineEdit { border: 1px solid #d04040; }"));
    return done;
}

void CVxScanCalibrateDlg::reject()
{
    // Closing the dialogue ends the calibration in the editor, which then
    // closes this window through the host.
    if (CVxWallEditor* editor = VX_GetCore()->GetWallEditor())
        editor->CloseCalibrationDialog();
    QDialog::reject();
}

CVxWallNumericDlg::CVxWallNumericDlg(const std::vector<CVxDPoint>& corners,
                                     const std::vector<SVxWallNumbers>& walls, int unit, QWidget* parent)
    : QDialog(parent), m_unit(unit)
{
    CVxLocalize* loc = VX_GetLoc();
    setWindowTitle(VX_ToolbarText(46, L"Numerical Editor"));
    const QString unitText = CVxUnits::GetUnitText(unit).ToQString();
    auto text = [unit](double value) {
        return VX_DblFormat(value, VX_DF_FEET_GLYPHS, true, unit).ToQString();
    };
    auto* layout = new QVBoxLayout(this);
    auto* tabs = new QTabWidget(this);
    m_corners = new QTableWidget(static_cast<int>(corners.size()), 2, tabs);
    m_corners->setHorizontalHeaderLabels(
        {QStringLiteral("X (%1)").arg(unitText), QStringLiteral("Y (%1)").arg(unitText)});
    for (int i = 0; i < m_corners->rowCount(); ++i) {
        m_corners->setItem(i, 0, new QTableWidgetItem(text(corners[static_cast<size_t>(i)].x)));
        m_corners->setItem(i, 1, new QTableWidgetItem(text(corners[static_cast<size_t>(i)].y)));
    }
    m_walls = new QTableWidget(static_cast<int>(walls.size()), 2, tabs);
    m_walls->setHorizontalHeaderLabels(
        {loc->LocalizeMessage(1430, L"Thickness").ToQString() + QStringLiteral(" (%1)").arg(unitText),
         loc->LocalizeMessage(1431, L"Height").ToQString() + QStringLiteral(" (%1)").arg(unitText)});
    for (int i = 0; i < m_walls->rowCount(); ++i) {
        m_walls->setItem(i, 0, new QTableWidgetItem(text(walls[static_cast<size_t>(i)].thickness)));
        m_walls->setItem(i, 1, new QTableWidgetItem(text(walls[static_cast<size_t>(i)].height)));
    }
    for (QTableWidget* table : {m_corners, m_walls})
        table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    tabs->addTab(m_corners, loc->LocalizeMessage(1432, L"Corners").ToQString());
    tabs->addTab(m_walls, loc->LocalizeMessage(1433, L"Walls").ToQString());
    layout->addWidget(tabs);
    QDialogButtonBox* buttons = OkCancel(this);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        std::vector<CVxDPoint> corners;
        std::vector<SVxWallNumbers> walls;
        if (Read(corners, walls))
            accept();
    });
    layout->addWidget(buttons);
    resize(420, 420);
}

bool CVxWallNumericDlg::Read(std::vector<CVxDPoint>& corners, std::vector<SVxWallNumbers>& walls) const
{
    bool ok = true;
    auto cell = [this, &ok](QTableWidget* table, int row, int column, bool positive) {
        QTableWidgetItem* item = table->item(row, column);
        double value = 0;
        const CVxStringW typed(item ? item->text() : QString());
        const bool read =
            positive ? VX_ParseTypedLength(typed, m_unit, value) : VX_ParseTypedOffset(typed, m_unit, value);
        if (item)
            item->setBackground(read ? QBrush() : QBrush(QColor(0xf4, 0xc7, 0xc3)));
        ok = ok && read;
        return value;
    };
    corners.resize(static_cast<size_t>(m_corners->rowCount()));
    for (int i = 0; i < m_corners->rowCount(); ++i)
        corners[static_cast<size_t>(i)] =
            CVxDPoint(cell(m_corners, i, 0, false), cell(m_corners, i, 1, false));
    walls.resize(static_cast<size_t>(m_walls->rowCount()));
    for (int i = 0; i < m_walls->rowCount(); ++i)
        walls[static_cast<size_t>(i)] = {cell(m_walls, i, 0, true), cell(m_walls, i, 1, true)};
    return ok;
}
