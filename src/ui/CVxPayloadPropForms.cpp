#include "CVxPayloadPropForms.h"

#include "CVxDozamoWardrobePayload.h"
#include "CVxPart.h"
#include "CVxPropertyWidgets.h"
#include "CVxQtDC.h"
#include "CVxStairsPayload.h"
#include "CVxUnits.h"
#include "VxDlgKit.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

const CVxDlgTexts StairsText("StairsDlg");
const CVxDlgTexts WardrobeText("WardrobeDlg");

// The interiors by their number, as the maker names them.
const wchar_t* const kInteriorNames[CVxDozamoWardrobePayload::exInteriorCount] = {
    L"Empty",
    L"Shelves",
    L"Rail and hat shelf",
    L"Two rails",
    L"Drawers and shelves",
    L"Rail and drawers",
    L"Open shelves at the left end",
    L"Open shelves at the right end",
    L"Rail, closed at the left end",
    L"Rail, closed at the right end",
    L"Drawers, closed at the left end",
    L"Drawers, closed at the right end",
    L"Shoe shelves at the left end",
    L"Shoe shelves at the right end",
    L"Open end at the left",
    L"Open end at the right",
    L"Low rail",
    L"Tall shelves",
};

// A measure of a step, to a tenth, with its unit; inches as feet and
// inches.
QString StepLength(double value, int unit)
{
    const QString number = VX_LengthText(std::round(value * 10) / 10, unit);
    return unit == CVxUnits::UNIT_INCH ? number
                                       : number + QLatin1Char(' ') + CVxUnits::GetUnitText(unit).ToQString();
}

} // namespace

CVxObjPropSync::CVxObjPropSync(CVxPart& part)
    : m_part(part), m_original(part.GetPayload() ? part.GetPayload()->Duplicate() : nullptr)
{
}

CVxObjPropSync::~CVxObjPropSync() = default;

template <class T>
T* CVxObjPropSync::Get() const
{
    return dynamic_cast<T*>(m_part.GetPayload());
}

void CVxObjPropSync::Restore()
{
    m_part.SetPayload(m_original ? m_original->Duplicate() : nullptr);
    m_part.InvalidateCache();
}

CVxPayloadPreview::CVxPayloadPreview(CVxPart& part, QWidget* parent) : QWidget(parent), m_part(part)
{
    setObjectName(QStringLiteral("PayloadPreview"));
    setMinimumSize(220, 220);
}

void CVxPayloadPreview::SetSelection(int selected)
{
    m_selected = selected;
    update();
}

QSize CVxPayloadPreview::sizeHint() const
{
    return QSize(280, 280);
}

void CVxPayloadPreview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    CVxPartPayload* payload = m_part.GetPayload();
    if (!payload)
        return;
    CVxQtDC dc(width(), height(), true);
    dc.SelectBrush(CVxDC::brushSolid, 0xFFFFFF);
    dc.SelectPen(CVxDC::penNull, 0, 0);
    dc.Rectangle(0, 0, width() + 1, height() + 1);
    dc.SelectOldPen();
    dc.SelectOldBrush();
    if (auto* wardrobe = dynamic_cast<CVxDozamoWardrobePayload*>(payload))
        wardrobe->DrawObjectPreviewWithSelection(&m_part, &dc, width(), height(), m_selected);
    else
        payload->DrawObjectPreview(&m_part, &dc, width(), height());
    if (const QImage* image = dc.GetImage())
        painter.drawImage(0, 0, *image);
}

void CVxPayloadPreview::mousePressEvent(QMouseEvent* event)
{
    if (width() > 0 && height() > 0)
        emit clicked(event->position().x() / width(), event->position().y() / height());
    QWidget::mousePressEvent(event);
}

CVxPayloadPropForm::CVxPayloadPropForm(CVxPart& part, QWidget* parent) : QDialog(parent), m_sync(part)
{
    m_preview = new CVxPayloadPreview(part, this);
}

void CVxPayloadPropForm::Finish(QLayout* fields)
{
    auto* top = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    auto* left = new QVBoxLayout;
    left->addLayout(fields);
    left->addStretch(1);
    row->addLayout(left);
    row->addWidget(m_preview, 1);
    top->addLayout(row, 1);
    top->addWidget(VX_OkCancelButtons(this));
    m_ready = true;
    Changed();
}

