#pragma once

#include <AppDefs.h>
#include <String.h>
#include <TypeConstants.h>

#include <memory>

class BDataIO;
class BHandler;
class BMessenger;
class BPoint;
class BRect;
struct entry_ref;

namespace kits {
class MessageAccess;
class MessageFields;
struct MessageDelivery;
} // namespace kits

/// A code and named, typed data; what loopers hand to handlers.
///
/// A name holds one or several values of one type, counted from 0. Names keep the order in which
/// they were added. Copies share their data until one of them changes, so that a copy costs
/// nothing. A copy has code and data only: where a message came from and who waits for an answer
/// stays with the message that was delivered.
///
/// Errors of all functions that look for data: B_NAME_NOT_FOUND; B_BAD_TYPE when the name holds
/// something else; B_BAD_INDEX. What was to be found is then 0, false, null, an empty text, an
/// invalid rectangle or an invalid messenger, as the platform has it. Errors of all that add:
/// B_BAD_VALUE for a name that is null or longer than 255 bytes; B_BAD_TYPE when the name holds
/// another type; B_NO_MEMORY. Nothing is changed then. Ownership: borrows what it is given and
/// keeps copies.
class BMessage
{
public:
    /// Makes a message without data.
    BMessage() = default;
    explicit BMessage(uint32 command) : what(command) {}
    virtual ~BMessage();
    /// Copies code and data, not the delivery; moving takes that along and leaves no data behind.
    BMessage(const BMessage& other);
    BMessage(BMessage&& other) noexcept;
    BMessage& operator=(const BMessage& other);
    BMessage& operator=(BMessage&& other) noexcept;

    uint32 what = 0; ///< what the message is about

    /// Tells the type of a name's values and their number, or whether all have one size.
    status_t GetInfo(const char* name, type_code* type, int32* count = nullptr) const;
    status_t GetInfo(const char* name, type_code* type, bool* isFixedSize) const;
    /// The same of the name at `index` among those that hold `requested`, and lends that name.
    status_t GetInfo(type_code requested, int32 index, char** name, type_code* type,
                     int32* count = nullptr) const;
    status_t GetInfo(type_code requested, int32 index, const char** name, type_code* type,
                     int32* count = nullptr) const;
    /// How many names hold `type`; B_ANY_TYPE counts all.
    int32 CountNames(type_code type) const;
    /// Whether there is no data; the code does not count.
    bool IsEmpty() const { return fFields == nullptr; }
    /// Whether the code is one of the system's, which begin with an underline.
    bool IsSystem() const;
    /// Whether the name has a value of that type at `index`; B_ANY_TYPE stands for every type.
    bool HasData(const char* name, type_code type, int32 index = 0) const;
    /// Removes all data; the code stays.
    status_t MakeEmpty();
    /// Gives a name another one, whose data it replaces. Errors: B_NAME_NOT_FOUND; B_BAD_VALUE.
    status_t Rename(const char* oldName, const char* newName);
    /// Removes all values of a name. Errors: B_NAME_NOT_FOUND.
    status_t RemoveName(const char* name);
    /// Removes one value; with the last one goes the name.
    status_t RemoveData(const char* name, int32 index = 0);
    /// Writes code and data to the standard output.
    void PrintToStream() const;
    /// Whether it was delivered and is an answer to another message.
    bool IsReply() const;
    /// Whether its sender waits for an answer that nobody has sent yet.
    bool IsSourceWaiting() const;
    /// Whom an answer goes to; invalid when the message was never delivered.
    BMessenger ReturnAddress() const;
    /// Whether it came by drag and drop.
    bool WasDropped() const;
    /// Where it was dropped, on the screen, or as far from the view's corner as `offset` is told.
    BPoint DropPoint(BPoint* offset = nullptr) const;
    /// Answers the message; an answer to the answer goes to `replyTo`.
    /// Errors: B_BAD_VALUE for null; B_BAD_REPLY when it was never delivered; B_DUPLICATE_REPLY
    /// when the one who waited has got an answer.
    status_t SendReply(uint32 command, BHandler* replyTo = nullptr) const;
    status_t SendReply(BMessage* reply, BHandler* replyTo = nullptr,
                       bigtime_t timeout = B_INFINITE_TIMEOUT) const;
    status_t SendReply(BMessage* reply, const BMessenger& replyTo,
                       bigtime_t timeout = B_INFINITE_TIMEOUT) const;

