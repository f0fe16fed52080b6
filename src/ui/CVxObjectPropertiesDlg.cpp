#include "CVxObjectPropertiesDlg.h"

#include "CVxAppCore.h"
#include "CVxPart.h"
#include "CVxPartPayload.h"
#include "CVxPayloadPropForms.h"
#include "CVxPropertyWidgets.h"
#include "CVxQtDC.h"
#include "VxLocalizeWidgets.h"
#include "VxNumbers.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

// Side of the pictures of a door's or window's kinds, in pixels.
constexpr int kVariantIcon = 36;

QString ObjText(int row, const wchar_t* english)
{
    return VX_DlgText(CVxLocalize::TBL_OBJECTPROPERTIESDLG, row, english);
}

QString AdvText(int row, const wchar_t* english)
{
    return VX_DlgText(CVxLocalize::TBL_OBJECTADVANCEDPROPERTIESDLG, row, english);
}

QString LabelText(int row, const wchar_t* english)
{
    return VX_DlgText(CVxLocalize::TBL_LABELPROPERTIESDLG, row, english);
}

void FillLayers(QComboBox* combo, const CVxObjPropEdit& edit, const std::optional<int>& layer)
{
    for (const CVxStringW& name : edit.GetLayerNames())
        combo->addItem(name.ToQString());
    combo->setCurrentIndex(layer ? *layer : -1);
    combo->setEnabled(combo->count() > 1);
}

std::optional<CVxStringW> TextEdit(const QString& now, const std::optional<CVxStringW>& initial)
{
    const CVxStringW typed(now);
    if (initial ? typed == *initial : now.isEmpty())
        return std::nullopt;
    return typed;
}

} // namespace

void VX_SetCheck(QCheckBox* box, const std::optional<bool>& value)
{
    box->setTristate(!value);
    box->setCheckState(!value ? Qt::PartiallyChecked : (*value ? Qt::Checked : Qt::Unchecked));
}

std::optional<bool> VX_GetCheckEdit(const QCheckBox* box, const std::optional<bool>& initial)
{
    if (box->checkState() == Qt::PartiallyChecked || !box->isEnabled())
        return std::nullopt;
    const bool now = box->checkState() == Qt::Checked;
    if (initial && *initial == now)
        return std::nullopt;
    return now;
}

std::optional<int> VX_GetComboEdit(const QComboBox* combo, const std::optional<int>& initial)
{
    const int now = combo->currentIndex();
    if (now < 0 || (initial && *initial == now))
        return std::nullopt;
    return now;
}

QToolButton* VX_CreateVariablesButton(int type, QWidget* parent,
                                      const std::function<void(const QString&)>& insert)
{
    auto* button = new QToolButton(parent);
    button->setText(QStringLiteral("%"));
    button->setToolTip(ObjText(3, L"Insert a variable"));
    button->setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu(button);
    const std::vector<CVxStringW> variables =
        type >= 0 ? CVxPart::GetPossibleCaptionVars(type, 1) : std::vector<CVxStringW>();
    for (const CVxStringW& variable : variables) {
        const QString text = variable.ToQString();
        menu->addAction(text, button, [insert, text] { insert(text); });
    }
    button->setMenu(menu);
    button->setEnabled(!variables.empty());
    return button;
}

