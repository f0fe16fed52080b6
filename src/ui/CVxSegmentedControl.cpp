#include "CVxSegmentedControl.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QToolButton>

CVxSegmentedControl::CVxSegmentedControl(QWidget* parent) : QWidget(parent)
{
    m_group = new QButtonGroup(this);
    m_group->setExclusive(true);
    m_layout = new QHBoxLayout(this);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    connect(m_group, &QButtonGroup::idClicked, this, [this](int) { emit selectedSegmentChanged(); });
}

void CVxSegmentedControl::SetSegments(const QStringList& labels, int selected)
{
    const QSignalBlocker blocker(m_group);
    for (QAbstractButton* button : m_group->buttons()) {
        m_group->removeButton(button);
        delete button;
    }
    for (int i = 0; i < labels.size(); ++i) {
        auto* button = new QToolButton(this);
        button->setText(labels.at(i));
        button->setCheckable(true);
        button->setAutoRaise(false);
        m_layout->addWidget(button);
        m_group->addButton(button, i);
    }
    SetSelectedSegment(selected);
}

int CVxSegmentedControl::GetSegmentCount() const
{
    return static_cast<int>(m_group->buttons().size());
}

int CVxSegmentedControl::GetSelectedSegment() const
{
    return m_group->checkedId();
}

void CVxSegmentedControl::SetSelectedSegment(int index)
{
    const QSignalBlocker blocker(m_group);
    if (QAbstractButton* button = m_group->button(index))
        button->setChecked(true);
}

QToolButton* CVxSegmentedControl::GetSegmentButton(int index) const
{
    return qobject_cast<QToolButton*>(m_group->button(index));
}
