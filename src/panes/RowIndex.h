#pragma once

#include "panes/RowSlots.h"

#include <Entry.h>
#include <Node.h>

#include <cstddef>
#include <vector>

namespace norvane {

/// Finds rows by their nodes in constant time; hard links are several rows of one node.
///
/// Plain data: the rows are borrowed. A row is taken out before its node changes.
class RowIndex
{
public:
    void Add(DirListItem* row) { fSlots.Add(row); }
    void Remove(const DirListItem* row) { fSlots.Remove(row); }
    void Clear() { fSlots.Clear(); }
    void Reserve(std::size_t count) { fSlots.Reserve(count); }

    /// The row of that node and name, or null.
    DirListItem* Find(const node_ref& node, const char* name) const;
    /// Any row of that node, or null.
    DirListItem* FindAny(const node_ref& node) const { return Find(node, nullptr); }
    /// All rows of that node.
    std::vector<DirListItem*> FindAll(const node_ref& node) const;
    std::size_t Count() const { return fSlots.Count(); }
    std::size_t CountProbes() const { return fSlots.CountProbes(); }

private:
    struct HashNode
    {
        uint64 operator()(const DirListItem& row) const;
    };

    RowSlots<HashNode> fSlots;
};

/// Finds rows by their names in constant time. ".." is none of them.
///
/// Plain data: the rows are borrowed. A row is taken out before its name changes.
class RowNames
{
public:
    void Add(DirListItem* row) { fSlots.Add(row); }
    void Remove(const DirListItem* row) { fSlots.Remove(row); }
    void Clear() { fSlots.Clear(); }
    void Reserve(std::size_t count) { fSlots.Reserve(count); }

    /// A row of that name, or null.
    DirListItem* Find(const char* name) const;
    std::size_t Count() const { return fSlots.Count(); }
    std::size_t CountProbes() const { return fSlots.CountProbes(); }

private:
    struct HashName
    {
        uint64 operator()(const DirListItem& row) const;
    };

    RowSlots<HashName> fSlots;
};

} // namespace norvane