CVxObjectPropertiesDlg::CVxObjectPropertiesDlg(CVxObjPropEdit& edit, QWidget* parent)
    : QDialog(parent), m_edit(edit)
{
    setObjectName(QStringLiteral("ObjectPropertiesDlg"));
    const SVxObjPropValues& v = edit.GetValues();
    const SVxObjPropScope& scope = edit.GetScope();
    const int unit = edit.GetProjectUnit();
    setWindowTitle(ObjText(1, L"Object Properties"));

    auto* top = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    top->addLayout(grid);
    int row = 0;

    m_name = new QLineEdit(v.caption ? v.caption->ToQString() : QString(), this);
    if (!v.caption)
        m_name->setPlaceholderText(VX_MsgText(37, L"differ."));
    auto* nameRow = new QHBoxLayout;
    nameRow->addWidget(m_name, 1);
    nameRow->addWidget(VX_CreateVariablesButton(scope.type, this, [this](const QString& text) {
        m_name->insert(text);
        OnChanged();
    }));
    grid->addWidget(new QLabel(ObjText(2, L"Name:"), this), row, 0);
    grid->addLayout(nameRow, row, 1, 1, 3);
    ++row;

    QString typeText;
    if (scope.count > 1)
        typeText = ObjText(28, L"%1 objects selected").arg(scope.count);
    if (scope.type >= 0) {
        const QString name = CVxPart::TypeLocalNameFromID(scope.type, scope.libObjID).ToQString();
        typeText = typeText.isEmpty() ? name : name + QStringLiteral(" \u2013 ") + typeText;
    }
    grid->addWidget(new QLabel(ObjText(4, L"Type:"), this), row, 0);
    grid->addWidget(new QLabel(typeText, this), row, 1, 1, 3);
    ++row;

    auto addLength = [&](CVxLengthEdit*& field, CVxLengthEdit::EKind kind, const std::optional<double>& value,
                         const QString& label, int column) {
        field = new CVxLengthEdit(kind, unit, this);
        field->SetValue(value);
        grid->addWidget(new QLabel(label, this), row, column);
        grid->addWidget(field, row, column + 1);
        connect(field, &CVxLengthEdit::valueEdited, this, &CVxObjectPropertiesDlg::OnChanged);
    };
    addLength(m_width, CVxLengthEdit::LENGTH, v.width, ObjText(5, L"Width:"), 0);
    addLength(m_depth, CVxLengthEdit::LENGTH, v.depth, ObjText(6, L"Depth:"), 2);
    ++row;
    addLength(m_height, CVxLengthEdit::LENGTH, v.height, ObjText(7, L"Height:"), 0);
    addLength(m_elevation, CVxLengthEdit::OFFSET, v.elevation, ObjText(8, L"Elevation:"), 2);
    ++row;
    addLength(m_rotation, CVxLengthEdit::ANGLE, v.rotation, ObjText(9, L"Rotation:"), 0);
    m_layer = new QComboBox(this);
    FillLayers(m_layer, edit, v.layer);
    grid->addWidget(new QLabel(ObjText(10, L"Layer:"), this), row, 2);
    grid->addWidget(m_layer, row, 3);
    ++row;
    const bool sizeLocked = v.locked.value_or(false) || v.sizeLocked.value_or(false);
    m_width->setEnabled(scope.resize && !sizeLocked);
    m_depth->setEnabled(scope.resize && !sizeLocked);
    m_height->setEnabled(scope.has3D && !sizeLocked);
    m_elevation->setEnabled(scope.has3D);
    m_rotation->setEnabled(scope.rotate);

    m_lock = new QCheckBox(ObjText(11, L"Lock"), this);
    VX_SetCheck(m_lock, v.locked);
    m_lockSize = new QCheckBox(ObjText(12, L"Lock size"), this);
    VX_SetCheck(m_lockSize, v.sizeLocked);
    grid->addWidget(m_lock, row, 1);
    grid->addWidget(m_lockSize, row, 3);
    ++row;

    auto* looks = new QGroupBox(ObjText(13, L"Appearance"), this);
    auto* looksGrid = new QGridLayout(looks);
    m_fill = new CVxAppearanceButton(looks);
    m_fill->SetAppearance(v.fill);
    m_fill->setEnabled(scope.fill);
    looksGrid->addWidget(new QLabel(ObjText(14, L"Main surface:"), looks), 0, 0);
    looksGrid->addWidget(m_fill, 0, 1);
    m_line = new CVxAppearanceButton(looks);
    if (v.lineColor) {
        CVxAppearance line;
        line.main.color = *v.lineColor;
        m_line->SetAppearance(line);
    } else {
        m_line->SetAppearance(std::nullopt);
    }
    m_line->setEnabled(scope.lineColor);
    looksGrid->addWidget(new QLabel(ObjText(17, L"Outline:"), looks), 0, 2);
    looksGrid->addWidget(m_line, 0, 3);
    m_frontEnabled = new QCheckBox(ObjText(16, L"Own front surface"), looks);
    VX_SetCheck(m_frontEnabled, v.frontEnabled);
    m_front = new CVxAppearanceButton(looks);
    m_front->SetAppearance(v.front);
    looksGrid->addWidget(new QLabel(ObjText(15, L"Front surface:"), looks), 1, 0);
    looksGrid->addWidget(m_front, 1, 1);
    looksGrid->addWidget(m_frontEnabled, 1, 2, 1, 2);
    m_front->setEnabled(scope.front);
    m_frontEnabled->setEnabled(scope.front);
    top->addWidget(looks);
    connect(m_fill, &CVxAppearanceButton::appearancePicked, this, &CVxObjectPropertiesDlg::OnChanged);
    connect(m_front, &CVxAppearanceButton::appearancePicked, this, &CVxObjectPropertiesDlg::OnChanged);
    connect(m_line, &CVxAppearanceButton::appearancePicked, this, &CVxObjectPropertiesDlg::OnChanged);

    // The settings of the type itself.
    auto* own = new QGroupBox(ObjText(18, L"Type settings"), this);
    auto* ownGrid = new QGridLayout(own);
    m_subType = new QComboBox(own);
    m_handleType = new QComboBox(own);
    const bool kinds = scope.subTypes > 1 && !scope.table;
    // Each kind and leaf shows as the plan draws it.
    const CVxPart* sample = edit.GetFirstPart();
    // Kinds, leaves and handles of doors and windows show in their front
    // view; other objects' kinds in the plan.
    const bool frontKinds = sample && CVxPart::AreSubTypesForFrontView(sample->type, sample->libObjID);
    auto variantIcon = [sample, frontKinds, unit](bool handle, int variant) {
        if (!sample)
            return QIcon();
        CVxPart copy = *sample;
        copy.rotation = 0;
        copy.snapToWall = false;
        copy.selected = false;
        if (handle)
            copy.handleType = static_cast<int16_t>(variant);
        else
            copy.subType = static_cast<int16_t>(variant);
        CVxQtDC dc(kVariantIcon, kVariantIcon, true);
        if (frontKinds && copy.width > 0 && copy.zHeight > 0) {
            // The front view: the width across, the 3D height upwards.
            copy.x = 0;
            copy.y = 0;
            copy.height = copy.zHeight;
            copy.InvalidateCache();
            const double room = kVariantIcon - 4;
            const double zoom = room / std::max(copy.width, copy.height);
            dc.SelectBrush(CVxDC::brushSolid, 0xFFFFFF);
            dc.SelectPen(CVxDC::penNull, 0, 0);
            dc.Rectangle(0, 0, kVariantIcon + 1, kVariantIcon + 1);
            dc.SelectOldPen();
            dc.SelectOldBrush();
            copy.DrawSideToHdc(&dc, OBJ_SIDE_FRONT, unit, 2 + (room - copy.width * zoom) / 2,
                               2 + (room - copy.height * zoom) / 2, zoom, 0);
        } else {
            copy.InvalidateCache();
            VX_GetCore()->LibDrawObjectThumb(&dc, &copy, false, 0, 0, kVariantIcon, kVariantIcon);
        }
        return QIcon(QPixmap::fromImage(*dc.GetImage()));
    };
    for (QComboBox* combo : {m_subType, m_handleType})
        combo->setIconSize(QSize(kVariantIcon, kVariantIcon));
    for (int i = 0; kinds && i < scope.subTypes; ++i)
        m_subType->addItem(variantIcon(false, i), ObjText(20, L"Kind %1").arg(i + 1));
    m_subType->setCurrentIndex(kinds && v.subType ? *v.subType : -1);
    for (int i = 0; scope.handleTypes > 1 && i < scope.handleTypes; ++i)
        m_handleType->addItem(variantIcon(true, i), ObjText(29, L"Variant %1").arg(i + 1));
    m_handleType->setCurrentIndex(scope.handleTypes > 1 && v.handleType ? *v.handleType : -1);
    m_opened = new QCheckBox(ObjText(22, L"Shown open"), own);
    VX_SetCheck(m_opened, v.opened);
    m_doorframe = new QCheckBox(ObjText(23, L"Frame"), own);
    VX_SetCheck(m_doorframe, v.doorframe);
    m_thickness = new CVxLengthEdit(CVxLengthEdit::OFFSET, unit, own);
    m_thickness->SetValue(v.thickness);
    m_rows = new QSpinBox(own);
    m_cols = new QSpinBox(own);
    for (QSpinBox* spin : {m_rows, m_cols})
        spin->setRange(1, CVxPart::maxTableRowsCols);
    m_rows->setValue(v.tableRows.value_or(1));
    m_cols->setValue(v.tableCols.value_or(1));
    int ownRow = 0;
    auto ownField = [&](const QString& label, QWidget* field, bool shown) {
        if (!shown) {
            field->hide();
            return;
        }
        ownGrid->addWidget(new QLabel(label, own), ownRow, 0);
        ownGrid->addWidget(field, ownRow, 1);
        ++ownRow;
    };
    ownField(ObjText(19, L"Kind:"), m_subType, kinds);
    ownField(ObjText(21, L"Leaves and handle:"), m_handleType, scope.handleTypes > 1);
    ownField(ObjText(24, L"Frame thickness:"), m_thickness, scope.thickness);
    ownField(ObjText(25, L"Rows:"), m_rows, scope.table);
    ownField(ObjText(26, L"Columns:"), m_cols, scope.table);
    if (scope.doorLike)
        ownGrid->addWidget(m_opened, ownRow, 0);
    else
        m_opened->hide();
    if (scope.doorframe)
        ownGrid->addWidget(m_doorframe, ownRow, 1);
    else
        m_doorframe->hide();
    // Stairs and wardrobes keep their steps, doors and fittings in a form
    // of their own.
    if (scope.type >= 0 && sample && sample->GetPayload() && sample->HasCap(capPayload)) {
        const bool wardrobe = sample->libObjID == 1101;
        m_payloadButton = new QPushButton(
            wardrobe ? VX_MsgText(1501, L"Wardrobe settings...") : VX_MsgText(1500, L"Steps..."), own);
        m_payloadButton->setObjectName(QStringLiteral("PayloadButton"));
        ownGrid->addWidget(m_payloadButton, ownRow, 0, 1, 2, Qt::AlignLeft);
        ++ownRow;
        connect(m_payloadButton, &QPushButton::clicked, this, &CVxObjectPropertiesDlg::OnPayload);
    }
    const bool anyOwn = kinds || scope.handleTypes > 1 || scope.thickness || scope.table || scope.doorLike ||
                        scope.doorframe || m_payloadButton;
    own->setVisible(anyOwn);
    top->addWidget(own);

    for (QCheckBox* box : {m_lock, m_lockSize, m_frontEnabled, m_opened, m_doorframe})
        connect(box, &QCheckBox::stateChanged, this, &CVxObjectPropertiesDlg::OnChanged);
    for (QComboBox* combo : {m_layer, m_subType, m_handleType})
        connect(combo, &QComboBox::currentIndexChanged, this, &CVxObjectPropertiesDlg::OnChanged);
    for (QSpinBox* spin : {m_rows, m_cols})
        connect(spin, &QSpinBox::valueChanged, this, &CVxObjectPropertiesDlg::OnChanged);
    connect(m_name, &QLineEdit::textEdited, this, &CVxObjectPropertiesDlg::OnChanged);
    connect(m_thickness, &CVxLengthEdit::valueEdited, this, &CVxObjectPropertiesDlg::OnChanged);

    auto* bottom = new QHBoxLayout;
    auto* advanced = new QPushButton(ObjText(27, L"Advanced..."), this);
    advanced->setObjectName(QStringLiteral("AdvancedButton"));
    connect(advanced, &QPushButton::clicked, this, &CVxObjectPropertiesDlg::OnAdvanced);
    bottom->addWidget(advanced);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    LocalizeButtonBox(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    bottom->addWidget(buttons, 1);
    top->addLayout(bottom);
    top->setSizeConstraint(QLayout::SetFixedSize);
    for (QWidget* field :
         std::initializer_list<QWidget*>{m_name, m_width, m_depth, m_height, m_elevation, m_rotation, m_layer,
                                         m_lockSize, looks, own, advanced})
        m_lockable.emplace_back(field, field->isEnabled());
    connect(m_lock, &QCheckBox::stateChanged, this, &CVxObjectPropertiesDlg::OnLockChanged);
    OnLockChanged();
    m_ready = true;
}

void CVxObjectPropertiesDlg::OnLockChanged()
{
    const bool locked = m_lock->checkState() == Qt::Checked;
    for (const auto& [field, open] : m_lockable)
        field->setEnabled(open && !locked);
}

SVxObjPropValues CVxObjectPropertiesDlg::GetEditedValues() const
{
    const SVxObjPropValues& v = m_edit.GetValues();
    SVxObjPropValues e = m_advanced;
    e.caption = TextEdit(m_name->text(), v.caption);
    if (m_width->isEnabled())
        e.width = m_width->GetEditedValue();
    if (m_depth->isEnabled())
        e.depth = m_depth->GetEditedValue();
    if (m_height->isEnabled())
        e.height = m_height->GetEditedValue();
    if (m_elevation->isEnabled())
        e.elevation = m_elevation->GetEditedValue();
    if (m_rotation->isEnabled())
        e.rotation = m_rotation->GetEditedValue();
    e.layer = VX_GetComboEdit(m_layer, v.layer);
    e.locked = VX_GetCheckEdit(m_lock, v.locked);
    e.sizeLocked = VX_GetCheckEdit(m_lockSize, v.sizeLocked);
    if (m_fill->IsPicked())
        e.fill = m_fill->GetAppearance();
    if (m_front->IsPicked())
        e.front = m_front->GetAppearance();
    if (m_line->IsPicked() && m_line->GetAppearance())
        e.lineColor = m_line->GetAppearance()->main.color;
    e.frontEnabled = VX_GetCheckEdit(m_frontEnabled, v.frontEnabled);
    if (m_subType->isVisibleTo(this))
        e.subType = VX_GetComboEdit(m_subType, v.subType);
    if (m_handleType->isVisibleTo(this))
        e.handleType = VX_GetComboEdit(m_handleType, v.handleType);
    if (m_opened->isVisibleTo(this))
        e.opened = VX_GetCheckEdit(m_opened, v.opened);
    if (m_doorframe->isVisibleTo(this))
        e.doorframe = VX_GetCheckEdit(m_doorframe, v.doorframe);
    if (m_thickness->isVisibleTo(this))
        e.thickness = m_thickness->GetEditedValue();
    if (m_rows->isVisibleTo(this) && (!v.tableRows || *v.tableRows != m_rows->value()))
        e.tableRows = m_rows->value();
    if (m_cols->isVisibleTo(this) && (!v.tableCols || *v.tableCols != m_cols->value()))
        e.tableCols = m_cols->value();
    if (m_payload && m_payload != v.payload)
        e.payload = m_payload;
    return e;
}

void CVxObjectPropertiesDlg::OnPayload()
{
    const CVxPart* first = m_edit.GetFirstPart();
    if (!first)
        return;
    // The form shows the object with the sizes typed so far.
    CVxPart work = *first;
    const std::optional<CVxStringW> text = m_payload ? m_payload : m_edit.GetValues().payload;
    if (text)
        if (CVxPartPayload* payload = CVxPartPayload::CreateFromString(*text))
            work.SetPayload(payload);
    if (const std::optional<double> width = m_width->GetEditedValue(); width && *width > 0)
        work.width = *width;
    if (const std::optional<double> depth = m_depth->GetEditedValue(); depth && *depth > 0)
        work.height = *depth;
    if (const std::optional<double> height = m_height->GetEditedValue(); height && *height > 0)
        work.zHeight = *height;
    work.InvalidateCache();
    std::unique_ptr<CVxPayloadPropForm> form = VX_CreatePayloadPropForm(work, m_edit.GetProjectUnit(), this);
    if (!form || form->exec() != QDialog::Accepted || !work.GetPayload())
        return;
    m_payload = work.GetPayload()->Serialize();
    OnChanged();
}

void CVxObjectPropertiesDlg::OnChanged()
{
    if (m_ready)
        m_edit.Preview(GetEditedValues());
}

void CVxObjectPropertiesDlg::OnAdvanced()
{
    SVxObjPropValues shown = m_edit.GetValues();
    shown.Overlay(m_advanced);
    CVxObjectAdvancedPropertiesDlg dlg(shown, m_edit.GetScope(), this);
    if (dlg.exec() != QDialog::Accepted)
        return;
    m_advanced.Overlay(dlg.GetEditedValues());
    OnChanged();
}

void CVxObjectPropertiesDlg::done(int result)
{
    if (result == QDialog::Accepted)
        m_changed = m_edit.Commit(GetEditedValues());
    else
        m_edit.Cancel();
    QDialog::done(result);
}

CVxObjectAdvancedPropertiesDlg::CVxObjectAdvancedPropertiesDlg(const SVxObjPropValues& v,
                                                               const SVxObjPropScope& scope, QWidget* parent)
    : QDialog(parent), m_initial(v)
{
    setObjectName(QStringLiteral("ObjectAdvancedPropertiesDlg"));
    setWindowTitle(AdvText(1, L"Advanced Properties"));
    auto* form = new QFormLayout(this);
    auto text = [this](const std::optional<CVxStringW>& value) {
        auto* edit = new QLineEdit(value ? value->ToQString() : QString(), this);
        if (!value)
            edit->setPlaceholderText(VX_MsgText(37, L"differ."));
        return edit;
    };
    m_comment = text(v.comment);
    m_customID = text(v.customID);
    m_price = text(v.price ? std::optional<CVxStringW>(CVxStringW().sprintf(L"%d", *v.price)) : std::nullopt);
    m_link = text(v.fileLink);
    m_lineThick = text(v.lineThick ? std::optional<CVxStringW>(CVxStringW(*v.lineThick)) : std::nullopt);
    m_lineThick->setEnabled(scope.lineThick);
    m_no3D = new QCheckBox(AdvText(6, L"Not shown in 3D"), this);
    VX_SetCheck(m_no3D, v.no3D);
    m_no3D->setEnabled(scope.has3D || v.no3D.value_or(true));
    form->addRow(AdvText(2, L"Comment:"), m_comment);
    form->addRow(AdvText(3, L"Article number:"), m_customID);
    form->addRow(AdvText(4, L"Price:"), m_price);
    form->addRow(AdvText(5, L"Link:"), m_link);
    form->addRow(AdvText(7, L"Line thickness:"), m_lineThick);
    form->addRow(m_no3D);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    LocalizeButtonBox(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

SVxObjPropValues CVxObjectAdvancedPropertiesDlg::GetEditedValues() const
{
    SVxObjPropValues e;
    e.comment = TextEdit(m_comment->text(), m_initial.comment);
    e.customID = TextEdit(m_customID->text(), m_initial.customID);
    e.fileLink = TextEdit(m_link->text(), m_initial.fileLink);
    bool ok = false;
    const int price = m_price->text().trimmed().toInt(&ok);
    if (ok && price >= 0 && (!m_initial.price || *m_initial.price != price))
        e.price = price;
    const double thick = DblRead(CVxStringW(m_lineThick->text().trimmed()), -1, &ok);
    if (m_lineThick->isEnabled() && ok && thick > 0 &&
        (!m_initial.lineThick || std::abs(*m_initial.lineThick - thick) > 1e-6))
        e.lineThick = thick;
    e.no3D = VX_GetCheckEdit(m_no3D, m_initial.no3D);
    return e;
}

CVxLabelPropertiesDlg::CVxLabelPropertiesDlg(CVxObjPropEdit& edit, QWidget* parent)
    : QDialog(parent), m_edit(edit)
{
    setObjectName(QStringLiteral("LabelPropertiesDlg"));
    const SVxObjPropValues& v = edit.GetValues();
    setWindowTitle(LabelText(1, L"Label Properties"));
    auto* form = new QFormLayout(this);
    QString shown = v.caption ? v.caption->ToQString() : QString();
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    m_text = new QPlainTextEdit(shown, this);
    m_text->setFixedHeight(80);
    if (!v.caption)
        m_text->setPlaceholderText(VX_MsgText(37, L"differ."));
    auto* textRow = new QHBoxLayout;
    textRow->addWidget(m_text, 1);
    QToolButton* variables = VX_CreateVariablesButton(
        ptLabel, this, [this](const QString& text) { m_text->insertPlainText(text); });
    variables->setToolTip(LabelText(3, L"Insert a variable"));
    textRow->addWidget(variables, 0, Qt::AlignTop);
    form->addRow(LabelText(2, L"Text:"), textRow);
    m_align = new QComboBox(this);
    m_align->addItems({LabelText(5, L"Left"), LabelText(6, L"Centre"), LabelText(7, L"Right")});
    m_align->setCurrentIndex(v.alignment ? *v.alignment : -1);
    form->addRow(LabelText(4, L"Alignment:"), m_align);
    m_fontSize = new QSpinBox(this);
    m_fontSize->setRange(1, 400);
    m_fontSize->setValue(static_cast<int>(v.fontSize.value_or(11) + 0.5));
    form->addRow(LabelText(8, L"Font size:"), m_fontSize);
    m_textColor = new CVxAppearanceButton(this);
    if (v.textColor) {
        CVxAppearance colour;
        colour.main.color = *v.textColor;
        m_textColor->SetAppearance(colour);
    } else {
        m_textColor->SetAppearance(std::nullopt);
    }
    form->addRow(LabelText(9, L"Text colour:"), m_textColor);
    m_rotation = new CVxLengthEdit(CVxLengthEdit::ANGLE, edit.GetProjectUnit(), this);
    m_rotation->SetValue(v.rotation);
    form->addRow(LabelText(11, L"Rotation:"), m_rotation);
    m_layer = new QComboBox(this);
    FillLayers(m_layer, edit, v.layer);
    form->addRow(LabelText(10, L"Layer:"), m_layer);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    LocalizeButtonBox(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);

    connect(m_text, &QPlainTextEdit::textChanged, this, &CVxLabelPropertiesDlg::OnChanged);
    connect(m_align, &QComboBox::currentIndexChanged, this, &CVxLabelPropertiesDlg::OnChanged);
    connect(m_layer, &QComboBox::currentIndexChanged, this, &CVxLabelPropertiesDlg::OnChanged);
    connect(m_fontSize, &QSpinBox::valueChanged, this, &CVxLabelPropertiesDlg::OnChanged);
    connect(m_textColor, &CVxAppearanceButton::appearancePicked, this, &CVxLabelPropertiesDlg::OnChanged);
    connect(m_rotation, &CVxLengthEdit::valueEdited, this, &CVxLabelPropertiesDlg::OnChanged);
    m_ready = true;
}

SVxObjPropValues CVxLabelPropertiesDlg::GetEditedValues() const
{
    const SVxObjPropValues& v = m_edit.GetValues();
    SVxObjPropValues e;
    // Labels keep line breaks as CR LF, as the room labels write them.
    QString text = m_text->toPlainText();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
        .replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    e.caption = TextEdit(text, v.caption);
    e.alignment = VX_GetComboEdit(m_align, v.alignment);
    e.layer = VX_GetComboEdit(m_layer, v.layer);
    if (!v.fontSize || static_cast<int>(*v.fontSize + 0.5) != m_fontSize->value())
        e.fontSize = m_fontSize->value();
    if (m_textColor->IsPicked() && m_textColor->GetAppearance())
        e.textColor = m_textColor->GetAppearance()->main.color;
    e.rotation = m_rotation->GetEditedValue();
    return e;
}

void CVxLabelPropertiesDlg::OnChanged()
{
    if (m_ready)
        m_edit.Preview(GetEditedValues());
}

void CVxLabelPropertiesDlg::done(int result)
{
    if (result == QDialog::Accepted)
        m_changed = m_edit.Commit(GetEditedValues());
    else
        m_edit.Cancel();
    QDialog::done(result);
}
