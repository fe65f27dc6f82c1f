#include "fileops/engine/KeptAttributes.h"

#include <Errors.h>
#include <Node.h>
#include <NodeAccess.h>

namespace norvane {

status_t KeepAttributes(const BNode& source, BNode* target)
{
    const status_t status = target->CopyAttrsFrom(source);
    if (status != B_OK) {
        return status;
    }
    const BNodeAccess access(source);
    return access.HasList() ? access.CheckList(target) : access.InitCheck();
}

} // namespace norvane
