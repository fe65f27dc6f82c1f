#include <OS.h>

#include "kernel/Mutex.h"
#include "kernel/ThreadEnds.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <pthread.h>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <unordered_map>
#include <utility>

namespace {

using kits::Condition;
using kits::Mutex;
using kits::MutexLock;

struct Thread
{
    thread_id id = 0;
    std::string name;
    int32 priority = B_NORMAL_PRIORITY;
    thread_func function = nullptr; // null: a thread that was not spawned here
    void* data = nullptr;
    bool isStarted = false;
    bool hasEnded = false;
    bool hasHandle = false;
    bool isToBeJoined = false; // already among those that end
    pthread_t handle{};        // valid from when it is set until the thread has ended
    status_t result = B_OK;
    std::shared_ptr<Thread> endedBefore; // the next of those that end
};

using ThreadRef = std::shared_ptr<Thread>;

/// Every thread that was spawned or asked for its number, until it ends.
struct ThreadTable
{
    Mutex mutex;
    Condition end; // some thread has ended, or was joined
    // Spawned here, to be joined, linked by `endedBefore`: a thread must be able to end without
    // memory.
    ThreadRef ending GUARDED_BY(mutex);
    size_t joining GUARDED_BY(mutex) = 0;     // threads that join some of those
    bool isExiting GUARDED_BY(mutex) = false; // nobody will join any more
    std::unordered_map<thread_id, ThreadRef> threads GUARDED_BY(mutex);
    thread_id lastId GUARDED_BY(mutex) = 0;
};

ThreadTable& Table()
{
    // Never destroyed: threads may end after the program's static objects have gone.
    static ThreadTable& table = *new ThreadTable;
    return table;
}

/// The calling thread's number; 0 until it is asked for.
thread_local thread_id tThreadId = 0;

std::string CutName(const char* name)
{
    return name == nullptr ? std::string()
                           : std::string(name, ::strnlen(name, B_OS_NAME_LENGTH - 1));
}

/// Shows the name in debuggers and in lists of processes, where 15 bytes fit.
void ShowName(const Thread& thread)
{
    if (thread.hasHandle) {
        ::pthread_setname_np(thread.handle, thread.name.substr(0, 15).c_str());
    }
}

thread_id Enter(const ThreadRef& thread)
{
    ThreadTable& table = Table();
    MutexLock lock(table.mutex);
    // Numbers are not used again before all have been; a long-lived thread keeps its own then, too.
    do {
        table.lastId = table.lastId == INT32_MAX ? 1 : table.lastId + 1;
    } while (table.threads.contains(table.lastId));
    thread->id = table.lastId;
    table.threads.emplace(thread->id, thread);
    return thread->id;
}

void JoinLater(ThreadTable& table, const ThreadRef& thread) REQUIRES(table.mutex)
{
    if (thread->function == nullptr || std::exchange(thread->isToBeJoined, true)) {
        return;
    }
    if (table.isExiting) {
        ::pthread_detach(thread->handle);
    } else {
        thread->endedBefore = std::exchange(table.ending, thread);
    }
}

void Leave(thread_id id, status_t result)
{
    ThreadTable& table = Table();
    MutexLock lock(table.mutex);
    const auto found = table.threads.find(id);
    if (found == table.threads.end()) {
        return;
    }
    found->second->hasEnded = true;
    found->second->result = result;
    JoinLater(table, found->second);
    table.threads.erase(found);
    table.end.Broadcast();
}

/// Takes a thread that was not spawned here out of the table when it ends.
class ForeignThread
{
public:
    explicit ForeignThread(thread_id id) : fId(id) {}
    ForeignThread(const ForeignThread&) = delete;
    ForeignThread& operator=(const ForeignThread&) = delete;
    ~ForeignThread() { Leave(fId, B_OK); }

private:
    thread_id fId;
};

thread_id EnterForeignThread()
{
    char name[16] = "";
    ::pthread_getname_np(::pthread_self(), name, sizeof(name));
    auto thread = std::make_shared<Thread>();
    thread->name = name;
    thread->isStarted = true;
    thread->hasHandle = true;
    thread->handle = ::pthread_self();
    tThreadId = Enter(thread);
    thread_local ForeignThread leaving(tThreadId);
    return tThreadId;
}

/// Lets a thread of little importance have less of the processor. Raising one is the system's
/// privilege.
void ApplyPriority(int32 priority)
{
    if (priority < B_NORMAL_PRIORITY) {
        const int nice = priority < 0 ? 19 : B_NORMAL_PRIORITY - priority;
        ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), nice);
    }
}

// Catches no exception, nor does anything it calls: the program ends where one was thrown, with
// that stack, and not here.
void* RunThread(void* argument)
{
    const std::unique_ptr<ThreadRef> adopted(static_cast<ThreadRef*>(argument));
    Thread& thread = **adopted;
    tThreadId = thread.id;
    {
        MutexLock lock(Table().mutex);
        thread.handle = ::pthread_self();
        thread.hasHandle = true;
        ShowName(thread);
    }
    ApplyPriority(thread.priority);
    Leave(thread.id, thread.function(thread.data));
    return nullptr;
}

void JoinAtExit()
{
    {
        MutexLock lock(Table().mutex);
        Table().isExiting = true;
    }
    kits::JoinEndedThreads();
}

