#pragma once
// The widget that shows the plan: the sheet with its shadow, and on it the
// project as the core draws it.

#include <QTimer>
#include <QWidget>

class CVxMainRenderArea : public QWidget
{
    Q_OBJECT
public:
    explicit CVxMainRenderArea(QWidget* parent = nullptr);

    // Nothing is painted before the host first asks for a repaint.
    void SetPaintable(bool paintable) { m_paintable = paintable; }
    bool IsPaintable() const { return m_paintable; }

protected:
    void paintEvent(QPaintEvent* event) override;
    // Ctrl and the wheel zoom about the pointer.
    void wheelEvent(QWheelEvent* event) override;

private:
    bool m_paintable = false;
    QTimer m_scrollerTimer;
};