void CVxPayloadPropForm::Changed()
{
    m_sync.GetPart().InvalidateCache();
    m_preview->update();
}

void CVxPayloadPropForm::done(int result)
{
    if (result != QDialog::Accepted)
        m_sync.Restore();
    QDialog::done(result);
}

CVxObjStairsPropForm::CVxObjStairsPropForm(CVxPart& part, int unit, QWidget* parent)
    : CVxPayloadPropForm(part, parent), m_unit(unit)
{
    setObjectName(QStringLiteral("StairsDlg"));
    setWindowTitle(StairsText(1, L"Stairs"));
    auto* form = new QFormLayout;
    m_steps = new QSpinBox(this);
    m_steps->setRange(1, CVxStairsPayload::maxSteps);
    if (auto* stairs = m_sync.Get<CVxStairsPayload>())
        m_steps->setValue(stairs->steps);
    form->addRow(StairsText(2, L"Steps:"), m_steps);
    m_measures = new QLabel(this);
    m_measures->setMinimumWidth(220);
    form->addRow(m_measures);
    connect(m_steps, &QSpinBox::valueChanged, this, [this](int steps) {
        if (auto* stairs = m_sync.Get<CVxStairsPayload>())
            stairs->steps = steps;
        Changed();
    });
    Finish(form);
}

void CVxObjStairsPropForm::Changed()
{
    const CVxPart& part = m_sync.GetPart();
    const int steps = std::max(1, m_steps->value());
    // What one step measures: the climb and the run of a tread.
    m_measures->setText(
        StairsText(3, L"Rise %1, going %2")
            .arg(VX_LengthText(part.zHeight / steps, m_unit), VX_LengthText(part.width / steps, m_unit)));
    CVxPayloadPropForm::Changed();
}

CVxObjBanStairsPropForm::CVxObjBanStairsPropForm(CVxPart& part, int unit, QWidget* parent)
    : CVxPayloadPropForm(part, parent), m_unit(unit)
{
    setObjectName(QStringLiteral("BanStairsDlg"));
    setWindowTitle(StairsText(4, L"Stairs with Round Treads"));
    auto* form = new QFormLayout;
    m_steps = new QSpinBox(this);
    m_steps->setRange(1, CVxStairsPayload::maxSteps);
    m_thickness = new QSpinBox(this);
    m_thickness->setRange(static_cast<int>(CVxBanisterStairsPayload::minRatio * 100),
                          static_cast<int>(CVxBanisterStairsPayload::maxRatio * 100));
    m_thickness->setSuffix(QStringLiteral(" %"));
    if (auto* stairs = m_sync.Get<CVxBanisterStairsPayload>()) {
        m_steps->setValue(stairs->steps);
        m_thickness->setValue(static_cast<int>(stairs->ratio * 100 + 0.5));
    }
    form->addRow(StairsText(2, L"Steps:"), m_steps);
    form->addRow(StairsText(5, L"Tread thickness (share of the rise):"), m_thickness);
    m_measures = new QLabel(this);
    m_measures->setMinimumWidth(220);
    form->addRow(m_measures);
    connect(m_steps, &QSpinBox::valueChanged, this, [this](int steps) {
        if (auto* stairs = m_sync.Get<CVxBanisterStairsPayload>())
            stairs->steps = steps;
        Changed();
    });
    connect(m_thickness, &QSpinBox::valueChanged, this, [this](int percent) {
        if (auto* stairs = m_sync.Get<CVxBanisterStairsPayload>())
            stairs->ratio = percent / 100.0;
        Changed();
    });
    Finish(form);
}

void CVxObjBanStairsPropForm::Changed()
{
    const CVxPart& part = m_sync.GetPart();
    const int steps = std::max(1, m_steps->value());
    const double share = std::clamp(m_thickness->value() / 100.0, CVxBanisterStairsPayload::minRatio,
                                    CVxBanisterStairsPayload::maxRatio);
    // The last tread's top is the object's height.
    const double rise = part.zHeight / (steps - 1 + share);
    const double along = steps > 1 && part.width > 0 ? (part.width - part.height) / (steps - 1) : 0;
    m_measures->setText(
        StairsText(3, L"Rise %1, going %2").arg(StepLength(rise, m_unit), StepLength(along, m_unit)));
    CVxPayloadPropForm::Changed();
}

