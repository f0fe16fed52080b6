#include "CVxLayersForm.h"

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "VxDlgKit.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
const CVxDlgTexts T("LayersWindow");

const CVxViewLayers& Layers()
{
    return VX_GetCore()->GetProject().GetFloor()->m_layers;
}

QTableWidgetItem* CheckItem(bool checked)
{
    auto* item = new QTableWidgetItem;
    item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    return item;
}
} // namespace

CVxLayersForm::CVxLayersForm(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("LayersWindow"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    m_table = new QTableWidget(0, COL_COUNT, this);
    m_table->setObjectName(QStringLiteral("LayerList"));
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(COL_NAME, QHeaderView::Stretch);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    column->addWidget(m_table, 1);

    auto* buttons = new QHBoxLayout;
    m_add = new QPushButton(this);
    m_remove = new QPushButton(this);
    m_up = new QPushButton(this);
    m_down = new QPushButton(this);
    m_add->setObjectName(QStringLiteral("BtnAdd"));
    m_remove->setObjectName(QStringLiteral("BtnRemove"));
    m_up->setObjectName(QStringLiteral("BtnUp"));
    m_down->setObjectName(QStringLiteral("BtnDown"));
    for (QPushButton* button : {m_add, m_remove, m_up, m_down})
        buttons->addWidget(button);
    column->addLayout(buttons);

    connect(m_add, &QPushButton::clicked, this, &CVxLayersForm::AddLayer);
    connect(m_remove, &QPushButton::clicked, this, &CVxLayersForm::RemoveLayer);
    connect(m_up, &QPushButton::clicked, this, &CVxLayersForm::MoveUp);
    connect(m_down, &QPushButton::clicked, this, &CVxLayersForm::MoveDown);
    connect(m_table, &QTableWidget::itemChanged, this, &CVxLayersForm::OnItemChanged);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &CVxLayersForm::OnCurrentRowChanged);
    Localize();
    Refill();
}

void CVxLayersForm::Localize()
{
    setWindowTitle(T(1, L"Layers"));
    m_table->setHorizontalHeaderLabels(
        {T(2, L"Visible"), T(3, L"Locked"), T(4, L"Name"), T(5, L"Transparency")});
    m_add->setText(T(6, L"Add Layer"));
    m_remove->setText(T(7, L"Remove"));
    m_up->setText(T(8, L"Move Up"));
    m_down->setText(T(9, L"Move Down"));
    Refill();
}

void CVxLayersForm::ScheduleRefill()
{
    if (m_refillPending)
        return;
    m_refillPending = true;
    QMetaObject::invokeMethod(this, &CVxLayersForm::Refill, Qt::QueuedConnection);
}

void CVxLayersForm::Refill()
{
    m_refillPending = false;
    m_filling = true;
    const CVxViewLayers& layers = Layers();
    m_table->setRowCount(layers.GetLayerCount());
    for (int i = 0; i < layers.GetLayerCount(); ++i) {
        m_table->setItem(i, COL_VISIBLE, CheckItem(layers.IsLayerVisible(i)));
        m_table->setItem(i, COL_LOCKED, CheckItem(layers.IsLayerLocked(i)));
        auto* name = new QTableWidgetItem(layers.GetLayerName(i).ToQString());
        name->setFlags(Qt::ItemIsEditable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        m_table->setItem(i, COL_NAME, name);
        auto* transparency = new QSpinBox(m_table);
        transparency->setRange(0, 100);
        transparency->setSuffix(QStringLiteral(" %"));
        transparency->setValue(layers.GetLayerTransparency(i));
        // Steps of the arrows and of typing end in one change each when the
        // field is left, not one per key.
        transparency->setKeyboardTracking(false);
        connect(transparency, &QSpinBox::valueChanged, this,
                [i](int value) { VX_GetCore()->LayerSetTransparency(i, value); });
        m_table->setCellWidget(i, COL_TRANSPARENCY, transparency);
    }
    m_table->selectRow(layers.GetActiveLayer());
    m_remove->setEnabled(layers.GetLayerCount() > 1);
    m_up->setEnabled(layers.GetActiveLayer() > 0);
    m_down->setEnabled(layers.GetActiveLayer() + 1 < layers.GetLayerCount());
    m_filling = false;
}

int CVxLayersForm::CurrentLayer() const
{
    return Layers().GetActiveLayer();
}

void CVxLayersForm::OnItemChanged(QTableWidgetItem* item)
{
    if (m_filling || !item)
        return;
    const int layer = item->row();
    CVxAppCore* core = VX_GetCore();
    switch (item->column()) {
    case COL_VISIBLE:
        core->LayerSetVisible(layer, item->checkState() == Qt::Checked);
        break;
    case COL_LOCKED:
        core->LayerSetLocked(layer, item->checkState() == Qt::Checked);
        break;
    case COL_NAME: {
        // The general layer keeps its empty name while it shows as such.
        const QString typed = item->text().trimmed();
        if (typed != Layers().GetLayerName(layer).ToQString())
            core->LayerRename(layer, CVxStringW(typed));
        break;
    }
    default:
        break;
    }
    ScheduleRefill();
}

void CVxLayersForm::OnCurrentRowChanged()
{
    if (m_filling)
        return;
    const QList<QTableWidgetItem*> selected = m_table->selectedItems();
    if (!selected.isEmpty() && VX_GetCore()->LayerSetActive(selected.first()->row())) {
        m_up->setEnabled(CurrentLayer() > 0);
        m_down->setEnabled(CurrentLayer() + 1 < Layers().GetLayerCount());
    }
}

void CVxLayersForm::AddLayer()
{
    const QString name = T(10, L"Layer %1").arg(Layers().GetLayerCount() + 1);
    VX_GetCore()->LayerAdd(CVxStringW(name));
    Refill();
    if (QTableWidgetItem* item = m_table->item(CurrentLayer(), COL_NAME))
        m_table->editItem(item);
}

void CVxLayersForm::RemoveLayer()
{
    const int layer = CurrentLayer();
    if (Layers().GetLayerCount() < 2)
        return;
    if (!VX_GetCore()->GetProject().GetFloor()->IsLayerEmpty(layer) &&
        QMessageBox::question(this, windowTitle(),
                              T(11, L"Remove the layer \"%1\" with all its objects?")
                                  .arg(Layers().GetLayerName(layer).ToQString())) != QMessageBox::Yes)
        return;
    VX_GetCore()->LayerRemove(layer);
    Refill();
}

void CVxLayersForm::MoveUp()
{
    Move(-1);
}

void CVxLayersForm::MoveDown()
{
    Move(1);
}

void CVxLayersForm::Move(int step)
{
    const int from = CurrentLayer();
    VX_GetCore()->LayerMove(from, from + step);
    Refill();
}
