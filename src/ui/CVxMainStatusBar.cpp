#include "CVxMainStatusBar.h"

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxLocalize.h"
#include "CVxUnits.h"
#include "VxLocalizeWidgets.h"
#include "VxNumbers.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

CVxMainStatusBar::CVxMainStatusBar(QWidget* parent) : QStatusBar(parent)
{
    setSizeGripEnabled(true);
    setMinimumHeight(fontMetrics().height() + 8);
    m_messageTimer.setSingleShot(true);
    connect(&m_messageTimer, &QTimer::timeout, this, [this] { SetMessage(CVxStringW()); });
}

void CVxMainStatusBar::SetMessage(const CVxStringW& text, int timeoutMs)
{
    m_message = text;
    if (text.IsEmpty())
        m_messageTimer.stop();
    else
        m_messageTimer.start(timeoutMs);
    update();
}

void CVxMainStatusBar::SetMousePosition(double x, double y)
{
    m_mouseX = x;
    m_mouseY = y;
    m_hasMouse = true;
    update();
}

void CVxMainStatusBar::ClearMousePosition()
{
    m_hasMouse = false;
    update();
}

CVxStringW CVxMainStatusBar::GetLeftText() const
{
    if (!m_message.IsEmpty())
        return m_message;
    return VX_GetLoc()->LocalizeMessage(132, L"Use Ctrl + mouse wheel to zoom.");
}

CVxStringW CVxMainStatusBar::GetRightText() const
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    const CVxStringW separator = L" -- ";
    const CVxStringW unit = CVxUnits::GetUnitText(project.m_unit);

    const double basis = project.m_baseZoom > 0 ? project.m_baseZoom : 1.0;
    const int percent = static_cast<int>(std::lround(core->GetZoom() / basis * 100));
    CVxStringW text(VX_MessageText(1610, L"Zoom %1%").arg(percent));
    text += separator;
    text += CVxStringW(VX_MessageText(1611, L"Project"));
    text += L' ';
    text += VX_DblFormat(project.GetTotalWidth(), VX_DF_FEET_GLYPHS, true);
    text += L" x ";
    text += VX_DblFormat(project.GetTotalHeight(), VX_DF_FEET_GLYPHS, true);
    if (project.m_unit != CVxUnits::UNIT_INCH) {
        text += L' ';
        text += unit;
    }
    if (project.GetFloorCount() > 1) {
        text += separator;
        text += CVxStringW(VX_MessageText(1612, L"Floor %1").arg(project.m_currentFloor + 1));
    }
    const CVxFloor* floor = project.GetFloor();
    const int layers = floor->m_layers.GetLayerCount();
    if (layers > 1) {
        text += separator;
        text += CVxStringW(VX_MessageText(1613, L"%1 layers").arg(layers));
    }
    if (m_hasMouse) {
        // Positions read relative to the selected local origin, if any.
        double x = m_mouseX;
        double y = m_mouseY;
        floor->m_localCoords.SubtractFrom(x, y);
        // As many decimals as the project shows its lengths with.
        const double step = std::pow(10.0, std::clamp(project.m_decimalPrecision, 0, 6));
        x = std::round(x * step) / step;
        y = std::round(y * step) / step;
        text += separator;
        text += VX_DblFormat(x, VX_DF_FEET_GLYPHS, true);
        text += L", ";
        text += VX_DblFormat(y, VX_DF_FEET_GLYPHS, true);
    }
    return text;
}

void CVxMainStatusBar::paintEvent(QPaintEvent* /*event*/)
{
    if (VX_GetCore()->IsAppExiting())
        return;
    QPainter painter(this);
    const QRect area = rect().adjusted(6, 0, -18, 0);
    painter.setPen(palette().color(QPalette::WindowText));
    const QString right = GetRightText().ToQString();
    const int rightWidth = painter.fontMetrics().horizontalAdvance(right);
    painter.drawText(area, Qt::AlignVCenter | Qt::AlignRight, right);
    const QRect left = area.adjusted(0, 0, -(rightWidth + 24), 0);
    painter.drawText(
        left, Qt::AlignVCenter | Qt::AlignLeft,
        painter.fontMetrics().elidedText(GetLeftText().ToQString(), Qt::ElideRight, left.width()));
}