CVxDozWardrobePropForm::CVxDozWardrobePropForm(CVxPart& part, QWidget* parent)
    : CVxPayloadPropForm(part, parent)
{
    setObjectName(QStringLiteral("WardrobeDlg"));
    setWindowTitle(WardrobeText(1, L"Made-to-measure Wardrobe"));
    auto* form = new QFormLayout;
    m_doors = new QSpinBox(this);
    m_doors->setRange(2, CVxDozamoWardrobePayload::maxDoors);
    m_panels = new QSpinBox(this);
    m_panels->setRange(1, CVxDozamoWardrobePayload::maxPanels);
    if (auto* wardrobe = m_sync.Get<CVxDozamoWardrobePayload>()) {
        m_doors->setValue(wardrobe->doors);
        m_panels->setValue(wardrobe->panels);
    }
    form->addRow(WardrobeText(2, L"Doors:"), m_doors);
    form->addRow(WardrobeText(3, L"Panels per door:"), m_panels);
    m_door = new QComboBox(this);
    form->addRow(WardrobeText(4, L"Door:"), m_door);
    m_interior = new QComboBox(this);
    for (int i = 0; i < CVxDozamoWardrobePayload::exInteriorCount; ++i)
        m_interior->addItem(WardrobeText(10 + i, kInteriorNames[i]), i);
    form->addRow(WardrobeText(6, L"Interior:"), m_interior);
    m_panelBox = new QWidget(this);
    m_panelRow = new QHBoxLayout(m_panelBox);
    m_panelRow->setContentsMargins(0, 0, 0, 0);
    form->addRow(WardrobeText(7, L"Panels:"), m_panelBox);
    auto* hint = new QLabel(WardrobeText(8, L"Click a door in the picture to choose it."), this);
    hint->setWordWrap(true);
    form->addRow(hint);

    connect(m_doors, &QSpinBox::valueChanged, this, &CVxDozWardrobePropForm::OnCountsChanged);
    connect(m_panels, &QSpinBox::valueChanged, this, &CVxDozWardrobePropForm::OnCountsChanged);
    connect(m_door, &QComboBox::currentIndexChanged, this, &CVxDozWardrobePropForm::ShowDoor);
    connect(m_interior, &QComboBox::activated, this, &CVxDozWardrobePropForm::OnInteriorChanged);
    connect(m_preview, &CVxPayloadPreview::clicked, this, [this](double x, double) {
        const int count = m_door->count();
        if (count > 0)
            m_door->setCurrentIndex(std::clamp(static_cast<int>(x * count), 0, count - 1));
    });
    Rebuild();
    Finish(form);
}

void CVxDozWardrobePropForm::Rebuild()
{
    auto* wardrobe = m_sync.Get<CVxDozamoWardrobePayload>();
    const int doors = wardrobe ? wardrobe->doors : 0;
    const int keep = std::clamp(m_door->currentIndex(), 0, std::max(0, doors - 1));
    const QSignalBlocker block(m_door);
    m_door->clear();
    for (int i = 0; i < doors; ++i)
        m_door->addItem(WardrobeText(5, L"Door %1").arg(i + 1));
    m_door->setCurrentIndex(doors > 0 ? keep : -1);
    ShowDoor();
}

