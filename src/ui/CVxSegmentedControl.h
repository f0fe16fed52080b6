#pragma once
// A row of exclusive buttons of which exactly one is selected, as the floor
// tool bar shows the floors of the project.

#include <QStringList>
#include <QWidget>

class QButtonGroup;
class QHBoxLayout;
class QToolButton;

class CVxSegmentedControl : public QWidget
{
    Q_OBJECT
public:
    explicit CVxSegmentedControl(QWidget* parent = nullptr);

    // Replaces the segments without signalling a change.
    void SetSegments(const QStringList& labels, int selected);
    int GetSegmentCount() const;
    int GetSelectedSegment() const;
    // Without signalling a change.
    void SetSelectedSegment(int index);
    QToolButton* GetSegmentButton(int index) const;

signals:
    void selectedSegmentChanged();

private:
    QButtonGroup* m_group = nullptr;
    QHBoxLayout* m_layout = nullptr;
};
