#include "CVxFloor.h"
#include "CVxHitDist.h"
#include "CVxLocalize.h"
#include "CVxWallEditor.h"
#include "IVxAppHelperCallback.h"

#include <algorithm>
#include <cmath>

namespace {

// A scan is scaled by at most this factor in one calibration.
constexpr double kMaxCalibrationFactor = 1e4;

CVxStringW Msg(int row, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeMessage(row, english);
}

double SegmentDistance(const CVxDPoint& p, const CVxDPoint& a, const CVxDPoint& b)
{
    const CVxDPoint d = b - a;
    const double length2 = d.x * d.x + d.y * d.y;
    const double t =
        length2 > 0 ? std::clamp(((p.x - a.x) * d.x + (p.y - a.y) * d.y) / length2, 0.0, 1.0) : 0;
    return std::hypot(p.x - (a.x + d.x * t), p.y - (a.y + d.y * t));
}

} // namespace

bool CVxWallEditor::OnPopupBkgScanLoadImage1Click(const CVxStringW& file)
{
    CVxFloor* floor = Floor();
    if (!m_active || !floor || !m_host || file.IsEmpty())
        return false;
    const CVxStringW previous = floor->m_bkgScanFile;
    const CVxDRect previousRect = floor->m_bkgScanRect;
    floor->m_bkgScanFile = file;
    // A new picture is fitted to the sheet until it is calibrated.
    floor->m_bkgScanRect = CVxDRect();
    if (!m_host->EditorLoadBkgScan(true)) {
        floor->m_bkgScanFile = previous;
        floor->m_bkgScanRect = previousRect;
        m_host->EditorLoadBkgScan(false);
        if (IVxAppHelperCallback* host = VX_GetAppHelper())
            host->MsgBox(Msg(1410, L"The picture could not be read.") + L"\n\n" + file, Msg(33, L"Warning"),
                         VX_MB_ICON_WARNING, nullptr, VX_MB_OK);
        return false;
    }
    m_project->m_modified = true;
    Repaint();
    return true;
}

void CVxWallEditor::OnPopupBkgScanShow1Click()
{
    const CVxFloor* floor = Floor();
    if (!m_active || !floor || !floor->HasBkgScan())
        return;
    m_project->m_bkgScanVisible = !m_project->m_bkgScanVisible;
    Repaint();
}

void CVxWallEditor::OnPopupBkgScanRemove1Click()
{
    CVxFloor* floor = Floor();
    if (!m_active || !floor || !floor->HasBkgScan())
        return;
    if (m_operation == opCalibrate)
        CloseCalibrationDialog();
    floor->ClearBkgScan();
    if (m_host)
        m_host->EditorLoadBkgScan(false);
    m_project->m_modified = true;
    Repaint();
}

bool CVxWallEditor::OnPopupBkgScanCalibrate1Click()
{
    if (!m_active || !m_host)
        return false;
    const CVxDRect scan = m_host->EditorBkgScanRect();
    if (!(scan.Width() > 0) || !(scan.Height() > 0))
        return false;
    m_project->m_bkgScanVisible = true;
    OnMouseOperationChanged(opCalibrate);
    // Across the middle of the picture, for the user to lay on a length
    // the drawing tells.
    const double middle = (scan.top + scan.bottom) / 2;
    m_calibFrom = CVxDPoint(scan.left + scan.Width() / 4, middle);
    m_calibTo = CVxDPoint(scan.right - scan.Width() / 4, middle);
    m_calibDrag = 0;
    ShowCalibrationLine();
    SetStatus(Msg(
        1411, L"Drag the ends of the line onto a length you know in the picture, then type that length."));
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->WallScanCalibrateDlgShow();
    return true;
}

bool CVxWallEditor::SetCalibrationSize(double length)
{
    CVxFloor* floor = Floor();
    const double measured = std::hypot(m_calibTo.x - m_calibFrom.x, m_calibTo.y - m_calibFrom.y);
    if (!m_active || !floor || !m_host || m_operation != opCalibrate || !std::isfinite(length) ||
        length <= 0 || measured <= 0)
        return false;
    const double factor = length / measured;
    if (factor > kMaxCalibrationFactor || factor < 1 / kMaxCalibrationFactor)
        return false;
    const CVxDRect scan = m_host->EditorBkgScanRect();
    // The picture grows or shrinks around the line's start, which stays on
    // the same spot of the drawing.
    const CVxDPoint& o = m_calibFrom;
    floor->m_bkgScanRect = CVxDRect(o.x + (scan.left - o.x) * factor, o.y + (scan.top - o.y) * factor,
                                    o.x + (scan.right - o.x) * factor, o.y + (scan.bottom - o.y) * factor);
    m_calibTo = o + (m_calibTo - o) * factor;
    m_host->EditorLoadBkgScan(true);
    m_project->m_modified = true;
    ShowCalibrationLine();
    return true;
}

void CVxWallEditor::CloseCalibrationDialog()
{
    if (m_operation == opCalibrate)
        OnMouseOperationChanged(opNone);
    m_calibDrag = 0;
    Repaint();
}

void CVxWallEditor::ShowCalibrationLine()
{
    DeleteTempDimLines();
    AddTempDimLine(m_calibFrom, m_calibTo, 0);
    Repaint();
}

int CVxWallEditor::HitCalibrationLine(double x, double y) const
{
    const double zoom = std::max(Zoom(), 1e-9);
    const CVxDPoint pointer(x, y);
    const double reach = CVxHitDist::WallCtlPoint();
    if (std::hypot(x - m_calibFrom.x * zoom, y - m_calibFrom.y * zoom) <= reach)
        return 1;
    if (std::hypot(x - m_calibTo.x * zoom, y - m_calibTo.y * zoom) <= reach)
        return 2;
    if (SegmentDistance(pointer, m_calibFrom * zoom, m_calibTo * zoom) <= reach)
        return 3;
    return 0;
}

bool CVxWallEditor::OnCalibrateMouseDown(double x, double y)
{
    m_calibDrag = HitCalibrationLine(x, y);
    m_calibGrab = CVxDPoint(x, y) / std::max(Zoom(), 1e-9);
    return true;
}

void CVxWallEditor::OnCalibrateMouseMove(double x, double y)
{
    if (m_calibDrag == 0)
        return;
    const CVxDPoint point = CVxDPoint(x, y) / std::max(Zoom(), 1e-9);
    switch (m_calibDrag) {
    case 1:
        m_calibFrom = point;
        break;
    case 2:
        m_calibTo = point;
        break;
    default:
        m_calibFrom = m_calibFrom + (point - m_calibGrab);
        m_calibTo = m_calibTo + (point - m_calibGrab);
        m_calibGrab = point;
        break;
    }
    ShowCalibrationLine();
}
