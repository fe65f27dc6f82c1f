#include "NoMemory.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

// Negative: all is given.
std::atomic<int> gLeft{-1};
std::atomic<bool> gIsOnce{false};
std::atomic<int> gRefused{0};

bool IsRefused()
{
    int left = gLeft.load();
    while (left > 0 && !gLeft.compare_exchange_weak(left, left - 1)) {
    }
    if (left != 0) {
        return false;
    }
    const bool isFirst = gRefused++ == 0;
    return isFirst || !gIsOnce;
}

void* Give(std::size_t size)
{
    void* given = IsRefused() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (given == nullptr) {
        throw std::bad_alloc();
    }
    return given;
}

} // namespace

NoMemory::NoMemory(int after, Times times)
{
    gRefused = 0;
    gIsOnce = times == Times::kOnce;
    gLeft = after;
}

NoMemory::~NoMemory()
{
    gLeft = -1;
}

int NoMemory::CountRefused()
{
    return gRefused;
}

// Stand before the library's in programs that use NoMemory.
void* operator new(std::size_t size)
{
    return Give(size);
}

void* operator new[](std::size_t size)
{
    return Give(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return IsRefused() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return IsRefused() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* given) noexcept
{
    std::free(given);
}

void operator delete[](void* given) noexcept
{
    std::free(given);
}

void operator delete(void* given, std::size_t) noexcept
{
    std::free(given);
}

void operator delete[](void* given, std::size_t) noexcept
{
    std::free(given);
}
