#include "CVxPartVectorGrouper.h"

#include <algorithm>

namespace {
// From this version groups and tables say how many members follow.
constexpr int kVersionMemberCounts = 900;

bool IsContainer(const CVxPart& part)
{
    return part.type == ptComplexObject || part.type == ptTable;
}
} // namespace

CVxPartVectorGrouper::CVxPartVectorGrouper(std::vector<CVxPart>& parts, int64_t tableCellBudget)
    : m_parts(parts), m_cellBudget(tableCellBudget)
{
}

std::vector<CVxPart>* CVxPartVectorGrouper::MembersOfInnermost()
{
    std::vector<CVxPart>* members = &m_parts;
    for (const SVxOpenParent& parent : m_open) {
        if (parent.index < 0 || static_cast<size_t>(parent.index) >= members->size())
            return nullptr;
        members = &(*members)[static_cast<size_t>(parent.index)].subParts;
    }
    return members;
}

bool CVxPartVectorGrouper::Add(CVxPart part, int fileVersion)
{
    const bool kept =
        fileVersion >= kVersionMemberCounts ? AddCounted(std::move(part)) : AddByGroupNumber(std::move(part));
    CloseCompleted();
    return kept;
}

bool CVxPartVectorGrouper::AddCounted(CVxPart&& part)
{
    const bool container = IsContainer(part);
    const int64_t declared = container ? part.declaredSubPartCount : 0;
    if (m_open.empty()) {
        m_parts.push_back(std::move(part));
        m_added.push_back(m_parts.size() - 1);
        if (container)
            m_open.push_back({static_cast<int>(m_parts.size() - 1), declared, 0});
        return true;
    }

    ++m_open.back().received;
    std::vector<CVxPart>* members = MembersOfInnermost();
    const bool tooDeep = static_cast<int>(m_open.size()) >= CVxPart::maxGroupDepth;
    if (!members || tooDeep) {
        // Inside a dropped group: count the part's own members too, so that
        // the parts behind the dropped group land where they belong.
        if (container)
            m_open.push_back({-1, declared, 0});
        return false;
    }
    members->push_back(std::move(part));
    if (container)
        m_open.push_back({static_cast<int>(members->size() - 1), declared, 0});
    return true;
}

bool CVxPartVectorGrouper::AddByGroupNumber(CVxPart&& part)
{
    // Old files know one level of groups and no tables.
    if (!m_open.empty()) {
        CVxPart& group = m_parts[static_cast<size_t>(m_open.back().index)];
        if (part.groupID != 0 && part.groupID == group.groupID) {
            group.subParts.push_back(std::move(part));
            return true;
        }
        m_open.clear();
    }
    const bool opens = part.type == ptComplexObject;
    m_parts.push_back(std::move(part));
    m_added.push_back(m_parts.size() - 1);
    if (opens)
        m_open.push_back({static_cast<int>(m_parts.size() - 1), INT64_MAX, 0});
    return true;
}

void CVxPartVectorGrouper::CloseCompleted()
{
    while (!m_open.empty() && m_open.back().received >= m_open.back().declared)
        m_open.pop_back();
}

void CVxPartVectorGrouper::Finalize()
{
    m_open.clear();
    for (size_t index : m_added)
        if (index < m_parts.size())
            FinalizePart(m_parts[index]);
    m_added.clear();
}

void CVxPartVectorGrouper::FinalizePart(CVxPart& part)
{
    // Tables anywhere in the part rebuild their cells, within the budget of
    // the run. The walk is iterative; the grouper built no deeper nesting
    // than CVxPart::maxGroupDepth.
    std::vector<CVxPart*> pending{&part};
    while (!pending.empty()) {
        CVxPart* current = pending.back();
        pending.pop_back();
        if (current->type == ptTable) {
            int rows = 1, cols = 1;
            current->GetTableRowsCols(rows, cols);
            // The cells that the file holds are granted; every cell beyond
            // them comes out of the budget that all tables of the run share,
            // so that thousands of empty tables of the largest size cost no
            // more than two.
            const int64_t held = static_cast<int64_t>(current->subParts.size());
            const int64_t wanted = static_cast<int64_t>(rows) * cols;
            if (wanted > held) {
                const int64_t allowed = std::max<int64_t>(1, held + std::max<int64_t>(0, m_cellBudget));
                if (wanted > allowed) {
                    cols = static_cast<int>(std::min<int64_t>(cols, allowed));
                    rows = static_cast<int>(std::max<int64_t>(1, allowed / cols));
                }
                m_cellBudget -= std::max<int64_t>(0, static_cast<int64_t>(rows) * cols - held);
            }
            current->SetTableRowsCols(rows, cols);
        }
        current->declaredSubPartCount = 0;
        for (CVxPart& member : current->subParts)
            if (IsContainer(member))
                pending.push_back(&member);
    }
    if (part.type == ptComplexObject)
        part.SetPropertiesToSubParts();
    part.FillUndefinedWithDefaults(0);
}
