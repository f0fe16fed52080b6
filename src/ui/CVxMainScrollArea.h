#pragma once
// The central widget: a tiled background around the sheet, with scroll bars
// that are set by hand from the sheet's size at the present zoom.

#include "VxIntGeometry.h"

#include <QAbstractScrollArea>

class CVxMainRenderArea;

class CVxMainScrollArea : public QAbstractScrollArea
{
    Q_OBJECT
public:
    explicit CVxMainScrollArea(QWidget* parent = nullptr);

    void SetRenderArea(CVxMainRenderArea* area);
    CVxMainRenderArea* GetRenderArea() const { return m_renderArea; }
    // Fits the scroll bars to the sheet and places the sheet in the view.
    void UpdateScrollbars();
    // Keeps the sheet centred on an axis where it is smaller than the view.
    void KeepImageInCenter();
    // Scrolls so that the sheet's top-left corner lands at origin, as far as
    // the scroll bars allow.
    void ScrollToOrigin(const VxPOINT& origin);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;

private:
    CVxMainRenderArea* m_renderArea = nullptr;
};
