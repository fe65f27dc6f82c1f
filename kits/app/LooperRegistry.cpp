#include "app/LooperRegistry.h"

#include "app/LooperCore.h"
#include "kernel/Mutex.h"

#include <Message.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <functional>
#include <unordered_map>

namespace kits {

namespace {

// One table, split so that threads which post to different loopers seldom meet.
template<class Key, class Value>
class Table
{
public:
    void Set(Key key, const Value& value)
    {
        Shard& shard = ShardOf(key);
        MutexLock lock(shard.mutex);
        shard.values[key] = value;
    }

    void Remove(Key key)
    {
        Shard& shard = ShardOf(key);
        Value removed{}; // may end the last core of a looper: after the lock
        MutexLock lock(shard.mutex);
        const auto found = shard.values.find(key);
        if (found != shard.values.end()) {
            removed = std::move(found->second);
            shard.values.erase(found);
        }
    }

    Value Find(Key key)
    {
        Shard& shard = ShardOf(key);
        MutexLock lock(shard.mutex);
        const auto found = shard.values.find(key);
        return found != shard.values.end() ? found->second : Value{};
    }

    template<class Visit>
    void ForEach(Visit visit)
    {
        for (Shard& shard : fShards) {
            MutexLock lock(shard.mutex);
            for (const auto& [key, value] : shard.values) {
                visit(value);
            }
        }
    }

private:
    struct alignas(64) Shard
    {
        Mutex mutex;
        std::unordered_map<Key, Value> values GUARDED_BY(mutex);
    };

    Shard& ShardOf(Key key)
    {
        // Pointers are multiples of 16; the lower bits would fill one shard only.
        const size_t hash = std::hash<Key>{}(key);
        return fShards[(hash ^ (hash >> 4) ^ (hash >> 9)) % fShards.size()];
    }

    std::array<Shard, 16> fShards;
};

using LooperTable = Table<const BLooper*, std::shared_ptr<LooperCore>>;
using ThreadTable = Table<const LooperCore*, std::shared_ptr<LooperCore>>;
using HandlerTable = Table<int32, LooperRegistry::Place>;

// Never destroyed: threads may still ask while the program ends.
LooperTable& Loopers()
{
    static LooperTable& table = *new LooperTable;
    return table;
}

ThreadTable& Threads()
{
    static ThreadTable& table = *new ThreadTable;
    return table;
}

HandlerTable& Handlers()
{
    static HandlerTable& table = *new HandlerTable;
    return table;
}

template<class Cores>
std::vector<std::shared_ptr<LooperCore>> AllOf(Cores& table)
{
    std::vector<std::shared_ptr<LooperCore>> cores;
    table.ForEach([&](const std::shared_ptr<LooperCore>& core) { cores.push_back(core); });
    // Tokens grow, so their order is that of the making.
    std::sort(cores.begin(), cores.end(),
              [](const auto& a, const auto& b) { return a->Token() < b->Token(); });
    return cores;
}

} // namespace

int32 LooperRegistry::NewToken()
{
    static std::atomic<int32> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

void LooperRegistry::AddLooper(const BLooper* looper, const std::shared_ptr<LooperCore>& core)
{
    Loopers().Set(looper, core);
}

void LooperRegistry::RemoveLooper(const BLooper* looper)
{
    Loopers().Remove(looper);
}

std::shared_ptr<LooperCore> LooperRegistry::FindLooper(const BLooper* looper)
{
    return Loopers().Find(looper);
}

std::vector<std::shared_ptr<LooperCore>> LooperRegistry::AllLoopers()
{
    return AllOf(Loopers());
}

void LooperRegistry::AddThread(const std::shared_ptr<LooperCore>& core)
{
    Threads().Set(core.get(), core);
}

void LooperRegistry::RemoveThread(const LooperCore* core)
{
    Threads().Remove(core);
}

std::vector<std::shared_ptr<LooperCore>> LooperRegistry::AllThreads()
{
    return AllOf(Threads());
}

void LooperRegistry::AddHandler(int32 token, BHandler* handler,
                                const std::shared_ptr<LooperCore>& core)
{
    Handlers().Set(token, Place{handler, core});
}

void LooperRegistry::RemoveHandler(int32 token)
{
    Handlers().Remove(token);
}

LooperRegistry::Place LooperRegistry::FindHandler(int32 token)
{
    return Handlers().Find(token);
}

} // namespace kits
