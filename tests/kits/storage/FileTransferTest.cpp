#include "FileTransferFixture.h"

#include <Errors.h>
#include <File.h>
#include <FileTransfer.h>

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr size_t kMiB = size_t{1} << 20;
constexpr size_t kBig = 9 * kMiB + 3;

Answer NoClone(const Call& call)
{
    return {.error = call.kind == Kind::kClone ? EOPNOTSUPP : 0};
}

/// A volume that neither shares blocks nor copies by itself.
Answer PlainOnly(const Call& call)
{
    return {.error = call.kind == Kind::kClone || call.kind == Kind::kRange ? EXDEV : 0};
}

std::string CodeName(const testing::TestParamInfo<int>& info)
{
    return strerrorname_np(info.param);
}

} // namespace

TEST_F(FileTransferTest, CopiesFilesOfAnySize)
{
    for (const size_t size : {size_t{0}, size_t{1}, size_t{4096}, size_t{65536}, size_t{65537},
                              size_t{9 * 1024 * 1024 + 3}}) {
        WriteSource(size);
        const Outcome outcome = Transfer();
        EXPECT_EQ(outcome.sum, ssize_t(size));
        EXPECT_EQ(outcome.status, B_OK);
        EXPECT_TRUE(HasArrived()) << size;
    }
}

