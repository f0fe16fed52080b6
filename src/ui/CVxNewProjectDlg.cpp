#include "CVxNewProjectDlg.h"

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxLocalize.h"
#include "CVxProject.h"
#include "CVxQtDC.h"
#include "CVxUnits.h"
#include "CVxWallEditor.h"
#include "VxLocalizeWidgets.h"
#include "VxNumbers.h"
#include "VxTypedLength.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int kIconWidth = 88;
constexpr int kIconHeight = 66;
constexpr int kColumns = 5;

// The units a plan is usually drawn in.
constexpr int kUnits[] = {CVxUnits::UNIT_CM, CVxUnits::UNIT_M, CVxUnits::UNIT_MM, CVxUnits::UNIT_INCH,
                          CVxUnits::UNIT_FT};

struct SVxShapeName
{
    int row;
    const wchar_t* english;
};

const SVxShapeName kShapeNames[] = {
    {10, L"Rectangle"}, {11, L"Two rooms"},  {12, L"Cut corner"}, {13, L"L shape"}, {13, L"L shape"},
    {13, L"L shape"},   {13, L"L shape"},    {14, L"T shape"},    {15, L"U shape"}, {15, L"U shape"},
    {16, L"Z shape"},   {17, L"Bay window"}, {18, L"Octagon"}};
static_assert(std::size(kShapeNames) == CVxWallEditor::newRoomShapeCount);

QString Text(int row, const wchar_t* english)
{
    CVxLocalize* loc = VX_GetLoc();
    return loc->LocalizeDlgString(loc->GetDlgIndex("NewProjectDlg"), row, english).ToQString();
}

// The outline as the plan draws it, rooms and walls, on a sheet of 4 by 3.
QIcon ShapeIcon(int shape, double scale)
{
    CVxProject project;
    project.m_width = 400;
    project.m_height = 300;
    project.m_spaceLeft = project.m_spaceRight = project.m_spaceTop = project.m_spaceBottom = 34;
    CVxFloor* floor = project.GetFloor();
    CVxWallEditor::InitNewRoomShape(floor->m_walls, shape, project.m_width, project.m_height, 14, 250);
    const int width = static_cast<int>(kIconWidth * scale);
    const int height = static_cast<int>(kIconHeight * scale);
    CVxQtDC dc(width, height, true);
    VX_GetCore()->DrawProjectThumbOnWhite(&dc, project, width, height);
    QPixmap pixmap = QPixmap::fromImage(*dc.GetImage());
    pixmap.setDevicePixelRatio(scale);
    return QIcon(pixmap);
}

QString LengthText(double value, int unit)
{
    return VX_DblFormat(value, VX_DF_FEET_GLYPHS, true, unit).ToQString();
}

} // namespace

CVxNewProjectDlg::CVxNewProjectDlg(double width, double depth, int unit, QWidget* parent)
    : QDialog(parent), m_widthValue(width), m_depthValue(depth), m_unit(CVxUnits::IsValid(unit) ? unit : 1)
{
    setWindowTitle(VX_ToolbarText(1, L"Start New Project"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(Text(1, L"Choose the outline of your first rooms:"), this));

    auto* grid = new QGridLayout;
    m_shapes = new QButtonGroup(this);
    m_shapes->setExclusive(true);
    const double scale = devicePixelRatioF();
    for (int i = 0; i < CVxWallEditor::GetNewRoomShapesCount(); ++i) {
        auto* button = new QToolButton(this);
        button->setCheckable(true);
        button->setIcon(ShapeIcon(i, scale));
        button->setIconSize(QSize(kIconWidth, kIconHeight));
        button->setToolTip(Text(kShapeNames[i].row, kShapeNames[i].english));
        button->setAccessibleName(button->toolTip());
        button->setAutoRaise(true);
        m_shapes->addButton(button, i);
        grid->addWidget(button, i / kColumns, i % kColumns);
    }
    m_shapes->button(0)->setChecked(true);
    layout->addLayout(grid);

    auto* form = new QFormLayout;
    m_width = new QLineEdit(this);
    m_depth = new QLineEdit(this);
    for (QLineEdit* edit : {m_width, m_depth}) {
        edit->setMaxLength(24);
        edit->setToolTip(
            Text(6, L"A number in the project's unit, or with a unit of its own: 5.5 m, 18' 6\""));
        connect(edit, &QLineEdit::textEdited, this, &CVxNewProjectDlg::Validate);
    }
    m_unitBox = new QComboBox(this);
    for (int each : kUnits)
        m_unitBox->addItem(CVxUnits::GetUnitName(each).ToQString(), each);
    if (m_unitBox->findData(m_unit) < 0)
        m_unitBox->addItem(CVxUnits::GetUnitName(m_unit).ToQString(), m_unit);
    m_unitBox->setCurrentIndex(m_unitBox->findData(m_unit));
    connect(m_unitBox, &QComboBox::currentIndexChanged, this, &CVxNewProjectDlg::OnUnitChanged);
    form->addRow(Text(2, L"Width:"), m_width);
    form->addRow(Text(3, L"Depth:"), m_depth);
    form->addRow(Text(4, L"Unit:"), m_unitBox);
    layout->addLayout(form);
    m_walls = new QCheckBox(Text(5, L"Go on to draw more walls"), this);
    layout->addWidget(m_walls);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    buttons->button(QDialogButtonBox::Cancel)
        ->setText(VX_GetLoc()->LocalizeMessage(2, L"Cancel").ToQString());
    m_ok->setText(VX_GetLoc()->LocalizeMessage(1, L"OK").ToQString());
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        Validate();
        if (IsValid())
            accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_shapes, &QButtonGroup::idClicked, m_width, [this] { m_width->setFocus(); });
    layout->addWidget(buttons);

    m_width->setText(LengthText(m_widthValue, m_unit));
    m_depth->setText(LengthText(m_depthValue, m_unit));
    Validate();
}

int CVxNewProjectDlg::GetShape() const
{
    return std::max(0, m_shapes->checkedId());
}

void CVxNewProjectDlg::SetShape(int shape)
{
    if (QAbstractButton* button = m_shapes->button(shape))
        button->setChecked(true);
}

bool CVxNewProjectDlg::GetStartWallEditor() const
{
    return m_walls->isChecked();
}

void CVxNewProjectDlg::OnUnitChanged()
{
    // The size stays the same length in the new unit.
    const int unit = m_unitBox->currentData().toInt();
    Validate();
    for (QLineEdit* edit : {m_width, m_depth}) {
        double value = 0;
        if (VX_ParseTypedLength(CVxStringW(edit->text()), m_unit, value))
            edit->setText(LengthText(CVxUnits::ConvertLength(value, m_unit, unit), unit));
    }
    m_unit = unit;
    Validate();
}

void CVxNewProjectDlg::Validate()
{
    bool allValid = true;
    for (QLineEdit* edit : {m_width, m_depth}) {
        double value = 0;
        const bool parsed = VX_ParseTypedLength(CVxStringW(edit->text()), m_unit, value);
        const double cm = parsed ? CVxUnits::ConvertLength(value, m_unit, CVxUnits::UNIT_CM) : 0;
        const bool valid = parsed && cm >= minSideCm && cm <= maxSideCm;
        (edit == m_width ? m_widthValue : m_depthValue) = valid ? value : 0;
        // Out of range or no length: marked, and OK waits.
        edit->setStyleSheet(valid ? QString() : QStringLiteral("QLineEdit { border: 1px solid #d04040; }"));
        allValid = allValid && valid;
    }
    m_ok->setEnabled(allValid);
}
