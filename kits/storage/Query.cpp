#include <Query.h>

#include "EntryName.h"
#include "FolderTable.h"
#include "MountTable.h"
#include "OrNoMemory.h"
#include "QueryPattern.h"
#include "QueryPredicate.h"
#include "QueryTerms.h"
#include "QueryWalk.h"
#include "SystemCalls.h"

#include <String.h>
#include <Volume.h>

#include <charconv>
#include <cstring>
#include <utility>

class BQuery::Impl
{
public:
    /// `push` is called on the terms.
    template<typename Push>
    status_t ChangeTerms(Push push);
    status_t GetText(std::string* text) const;

    kits::QueryTerms terms;
    std::string text; // set as such; then the terms do not count
    bool hasText = false;
    dev_t device = 0;
    std::shared_ptr<kits::QueryWalk> walk; // null before Fetch()
    kits::QueryWalk::Hits hits;            // taken from it
    size_t nextHit = 0;
};

template<typename Push>
status_t BQuery::Impl::ChangeTerms(Push push)
{
    if (walk != nullptr) {
        return B_NOT_ALLOWED;
    }
    return kits::OrNoMemory([&] {
        if (hasText) {
            hasText = false;
            terms = {};
        }
        push(terms);
        return B_OK;
    });
}

status_t BQuery::Impl::GetText(std::string* result) const
{
    if (hasText) {
        *result = text;
        return B_OK;
    }
    return terms.IsEmpty() ? status_t(B_NO_INIT) : terms.GetText(result);
}

namespace {

template<typename Number>
std::string NumberText(Number value)
{
    char text[512]; // the largest number with a fraction has some 310 digits
    char* end = nullptr;
    if constexpr (std::is_floating_point_v<Number>) {
        end = std::to_chars(text, text + sizeof(text), value, std::chars_format::fixed).ptr;
    } else {
        end = std::to_chars(text, text + sizeof(text), value).ptr;
    }
    return {text, end};
}

void PushOperator(kits::QueryTerms& terms, query_op operation)
{
    switch (operation) {
    case B_EQ:
        return terms.PushComparison("==");
    case B_GT:
        return terms.PushComparison(">");
    case B_GE:
        return terms.PushComparison(">=");
    case B_LT:
        return terms.PushComparison("<");
    case B_LE:
        return terms.PushComparison("<=");
    case B_NE:
        return terms.PushComparison("!=");
    case B_CONTAINS:
        return terms.PushComparison("==", "*", "*");
    case B_BEGINS_WITH:
        return terms.PushComparison("==", "", "*");
    case B_ENDS_WITH:
        return terms.PushComparison("==", "*", "");
    case B_AND:
        return terms.PushAnd();
    case B_OR:
        return terms.PushOr();
    default:
        return terms.PushNot();
    }
}

} // namespace

BQuery::BQuery() : fImpl(std::make_unique<Impl>()) {}

BQuery::~BQuery()
{
    Stop();
}

status_t BQuery::Clear()
{
    Stop();
    return kits::OrNoMemory([this] {
        fImpl = std::make_unique<Impl>();
        return B_OK;
    });
}

status_t BQuery::PushAttr(const char* name)
{
    return name == nullptr ? status_t(B_BAD_VALUE)
                           : fImpl->ChangeTerms([&](auto& terms) { terms.PushAttribute(name); });
}

status_t BQuery::PushOp(query_op operation)
{
    const bool isKnown = (operation > B_INVALID_OP && operation <= B_ENDS_WITH) ||
                         (operation >= B_AND && operation <= B_NOT);
    return !isKnown ? status_t(B_BAD_VALUE)
                    : fImpl->ChangeTerms([&](auto& terms) { PushOperator(terms, operation); });
}

status_t BQuery::PushUInt32(uint32 value)
{
    return PushUInt64(value);
}

status_t BQuery::PushInt32(int32 value)
{
    return PushInt64(value);
}

status_t BQuery::PushUInt64(uint64 value)
{
    return fImpl->ChangeTerms([&](auto& terms) { terms.PushNumber(NumberText(value)); });
}

status_t BQuery::PushInt64(int64 value)
{
    return fImpl->ChangeTerms([&](auto& terms) { terms.PushNumber(NumberText(value)); });
}

status_t BQuery::PushFloat(float value)
{
    return PushDouble(value);
}

status_t BQuery::PushDouble(double value)
{
    return fImpl->ChangeTerms([&](auto& terms) { terms.PushNumber(NumberText(value)); });
}

status_t BQuery::PushString(const char* value, bool caseInsensitive)
{
    return value == nullptr ? status_t(B_BAD_VALUE) : fImpl->ChangeTerms([&](auto& terms) {
        const std::string pattern = kits::PatternFromText(value);
        terms.PushText(caseInsensitive ? kits::PatternWithoutCase(pattern) : pattern);
    });
}

