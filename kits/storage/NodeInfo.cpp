#include <NodeInfo.h>

#include "MimeAttribute.h"

#include <Node.h>

namespace {

constexpr const char* kTypeAttribute = "BEOS:TYPE";
constexpr const char* kPreferredAppAttribute = "BEOS:PREF_APP";

} // namespace

BNodeInfo::BNodeInfo(BNode* node)
{
    SetTo(node);
}

status_t BNodeInfo::SetTo(BNode* node)
{
    fNode = node != nullptr && node->InitCheck() == B_OK ? node : nullptr;
    fStatus = fNode != nullptr ? B_OK : B_BAD_VALUE;
    return fStatus;
}

status_t BNodeInfo::GetType(char* type) const
{
    return kits::ReadMimeAttribute(fNode, kTypeAttribute, type);
}

status_t BNodeInfo::SetType(const char* type)
{
    return kits::WriteMimeAttribute(fNode, kTypeAttribute, type);
}

status_t BNodeInfo::GetPreferredApp(char* signature, app_verb) const
{
    return kits::ReadMimeAttribute(fNode, kPreferredAppAttribute, signature);
}

status_t BNodeInfo::SetPreferredApp(const char* signature, app_verb)
{
    return kits::WriteMimeAttribute(fNode, kPreferredAppAttribute, signature);
}
