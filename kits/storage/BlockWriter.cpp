#include "BlockWriter.h"

#include "SystemCalls.h"

namespace kits {

namespace {

constexpr size_t kQueuedBlocks = 4;

} // namespace

status_t WriteWhole(int file, const char* bytes, size_t size, off_t position)
{
    while (size > 0) {
        const ssize_t written = sys::WriteAt(file, bytes, size, position);
        if (written < 0) {
            return static_cast<status_t>(written);
        }
        if (written == 0) {
            return B_IO_ERROR; // takes nothing and says nothing
        }
        bytes += written;
        position += written;
        size -= static_cast<size_t>(written);
    }
    return B_OK;
}

status_t BlockWriter::Start()
{
    return fThread.Start("block writer", [this] { Run(); });
}

BlockWriter::~BlockWriter()
{
    {
        MutexLock lock(fMutex);
        fIsEnding = true;
    }
    fChange.Broadcast();
    fThread.Join();
}

void BlockWriter::Queue(Block block, size_t size, off_t position)
{
    {
        MutexLock lock(fMutex);
        while (fJobs.size() >= kQueuedBlocks) {
            fChange.Wait(fMutex);
        }
        fJobs.push_back({std::move(block), size, position});
    }
    fChange.Broadcast();
}

status_t BlockWriter::Wait()
{
    MutexLock lock(fMutex);
    while (!fJobs.empty() || fIsWriting) {
        fChange.Wait(fMutex);
    }
    return Status();
}

void BlockWriter::Run()
{
    for (;;) {
        Job job;
        {
            MutexLock lock(fMutex);
            fIsWriting = false;
            if (fJobs.empty()) {
                fChange.Broadcast();
            }
            while (fJobs.empty() && !fIsEnding) {
                fChange.Wait(fMutex);
            }
            if (fJobs.empty()) {
                return;
            }
            job = std::move(fJobs.front());
            fJobs.pop_front();
            fIsWriting = true;
        }
        fChange.Broadcast();
        if (Status() == B_OK) {
            const status_t status = WriteWhole(fFile, job.block.get(), job.size, job.position);
            fStatus.store(status, std::memory_order_relaxed);
        }
    }
}

} // namespace kits
