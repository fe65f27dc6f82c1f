#pragma once

#include <EntryChanges.h>

#include <string_view>
#include <vector>

class BMessage;

namespace kits {

/// Gathers what happened in a folder for one message, which BEntryChanges reads.
class EntryChangeList
{
public:
    void Add(BEntryChange::Kind kind, std::string_view name, std::string_view fromName,
             const BEntryRecord& record);
    bool IsEmpty() const { return fBytes.empty(); }
    void Clear() { fBytes.clear(); }
    BMessage Notice(const node_ref& folder) const;

private:
    std::vector<char> fBytes;
};

} // namespace kits
