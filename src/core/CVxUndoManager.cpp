#include "CVxUndoManager.h"

#include "CVxProject.h"

CVxUndoManager::CVxUndoManager(const CVxProject* project)
{
    m_slots.push_back(new CVxProject);
    if (project)
        project->CopyTo(m_slots.front());
}

CVxUndoManager::~CVxUndoManager()
{
    for (CVxProject* slot : m_slots)
        delete slot;
}

void CVxUndoManager::AddToUndoList(const CVxProject* project)
{
    ClearRedoHistory();
    if (project)
        project->CopyTo(m_slots[static_cast<size_t>(m_position)]);
    m_slots.push_back(new CVxProject);
    ++m_position;
    ApplyLimit();
}

CVxProject* CVxUndoManager::MakeUndo(const CVxProject* current)
{
    if (current && m_position == static_cast<int>(m_slots.size()) - 1)
        current->CopyTo(m_slots.back());
    if (m_position > 0)
        --m_position;
    return m_slots[static_cast<size_t>(m_position)];
}

CVxProject* CVxUndoManager::MakeRedo()
{
    if (CanRedo())
        ++m_position;
    return m_slots[static_cast<size_t>(m_position)];
}

void CVxUndoManager::ClearRedoHistory()
{
    while (static_cast<int>(m_slots.size()) - 1 > m_position) {
        delete m_slots.back();
        m_slots.pop_back();
    }
}

void CVxUndoManager::ApplyLimit()
{
    if (m_limit == 0)
        return;
    while (m_slots.size() > m_limit) {
        delete m_slots.front();
        m_slots.erase(m_slots.begin());
        if (m_position > 0)
            --m_position;
    }
}

void CVxUndoManager::SetUndoLimit(unsigned limit)
{
    m_limit = (limit == 1 || limit == 2) ? 3 : limit;
    ApplyLimit();
}

void CVxUndoManager::SetModifiedFlagToAllRooms()
{
    for (CVxProject* slot : m_slots)
        slot->m_modified = true;
}

void CVxUndoManager::Reinitialize(const CVxProject* project)
{
    while (m_slots.size() > 1) {
        delete m_slots.back();
        m_slots.pop_back();
    }
    m_position = 0;
    if (project)
        project->CopyTo(m_slots.front());
    else
        m_slots.front()->Reset();
}
