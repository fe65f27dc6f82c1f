#pragma once

#include "fileops/engine/Operation.h"

#include <vector>

namespace norvane {

class NorvaneEntry;

/// Deletes items for good: those that were there when they were measured, and not what others put
/// in their place since.
class Delete : public Operation
{
public:
    Delete(std::vector<entry_ref> items, OperationUI& ui) : Operation(ui, std::move(items)) {}

protected:
    // Operation
    void DoItem(size_t index) override;
    bool IsDeletion() const override { return true; }

private:
    bool DeleteOne(size_t index);
    bool DeleteUnderItsName(NorvaneEntry& item, size_t index);
    bool IsItem(const NorvaneEntry& item, size_t index) const;
    bool LeaveOther(const char* name);
};

/// Deletes all that lies in a folder, for good.
class Empty : public Delete
{
public:
    Empty(const char* path, OperationUI& ui);

private:
    struct Contents
    {
        std::vector<entry_ref> items;
        status_t status; // of listing them
    };

    static Contents List(const char* path);
    Empty(const char* path, Contents contents, OperationUI& ui);
};

} // namespace norvane