status_t BQuery::SetVolume(const BVolume* volume)
{
    if (fImpl->walk != nullptr) {
        return B_NOT_ALLOWED;
    }
    if (volume == nullptr || volume->InitCheck() != B_OK) {
        return B_BAD_VALUE;
    }
    fImpl->device = volume->Device();
    return B_OK;
}

status_t BQuery::SetPredicate(const char* predicate)
{
    if (fImpl->walk != nullptr) {
        return B_NOT_ALLOWED;
    }
    if (predicate == nullptr) {
        return B_BAD_VALUE;
    }
    return kits::OrNoMemory([&] {
        const status_t status = kits::QueryPredicate().SetTo(predicate);
        if (status == B_OK) {
            fImpl->text = predicate;
            fImpl->hasText = true;
        }
        return status;
    });
}

status_t BQuery::GetPredicate(char* buffer, size_t length)
{
    if (buffer == nullptr) {
        return B_BAD_VALUE;
    }
    return kits::OrNoMemory([&]() -> status_t {
        std::string text;
        const status_t status = fImpl->GetText(&text);
        if (status != B_OK || text.size() >= length) {
            return status != B_OK ? status : status_t(B_BAD_VALUE);
        }
        std::memcpy(buffer, text.c_str(), text.size() + 1);
        return B_OK;
    });
}

status_t BQuery::GetPredicate(BString* predicate)
{
    if (predicate == nullptr) {
        return B_BAD_VALUE;
    }
    return kits::OrNoMemory([&] {
        std::string text;
        const status_t status = fImpl->GetText(&text);
        if (status == B_OK) {
            predicate->SetTo(text.c_str());
        }
        return status;
    });
}

size_t BQuery::PredicateLength()
{
    std::string text;
    return fImpl->GetText(&text) == B_OK ? text.size() + 1 : 0;
}

dev_t BQuery::TargetDevice() const
{
    return fImpl->device != 0 ? fImpl->device : static_cast<dev_t>(B_NO_INIT);
}

status_t BQuery::Fetch()
{
    if (fImpl->walk != nullptr) {
        return B_NOT_ALLOWED;
    }
    if (fImpl->device == 0) {
        return B_NO_INIT;
    }
    return kits::OrNoMemory([this]() -> status_t {
        std::string text;
        kits::QueryPredicate predicate;
        kits::MountedVolume volume;
        status_t status = fImpl->GetText(&text);
        if (status == B_OK) {
            status = predicate.SetTo(text);
        }
        if (status != B_OK) {
            return status;
        }
        if (!kits::FindVolume(fImpl->device, &volume)) {
            return B_BAD_VALUE;
        }
        kits::UniqueFd root(kits::sys::OpenAt(kits::sys::kWorkingDirectory,
                                              volume.mount.point.c_str(), kits::kOpenFolderFlags));
        if (!root.IsOpen()) {
            return root.Get();
        }
        fImpl->walk = kits::QueryWalk::Start(std::move(root), volume.mount.point,
                                             std::move(predicate), &status);
        return status;
    });
}

void BQuery::Stop()
{
    if (fImpl->walk != nullptr) {
        fImpl->walk->Cancel();
    }
}

int64 BQuery::CountVisited() const
{
    return fImpl->walk != nullptr ? fImpl->walk->CountVisited() : 0;
}

status_t BQuery::GetNextEntry(BEntry* entry, bool traverse)
{
    if (entry == nullptr) {
        return B_BAD_VALUE;
    }
    entry_ref ref;
    const status_t status = GetNextRef(&ref);
    return status == B_OK ? entry->SetTo(&ref, traverse) : status;
}

status_t BQuery::GetNextRef(entry_ref* ref)
{
    if (ref == nullptr) {
        return B_BAD_VALUE;
    }
    if (fImpl->walk == nullptr) {
        return B_FILE_ERROR;
    }
    while (fImpl->nextHit == fImpl->hits.names.size() || fImpl->walk->IsCancelled()) {
        fImpl->nextHit = 0;
        if (!fImpl->walk->GetNext(&fImpl->hits)) {
            fImpl->hits = {};
            return B_ENTRY_NOT_FOUND;
        }
    }
    const status_t status = ref->set_name(fImpl->hits.names[fImpl->nextHit].c_str());
    if (status != B_OK) {
        return status;
    }
    ++fImpl->nextHit;
    const kits::FolderTable& table = kits::FolderTable::Get();
    ref->device = table.DeviceOf(fImpl->hits.folder);
    ref->directory = table.NodeOf(fImpl->hits.folder);
    ref->fFolder = fImpl->hits.folder;
    return B_OK;
}

int32 BQuery::GetNextDirents(dirent*, size_t, int32)
{
    return B_UNSUPPORTED;
}

status_t BQuery::Rewind()
{
    return B_ERROR;
}

int32 BQuery::CountEntries()
{
    return B_ERROR;
}
