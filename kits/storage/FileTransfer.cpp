#include <FileTransfer.h>

#include "ContentCopy.h"

#include <Errors.h>
#include <File.h>

BFileTransfer::BFileTransfer(BFile* source, BFile* target, const struct stat* record)
{
    if (!source->IsReadable()) {
        fStatus = source->InitCheck() == B_OK ? status_t(B_NOT_ALLOWED) : source->InitCheck();
        fHasFailedReading = true;
        return;
    }
    fStatus = target->InitCheck();
    if (fStatus == B_OK) {
        fStatus = target->IsWritable() ? target->Settle() : status_t(B_NOT_ALLOWED);
    }
    if (fStatus == B_OK) {
        fCopy = std::make_unique<kits::ContentCopy>(source->Descriptor(), target->Descriptor());
        if (record != nullptr) {
            fCopy->Begin(*record);
        }
    }
}

BFileTransfer::~BFileTransfer() = default;

ssize_t BFileTransfer::Next()
{
    if (fCopy == nullptr) {
        return fStatus;
    }
    const ssize_t count = fCopy->Next();
    fHasFailedReading = fCopy->HasFailedReading();
    return count;
}
