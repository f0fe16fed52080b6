#pragma once
// Puts groups back together while a floor or a library is read. Parts come
// from their sections flat, in file order: a group's section is followed by
// its members' sections, and those of a member group by its own members.
// The grouper keeps the groups that still wait for members open, innermost
// last, and sends every part to the innermost open group or else to the
// vector it was made for.
//
//     CVxPartVectorGrouper grouper(floor.parts);
//     for each "Part..." section: part.LoadFromSection(reader); grouper.Add(std::move(part), version);
//     grouper.Finalize();

#include "CVxPart.h"

#include <cstdint>
#include <vector>

class CVxPartVectorGrouper
{
public:
    // A file can't make the loader build more table cells than this, so that
    // a damaged table size costs bounded memory.
    static constexpr int64_t maxTableCellsPerRun = 2 * 255 * 255;

    // The budget bounds the cells that tables of this run may make for
    // themselves beyond those that the file holds.
    explicit CVxPartVectorGrouper(std::vector<CVxPart>& parts, int64_t tableCellBudget = maxTableCellsPerRun);

    // From version 900 on, groups and tables announce how many members
    // follow; before, the members of a group are the parts that follow it
    // with its group number. A group nested deeper than
    // CVxPart::maxGroupDepth is dropped with all its members: the result is
    // false for the parts that were dropped.
    bool Add(CVxPart part, int fileVersion);
    // Groups hand their values down to their members, tables rebuild their
    // cells from their size, and what group members left undefined takes
    // the defaults.
    void Finalize();

private:
    struct SVxOpenParent
    {
        // Index in the member vector of the parent above, or in the main
        // vector for the outermost one; -1 for a dropped group whose
        // members are counted but not kept.
        int index;
        int64_t declared;
        int64_t received;
    };

    std::vector<CVxPart>* MembersOfInnermost();
    void CloseCompleted();
    bool AddCounted(CVxPart&& part);
    bool AddByGroupNumber(CVxPart&& part);
    void FinalizePart(CVxPart& part);

    std::vector<CVxPart>& m_parts;
    std::vector<SVxOpenParent> m_open;
    // The outermost parts added in this run.
    std::vector<size_t> m_added;
    int64_t m_cellBudget;
};
