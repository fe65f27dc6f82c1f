#pragma once

#include <Entry.h>
#include <Node.h>

#include <cstddef>
#include <string>
#include <vector>

namespace norvane {

class DirListItem;

/// Finds rows by their nodes in constant time; hard links are several rows of one node.
///
/// Plain data: the rows are borrowed. One word and a half per row.
class RowIndex
{
public:
    void Add(DirListItem* row);
    /// Takes out a row whose node is still the one it was added with.
    void Remove(DirListItem* row);
    void Clear();
    /// Makes room, so that adding that many rows moves nothing.
    void Reserve(std::size_t count);

    /// The row of that node and name, or null.
    DirListItem* Find(const node_ref& node, const char* name) const;
    /// Any row of that node, or null.
    DirListItem* FindAny(const node_ref& node) const;
    /// All rows of that node.
    std::vector<DirListItem*> FindAll(const node_ref& node) const;
    std::size_t Count() const { return fCount; }
    /// How many filled slots adding rows went past so far: what it costs, for tests.
    std::size_t CountProbes() const { return fProbes; }

private:
    std::size_t HomeOf(ino_t node) const;
    void Grow(std::size_t slots);
    void Put(DirListItem* row);

    std::vector<DirListItem*> fSlots; // a power of two, never more than three quarters full
    std::size_t fCount = 0;
    std::size_t fProbes = 0;
};

} // namespace norvane