    /// How many bytes Flatten() writes.
    ssize_t FlattenedSize() const;
    /// Writes code and data as bytes that Unflatten() reads on any machine.
    /// Errors: B_BAD_VALUE when `size` is less than FlattenedSize().
    status_t Flatten(char* buffer, ssize_t size) const;
    /// The same into `stream`; tells how many bytes were written.
    status_t Flatten(BDataIO* stream, ssize_t* size = nullptr) const;
    /// Takes code and data from bytes that Flatten() wrote; a message inside costs nothing until it
    /// is found. Errors: B_BAD_VALUE for null or damaged bytes, B_NO_MEMORY. The message stays as
    /// it was then.
    status_t Unflatten(const char* buffer);
    /// The same of bytes from outside: of `size` at most. An extension of the platform.
    status_t Unflatten(const char* buffer, ssize_t size);
    /// The same from `stream`, which is left behind the message. Errors: those of the stream, too.
    status_t Unflatten(BDataIO* stream);

    /// Adds a truth value, or a whole number of the size called, behind those of that name.
    status_t AddBool(const char* name, bool value);
    status_t AddInt8(const char* name, int8 value);
    status_t AddInt16(const char* name, int16 value);
    status_t AddInt32(const char* name, int32 value);
    /// Adds a large number, or one with a fraction.
    status_t AddInt64(const char* name, int64 value);
    status_t AddFloat(const char* name, float value);
    status_t AddDouble(const char* name, double value);
    /// Adds a text up to its closing zero, a place or an area. Errors: B_BAD_VALUE for null, too.
    status_t AddString(const char* name, const char* value);
    status_t AddString(const char* name, const BString& value);
    status_t AddPoint(const char* name, BPoint value);
    status_t AddRect(const char* name, BRect value);
    /// Adds a pointer (good within this program), a messenger (likewise), an entry or a message.
    /// Errors: B_BAD_VALUE for null and for a ref without a name, too.
    status_t AddPointer(const char* name, const void* value);
    status_t AddMessenger(const char* name, const BMessenger& value);
    status_t AddRef(const char* name, const entry_ref* value);
    status_t AddMessage(const char* name, const BMessage* value);
    /// Adds bytes of any type; with `isFixedSize` all values of the name must have `size` bytes.
    /// `count` tells how many more are expected. Errors: B_BAD_VALUE for another size, too.
    status_t AddData(const char* name, type_code type, const void* data, ssize_t size,
                     bool isFixedSize = true, int32 count = 1);

    /// Finds the first value of a name, or the one at `index`; numbers by the call of their own
    /// size only. Errors, as of all below: B_BAD_VALUE for null and malformed bytes, too.
    status_t FindBool(const char* name, bool* value) const;
    status_t FindBool(const char* name, int32 index, bool* value) const;
    status_t FindInt8(const char* name, int8* value) const;
    status_t FindInt8(const char* name, int32 index, int8* value) const;
    /// Finds a whole number.
    status_t FindInt16(const char* name, int16* value) const;
    status_t FindInt16(const char* name, int32 index, int16* value) const;
    status_t FindInt32(const char* name, int32* value) const;
    status_t FindInt32(const char* name, int32 index, int32* value) const;
    /// Finds a large number, or one with a fraction.
    status_t FindInt64(const char* name, int64* value) const;
    status_t FindInt64(const char* name, int32 index, int64* value) const;
    status_t FindFloat(const char* name, float* value) const;
    status_t FindFloat(const char* name, int32 index, float* value) const;
    /// Finds a number with a fraction, or lends a text until the message changes.
    status_t FindDouble(const char* name, double* value) const;
    status_t FindDouble(const char* name, int32 index, double* value) const;
    status_t FindString(const char* name, const char** value) const;
    status_t FindString(const char* name, int32 index, const char** value) const;
    /// Copies a text, or finds a place.
    status_t FindString(const char* name, BString* value) const;
    status_t FindString(const char* name, int32 index, BString* value) const;
    status_t FindPoint(const char* name, BPoint* value) const;
    status_t FindPoint(const char* name, int32 index, BPoint* value) const;
    /// Finds an area or a pointer.
    status_t FindRect(const char* name, BRect* value) const;
    status_t FindRect(const char* name, int32 index, BRect* value) const;
    status_t FindPointer(const char* name, void** value) const;
    status_t FindPointer(const char* name, int32 index, void** value) const;
    /// Finds a messenger, whose target may be gone, or an entry. Errors: B_NO_MEMORY, too.
    status_t FindMessenger(const char* name, BMessenger* value) const;
    status_t FindMessenger(const char* name, int32 index, BMessenger* value) const;
    status_t FindRef(const char* name, entry_ref* value) const;
    status_t FindRef(const char* name, int32 index, entry_ref* value) const;
    /// Copies a message that was added. Errors: B_NO_MEMORY, too.
    status_t FindMessage(const char* name, BMessage* value) const;
    status_t FindMessage(const char* name, int32 index, BMessage* value) const;
    /// Lends the bytes of a value until the message changes; `type` may be B_ANY_TYPE.
    status_t FindData(const char* name, type_code type, const void** data, ssize_t* size) const;
    status_t FindData(const char* name, type_code type, int32 index, const void** data,
                      ssize_t* size) const;