status_t StartThread(const ThreadRef& thread)
{
    [[maybe_unused]] static const int registered = std::atexit(JoinAtExit);
    std::unique_ptr<ThreadRef> argument(new (std::nothrow) ThreadRef(thread));
    kits::JoinEndedThreads(); // so that their stacks do not gather
    pthread_t handle;
    if (argument == nullptr || ::pthread_create(&handle, nullptr, RunThread, argument.get()) != 0) {
        MutexLock lock(Table().mutex);
        thread->isStarted = false;
        return argument == nullptr ? B_NO_MEMORY : B_NO_MORE_THREADS;
    }
    static_cast<void>(argument.release()); // adopted by the new thread
    return B_OK;
}

/// The thread of that number; null when there is none.
ThreadRef FindById(ThreadTable& table, thread_id id) REQUIRES(table.mutex)
{
    const auto found = table.threads.find(id);
    return found == table.threads.end() ? nullptr : found->second;
}

} // namespace

void kits::AnnounceThreadEnd()
{
    ThreadTable& table = Table();
    MutexLock lock(table.mutex);
    const ThreadRef thread = FindById(table, tThreadId);
    if (thread != nullptr) {
        JoinLater(table, thread);
    }
}

void kits::ForgetThread(thread_id id)
{
    ThreadTable& table = Table();
    MutexLock lock(table.mutex);
    const ThreadRef thread = FindById(table, id);
    if (thread != nullptr && !thread->isStarted) {
        table.threads.erase(id);
    }
}

void kits::JoinEndedThreads()
{
    ThreadTable& table = Table();
    ThreadRef mine;
    {
        MutexLock lock(table.mutex);
        mine.swap(table.ending);
        ++table.joining;
    }
    while (mine != nullptr) {
        ::pthread_join(mine->handle, nullptr);
        ThreadRef next = std::move(mine->endedBefore);
        mine = std::move(next);
    }
    MutexLock lock(table.mutex);
    --table.joining;
    table.end.Broadcast();
    while (table.joining > 0) {
        table.end.Wait(table.mutex);
    }
}

thread_id spawn_thread(thread_func function, const char* name, int32 priority, void* data)
{
    if (function == nullptr) {
        return B_BAD_VALUE;
    }
    try {
        auto thread = std::make_shared<Thread>();
        thread->name = CutName(name);
        thread->priority = priority;
        thread->function = function;
        thread->data = data;
        return Enter(thread);
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
}

status_t resume_thread(thread_id id)
{
    ThreadRef thread;
    {
        ThreadTable& table = Table();
        MutexLock lock(table.mutex);
        thread = FindById(table, id);
        if (thread == nullptr) {
            return B_BAD_THREAD_ID;
        }
        if (thread->isStarted) {
            return B_BAD_THREAD_STATE;
        }
        thread->isStarted = true;
    }
    return StartThread(thread);
}

status_t wait_for_thread(thread_id id, status_t* returnValue)
{
    if (id == tThreadId && id != 0) { // one that never asked for its number has none to give
        return B_NOT_ALLOWED;
    }
    ThreadTable& table = Table();
    ThreadRef thread; // found before it may run: a short one can end while it is being started
    {
        MutexLock lock(table.mutex);
        thread = FindById(table, id);
    }
    const status_t started = thread == nullptr ? B_BAD_THREAD_ID : resume_thread(id);
    if (thread == nullptr || started == B_NO_MORE_THREADS || started == B_NO_MEMORY) {
        return started;
    }
    {
        MutexLock lock(table.mutex);
        while (!thread->hasEnded) {
            table.end.Wait(table.mutex);
        }
        if (returnValue != nullptr) {
            *returnValue = thread->result;
        }
    }
    kits::JoinEndedThreads();
    return B_OK;
}

thread_id find_thread(const char* name)
{
    if (name == nullptr) {
        return tThreadId != 0 ? tThreadId : EnterForeignThread();
    }
    ThreadTable& table = Table();
    MutexLock lock(table.mutex);
    thread_id newest = B_NAME_NOT_FOUND;
    for (const auto& [id, thread] : table.threads) {
        if (id > newest && thread->name == name) {
            newest = id;
        }
    }
    return newest;
}

status_t rename_thread(thread_id id, const char* name)
{
    std::string newName = CutName(name);
    ThreadTable& table = Table();
    MutexLock lock(table.mutex);
    const ThreadRef thread = FindById(table, id);
    if (thread == nullptr) {
        return B_BAD_THREAD_ID;
    }
    thread->name.swap(newName);
    ShowName(*thread);
    return B_OK;
}

status_t get_thread_info(thread_id id, thread_info* info)
{
    if (info == nullptr) {
        return B_BAD_VALUE;
    }
    ThreadTable& table = Table();
    MutexLock lock(table.mutex);
    const ThreadRef thread = FindById(table, id);
    if (thread == nullptr) {
        return B_BAD_THREAD_ID;
    }
    info->thread = id;
    info->team = ::getpid();
    std::snprintf(info->name, sizeof(info->name), "%s", thread->name.c_str());
    info->state = thread->isStarted ? B_THREAD_RUNNING : B_THREAD_SUSPENDED;
    info->priority = thread->priority;
    return B_OK;
}
