#include "fileops/engine/OwnNames.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <random>
#include <set>

namespace norvane {

namespace {

constexpr char kPrefix[] = ".norvane-";

std::mutex sMutex; // guards sNames
std::set<std::string>& Names()
{
    static std::set<std::string> sNames;
    return sNames;
}

std::string UniqueName()
{
    // Random, so that two running programs that share a folder do not meet; counted, so that this
    // one never does.
    static const std::uint64_t sProgram = [] {
        std::random_device device;
        return (std::uint64_t(device()) << 32) | device();
    }();
    static std::atomic<unsigned> sCount{0};

    char name[64];
    std::snprintf(name, sizeof(name), "%s%016llx-%u", kPrefix,
                  static_cast<unsigned long long>(sProgram), ++sCount);
    return name;
}

} // namespace

bool IsOwnTemporaryName(const char* name)
{
    // Nearly every name that is asked about ends here, without the lock.
    if (name == nullptr || std::strncmp(name, kPrefix, sizeof(kPrefix) - 1) != 0) {
        return false;
    }
    std::lock_guard<std::mutex> lock(sMutex);
    return Names().count(name) > 0;
}

OwnTemporaryName::OwnTemporaryName() : fName(UniqueName())
{
    std::lock_guard<std::mutex> lock(sMutex);
    Names().insert(fName);
}

OwnTemporaryName::~OwnTemporaryName()
{
    std::lock_guard<std::mutex> lock(sMutex);
    Names().erase(fName);
}

} // namespace norvane
