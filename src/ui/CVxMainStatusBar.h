#pragma once
// The status bar paints itself: a hint or a message on the left, the zoom,
// the project's size, the floor, the layers and the pointer on the right.
// A message goes after a while, and never hides the fields on the right.

#include "CVxStringW.h"

#include <QStatusBar>
#include <QTimer>

class CVxMainStatusBar : public QStatusBar
{
    Q_OBJECT
public:
    explicit CVxMainStatusBar(QWidget* parent = nullptr);

    // A message stands in place of the hint for `timeoutMs`, or until the
    // next one; an empty one clears it at once.
    void SetMessage(const CVxStringW& text, int timeoutMs = messageTimeoutMs);
    static constexpr int messageTimeoutMs = 6000;
    const CVxStringW& GetMessage() const { return m_message; }
    // The pointer's position in plan coordinates, shown on the right.
    void SetMousePosition(double x, double y);
    // The pointer left the plan: no position is shown.
    void ClearMousePosition();

    CVxStringW GetLeftText() const;
    CVxStringW GetRightText() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CVxStringW m_message;
    QTimer m_messageTimer;
    double m_mouseX = 0;
    double m_mouseY = 0;
    bool m_hasMouse = false;
};