TEST_F(FileTransferTest, TellsThatTheTargetCannotBeWritten)
{
    fTree.Write("source", std::string(10'000, 'x'));
    BFile source(Source().c_str(), B_READ_ONLY);
    BFile target(Source().c_str(), B_READ_ONLY); // nothing can be written there
    BFileTransfer transfer(&source, &target);
    EXPECT_EQ(transfer.Next(), B_NOT_ALLOWED);
    EXPECT_FALSE(transfer.HasFailedReading());
}

TEST_F(FileTransferTest, TellsThatTheSourceCannotBeRead)
{
    BFile source(Source().c_str(), B_WRITE_ONLY | B_CREATE_FILE);
    BFile target(Target().c_str(), B_WRITE_ONLY | B_CREATE_FILE);
    BFileTransfer transfer(&source, &target);
    EXPECT_EQ(transfer.Next(), B_NOT_ALLOWED);
    EXPECT_TRUE(transfer.HasFailedReading());
}

TEST_F(FileTransferTest, ReadsAndWritesASmallFileOnce)
{
    WriteSource(20'000);
    TransferScripted(nullptr);
    EXPECT_TRUE(HasArrived());
    EXPECT_EQ(Count(Kind::kRead), 1);
    EXPECT_EQ(Count(Kind::kWrite), 1);
    EXPECT_EQ(fCalls.size(), 2u);
}

TEST_F(FileTransferTest, TakesTheSizeFromTheRecord)
{
    const std::string contents = WriteSource(20'000);
    BFile source(Source().c_str(), B_READ_ONLY);
    BFile target(Target().c_str(), B_READ_WRITE | B_CREATE_FILE);
    struct stat record;
    ASSERT_EQ(source.GetStat(&record), B_OK);
    ASSERT_EQ(truncate(Source().c_str(), 30'000), 0); // what comes later is not copied
    BFileTransfer transfer(&source, &target, &record);
    EXPECT_EQ(transfer.Next(), 20'000);
    EXPECT_EQ(transfer.Next(), 0);
    EXPECT_TRUE(fTree.Read("target") == contents);
}

TEST_F(FileTransferTest, TakesSmallPiecesOfASlowMedium)
{
    WriteSource(2 * kMiB);
    TransferScripted([](const Call& call) {
        if (call.kind == Kind::kRange) {
            usleep(static_cast<useconds_t>(call.size / 10)); // 10 MB a second
        }
        return NoClone(call);
    });
    EXPECT_TRUE(HasArrived());
    EXPECT_GT(Count(Kind::kRange), 4);
    for (const Call& call : fCalls) {
        if (call.kind == Kind::kRange && call.index > 0) {
            EXPECT_LE(call.size, ssize_t(256 * 1024));
        }
    }
}

TEST_F(FileTransferTest, SharesTheBlocksOfTheWholeFile)
{
    WriteSource(kBig);
    const Outcome outcome = TransferScripted([](const Call&) { return Answer{.isFeigned = true}; });
    EXPECT_EQ(outcome.sum, ssize_t(kBig));
    EXPECT_EQ(outcome.pieces, 1);
    EXPECT_TRUE(HasArrived());
    EXPECT_EQ(Count(Kind::kClone), 1);
    EXPECT_EQ(fCalls.size(), 1u);
}

TEST_F(FileTransferTest, BeginsAnewAfterACloneThatFailedHalfway)
{
    WriteSource(kBig);
    const Outcome outcome = TransferScripted([this](const Call& call) {
        if (call.kind == Kind::kClone) {
            fTree.Write("target", std::string(kBig + 5, 'x'));
            return Answer{.error = ENOSPC};
        }
        return Answer();
    });
    EXPECT_EQ(outcome.sum, ssize_t(kBig));
    EXPECT_TRUE(HasArrived());
}

class FileTransferRefusalTest : public FileTransferTest, public testing::WithParamInterface<int>
{
};

TEST_P(FileTransferRefusalTest, GoesOnWhereBlocksCannotBeShared)
{
    WriteSource(kBig);
    const Outcome outcome = TransferScripted([](const Call& call) {
        return Answer{.error = call.kind == Kind::kClone ? GetParam() : 0};
    });
    EXPECT_EQ(outcome.sum, ssize_t(kBig));
    EXPECT_EQ(outcome.status, B_OK);
    EXPECT_TRUE(HasArrived());
    EXPECT_GT(Count(Kind::kRange), 0);
    EXPECT_EQ(Count(Kind::kSetSize), 0);
}

TEST_P(FileTransferRefusalTest, ReadsAndWritesWhatTheSystemDoesNotCopy)
{
    WriteSource(kBig);
    const Outcome outcome = TransferScripted([](const Call& call) {
        const bool isRefused = call.kind == Kind::kRange && call.index == 3;
        return isRefused ? Answer{.error = GetParam()} : NoClone(call);
    });
    EXPECT_EQ(outcome.sum, ssize_t(kBig));
    EXPECT_EQ(outcome.status, B_OK);
    EXPECT_TRUE(HasArrived());
    EXPECT_EQ(Count(Kind::kRange), 4);
    // From where the others ended, and not from the start.
    off_t ended = 0;
    for (const Call& call : fCalls) {
        if (call.kind == Kind::kRange) {
            ended = call.position;
        } else if (call.kind == Kind::kRead) {
            EXPECT_GE(call.position, ended);
        }
    }
    EXPECT_GT(ended, 0);
}

INSTANTIATE_TEST_SUITE_P(Errors, FileTransferRefusalTest,
                         testing::Values(ENOTSUP, EXDEV, EINVAL, ETXTBSY, ENOTTY, ENOSYS, EPERM),
                         CodeName);

TEST_F(FileTransferTest, CopiesInPiecesThatGrow)
{
    WriteSource(40 * kMiB);
    const Outcome outcome = TransferScripted(NoClone);
    EXPECT_EQ(outcome.status, B_OK);
    EXPECT_TRUE(HasArrived());
    EXPECT_EQ(Count(Kind::kRead) + Count(Kind::kWrite), 0);
    EXPECT_GE(outcome.pieces, 5);
    ASSERT_FALSE(fCalls.empty());
    for (const Call& call : fCalls) {
        if (call.kind == Kind::kRange) {
            EXPECT_LE(call.size, ssize_t(8 * kMiB));
        }
    }
}

TEST_F(FileTransferTest, ReadsOnWhereTheSystemSaysTooEarlyThatThereIsNoMore)
{
    WriteSource(kBig);
    const Outcome outcome = TransferScripted([](const Call& call) {
        const bool isEarly = call.kind == Kind::kRange && call.index == 1;
        return isEarly ? Answer{.most = 0} : NoClone(call);
    });
    EXPECT_EQ(outcome.sum, ssize_t(kBig));
    EXPECT_TRUE(HasArrived());
    EXPECT_EQ(Count(Kind::kRange), 2);
}

TEST_F(FileTransferTest, GoesOnAfterShortPieces)
{
    WriteSource(3 * kMiB);
    const Outcome outcome = TransferScripted([](const Call& call) {
        return call.kind == Kind::kRange ? Answer{.most = 70'001} : NoClone(call);
    });
    EXPECT_EQ(outcome.sum, ssize_t(3 * kMiB));
    EXPECT_TRUE(HasArrived());
    EXPECT_EQ(Count(Kind::kRead), 0);
}

TEST_F(FileTransferTest, ReadsAndWritesBigFiles)
{
    WriteSource(20 * kMiB + 7);
    const Outcome outcome = TransferScripted(PlainOnly);
    EXPECT_EQ(outcome.sum, ssize_t(20 * kMiB + 7));
    EXPECT_EQ(outcome.status, B_OK);
    EXPECT_TRUE(HasArrived());
    EXPECT_EQ(Count(Kind::kRange), 1);
}

TEST_F(FileTransferTest, WritesOnAfterShortWrites)
{
    WriteSource(kBig);
    TransferScripted([](const Call& call) {
        return call.kind == Kind::kWrite ? Answer{.most = 50'001} : PlainOnly(call);
    });
    EXPECT_TRUE(HasArrived());
}

TEST_F(FileTransferTest, ReadsFilesOfTheKernelToTheirEnd)
{
    BFile source("/proc/self/mountinfo", B_READ_ONLY);
    BFile target(Target().c_str(), B_READ_WRITE | B_CREATE_FILE);
    BFileTransfer transfer(&source, &target);
    ssize_t sum = 0;
    ssize_t count = 0;
    while ((count = transfer.Next()) > 0) {
        sum += count;
    }
    EXPECT_EQ(count, 0);
    EXPECT_GT(sum, 0);
    EXPECT_EQ(TargetSize(), sum);
    EXPECT_FALSE(fTree.Read("target").empty());
}

TEST_F(FileTransferTest, LeavesThePositionsOfItsFiles)
{
    WriteSource(100);
    BFile source(Source().c_str(), B_READ_ONLY);
    BFile target(Target().c_str(), B_READ_WRITE | B_CREATE_FILE);
    BFileTransfer transfer(&source, &target);
    EXPECT_EQ(transfer.Next(), 100);
    EXPECT_EQ(source.Position(), 0);
    EXPECT_EQ(target.Position(), 0);
}
