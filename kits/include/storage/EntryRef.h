#pragma once

// The inline half of entry_ref, apart for its length.
#include <Entry.h>

#include <cstdlib>
#include <cstring>
#include <utility>

inline entry_ref::entry_ref(dev_t dev, ino_t dir, const char* leaf) : device(dev), directory(dir)
{
    set_name(leaf);
}

inline entry_ref::entry_ref(const entry_ref& other)
    : device(other.device), directory(other.directory), fFolder(other.fFolder)
{
    set_name(other.name);
}

inline entry_ref::entry_ref(entry_ref&& other) noexcept
    : device(other.device), directory(other.directory), name(std::exchange(other.name, nullptr)),
      fFolder(std::move(other.fFolder))
{
}

inline entry_ref& entry_ref::operator=(entry_ref other) noexcept
{
    std::swap(device, other.device);
    std::swap(directory, other.directory);
    std::swap(name, other.name);
    std::swap(fFolder, other.fFolder);
    return *this;
}

inline entry_ref::~entry_ref()
{
    std::free(name);
}

inline status_t entry_ref::set_name(const char* newName)
{
    char* copy = nullptr;
    if (newName != nullptr) {
        copy = ::strdup(newName);
        if (copy == nullptr) {
            return B_NO_MEMORY;
        }
    }
    std::free(name);
    name = copy;
    return B_OK;
}

inline bool entry_ref::operator==(const entry_ref& other) const
{
    if (device != other.device || directory != other.directory) {
        return false;
    }
    if (name == nullptr || other.name == nullptr) {
        return name == other.name;
    }
    return std::strcmp(name, other.name) == 0;
}
