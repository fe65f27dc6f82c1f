#pragma once

#include "fileops/engine/CopyPlace.h"

#include <NodeRef.h>
#include <SupportDefs.h>

#include <sys/stat.h>

#include <string>

namespace norvane {

struct OperationContext;

/// Copies one symbolic link from an open folder into another: it points to the same place by its
/// whole path, or goes on pointing into the item that it is moved with; or has its own text, where
/// all is kept as it is.
///
/// Thread: the operation's.
class LinkCopier
{
public:
    /// `top` is the item that the link is, or lies in. Ownership: borrows the two for its own life.
    LinkCopier(OperationContext& context, const CopyPurpose& purpose, const node_ref& top)
        : fContext(context), fPurpose(purpose), fTop(top)
    {
    }

    /// `record` is the link's.
    CopyResult Copy(const CopyStep& step, const struct stat& record);

private:
    [[nodiscard]] status_t TextFor(const CopyStep& step, std::string* text) const;
    [[nodiscard]] status_t Make(const CopyStep& step, const struct stat& record, node_ref* made);

    OperationContext& fContext;
    const CopyPurpose& fPurpose;
    const node_ref fTop;
};

} // namespace norvane
