#include "CVxRoomDlgs.h"

#include "CVxAppCore.h"
#include "CVxPropertyWidgets.h"
#include "VxLocalizeWidgets.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

QString RoomText(int row, const wchar_t* english)
{
    return VX_DlgText(CVxLocalize::TBL_ROOMPROPERTIESDLG, row, english);
}

QString MngText(int row, const wchar_t* english)
{
    return VX_DlgText(CVxLocalize::TBL_ROOMMNGDLG, row, english);
}

QDialogButtonBox* OkCancel(QDialog* dlg)
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dlg);
    LocalizeButtonBox(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dlg, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dlg, &QDialog::reject);
    return buttons;
}

} // namespace

bool VX_RunRoomPropertiesDlg(int region, QWidget* parent)
{
    CVxRoomPropEdit edit;
    if (!edit.Begin(*VX_GetCore(), region))
        return false;
    CVxRoomPropertiesDlg dlg(edit, parent);
    if (const CVxFloorRegion* room = VX_GetCore()->GetFloorPlan().SafeGetRegion(region))
        VX_PlaceBesidePlanRect(&dlg, room->GetBoundingRect());
    return dlg.exec() == QDialog::Accepted;
}

CVxRoomPropertiesDlg::CVxRoomPropertiesDlg(CVxRoomPropEdit& edit, QWidget* parent)
    : QDialog(parent), m_edit(edit)
{
    setObjectName(QStringLiteral("RoomPropertiesDlg"));
    setWindowTitle(RoomText(1, L"Room Properties"));
    const SVxRoomPropValues& v = edit.GetValues();
    const int unit = edit.GetProjectUnit();
    auto* top = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    top->addLayout(form);
    m_name = new QLineEdit(v.name.ToQString(), this);
    form->addRow(RoomText(2, L"Name:"), m_name);

    auto* surfaces = new QGroupBox(RoomText(10, L"Surfaces"), this);
    auto* surfaceGrid = new QGridLayout(surfaces);
    auto addLook = [&](CVxAppearanceButton*& button, const CVxAppearance& look, const QString& label,
                       int column) {
        button = new CVxAppearanceButton(surfaces);
        button->SetAppearance(look);
        surfaceGrid->addWidget(new QLabel(label, surfaces), 0, column);
        surfaceGrid->addWidget(button, 1, column);
        connect(button, &CVxAppearanceButton::appearancePicked, this, &CVxRoomPropertiesDlg::OnChanged);
    };
    addLook(m_floor, v.floor, RoomText(3, L"Floor:"), 0);
    addLook(m_walls, v.walls, RoomText(5, L"Walls:"), 1);
    addLook(m_ceiling, v.ceiling, RoomText(4, L"Ceiling:"), 2);
    top->addWidget(surfaces);

    auto* mouldings = new QGroupBox(RoomText(11, L"Mouldings"), this);
    auto* grid = new QGridLayout(mouldings);
    grid->addWidget(new QLabel(RoomText(8, L"Height:"), mouldings), 0, 1);
    grid->addWidget(new QLabel(RoomText(9, L"Thickness:"), mouldings), 0, 2);
    grid->addWidget(new QLabel(RoomText(12, L"Colour:"), mouldings), 0, 3);
    auto addMoulding = [&](QCheckBox*& box, CVxLengthEdit*& height, CVxLengthEdit*& thickness,
                           CVxAppearanceButton*& look, const CVxDecorativeMolding& moulding,
                           const QString& label, int row) {
        box = new QCheckBox(label, mouldings);
        box->setChecked(moulding.enabled);
        height = new CVxLengthEdit(CVxLengthEdit::LENGTH, unit, mouldings);
        height->SetValue(moulding.height);
        thickness = new CVxLengthEdit(CVxLengthEdit::LENGTH, unit, mouldings);
        thickness->SetValue(moulding.thickness);
        look = new CVxAppearanceButton(mouldings);
        look->SetAppearance(moulding.appearance);
        grid->addWidget(box, row, 0);
        grid->addWidget(height, row, 1);
        grid->addWidget(thickness, row, 2);
        grid->addWidget(look, row, 3);
        // A moulding that is not there has no size to set.
        auto follow = [height, thickness, look](bool on) {
            height->setEnabled(on);
            thickness->setEnabled(on);
            look->setEnabled(on);
        };
        follow(moulding.enabled);
        connect(box, &QCheckBox::toggled, this, follow);
        connect(box, &QCheckBox::toggled, this, &CVxRoomPropertiesDlg::OnChanged);
        connect(height, &CVxLengthEdit::valueEdited, this, &CVxRoomPropertiesDlg::OnChanged);
        connect(thickness, &CVxLengthEdit::valueEdited, this, &CVxRoomPropertiesDlg::OnChanged);
        connect(look, &CVxAppearanceButton::appearancePicked, this, &CVxRoomPropertiesDlg::OnChanged);
    };
    addMoulding(m_base, m_baseHeight, m_baseThickness, m_baseLook, v.baseMolding,
                RoomText(6, L"Skirting board"), 1);
    addMoulding(m_crown, m_crownHeight, m_crownThickness, m_crownLook, v.crownMolding,
                RoomText(7, L"Cornice"), 2);
    top->addWidget(mouldings);

    QString info = edit.GetInfoText().ToQString().trimmed();
    info.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    auto* infoLabel = new QLabel(info, this);
    infoLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    top->addWidget(infoLabel);
    top->addWidget(OkCancel(this));
    top->setSizeConstraint(QLayout::SetFixedSize);
    connect(m_name, &QLineEdit::textEdited, this, &CVxRoomPropertiesDlg::OnChanged);
    m_ready = true;
}