void CVxDozWardrobePropForm::ShowDoor()
{
    auto* wardrobe = m_sync.Get<CVxDozamoWardrobePayload>();
    const int door = m_door->currentIndex();
    m_preview->SetSelection(door);
    if (!wardrobe || door < 0 || door >= wardrobe->doors)
        return;
    // Only the fittings that may stand at this door can be chosen.
    auto* model = qobject_cast<QStandardItemModel*>(m_interior->model());
    for (int i = 0; i < m_interior->count(); ++i)
        if (model)
            if (QStandardItem* item = model->item(i))
                item->setEnabled(wardrobe->AllowInteriorAtDoor(i, door) ||
                                 i == wardrobe->interiors[static_cast<size_t>(door)]);
    m_interior->setCurrentIndex(wardrobe->interiors[static_cast<size_t>(door)]);

    while (QLayoutItem* item = m_panelRow->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (int p = 0; p < wardrobe->panels; ++p) {
        auto* button = new CVxAppearanceButton(m_panelBox);
        button->setObjectName(QStringLiteral("PanelButton%1").arg(p));
        button->SetAppearance(wardrobe->appearances[static_cast<size_t>(door * wardrobe->panels + p)]);
        connect(button, &CVxAppearanceButton::appearancePicked, this, [this, p] { OnPanelPicked(p); });
        m_panelRow->addWidget(button);
    }
    m_panelRow->addStretch(1);
}

void CVxDozWardrobePropForm::OnCountsChanged()
{
    auto* wardrobe = m_sync.Get<CVxDozamoWardrobePayload>();
    if (!wardrobe || !m_ready)
        return;
    // New doors and panels take the defaults; the ones kept stay as they
    // were.
    const std::vector<CVxAppearance> before = wardrobe->appearances;
    const int oldDoors = std::max(1, static_cast<int>(wardrobe->interiors.size()));
    const int oldPanels = std::max(1, static_cast<int>(before.size()) / oldDoors);
    wardrobe->doors = m_doors->value();
    wardrobe->panels = m_panels->value();
    wardrobe->appearances.clear();
    wardrobe->ResizeVectorsWithDefaults();
    // An end fitting that is no longer at its end becomes the plain one.
    for (int door = 0; door < wardrobe->doors; ++door) {
        int& interior = wardrobe->interiors[static_cast<size_t>(door)];
        if (!wardrobe->AllowInteriorAtDoor(interior, door))
            interior = CVxDozamoWardrobePayload::exRailAndShelf;
    }
    for (int door = 0; door < std::min(oldDoors, wardrobe->doors); ++door)
        for (int p = 0; p < std::min(oldPanels, wardrobe->panels); ++p) {
            const size_t from = static_cast<size_t>(door * oldPanels + p);
            if (from < before.size())
                wardrobe->appearances[static_cast<size_t>(door * wardrobe->panels + p)] = before[from];
        }
    Rebuild();
    Changed();
}

void CVxDozWardrobePropForm::OnInteriorChanged()
{
    auto* wardrobe = m_sync.Get<CVxDozamoWardrobePayload>();
    const int door = m_door->currentIndex();
    const int interior = m_interior->currentData().toInt();
    if (!wardrobe || door < 0 || door >= wardrobe->doors)
        return;
    wardrobe->interiors[static_cast<size_t>(door)] = interior;
    Changed();
}

void CVxDozWardrobePropForm::OnPanelPicked(int panel)
{
    auto* wardrobe = m_sync.Get<CVxDozamoWardrobePayload>();
    const int door = m_door->currentIndex();
    if (!wardrobe || door < 0 || door >= wardrobe->doors || panel >= wardrobe->panels)
        return;
    auto* button = qobject_cast<CVxAppearanceButton*>(m_panelRow->itemAt(panel)->widget());
    if (!button || !button->GetAppearance())
        return;
    wardrobe->appearances[static_cast<size_t>(door * wardrobe->panels + panel)] = *button->GetAppearance();
    Changed();
}

std::unique_ptr<CVxPayloadPropForm> VX_CreatePayloadPropForm(CVxPart& part, int unit, QWidget* parent)
{
    CVxPartPayload* payload = part.GetPayload();
    if (dynamic_cast<CVxStairsPayload*>(payload))
        return std::make_unique<CVxObjStairsPropForm>(part, unit, parent);
    if (dynamic_cast<CVxBanisterStairsPayload*>(payload))
        return std::make_unique<CVxObjBanStairsPropForm>(part, unit, parent);
    if (dynamic_cast<CVxDozamoWardrobePayload*>(payload))
        return std::make_unique<CVxDozWardrobePropForm>(part, parent);
    return nullptr;
}
