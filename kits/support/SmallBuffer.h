#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace kits {

/// Bytes that grow; a few of them need no memory of their own. Aligned for every plain type up to 8
/// bytes.
///
/// Errors: std::bad_alloc, nothing is changed then.
class SmallBuffer
{
public:
    SmallBuffer() = default;
    SmallBuffer(const SmallBuffer& other)
    {
        Reserve(other.fSize);
        std::memcpy(fData, other.fData, other.fSize);
        fSize = other.fSize;
    }
    SmallBuffer(SmallBuffer&& other) noexcept { TakeFrom(other); }
    SmallBuffer& operator=(SmallBuffer other) noexcept
    {
        Free();
        TakeFrom(other);
        return *this;
    }
    ~SmallBuffer() { Free(); }

    const char* Data() const { return fData; }
    char* Data() { return fData; }
    size_t Size() const { return fSize; }

    /// Makes room for `size` bytes.
    void Reserve(size_t size)
    {
        if (size <= fCapacity) {
            return;
        }
        const size_t capacity = size > 2 * fCapacity ? size : 2 * fCapacity;
        char* grown = static_cast<char*>(::operator new(capacity));
        std::memcpy(grown, fData, fSize);
        Free();
        fData = grown;
        fCapacity = capacity;
    }

    /// Makes the buffer `size` bytes long; what is new in it is zero.
    void Resize(size_t size)
    {
        Reserve(size);
        if (size > fSize) {
            std::memset(fData + fSize, 0, size - fSize);
        }
        fSize = size;
    }

private:
    static constexpr size_t kInlineBytes = 16; // a rectangle

    void Free()
    {
        if (fData != fInline) {
            ::operator delete(fData);
        }
    }

    // Leaves `other` empty; what this one held is gone already.
    void TakeFrom(SmallBuffer& other)
    {
        if (other.fData == other.fInline) {
            std::memcpy(fInline, other.fInline, kInlineBytes);
            fData = fInline;
        } else {
            fData = std::exchange(other.fData, other.fInline);
        }
        fSize = std::exchange(other.fSize, 0);
        fCapacity = std::exchange(other.fCapacity, kInlineBytes);
    }

    alignas(8) char fInline[kInlineBytes] = {};
    char* fData = fInline;
    size_t fSize = 0;
    size_t fCapacity = kInlineBytes;
};

} // namespace kits
