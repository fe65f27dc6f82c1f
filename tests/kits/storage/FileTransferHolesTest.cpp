#include "FileTransferFixture.h"

#include "storage/PieceSize.h"

#include <Errors.h>

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

// Files with holes, each way: as the system copies, and by reading and writing.

namespace {

constexpr off_t kKiB = 1024;
constexpr off_t kMiB = 1024 * kKiB;
constexpr off_t kGiB = 1024 * kMiB;

struct Stretch
{
    off_t position;
    off_t size;
};

class FileTransferHolesTest : public FileTransferTest, public testing::WithParamInterface<bool>
{
protected:
    /// A source of `size` bytes with data at these places and holes between them. A volume that
    /// makes none is of no use here.
    void WriteSparse(off_t size, const std::vector<Stretch>& data)
    {
        const int file = open(Source().c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
        ASSERT_GE(file, 0);
        ASSERT_EQ(ftruncate(file, size), 0);
        off_t bytes = 0;
        for (const Stretch& stretch : data) {
            const std::string contents = Contents(stretch);
            ASSERT_EQ(pwrite(file, contents.data(), contents.size(), stretch.position),
                      ssize_t(contents.size()));
            bytes += stretch.size;
        }
        close(file);
        ASSERT_LT(Occupied(Source()), size) << "this volume makes no holes";
        fData = data;
        fSize = size;
    }

    Outcome Copy()
    {
        return TransferScripted([](const Call& call) {
            const bool isRefused =
                call.kind == Kind::kClone || (!GetParam() && call.kind == Kind::kRange);
            return Answer{.error = isRefused ? EXDEV : 0};
        });
    }

    /// The data are where they were, and there are none elsewhere: what is no hole was written.
    void ExpectSame(off_t mostExtra)
    {
        EXPECT_EQ(TargetSize(), fSize);
        EXPECT_LE(Occupied(Target()), Occupied(Source()) + mostExtra);
        const int file = open(Target().c_str(), O_RDONLY);
        ASSERT_GE(file, 0);
        for (const Stretch& stretch : fData) {
            std::string found(size_t(stretch.size), '\0');
            EXPECT_EQ(pread(file, found.data(), found.size(), stretch.position),
                      ssize_t(found.size()));
            EXPECT_TRUE(found == Contents(stretch)) << stretch.position;
        }
        close(file);
    }

    static std::string Contents(const Stretch& stretch)
    {
        std::string contents(size_t(stretch.size), '\0');
        for (size_t i = 0; i < contents.size(); i++) {
            contents[i] = static_cast<char>(1 + (i + size_t(stretch.position) / 4096) % 251);
        }
        return contents;
    }

    std::vector<Stretch> fData;
    off_t fSize = 0;
};

INSTANTIATE_TEST_SUITE_P(Ways, FileTransferHolesTest, testing::Bool(), WayName);

} // namespace

TEST_P(FileTransferHolesTest, KeepsAHugeFileSmall)
{
    WriteSparse(10 * kGiB, {{512 * kMiB, 256 * kKiB},
                            {3 * kGiB + 4096, 512 * kKiB},
                            {7 * kGiB + 123, 255 * kKiB},
                            {9 * kGiB, kKiB}});
    const Outcome outcome = Copy();
    EXPECT_EQ(outcome.sum, 10 * kGiB);
    EXPECT_EQ(outcome.status, B_OK);
    ExpectSame(16 * kKiB);
}

TEST_P(FileTransferHolesTest, KeepsAHoleAtTheBeginning)
{
    WriteSparse(20 * kMiB, {{12 * kMiB, 8 * kMiB}});
    EXPECT_EQ(Copy().sum, 20 * kMiB);
    ExpectSame(16 * kKiB);
    EXPECT_TRUE(HasArrived());
}

TEST_P(FileTransferHolesTest, KeepsAHoleAtTheEnd)
{
    WriteSparse(20 * kMiB + 5, {{0, 3 * kMiB}});
    EXPECT_EQ(Copy().sum, 20 * kMiB + 5);
    ExpectSame(16 * kKiB);
    EXPECT_TRUE(HasArrived());
}

TEST_P(FileTransferHolesTest, KeepsAFileThatIsNothingElse)
{
    WriteSparse(300 * kMiB, {});
    EXPECT_EQ(Copy().sum, 300 * kMiB);
    ExpectSame(0);
}

TEST_P(FileTransferHolesTest, KeepsManyShortHoles)
{
    std::vector<Stretch> data;
    for (off_t position = 0; position < 32 * kMiB; position += 64 * kKiB) {
        data.push_back({position + 8 * kKiB, 12 * kKiB});
    }
    WriteSparse(32 * kMiB, data);
    const Outcome outcome = Copy();
    EXPECT_EQ(outcome.sum, 32 * kMiB);
    ExpectSame(64 * kKiB);
    EXPECT_TRUE(HasArrived());
}

TEST_P(FileTransferHolesTest, KeepsTheHoleOfASmallFile)
{
    WriteSparse(60 * kKiB, {{48 * kKiB, 4 * kKiB}});
    EXPECT_EQ(Copy().sum, 60 * kKiB);
    ExpectSame(0);
    EXPECT_TRUE(HasArrived());
}

TEST_P(FileTransferHolesTest, MakesALongHoleInSteps)
{
    WriteSparse(10 * kGiB, {{0, 4 * kKiB}});
    Copy();
    // A file system without holes fills it, and each step must be short.
    off_t last = 0;
    for (const Call& call : fCalls) {
        if (call.kind == Kind::kSetSize) {
            EXPECT_LE(call.position - last, std::max(2 * last, 2 * kMiB));
            last = call.position;
        }
    }
    EXPECT_EQ(last, 10 * kGiB);
}

TEST_P(FileTransferHolesTest, CopiesAsDataWhereHolesAreNotKnown)
{
    WriteSparse(5 * kMiB, {{2 * kMiB, kMiB}});
    const Outcome outcome = TransferScripted([](const Call& call) {
        const bool isRefused = call.kind == Kind::kClone || call.kind == Kind::kSeekData ||
                               (!GetParam() && call.kind == Kind::kRange);
        return Answer{.error = isRefused ? EINVAL : 0};
    });
    EXPECT_EQ(outcome.sum, 5 * kMiB);
    EXPECT_EQ(outcome.status, B_OK);
    EXPECT_TRUE(HasArrived());
    EXPECT_EQ(Count(Kind::kSeekData), 1);
}

TEST_P(FileTransferHolesTest, TellsNoMoreThanItCopiedWhenTheSourceIsCut)
{
    // In data behind a short hole, in a long hole, and in the hole at the end.
    for (const off_t cut : {off_t{2 * kMiB - 100}, off_t{10 * kMiB}, off_t{60 * kMiB}, off_t{1}}) {
        WriteSparse(80 * kMiB, {{0, kMiB}, {2 * kMiB - 256 * kKiB, kMiB}, {50 * kMiB, kMiB}});
        bool isCut = false;
        const Outcome outcome = TransferScripted([&](const Call& call) {
            if (call.kind == Kind::kClone || (!GetParam() && call.kind == Kind::kRange)) {
                return Answer{.error = EXDEV};
            }
            if (call.kind == Kind::kSeekData && call.index == 1 && !isCut) {
                isCut = true;
                EXPECT_EQ(truncate(Source().c_str(), cut), 0);
            }
            return Answer();
        });
        EXPECT_TRUE(isCut);
        EXPECT_EQ(outcome.status, B_OK);
        EXPECT_EQ(outcome.sum, TargetSize()) << cut;
        EXPECT_EQ(outcome.sum, std::max(cut, kMiB)) << cut;
    }
}

TEST_P(FileTransferHolesTest, TellsThatAHoleIsCutAfterItWasSeen)
{
    WriteSparse(80 * kMiB, {{0, kMiB}, {kMiB + 512 * kKiB, kMiB}});
    const Outcome outcome = TransferScripted([&](const Call& call) {
        if (call.kind == Kind::kClone || (!GetParam() && call.kind == Kind::kRange)) {
            return Answer{.error = EXDEV};
        }
        const bool isBehindTheHole = (call.kind == Kind::kRange || call.kind == Kind::kRead) &&
                                     call.position == kMiB + 512 * kKiB;
        if (isBehindTheHole) {
            EXPECT_EQ(truncate(Source().c_str(), kMiB + 100 * kKiB), 0);
        }
        return Answer();
    });
    EXPECT_EQ(outcome.status, B_OK);
    EXPECT_EQ(outcome.sum, kMiB + 100 * kKiB);
    EXPECT_EQ(TargetSize(), outcome.sum);
}

TEST_F(FileTransferTest, TellsThatAHoleCannotBeMade)
{
    const int file = open(Source().c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(ftruncate(file, 100 * kMiB), 0);
    close(file);
    const Outcome outcome = TransferScripted([](const Call& call) {
        if (call.kind == Kind::kSetSize && call.position > 50 * kMiB) {
            return Answer{.error = ENOSPC};
        }
        return Answer{.error = call.kind == Kind::kClone ? EXDEV : 0};
    });
    EXPECT_EQ(outcome.status, B_DEVICE_FULL);
    EXPECT_FALSE(outcome.hasFailedReading);
    EXPECT_LE(outcome.sum, 50 * kMiB);
}

TEST(PieceSizeTest, ShrinksWithWhatTookLong)
{
    kits::PieceSize piece(8 * kMiB);
    EXPECT_EQ(piece.Bytes(), kMiB);
    piece.Took(kMiB, 100'000); // 10 MiB a second
    EXPECT_EQ(piece.Bytes(), 256 * kKiB);
    piece.Took(256 * kKiB, 25'000);
    EXPECT_EQ(piece.Bytes(), 256 * kKiB);
    piece.Took(256 * kKiB, 10'000'000);
    EXPECT_EQ(piece.Bytes(), 64 * kKiB);
}

TEST(PieceSizeTest, GrowsWithWhatWentFast)
{
    kits::PieceSize piece(8 * kMiB);
    for (const off_t expected : {2 * kMiB, 4 * kMiB, 8 * kMiB, 8 * kMiB}) {
        piece.Took(piece.Bytes(), 1'000);
        EXPECT_EQ(piece.Bytes(), expected);
    }
    piece.Took(8 * kMiB, 15'000);
    EXPECT_EQ(piece.Bytes(), 8 * kMiB);
}
