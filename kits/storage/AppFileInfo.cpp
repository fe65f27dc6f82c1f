#include <AppFileInfo.h>

#include "MimeAttribute.h"
#include "SystemCalls.h"
#include "Terminal.h"

#include <File.h>

#include <cstring>
#include <optional>
#include <sys/stat.h>

namespace {

constexpr const char* kSignatureAttribute = "BEOS:APP_SIG";

} // namespace

BAppFileInfo::BAppFileInfo(BFile* file)
{
    SetTo(file);
}

status_t BAppFileInfo::SetTo(BFile* file)
{
    const status_t status = BNodeInfo::SetTo(file);
    fFile = status == B_OK ? file : nullptr;
    return status;
}

status_t BAppFileInfo::GetSignature(char* signature) const
{
    const status_t status = kits::ReadMimeAttribute(fFile, kSignatureAttribute, signature);
    if (status == B_ENTRY_NOT_FOUND && IsTerminal()) {
        std::memcpy(signature, kits::kTerminalSignature, std::strlen(kits::kTerminalSignature) + 1);
        return B_OK;
    }
    return status;
}

status_t BAppFileInfo::SetSignature(const char* signature)
{
    return kits::WriteMimeAttribute(fFile, kSignatureAttribute, signature);
}

bool BAppFileInfo::IsTerminal() const
{
    const std::optional<kits::Terminal> terminal = kits::FindTerminal();
    struct stat own;
    struct stat known;
    return terminal && fFile->GetStat(&own) == B_OK &&
           kits::sys::StatPath(terminal->path.c_str(), &known) == B_OK &&
           own.st_dev == known.st_dev && own.st_ino == known.st_ino;
}
