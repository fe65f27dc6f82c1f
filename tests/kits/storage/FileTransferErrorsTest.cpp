#include "FileTransferFixture.h"
#include "OwnVolume.h"

#include <Errors.h>
#include <File.h>
#include <FileTransfer.h>

#include <NoThreads.h>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

// What goes wrong while a file is copied, and what others do to it meanwhile.

namespace {

constexpr size_t kMiB = size_t{1} << 20;
constexpr size_t kBig = 9 * kMiB + 3;

/// The calls answer so from `from` on, wherever the piece began; before that they do what fits.
Answer From(off_t from, int error, const Call& call)
{
    if (call.position >= from) {
        return {.error = error};
    }
    return call.position + call.size > from ? Answer{.most = ssize_t(from - call.position)}
                                            : Answer();
}

bool IsRangeOr(Kind kind, const Call& call)
{
    return call.kind == Kind::kRange || call.kind == kind;
}

/// Both ways of copying: with and without the system's own.
class FileTransferBothTest : public FileTransferTest, public testing::WithParamInterface<bool>
{
protected:
    /// What every test of these begins with: blocks are not shared, and perhaps not copied.
    static bool IsRefused(const Call& call)
    {
        return call.kind == Kind::kClone || (!GetParam() && call.kind == Kind::kRange);
    }
};

INSTANTIATE_TEST_SUITE_P(Ways, FileTransferBothTest, testing::Bool(), WayName);

} // namespace

TEST_P(FileTransferBothTest, TellsThatTheSourceIsBroken)
{
    WriteSource(kBig);
    const Outcome outcome = TransferScripted([](const Call& call) {
        if (IsRefused(call)) {
            return Answer{.error = EXDEV};
        }
        return IsRangeOr(Kind::kRead, call) ? From(5 * kMiB + 4096, EIO, call) : Answer();
    });
    EXPECT_EQ(outcome.status, B_IO_ERROR);
    EXPECT_TRUE(outcome.hasFailedReading);
    EXPECT_EQ(outcome.sum, ssize_t(5 * kMiB + 4096));
    EXPECT_TRUE(fTree.Read("target") == fTree.Read("source").substr(0, 5 * kMiB + 4096));
}

TEST_P(FileTransferBothTest, TellsThatTheTargetIsBroken)
{
    WriteSource(kBig);
    const Outcome outcome = TransferScripted([](const Call& call) {
        if (IsRefused(call)) {
            return Answer{.error = EXDEV};
        }
        return IsRangeOr(Kind::kWrite, call) ? From(5 * kMiB, EIO, call) : Answer();
    });
    EXPECT_EQ(outcome.status, B_IO_ERROR);
    EXPECT_FALSE(outcome.hasFailedReading);
}

TEST_P(FileTransferBothTest, TellsThatTheVolumeIsFull)
{
    WriteSource(kBig);
    const Outcome outcome = TransferScripted([](const Call& call) {
        if (IsRefused(call)) {
            return Answer{.error = EXDEV};
        }
        return IsRangeOr(Kind::kWrite, call) ? From(8 * kMiB + 100, ENOSPC, call) : Answer();
    });
    EXPECT_EQ(outcome.status, B_DEVICE_FULL);
    EXPECT_FALSE(outcome.hasFailedReading);
    EXPECT_EQ(TargetSize(), off_t(8 * kMiB + 100)); // every byte that fits
}

TEST_F(FileTransferTest, StopsReadingSoonAfterWritingFailed)
{
    WriteSource(40 * kMiB);
    const Outcome outcome = TransferScripted([](const Call& call) {
        if (call.kind == Kind::kClone || call.kind == Kind::kRange) {
            return Answer{.error = EXDEV};
        }
        return call.kind == Kind::kWrite ? From(8 * kMiB, EIO, call) : Answer();
    });
    EXPECT_EQ(outcome.status, B_IO_ERROR);
    EXPECT_LT(outcome.sum, ssize_t(16 * kMiB));
}

