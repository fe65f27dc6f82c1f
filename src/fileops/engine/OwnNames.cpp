#include "fileops/engine/OwnNames.h"

#include <Autolock.h>
#include <Locker.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <set>

namespace norvane {

namespace {

constexpr char kPrefix[] = ".norvane-";

/// The names in use.
class NameSet
{
public:
    void Add(const std::string& name)
    {
        BAutolock lock(fLocker);
        fNames.insert(name);
    }
    void Remove(const std::string& name)
    {
        BAutolock lock(fLocker);
        fNames.erase(name);
    }
    bool Has(const std::string& name)
    {
        BAutolock lock(fLocker);
        return fNames.count(name) > 0;
    }

private:
    BLocker fLocker{"own names"};
    std::set<std::string> fNames GUARDED_BY(fLocker);
};

NameSet& Names()
{
    static auto* const names = new NameSet; // never destroyed: listings may ask after main()
    return *names;
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
    return Names().Has(name);
}

OwnTemporaryName::OwnTemporaryName() : fName(UniqueName())
{
    Names().Add(fName);
}

OwnTemporaryName::~OwnTemporaryName()
{
    Names().Remove(fName);
}

} // namespace norvane
