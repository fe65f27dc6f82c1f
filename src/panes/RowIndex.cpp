#include "panes/RowIndex.h"

#include "panes/DirListItem.h"

#include <cstring>
#include <functional>
#include <string_view>

namespace norvane {

namespace {

/// Neighbouring numbers are spread, or long runs of filled slots would form.
uint64 Spread(uint64 number)
{
    constexpr uint64 kSpread = 0x9e3779b97f4a7c15;
    return number * kSpread;
}

uint64 HashOfName(const char* name)
{
    return Spread(std::hash<std::string_view>()(name));
}

} // namespace

uint64 RowIndex::HashNode::operator()(const DirListItem& row) const
{
    return Spread(row.NodeRef().node);
}

uint64 RowNames::HashName::operator()(const DirListItem& row) const
{
    return HashOfName(row.GetEntryName());
}

DirListItem* RowIndex::Find(const node_ref& node, const char* name) const
{
    DirListItem* found = nullptr;
    fSlots.Visit(Spread(node.node), [&](DirListItem* row) {
        const bool isIt = row->NodeRef() == node &&
                          (name == nullptr || std::strcmp(row->GetEntryName(), name) == 0);
        found = isIt ? row : nullptr;
        return isIt;
    });
    return found;
}

std::vector<DirListItem*> RowIndex::FindAll(const node_ref& node) const
{
    std::vector<DirListItem*> found;
    fSlots.Visit(Spread(node.node), [&](DirListItem* row) {
        if (row->NodeRef() == node) {
            found.push_back(row);
        }
        return false;
    });
    return found;
}

DirListItem* RowNames::Find(const char* name) const
{
    DirListItem* found = nullptr;
    fSlots.Visit(HashOfName(name), [&](DirListItem* row) {
        const bool isIt = std::strcmp(row->GetEntryName(), name) == 0;
        found = isIt ? row : nullptr;
        return isIt;
    });
    return found;
}

} // namespace norvane
