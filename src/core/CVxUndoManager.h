#pragma once
// Undo by snapshots: before every change the whole project is copied into a
// stack of slots. Nothing in the program has to know how to reverse itself;
// what needs thought is what a snapshot must not bring back (see
// CVxAppCore::PreserveInfoInUndo).
//
// The slots below the position are states to go back to. While the position
// stands on the last slot, that slot is a placeholder: the current state
// lives in the project itself, and is copied in only when an undo starts
// from there, so that redo can come back to it.

#include <vector>

class CVxProject;

class CVxUndoManager
{
public:
    // One slot holding a copy of `project` (a reset project for null).
    explicit CVxUndoManager(const CVxProject* project);
    ~CVxUndoManager();
    CVxUndoManager(const CVxUndoManager&) = delete;
    CVxUndoManager& operator=(const CVxUndoManager&) = delete;

    // The state before a change: drops the redo history, keeps a copy of
    // `project` at the position and moves on to a new placeholder.
    void AddToUndoList(const CVxProject* project);
    // The slot to restore, one step back. With `current` given and the
    // position on the placeholder, `current` is kept there first.
    CVxProject* MakeUndo(const CVxProject* current);
    // The slot to restore, one step forward.
    CVxProject* MakeRedo();
    bool CanUndo() const { return m_position > 0; }
    bool CanRedo() const { return m_position < static_cast<int>(m_slots.size()) - 1; }
    void ClearRedoHistory();
    // Slots beyond the limit go, oldest first; 0 means no limit.
    void ApplyLimit();
    // 1 and 2 act as 3: an undo needs the state before, the state after and
    // the placeholder.
    void SetUndoLimit(unsigned limit);
    unsigned GetUndoLimit() const { return m_limit; }
    // After a save every kept state differs from the file.
    void SetModifiedFlagToAllRooms();
    // History dropped; the one slot holds a copy of `project`, or is reset.
    void Reinitialize(const CVxProject* project);

    int GetPosition() const { return m_position; }
    int GetSlotCount() const { return static_cast<int>(m_slots.size()); }

private:
    std::vector<CVxProject*> m_slots;
    unsigned m_limit = 0;
    int m_position = 0;
};
