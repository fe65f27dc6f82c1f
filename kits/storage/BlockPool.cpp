#include "BlockPool.h"

#include "kernel/Mutex.h"

#include <new>
#include <vector>

namespace kits {

namespace {

constexpr size_t kKeptBlocks = 8;
constexpr std::align_val_t kAlignment{4096};

struct Pool
{
    Mutex mutex;
    std::vector<char*> blocks GUARDED_BY(mutex);
};

Pool& ThePool()
{
    // Never destroyed: a static file may be closed after everything else.
    static Pool* pool = new Pool;
    return *pool;
}

} // namespace

Block TakeBlock()
{
    Pool& pool = ThePool();
    {
        MutexLock lock(pool.mutex);
        if (!pool.blocks.empty()) {
            char* block = pool.blocks.back();
            pool.blocks.pop_back();
            return Block(block);
        }
    }
    return Block(static_cast<char*>(::operator new(kBlockBytes, kAlignment)));
}

void BlockReturner::operator()(char* block) const
{
    Pool& pool = ThePool();
    {
        MutexLock lock(pool.mutex);
        if (pool.blocks.size() < kKeptBlocks) {
            pool.blocks.push_back(block);
            return;
        }
    }
    ::operator delete(block, kAlignment);
}

} // namespace kits