    /// The first value of a name, or the one at `index`; `fallback` when it cannot be found.
    bool GetBool(const char* name, bool fallback = false) const;
    bool GetBool(const char* name, int32 index, bool fallback) const;
    int32 GetInt32(const char* name, int32 fallback) const { return GetInt32(name, 0, fallback); }
    int32 GetInt32(const char* name, int32 index, int32 fallback) const;
    /// A large number, or one with a fraction.
    int64 GetInt64(const char* name, int64 fallback) const { return GetInt64(name, 0, fallback); }
    int64 GetInt64(const char* name, int32 index, int64 fallback) const;
    float GetFloat(const char* name, float fallback) const { return GetFloat(name, 0, fallback); }
    float GetFloat(const char* name, int32 index, float fallback) const;
    /// A text, lent until the message changes, or `fallback`.
    const char* GetString(const char* name, const char* fallback = nullptr) const;
    const char* GetString(const char* name, int32 index, const char* fallback) const;

    /// Replaces the first value of a name, or the one at `index`. Errors, as of all below: those of
    /// finding and of adding.
    status_t ReplaceBool(const char* name, bool value);
    status_t ReplaceBool(const char* name, int32 index, bool value);
    status_t ReplaceInt8(const char* name, int8 value);
    status_t ReplaceInt8(const char* name, int32 index, int8 value);
    /// Replaces a whole number.
    status_t ReplaceInt16(const char* name, int16 value);
    status_t ReplaceInt16(const char* name, int32 index, int16 value);
    status_t ReplaceInt32(const char* name, int32 value);
    status_t ReplaceInt32(const char* name, int32 index, int32 value);
    /// Replaces a large number, or one with a fraction.
    status_t ReplaceInt64(const char* name, int64 value);
    status_t ReplaceInt64(const char* name, int32 index, int64 value);
    status_t ReplaceFloat(const char* name, float value);
    status_t ReplaceFloat(const char* name, int32 index, float value);
    /// Replaces a number with a fraction, or a text, also by a longer one.
    status_t ReplaceDouble(const char* name, double value);
    status_t ReplaceDouble(const char* name, int32 index, double value);
    status_t ReplaceString(const char* name, const char* value);
    status_t ReplaceString(const char* name, int32 index, const char* value);
    /// Replaces a place or an area.
    status_t ReplacePoint(const char* name, BPoint value);
    status_t ReplacePoint(const char* name, int32 index, BPoint value);
    status_t ReplaceRect(const char* name, BRect value);
    status_t ReplaceRect(const char* name, int32 index, BRect value);
    /// Replaces a pointer or a messenger.
    status_t ReplacePointer(const char* name, const void* value);
    status_t ReplacePointer(const char* name, int32 index, const void* value);
    status_t ReplaceMessenger(const char* name, const BMessenger& value);
    status_t ReplaceMessenger(const char* name, int32 index, const BMessenger& value);
    /// Replaces an entry or a message.
    status_t ReplaceRef(const char* name, const entry_ref* value);
    status_t ReplaceRef(const char* name, int32 index, const entry_ref* value);
    status_t ReplaceMessage(const char* name, const BMessage* value);
    status_t ReplaceMessage(const char* name, int32 index, const BMessage* value);
    /// Replaces bytes. Errors: B_BAD_VALUE for another size where all values have one, too.
    status_t ReplaceData(const char* name, type_code type, const void* data, ssize_t size);
    status_t ReplaceData(const char* name, type_code type, int32 index, const void* data,
                         ssize_t size);

    /// Whether the name has a value of that type at `index`; HasData() tells of others.
    bool HasBool(const char* name, int32 index = 0) const;
    bool HasInt32(const char* name, int32 index = 0) const;
    bool HasString(const char* name, int32 index = 0) const;
    bool HasRef(const char* name, int32 index = 0) const;

private:
    friend class kits::MessageAccess;

    void DropFields();
    kits::MessageFields* WritableFields();

    // Null when there is no data; shared with copies, counted, and copied before a change.
    kits::MessageFields* fFields = nullptr;
    std::shared_ptr<kits::MessageDelivery> fDelivery;
};
