#pragma once

#include "fileops/engine/Operation.h"

namespace norvane {

/// Deletes items for good.
class Delete : public Operation
{
public:
    Delete(std::vector<entry_ref> items, OperationUI& ui) : Operation(ui, std::move(items)) {}

protected:
    // Operation
    OperationSize MeasureItems() override;
    void DoItem(size_t index) override;
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
