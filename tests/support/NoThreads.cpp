#include "NoThreads.h"

#include <atomic>
#include <cerrno>
#include <dlfcn.h>
#include <pthread.h>

namespace {

std::atomic<int> gCount{0};
std::atomic<int> gRefused{0};

using Create = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);

} // namespace

NoThreads::NoThreads()
{
    gRefused = 0;
    ++gCount;
}

NoThreads::~NoThreads()
{
    --gCount;
}

int NoThreads::CountRefused()
{
    return gRefused;
}

// Stands before the system's in programs that use NoThreads.
extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                              void* (*function)(void*), void* argument) noexcept
{
    static const auto create = reinterpret_cast<Create>(::dlsym(RTLD_NEXT, "pthread_create"));
    if (gCount > 0) {
        ++gRefused;
        return EAGAIN;
    }
    return create(thread, attributes, function, argument);
}
