#pragma once
// The widget that shows the plan: the sheet with its shadow, and on it the
// project as the core draws it.

#include <QImage>
#include <QPoint>
#include <QTimer>
#include <QWidget>

class CVxDC;
class QLineEdit;

class CVxMainRenderArea : public QWidget
{
    Q_OBJECT
public:
    explicit CVxMainRenderArea(QWidget* parent = nullptr);

    // Nothing is painted before the host first asks for a repaint.
    void SetPaintable(bool paintable) { m_paintable = paintable; }
    bool IsPaintable() const { return m_paintable; }

    // The plan as painted, for export: the widget's size, less the space
    // around a centred sheet, without selection handles.
    QImage DrawToImage() const;

    // Scrolling with the middle button: the plan drifts towards the pointer,
    // faster the farther it is from where the button went down.
    bool IsMiddleScrolling() const { return m_scrollerTimer.isActive(); }
    void StopMiddleScrolling();

    // The buttons held as this view's own events tell them.
    Qt::MouseButtons GetButtonsDown() const { return m_buttonsDown; }
    // A key in the core's terms: an EVxKey, or the upper-case character;
    // 0 for a key the core does not know.
    static unsigned ToCoreKey(const QKeyEvent* event);
    static unsigned ToCoreModifiers(Qt::KeyboardModifiers modifiers);
    // While a wall is being drawn, a typed number opens a small field for
    // the wall's length, and Tab one for its angle; Enter lays the wall.
    void ShowTypedLength(const QString& first);
    void HideTypedLength();
    QLineEdit* GetTypedLengthEdit() const { return m_lengthEdit; }
    QLineEdit* GetTypedAngleEdit() const { return m_angleEdit; }

protected:
    void paintEvent(QPaintEvent* event) override;
    // Ctrl and the wheel zoom about the pointer.
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    // The pointer's position goes to the status bar in plan coordinates.
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    // Keys that no command took go to the core's plan view.
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    // An open editor takes the keys that are also window shortcuts (Esc,
    // Delete, Enter) while it has a use for them.
    bool event(QEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    // Esc in the typed length's fields closes them, not the editor.
    bool eventFilter(QObject* watched, QEvent* event) override;
    // An object dragged from the library stands under the pointer while
    // it is over the plan, and stays where it is dropped. Files pass on to
    // the window.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void OnScrollerTimer();
    // The anchor of middle-button scrolling: a ring with a dot and arrows
    // towards the directions that can scroll.
    void DrawMouseScroller(CVxDC* dc, int x, int y) const;
    class CVxMainScrollArea* ScrollArea() const;

    bool m_paintable = false;
    QTimer m_scrollerTimer;
    QPoint m_scrollAnchor;
    Qt::MouseButtons m_buttonsDown;
    void ApplyTypedLength();
    QLineEdit* m_lengthEdit = nullptr;
    QLineEdit* m_angleEdit = nullptr;
};