SVxRoomPropValues CVxRoomPropertiesDlg::GetEditedValues() const
{
    SVxRoomPropValues e = m_edit.GetValues();
    e.name = CVxStringW(m_name->text().trimmed());
    e.floor = m_floor->GetAppearance().value_or(e.floor);
    e.ceiling = m_ceiling->GetAppearance().value_or(e.ceiling);
    e.walls = m_walls->GetAppearance().value_or(e.walls);
    auto moulding = [](CVxDecorativeMolding& m, const QCheckBox* box, const CVxLengthEdit* height,
                       const CVxLengthEdit* thickness, const CVxAppearanceButton* look) {
        m.enabled = box->isChecked();
        m.height = height->GetEditedValue().value_or(m.height);
        m.thickness = thickness->GetEditedValue().value_or(m.thickness);
        if (look->IsPicked() && look->GetAppearance())
            m.appearance = *look->GetAppearance();
    };
    moulding(e.baseMolding, m_base, m_baseHeight, m_baseThickness, m_baseLook);
    moulding(e.crownMolding, m_crown, m_crownHeight, m_crownThickness, m_crownLook);
    return e;
}

void CVxRoomPropertiesDlg::OnChanged()
{
    if (m_ready)
        m_edit.Preview(GetEditedValues());
}

void CVxRoomPropertiesDlg::done(int result)
{
    if (result == QDialog::Accepted)
        m_edit.Commit(GetEditedValues());
    else
        m_edit.Cancel();
    QDialog::done(result);
}

CVxRoomMngDlg::CVxRoomMngDlg(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("RoomMngDlg"));
    setWindowTitle(MngText(1, L"Rooms in the Project"));
    auto* top = new QVBoxLayout(this);
    m_table = new QTableWidget(0, 3, this);
    m_table->setHorizontalHeaderLabels({MngText(2, L"Name"), MngText(3, L"Area"), MngText(4, L"Perimeter")});
    m_table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setMinimumSize(420, 220);
    top->addWidget(m_table, 1);
    m_total = new QLabel(this);
    top->addWidget(m_total);
    auto* row = new QHBoxLayout;
    auto* properties = new QPushButton(MngText(5, L"Properties..."), this);
    auto* rename = new QPushButton(MngText(6, L"Rename..."), this);
    auto* close = new QPushButton(MngText(8, L"Close"), this);
    row->addWidget(properties);
    row->addWidget(rename);
    row->addStretch(1);
    row->addWidget(close);
    top->addLayout(row);
    connect(properties, &QPushButton::clicked, this, &CVxRoomMngDlg::OnProperties);
    connect(rename, &QPushButton::clicked, this, &CVxRoomMngDlg::OnRename);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_table, &QTableWidget::cellDoubleClicked, this, &CVxRoomMngDlg::OnProperties);
    Refill();
}

void CVxRoomMngDlg::Refill()
{
    const int keep = std::max(0, m_table->currentRow());
    const std::vector<SVxRoomRow> rows = CVxRoomPropEdit::ListRooms(*VX_GetCore());
    m_table->setRowCount(static_cast<int>(rows.size()));
    for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
        const SVxRoomRow& room = rows[static_cast<size_t>(i)];
        auto* name = new QTableWidgetItem(room.name.ToQString());
        name->setData(Qt::UserRole, room.region);
        if (!room.named)
            name->setForeground(palette().color(QPalette::PlaceholderText));
        m_table->setItem(i, 0, name);
        auto* area = new QTableWidgetItem(room.areaText.ToQString());
        area->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_table->setItem(i, 1, area);
        auto* perimeter = new QTableWidgetItem(room.perimeterText.ToQString());
        perimeter->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_table->setItem(i, 2, perimeter);
    }
    if (!rows.empty())
        m_table->selectRow(std::min(keep, static_cast<int>(rows.size()) - 1));
    m_total->setText(MngText(7, L"Total area:") + QStringLiteral(" ") +
                     CVxRoomPropEdit::TotalAreaText(*VX_GetCore()).ToQString());
}

int CVxRoomMngDlg::GetSelectedRegion() const
{
    const QTableWidgetItem* item = m_table->item(m_table->currentRow(), 0);
    return item ? item->data(Qt::UserRole).toInt() : -1;
}

void CVxRoomMngDlg::OnProperties()
{
    const int region = GetSelectedRegion();
    if (region >= 0 && VX_RunRoomPropertiesDlg(region, this))
        Refill();
}

void CVxRoomMngDlg::OnRename()
{
    const int region = GetSelectedRegion();
    CVxRoomPropEdit edit;
    if (region < 0 || !edit.Begin(*VX_GetCore(), region))
        return;
    CVxRenameDlg dlg(edit.GetValues().name.ToQString(), this);
    if (dlg.exec() != QDialog::Accepted) {
        edit.Cancel();
        return;
    }
    SVxRoomPropValues values = edit.GetValues();
    values.name = CVxStringW(dlg.GetName());
    if (edit.Commit(values))
        Refill();
}

CVxRenameDlg::CVxRenameDlg(const QString& name, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("RenameDlg"));
    setWindowTitle(VX_DlgText(CVxLocalize::TBL_RENAMEDLG, 1, L"Rename"));
    auto* form = new QFormLayout(this);
    m_name = new QLineEdit(name, this);
    m_name->setMinimumWidth(240);
    m_name->selectAll();
    form->addRow(VX_DlgText(CVxLocalize::TBL_RENAMEDLG, 2, L"Name:"), m_name);
    form->addRow(OkCancel(this));
}

QString CVxRenameDlg::GetName() const
{
    return m_name->text().trimmed();
}
