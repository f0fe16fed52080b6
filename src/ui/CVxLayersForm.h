#pragma once
// The layers window: the current floor's layers with their visibility, lock
// and transparency; layers are added, renamed in place, removed and moved.
// Every change goes to the core at once, as one undo step.

#include <QWidget>

class QPushButton;
class QTableWidget;
class QTableWidgetItem;

class CVxLayersForm : public QWidget
{
    Q_OBJECT
public:
    enum EVxColumn
    {
        COL_VISIBLE = 0,
        COL_LOCKED,
        COL_NAME,
        COL_TRANSPARENCY,
        COL_COUNT
    };

    explicit CVxLayersForm(QWidget* parent = nullptr);
    // From the current floor, after any change of the document.
    void Refill();
    // The same once the events of the moment are handled: a change may come
    // from a field of the list itself, which must not vanish under its own
    // signal.
    void ScheduleRefill();
    void Localize();
    QTableWidget* GetTable() const { return m_table; }

public slots:
    void AddLayer();
    void RemoveLayer();
    void MoveUp();
    void MoveDown();

private:
    void OnItemChanged(QTableWidgetItem* item);
    void OnCurrentRowChanged();
    void Move(int step);
    int CurrentLayer() const;

    QTableWidget* m_table = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_up = nullptr;
    QPushButton* m_down = nullptr;
    bool m_filling = false;
    bool m_refillPending = false;
};
