// What BMimeType knows of the programs that open files.

#include "DesktopChoice.h"

#include <Entry.h>
#include <Message.h>
#include <Mime.h>

#include <cstring>

namespace {

status_t AddAll(const std::vector<std::string>& programs, BMessage* signatures)
{
    if (signatures == nullptr) {
        return B_BAD_VALUE;
    }
    signatures->RemoveName("applications");
    for (const std::string& program : programs) {
        const std::string signature = kits::SignatureOf(program);
        if (BMimeType::IsValid(signature.c_str())) { // not too long
            signatures->AddString("applications", signature.c_str());
        }
    }
    return B_OK;
}

} // namespace

status_t BMimeType::GetAppHint(entry_ref* ref) const
{
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    const std::string file = kits::FileOfSignature(fType);
    if (file.empty()) {
        return B_ENTRY_NOT_FOUND;
    }
    return ref != nullptr ? get_ref_for_path(file.c_str(), ref) : status_t(B_BAD_VALUE);
}

status_t BMimeType::GetPreferredApp(char* signature, app_verb) const
{
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    if (signature == nullptr) {
        return B_BAD_VALUE;
    }
    const std::string program = kits::ProgramSetFor(fType);
    const std::string found = program.empty() ? "" : kits::SignatureOf(program);
    if (!IsValid(found.c_str())) {
        return B_ENTRY_NOT_FOUND;
    }
    std::memcpy(signature, found.c_str(), found.size() + 1);
    return B_OK;
}

status_t BMimeType::SetPreferredApp(const char* signature, app_verb)
{
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    if (!IsValid(signature)) {
        return B_BAD_VALUE;
    }
    const std::string program = kits::ProgramOf(signature);
    return program.empty() ? status_t(B_ENTRY_NOT_FOUND) : kits::SetProgramFor(fType, program);
}

status_t BMimeType::GetSupportingApps(BMessage* signatures) const
{
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    return AddAll(kits::ProgramsFor(fType), signatures);
}

status_t BMimeType::GetWildcardApps(BMessage* signatures)
{
    return AddAll(kits::AllPrograms(), signatures);
}
