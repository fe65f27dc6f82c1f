#pragma once

#include <SupportDefs.h>

#include "app/RefFolders.h"
#include "support/SmallBuffer.h"

#include <atomic>
#include <string>
#include <string_view>
#include <vector>

namespace kits {

/// The bytes of one value, lent until the field changes.
struct MessageValue
{
    const void* data = nullptr;
    size_t size = 0;
};

/// One name of a message with its values. The folders of the entries among them stay known.
///
/// Errors: std::bad_alloc; nothing is changed then.
class MessageField
{
public:
    MessageField(std::string_view name, type_code type, bool isFixedSize)
        : fName(name), fType(type), fIsFixedSize(isFixedSize)
    {
    }

    const std::string& Name() const { return fName; }
    void SetName(std::string name) { fName = std::move(name); }
    type_code Type() const { return fType; }
    bool IsFixedSize() const { return fIsFixedSize; }
    int32 CountValues() const { return fCount; }
    /// Whether `data` is inside the values.
    bool Lends(const void* data) const;
    /// `index` is in range.
    MessageValue At(int32 index) const;

    /// Makes room for more values of `size` bytes.
    void Reserve(int32 count, size_t size);
    /// Errors: B_BAD_VALUE for another size than the first value's when that is fixed, B_NO_MEMORY
    /// for more values or bytes than can be counted.
    [[nodiscard]] status_t Add(const void* data, size_t size);
    /// The same, in the place of the value at `index`, which is in range.
    [[nodiscard]] status_t Replace(int32 index, const void* data, size_t size);
    void Remove(int32 index);
    /// Appends the known folders that the values speak of.
    void CollectFolders(std::vector<FolderHold>& folders) const;

private:
    status_t AddBytes(const void* data, size_t size);
    status_t ReplaceBytes(int32 index, const void* data, size_t size);

    struct Span
    {
        uint32 offset;
        uint32 size;
    };

    std::string fName;
    type_code fType;
    bool fIsFixedSize;
    int32 fCount = 0;
    size_t fValueSize = 0; // of all values, when it is fixed
    SmallBuffer fBytes;
    std::vector<Span> fSpans;           // where each value is, when the size is not fixed
    std::vector<ValueFolders> fFolders; // of each value, where the type may name any
};

/// All data of a message, shared by its copies.
///
/// Thread: reading from any number of threads; changing only while a single message holds it.
class MessageFields
{
public:
    static constexpr size_t kMaxNameBytes = 255;

    MessageFields() = default;
    MessageFields(const MessageFields& other) : fFields(other.fFields) {}
    MessageFields& operator=(const MessageFields&) = delete;

    void Acquire() { fHolders.fetch_add(1, std::memory_order_relaxed); }
    /// Deletes the data with its last holder.
    void Release()
    {
        if (fHolders.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }
    bool IsShared() const { return fHolders.load(std::memory_order_acquire) > 1; }

    /// Null when there is none.
    const MessageField* Find(std::string_view name) const;
    /// Adds a field whose name is not there yet.
    void Add(MessageField field);
    void Remove(size_t place);
    MessageField& At(size_t place) { return fFields[place]; }
    /// The place of a field of these.
    size_t IndexOf(const MessageField* field) const
    {
        return static_cast<size_t>(field - fFields.data());
    }
    /// Whether `data` is inside a value of these fields.
    bool Lends(const void* data) const;
    /// In the order in which they were added.
    const std::vector<MessageField>& All() const { return fFields; }

private:
    ~MessageFields() = default;

    std::atomic<int32> fHolders{1};
    std::vector<MessageField> fFields;
};

} // namespace kits
