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

BlockWriter::BlockWriter(int file) : fFile(file), fThread([this] { Run(); }) {}

BlockWriter::~BlockWriter()
{
    {
        std::lock_guard lock(fMutex);
        fIsEnding = true;
    }
    fChange.notify_all();
    fThread.join();
}

void BlockWriter::Queue(Block block, size_t size, off_t position)
{
    {
        std::unique_lock lock(fMutex);
        fChange.wait(lock, [this] { return fJobs.size() < kQueuedBlocks; });
        fJobs.push_back({std::move(block), size, position});
    }
    fChange.notify_all();
}

status_t BlockWriter::Wait()
{
    std::unique_lock lock(fMutex);
    fChange.wait(lock, [this] { return fJobs.empty() && !fIsWriting; });
    return Status();
}

void BlockWriter::Run()
{
    for (;;) {
        Job job;
        {
            std::unique_lock lock(fMutex);
            fIsWriting = false;
            if (fJobs.empty()) {
                fChange.notify_all();
            }
            fChange.wait(lock, [this] { return !fJobs.empty() || fIsEnding; });
            if (fJobs.empty()) {
                return;
            }
            job = std::move(fJobs.front());
            fJobs.pop_front();
            fIsWriting = true;
        }
        fChange.notify_all();
        if (Status() == B_OK) {
            const status_t status = WriteWhole(fFile, job.block.get(), job.size, job.position);
            fStatus.store(status, std::memory_order_relaxed);
        }
    }
}

} // namespace kits