TEST_F(FileTransferTest, TellsAnErrorOfTheVeryLastBlock)
{
    WriteSource(kBig);
    const Outcome outcome = TransferScripted([](const Call& call) {
        if (call.kind == Kind::kClone || call.kind == Kind::kRange) {
            return Answer{.error = EXDEV};
        }
        return call.kind == Kind::kWrite ? From(kBig - 3, ENOSPC, call) : Answer();
    });
    EXPECT_EQ(outcome.status, B_DEVICE_FULL);
    EXPECT_EQ(TargetSize(), off_t(kBig - 3));
}

TEST_F(FileTransferTest, FillsARealVolumeToItsEnd)
{
    fTree.MakeFolder("volume");
    OnVolume(fTree.Path("volume"), "size=6m", [this] {
        WriteSource(kBig);
        BFile source(Source().c_str(), B_READ_ONLY);
        BFile target(fTree.Path("volume/f").c_str(), B_READ_WRITE | B_CREATE_FILE);
        BFileTransfer transfer(&source, &target);
        ssize_t count = 0;
        while ((count = transfer.Next()) > 0) {
        }
        struct stat st;
        stat(fTree.Path("volume/f").c_str(), &st);
        return Expect(count == B_DEVICE_FULL, "full") &&
               Expect(!transfer.HasFailedReading(), "of the target") &&
               Expect(st.st_size == off_t(6 * kMiB), "all that fits is there");
    });
}

TEST_P(FileTransferBothTest, EndsWhereASourceWasCut)
{
    WriteSource(kBig);
    bool isCut = false;
    const Outcome outcome = TransferScripted([&](const Call& call) {
        if (IsRefused(call)) {
            return Answer{.error = EXDEV};
        }
        if (IsRangeOr(Kind::kRead, call) && call.position >= off_t(kMiB) && !isCut) {
            isCut = true;
            EXPECT_EQ(truncate(Source().c_str(), 3 * kMiB + 17), 0);
        }
        return Answer();
    });
    EXPECT_EQ(outcome.status, B_OK);
    EXPECT_FALSE(outcome.hasFailedReading);
    EXPECT_EQ(outcome.sum, off_t(3 * kMiB + 17));
    EXPECT_TRUE(HasArrived());
}

TEST_P(FileTransferBothTest, EndsWhereASourceBecameShorterThanWhatWasCopied)
{
    WriteSource(kBig);
    bool isCut = false;
    const Outcome outcome = TransferScripted([&](const Call& call) {
        if (IsRefused(call)) {
            return Answer{.error = EXDEV};
        }
        if (IsRangeOr(Kind::kRead, call) && call.position >= off_t(2 * kMiB) && !isCut) {
            isCut = true;
            EXPECT_EQ(truncate(Source().c_str(), 5), 0);
        }
        return Answer();
    });
    EXPECT_EQ(outcome.status, B_OK);
    EXPECT_EQ(outcome.sum, TargetSize());
    EXPECT_LT(outcome.sum, ssize_t(kBig));
}

TEST_P(FileTransferBothTest, DoesNotRunAfterASourceThatGrows)
{
    const std::string contents = WriteSource(kBig);
    const Outcome outcome = TransferScripted([&](const Call& call) {
        if (IsRefused(call)) {
            return Answer{.error = EXDEV};
        }
        if (IsRangeOr(Kind::kRead, call)) {
            struct stat st;
            stat(Source().c_str(), &st);
            if (st.st_size < off_t(100 * kMiB)) { // who runs after it fails, and ends
                EXPECT_EQ(truncate(Source().c_str(), st.st_size + off_t(8 * kMiB)), 0);
            }
        }
        return Answer();
    });
    EXPECT_EQ(outcome.status, B_OK);
    EXPECT_EQ(outcome.sum, ssize_t(kBig));
    EXPECT_TRUE(fTree.Read("target") == contents);
}

TEST_F(FileTransferTest, CopiesWithoutAThreadToBeHad)
{
    WriteSource(kBig);
    const NoThreads none;
    const Outcome outcome = TransferScripted([](const Call& call) {
        const bool isRefused = call.kind == Kind::kClone || call.kind == Kind::kRange;
        return Answer{.error = isRefused ? EXDEV : 0};
    });
    EXPECT_EQ(outcome.status, B_OK);
    EXPECT_TRUE(HasArrived());
    EXPECT_GT(NoThreads::CountRefused(), 0);
}
