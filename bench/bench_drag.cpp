// Dragging one object on the furnished floor of 5000 objects in a view of
// 1920 by 1080: one pointer move through the core, and the repaint of the
// area that it marked dirty, as the window's paint event does it.

#include "CVxAppCore.h"
#include "CVxQtDC.h"
#include "VxBenchProject.h"

#include <benchmark/benchmark.h>

namespace {

// The left button stays down, and the dirty area is kept for the repaint.
class CVxDragHost : public CVxAppHelperHeadless
{
public:
    CVxDragHost() : CVxAppHelperHeadless(CVxStringW(), CVxStringW()) {}
    int GetKeyState(EVxKey key) override { return key == VX_KEY_LBUTTON ? 1 : 0; }
    void DrawRoom(const VxRECT* dirty) override
    {
        if (dirty)
            m_dirty = *dirty;
        else
            m_dirty = VxRECT{0, 0, 1920, 1080};
    }
    VxRECT m_dirty{0, 0, 0, 0};
};

void BM_DragOneObjectStep(benchmark::State& state)
{
    VxBenchApplication();
    static CVxDragHost host;
    VX_SetAppHelperCallback(&host);
    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    FurnishProject(core->GetProject());
    core->UpdateFloorPlan();
    core->SetDrawingAllowed(true);
    core->SetZoom(1.0);
    core->RebuildRoom();
    core->SetViewOrigin(VxPOINT{0, 0});
    CVxQtDC dc(1920, 1080, true);
    const VxRECT sheet = core->GetSheetRect();
    const int flags = core->GetPartDrawFlagsFromOptions() | CVxAppCore::drawHandles;
    core->DrawProject(&dc, sheet.left, sheet.top, VxRECT{0, 0, 1920, 1080}, flags);

    // An object well inside the view.
    const VxPOINT origin = core->GetObjectOrigin();
    // Not turned (every fifth object is), so that its corner area is its own.
    const int index = 230;
    CVxPart* part = core->GetProject().GetFloor()->SafeGetPart(index);
    const double zoom = core->GetZoom();
    double x = origin.x + (part->x + 10) * zoom;
    double y = origin.y + (part->y + 10) * zoom;
    bool handled = true;
    core->MainViewMouseDown(CVxAppCore::buttonLeft, 0, x, y, 0, &handled);
    // Past the threshold once.
    x += 12;
    core->MainViewMouseMove(0, x, y, 0);
    const double startX = part->x;
    int step = 0;
    for (auto _ : state) {
        // Back and forth, as a hand wanders, with Alt off so the walls snap.
        x += (step++ % 20 < 10) ? 3 : -3;
        y += (step % 7 < 3) ? 1 : -1;
        core->MainViewMouseMove(0, x, y, 0);
        const VxRECT dirty = host.m_dirty;
        dc.SetClipRect(dirty);
        core->DrawProject(&dc, sheet.left, sheet.top, dirty, flags);
        benchmark::ClobberMemory();
    }
    // The object follows the pointer; a dead drag would time nothing.
    state.counters["moved"] = core->GetProject().GetFloor()->SafeGetPart(index)->x - startX;
    state.counters["dirty_px"] = static_cast<double>(host.m_dirty.right - host.m_dirty.left) *
                                 static_cast<double>(host.m_dirty.bottom - host.m_dirty.top);
    core->MainViewMouseUp(CVxAppCore::buttonLeft, 0, x, y, 0);
    state.counters["objects"] = core->GetProject().GetFloor()->CountUsedObjects();
    core->InitProject();
}
BENCHMARK(BM_DragOneObjectStep)->Unit(benchmark::kMillisecond);

} // namespace
