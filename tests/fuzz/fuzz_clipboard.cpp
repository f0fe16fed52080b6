// Pastes clipboard text into the core's project as a paste command does:
// any text either adds the objects it holds, within the project's bounds on
// objects, or is refused and leaves the floor as it was.

#include "CVxAppCore.h"
#include "CVxFloor.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr size_t kMaxInput = 65536;

CVxAppCore* Core()
{
    static CVxAppCore* core = [] {
        CVxAppCore* c = VX_GetCore();
        c->InitProject();
        c->SetDrawingAllowed(true);
        return c;
    }();
    return core;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > kMaxInput)
        return 0;
    CVxAppCore* core = Core();
    CVxFloor* floor = core->GetProject().GetFloor();
    floor->RemoveAllObjects();
    core->GetUndoManager().Reinitialize(&core->GetProject());
    const CVxStringA text(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const bool pasted = core->PasteObjectsFromClipboard(text);
    const int count = floor->CountUsedObjects();
    if (pasted != (count > 0) || static_cast<size_t>(count) > CVxFloor::maxProjectObjects)
        abort();
    // What was pasted can be copied, and the copy pastes again.
    if (pasted) {
        core->SelectAll();
        const CVxStringA again = core->GetSelectionClipboardText();
        core->MainViewKeyEscPressed();
        if (!core->PasteObjectsFromClipboard(again))
            abort();
    }
    return 0;
}
