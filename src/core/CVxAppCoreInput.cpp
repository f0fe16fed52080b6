// Interaction of the plan view: placeholders until the input code lands.
#include "CVxAppCore.h"

void CVxAppCore::MainViewMouseDown(int /*button*/, unsigned /*modifiers*/, double /*x*/, double /*y*/,
                                   int /*source*/, bool* /*outHandled*/)
{
}

void CVxAppCore::MainViewMouseMove(unsigned /*modifiers*/, double /*x*/, double /*y*/, int /*source*/) {}

void CVxAppCore::MainViewMouseUp(int /*button*/, unsigned /*modifiers*/, double /*x*/, double /*y*/,
                                 int /*source*/)
{
}

bool CVxAppCore::MainViewKeyDown(unsigned /*key*/, unsigned /*modifiers*/)
{
    return false;
}

bool CVxAppCore::MainViewKeyUp(unsigned /*key*/, unsigned /*modifiers*/)
{
    return false;
}

bool CVxAppCore::MainViewKeyArrowsPressed(unsigned /*key*/, unsigned /*modifiers*/)
{
    return false;
}

bool CVxAppCore::MainViewKeyEscPressed()
{
    return false;
}

void CVxAppCore::MainViewFinishInterAction(bool /*accepted*/) {}

int CVxAppCore::RefreshMainViewCursor(unsigned /*modifiers*/, double /*x*/, double /*y*/)
{
    return -1;
}

int CVxAppCore::FindPartFromPoint(double /*x*/, double /*y*/, int /*source*/, bool /*preferSelected*/)
{
    return -1;
}

void CVxAppCore::SetSelection(int /*index*/, bool /*repaint*/) {}

void CVxAppCore::SetSelection(const CVxDRect& /*rect*/, bool /*touching*/, bool /*repaint*/) {}

void CVxAppCore::AddToSelection(int /*index*/, bool /*repaint*/) {}

void CVxAppCore::AddToSelection(const CVxDRect& /*rect*/, bool /*touching*/, bool /*repaint*/) {}

void CVxAppCore::RemoveFromSelection(int /*index*/, bool /*repaint*/) {}

void CVxAppCore::ClearSelection(bool /*repaint*/) {}

void CVxAppCore::SelectAll() {}

int CVxAppCore::GetSelCount() const
{
    return -1;
}

int CVxAppCore::GetFirstSelected() const
{
    return -1;
}

void CVxAppCore::OnSelectionChange() {}

void CVxAppCore::MoveSelection(double /*dx*/, double /*dy*/, VxRECT* /*dirty*/) {}

void CVxAppCore::SnapMovingSelectionToWalls(double& /*dx*/, double& /*dy*/) {}

void CVxAppCore::DeleteSelectedObjects() {}

void CVxAppCore::GroupSelectedObjects() {}

void CVxAppCore::UngroupSelectedObject() {}

void CVxAppCore::AlignSelectedObjects(int /*mode*/) {}

void CVxAppCore::SpaceEquallySelectedObjects(int /*mode*/) {}

void CVxAppCore::ZOrderBringToFront() {}

void CVxAppCore::ZOrderSendToBack() {}

void CVxAppCore::ZOrderBringForward() {}

void CVxAppCore::ZOrderSendBackward() {}

void CVxAppCore::ZOrderOrderbyZposition(bool /*repaint*/) {}

void CVxAppCore::RotateSelectedObjects(double /*degrees*/) {}

void CVxAppCore::FlipSelectedObjects(bool /*vertical*/) {}

void CVxAppCore::LockSelectedObjects(unsigned /*bit*/) {}

void CVxAppCore::ActivateFormatPainter(bool /*on*/, bool /*sticky*/) {}

void CVxAppCore::ApplyFormatPainterToObject(int /*index*/) {}

void CVxAppCore::DuplicateSelectedObjects() {}

CVxStringA CVxAppCore::GetSelectionClipboardText()
{
    return CVxStringA();
}

void CVxAppCore::CopySelectedObjectsToClipboard() {}

void CVxAppCore::CutSelectedObjectsToClipboard() {}

bool CVxAppCore::PasteObjectsFromClipboard(const CVxStringA& /*text*/)
{
    return false;
}

void CVxAppCore::StartMeasuring() {}

void CVxAppCore::DimensionSelectedObjects() {}

void CVxAppCore::DeleteAllDimensionLines() {}
