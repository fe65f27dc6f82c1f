#include "kernel/Mutex.h"
#include "support/ErrnoTable.h"
#include "support/ScopeGuard.h"
#include "support/SmallBuffer.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <utility>

TEST(ErrnoTableTest, TranslatesWhatFileSystemsSay)
{
    const std::pair<int, status_t> expected[] = {
        {0, B_OK},
        {EACCES, B_PERMISSION_DENIED},
        {EPERM, B_NOT_ALLOWED},
        {ENOENT, B_ENTRY_NOT_FOUND},
        {EEXIST, B_FILE_EXISTS},
        {ENOTDIR, B_NOT_A_DIRECTORY},
        {EISDIR, B_IS_A_DIRECTORY},
        {ENOTEMPTY, B_DIRECTORY_NOT_EMPTY},
        {ENAMETOOLONG, B_NAME_TOO_LONG},
        {ELOOP, B_LINK_LIMIT},
        {ENOSPC, B_DEVICE_FULL},
        {EDQUOT, B_DEVICE_FULL},
        {EROFS, B_READ_ONLY_DEVICE},
        {EXDEV, B_CROSS_DEVICE_LINK},
        {EMFILE, B_NO_MORE_FDS},
        {EBUSY, B_BUSY},
        {ENOMEM, B_NO_MEMORY},
        {EINVAL, B_BAD_VALUE},
        {123456, B_ERROR},
    };
    for (const auto& [error, status] : expected) {
        EXPECT_EQ(kits::StatusFromErrno(error), status) << "errno " << error;
    }
}

TEST(ErrorsTest, HaveThePlatformsValues)
{
    EXPECT_EQ(static_cast<uint32>(B_NO_MEMORY), 0x80000000u);
    EXPECT_EQ(static_cast<uint32>(B_BAD_VALUE), 0x80000005u);
    EXPECT_EQ(static_cast<uint32>(B_NOT_ALLOWED), 0x8000000fu);
    EXPECT_EQ(static_cast<uint32>(B_BAD_THREAD_ID), 0x80001100u);
    EXPECT_EQ(static_cast<uint32>(B_ENTRY_NOT_FOUND), 0x80006003u);
    EXPECT_EQ(static_cast<uint32>(B_LINK_LIMIT), 0x8000600cu);
}

TEST(ScopeGuardTest, RunsUnlessDismissed)
{
    int runs = 0;
    {
        kits::ScopeGuard guard([&] { runs++; });
    }
    EXPECT_EQ(runs, 1);
    {
        kits::ScopeGuard guard([&] { runs++; });
        guard.Dismiss();
    }
    EXPECT_EQ(runs, 1);
}

TEST(ConditionTest, EndsWaitingWhenTheTimeHasCome)
{
    kits::Mutex mutex;
    kits::Condition condition;
    const bigtime_t end = system_time() + 2000;

    kits::MutexLock lock(mutex);
    while (condition.WaitUntil(mutex, end)) {
    }

    EXPECT_GE(system_time(), end);
}

TEST(SmallBufferTest, KeepsItsBytesWhileItGrowsCopiesAndMoves)
{
    kits::SmallBuffer buffer;
    std::string expected;
    for (int i = 0; i < 100; i++) {
        const char byte = static_cast<char>('a' + i % 26);
        buffer.Resize(buffer.Size() + 1);
        buffer.Data()[buffer.Size() - 1] = byte;
        expected += byte;

        kits::SmallBuffer copy(buffer);
        kits::SmallBuffer moved(std::move(copy));
        copy = moved; // NOLINT(bugprone-use-after-move): a moved buffer is empty and usable
        ASSERT_EQ(std::string(moved.Data(), moved.Size()), expected);
        ASSERT_EQ(std::string(copy.Data(), copy.Size()), expected);
    }
}

TEST(SmallBufferTest, ShowsNothingOfWhatWasCutOff)
{
    kits::SmallBuffer buffer;
    buffer.Resize(4);
    std::memcpy(buffer.Data(), "abcd", 4);

    buffer.Resize(1);
    buffer.Resize(4);

    EXPECT_EQ(std::string(buffer.Data(), 4), std::string("a\0\0\0", 4));
}
