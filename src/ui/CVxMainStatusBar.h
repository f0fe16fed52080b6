#pragma once
// The status bar paints itself: a hint or a message on the left, the zoom,
// the project's size, the floor, the layers and the pointer on the right.

#include "CVxStringW.h"

#include <QStatusBar>

class CVxMainStatusBar : public QStatusBar
{
    Q_OBJECT
public:
    explicit CVxMainStatusBar(QWidget* parent = nullptr);

    // A message takes the whole bar until it is cleared with an empty one.
    void SetMessage(const CVxStringW& text);
    const CVxStringW& GetMessage() const { return m_message; }
    // The pointer's position in plan coordinates, shown on the right.
    void SetMousePosition(double x, double y);

    CVxStringW GetLeftText() const;
    CVxStringW GetRightText() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CVxStringW m_message;
    double m_mouseX = 0;
    double m_mouseY = 0;
    bool m_hasMouse = false;
};
