#include <Message.h>

#include "app/MessageFields.h"

#include <new>
#include <utility>

namespace {

/// Runs what may find no memory, and tells so by a status.
template<class Change>
status_t Guarded(Change change)
{
    try {
        return change();
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
}

bool IsGoodName(const char* name)
{
    return name != nullptr && std::string_view(name).size() <= kits::MessageFields::kMaxNameBytes;
}

const kits::MessageField* FindField(const kits::MessageFields* fields, const char* name)
{
    return fields == nullptr || name == nullptr ? nullptr : fields->Find(name);
}

/// Whether the value that is asked for exists.
status_t CheckValue(const kits::MessageField* field, type_code type, int32 index)
{
    if (field == nullptr) {
        return B_NAME_NOT_FOUND;
    }
    if (type != B_ANY_TYPE && type != field->Type()) {
        return B_BAD_TYPE;
    }
    return index < 0 || index >= field->CountValues() ? B_BAD_INDEX : B_OK;
}

template<class Value>
void Put(Value* to, Value value)
{
    if (to != nullptr) {
        *to = value;
    }
}

} // namespace

BMessage::BMessage(const BMessage& other) : what(other.what), fFields(other.fFields)
{
    if (fFields != nullptr) {
        fFields->Acquire();
    }
}

BMessage::BMessage(BMessage&& other) noexcept
    : what(other.what), fFields(std::exchange(other.fFields, nullptr)),
      fDelivery(std::move(other.fDelivery))
{
}

BMessage::~BMessage()
{
    DropFields();
}

BMessage& BMessage::operator=(const BMessage& other)
{
    if (this != &other) {
        if (other.fFields != nullptr) {
            other.fFields->Acquire(); // first: both may hold the same
        }
        DropFields();
        what = other.what;
        fFields = other.fFields;
    }
    return *this;
}

BMessage& BMessage::operator=(BMessage&& other) noexcept
{
    if (this != &other) {
        DropFields();
        what = other.what;
        fFields = std::exchange(other.fFields, nullptr);
        fDelivery = std::move(other.fDelivery);
    }
    return *this;
}

status_t BMessage::GetInfo(const char* name, type_code* type, int32* count) const
{
    const kits::MessageField* field = FindField(fFields, name);
    Put<type_code>(type, field == nullptr ? 0 : field->Type());
    Put<int32>(count, field == nullptr ? 0 : field->CountValues());
    return field == nullptr ? B_NAME_NOT_FOUND : B_OK;
}

status_t BMessage::GetInfo(const char* name, type_code* type, bool* isFixedSize) const
{
    const kits::MessageField* field = FindField(fFields, name);
    Put<type_code>(type, field == nullptr ? 0 : field->Type());
    Put<bool>(isFixedSize, field != nullptr && field->IsFixedSize());
    return field == nullptr ? B_NAME_NOT_FOUND : B_OK;
}

status_t BMessage::GetInfo(type_code requested, int32 index, char** name, type_code* type,
                           int32* count) const
{
    const char* lent = nullptr;
    const status_t status = GetInfo(requested, index, &lent, type, count);
    Put<char*>(name, const_cast<char*>(lent)); // the platform's signature
    return status;
}

status_t BMessage::GetInfo(type_code requested, int32 index, const char** name, type_code* type,
                           int32* count) const
{
    Put<const char*>(name, nullptr);
    Put<type_code>(type, 0);
    Put<int32>(count, 0);
    bool isTypeFound = false;
    int32 left = index;
    if (fFields != nullptr && index >= 0) {
        for (const kits::MessageField& field : fFields->All()) {
            if (requested != B_ANY_TYPE && requested != field.Type()) {
                continue;
            }
            isTypeFound = true;
            if (left-- == 0) {
                Put(name, field.Name().c_str());
                Put(type, field.Type());
                Put(count, field.CountValues());
                return B_OK;
            }
        }
    }
    return isTypeFound || requested == B_ANY_TYPE || index < 0 ? B_BAD_INDEX : B_BAD_TYPE;
}

int32 BMessage::CountNames(type_code type) const
{
    int32 count = 0;
    if (fFields != nullptr) {
        for (const kits::MessageField& field : fFields->All()) {
            count += type == B_ANY_TYPE || type == field.Type() ? 1 : 0;
        }
    }
    return count;
}

bool BMessage::IsSystem() const
{
    return what >> 24 == '_';
}

bool BMessage::HasData(const char* name, type_code type, int32 index) const
{
    return CheckValue(FindField(fFields, name), type, index) == B_OK;
}

status_t BMessage::MakeEmpty()
{
    DropFields();
    return B_OK;
}

status_t BMessage::Rename(const char* oldName, const char* newName)
{
    if (FindField(fFields, oldName) == nullptr) {
        return B_NAME_NOT_FOUND;
    }
    if (!IsGoodName(newName)) {
        return B_BAD_VALUE;
    }
    if (std::string_view(oldName) == newName) {
        return B_OK;
    }
    return Guarded([&] {
        // Copies: either name may be lent by a field that changes here.
        const std::string oldCopy(oldName);
        std::string newCopy(newName);
        kits::MessageFields* fields = WritableFields();
        if (const kits::MessageField* replaced = fields->Find(newCopy)) {
            fields->Remove(fields->IndexOf(replaced));
        }
        const size_t place = fields->IndexOf(fields->Find(oldCopy));
        fields->At(place).SetName(std::move(newCopy));
        return B_OK;
    });
}

status_t BMessage::RemoveName(const char* name)
{
    const kits::MessageField* field = FindField(fFields, name);
    if (field == nullptr) {
        return B_NAME_NOT_FOUND;
    }
    if (fFields->All().size() == 1) {
        return MakeEmpty();
    }
    return Guarded([&] {
        const size_t place = fFields->IndexOf(field);
        WritableFields()->Remove(place);
        return B_OK;
    });
}

status_t BMessage::RemoveData(const char* name, int32 index)
{
    const kits::MessageField* field = FindField(fFields, name);
    const status_t status = CheckValue(field, B_ANY_TYPE, index);
    if (status != B_OK) {
        return status;
    }
    if (field->CountValues() == 1) {
        return RemoveName(name);
    }
    return Guarded([&] {
        const size_t place = fFields->IndexOf(field);
        WritableFields()->At(place).Remove(index);
        return B_OK;
    });
}

status_t BMessage::AddData(const char* name, type_code type, const void* data, ssize_t size,
                           bool isFixedSize, int32 count)
{
    if (!IsGoodName(name) || size < 0 || (data == nullptr && size > 0) || type == B_ANY_TYPE) {
        return B_BAD_VALUE;
    }
    const kits::MessageField* present = FindField(fFields, name);
    if (present != nullptr && present->Type() != type) {
        return B_BAD_TYPE;
    }
    return Guarded([&]() -> status_t {
        if (fFields != nullptr && fFields->Lends(data)) {
            // A value of this very message: its bytes may move, or go, while they are added.
            const std::string copy(static_cast<const char*>(data), static_cast<size_t>(size));
            return AddData(name, type, copy.data(), size, isFixedSize, count);
        }
        const size_t byteCount = static_cast<size_t>(size);
        if (fFields != nullptr && present != nullptr) {
            const size_t place = fFields->IndexOf(present);
            return WritableFields()->At(place).Add(data, byteCount);
        }
        kits::MessageField field(name, type, isFixedSize);
        field.Reserve(count, byteCount);
        const status_t status = field.Add(data, byteCount);
        if (status == B_OK) {
            WritableFields()->Add(std::move(field));
        }
        return status;
    });
}

status_t BMessage::FindData(const char* name, type_code type, const void** data,
                            ssize_t* size) const
{
    return FindData(name, type, 0, data, size);
}

status_t BMessage::FindData(const char* name, type_code type, int32 index, const void** data,
                            ssize_t* size) const
{
    const kits::MessageField* field = FindField(fFields, name);
    const status_t status = CheckValue(field, type, index);
    const kits::MessageValue value = status == B_OK ? field->At(index) : kits::MessageValue();
    Put(data, value.data);
    Put(size, static_cast<ssize_t>(value.size));
    return status;
}

status_t BMessage::ReplaceData(const char* name, type_code type, const void* data, ssize_t size)
{
    return ReplaceData(name, type, 0, data, size);
}

status_t BMessage::ReplaceData(const char* name, type_code type, int32 index, const void* data,
                               ssize_t size)
{
    if (size < 0 || (data == nullptr && size > 0)) {
        return B_BAD_VALUE;
    }
    const kits::MessageField* field = FindField(fFields, name);
    const status_t status = CheckValue(field, type, index);
    if (status != B_OK) {
        return status;
    }
    return Guarded([&]() -> status_t {
        if (fFields->Lends(data)) {
            const std::string copy(static_cast<const char*>(data), static_cast<size_t>(size));
            return ReplaceData(name, type, index, copy.data(), size);
        }
        const size_t place = fFields->IndexOf(field);
        return WritableFields()->At(place).Replace(index, data, static_cast<size_t>(size));
    });
}

void BMessage::DropFields()
{
    if (fFields != nullptr) {
        fFields->Release();
        fFields = nullptr;
    }
}

/// The data, held by this message alone. Errors: std::bad_alloc.
kits::MessageFields* BMessage::WritableFields()
{
    if (fFields == nullptr) {
        fFields = new kits::MessageFields;
    } else if (fFields->IsShared()) {
        auto* copy = new kits::MessageFields(*fFields);
        fFields->Release();
        fFields = copy;
    }
    return fFields;
}
