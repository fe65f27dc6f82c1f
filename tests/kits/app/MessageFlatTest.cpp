#include <DataIO.h>
#include <Message.h>
#include <Rect.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace {

BMessage Sample()
{
    BMessage message('smpl');
    message.AddBool("bool", true);
    message.AddInt32("number", 1);
    message.AddInt32("number", -2);
    message.AddString("text", "hello");
    message.AddString("text", "");
    message.AddRect("rect", BRect(1, 2, 3, 4));
    message.AddData("nothing", B_RAW_TYPE, nullptr, 0);
    message.AddData("nothing", B_RAW_TYPE, nullptr, 0);
    BMessage inner('innr');
    inner.AddInt64("deep", 5);
    message.AddMessage("inner", &inner);
    return message;
}

std::vector<char> Flat(const BMessage& message)
{
    std::vector<char> bytes(static_cast<size_t>(message.FlattenedSize()));
    EXPECT_EQ(message.Flatten(bytes.data(), message.FlattenedSize()), B_OK);
    return bytes;
}

status_t Unflatten(BMessage& message, const std::vector<char>& bytes)
{
    // Memory of exactly that size, so that a sanitizer sees the first byte read too far.
    const std::unique_ptr<char[]> exact(new char[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), exact.get());
    return message.Unflatten(exact.get(), static_cast<ssize_t>(bytes.size()));
}

/// A stream that yields one byte at a time and fails at its end, if told so.
class SlowStream : public BDataIO
{
public:
    SlowStream(std::vector<char> bytes, ssize_t atEnd) : fBytes(std::move(bytes)), fAtEnd(atEnd) {}

    ssize_t Read(void* buffer, size_t size) override
    {
        if (size == 0 || fNext == fBytes.size()) {
            return fAtEnd;
        }
        *static_cast<char*>(buffer) = fBytes[fNext++];
        return 1;
    }

    ssize_t Write(const void*, size_t) override { return B_DEVICE_FULL; }

private:
    std::vector<char> fBytes;
    size_t fNext = 0;
    ssize_t fAtEnd;
};

} // namespace

TEST(MessageFlatTest, ComesBackWhole)
{
    const BMessage message = Sample();
    const std::vector<char> bytes = Flat(message);

    BMessage back('else');
    back.AddInt32("older", 1);
    ASSERT_EQ(Unflatten(back, bytes), B_OK);

    EXPECT_EQ(back.what, uint32{'smpl'});
    EXPECT_EQ(back.CountNames(B_ANY_TYPE), 6);
    EXPECT_EQ(back.GetInt32("number", 1, 0), -2);
    EXPECT_STREQ(back.GetString("text", 0, nullptr), "hello");
    EXPECT_STREQ(back.GetString("text", 1, nullptr), "");
    EXPECT_TRUE(back.HasData("nothing", B_RAW_TYPE, 1));
    BMessage inner;
    EXPECT_EQ(back.FindMessage("inner", &inner), B_OK);
    EXPECT_EQ(inner.GetInt64("deep", 0), 5);
    EXPECT_EQ(Flat(back), bytes);
}

TEST(MessageFlatTest, AnEmptyMessageIsItsHeader)
{
    BMessage back;
    back.AddInt32("older", 1);

    EXPECT_EQ(Unflatten(back, Flat(BMessage('none'))), B_OK);

    EXPECT_TRUE(back.IsEmpty());
    EXPECT_EQ(back.what, uint32{'none'});
}

TEST(MessageFlatTest, RefusesEveryCutAndStaysAsItWas)
{
    const std::vector<char> bytes = Flat(Sample());
    BMessage message('keep');
    message.AddInt32("kept", 7);

    for (size_t size = 0; size < bytes.size(); size++) {
        const std::vector<char> cut(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(size));
        ASSERT_EQ(Unflatten(message, cut), B_BAD_VALUE) << size << " bytes";
    }

    EXPECT_EQ(message.what, uint32{'keep'});
    EXPECT_EQ(message.GetInt32("kept", 0), 7);
}

TEST(MessageFlatTest, RefusesEveryCutThatClaimsToBeWhole)
{
    const std::vector<char> bytes = Flat(Sample());
    BMessage message;

    for (size_t size = 24; size < bytes.size(); size++) {
        std::vector<char> cut(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(size));
        cut[8] = static_cast<char>(size & 0xff);
        cut[9] = static_cast<char>(size >> 8);
        ASSERT_EQ(Unflatten(message, cut), B_BAD_VALUE) << size << " bytes";
    }
}

TEST(MessageFlatTest, SurvivesEveryDamagedByte)
{
    const std::vector<char> bytes = Flat(Sample());
    int refused = 0;
    for (size_t i = 0; i < bytes.size(); i++) {
        for (const int flip : {0x01, 0x80, 0xff}) {
            std::vector<char> damaged = bytes;
            damaged[i] = static_cast<char>(damaged[i] ^ flip);
            BMessage message;
            if (Unflatten(message, damaged) != B_OK) {
                refused++;
                ASSERT_TRUE(message.IsEmpty());
                continue;
            }
            // What is taken is sound: it goes through once more without a change.
            BMessage again;
            ASSERT_EQ(Unflatten(again, Flat(message)), B_OK);
            ASSERT_EQ(Flat(again), Flat(message));
        }
    }
    EXPECT_GT(refused, 100);
}

TEST(MessageFlatTest, RefusesANameTwice)
{
    BMessage message;
    message.AddInt32("a", 1);
    message.AddInt32("b", 2);
    std::vector<char> bytes = Flat(message);
    const size_t second = 24 + 16 + 1 + 4 + 16;
    ASSERT_EQ(bytes[second], 'b');

    bytes[second] = 'a';

    BMessage back;
    EXPECT_EQ(Unflatten(back, bytes), B_BAD_VALUE);
}

TEST(MessageFlatTest, RefusesCountsThatNoBytesStandFor)
{
    BMessage message;
    message.AddData("n", B_RAW_TYPE, nullptr, 0);
    std::vector<char> bytes = Flat(message);
    std::memset(bytes.data() + 24 + 8, 0x7f, 4); // two thousand million values of no bytes

    BMessage back;
    EXPECT_EQ(Unflatten(back, bytes), B_BAD_VALUE);
}

TEST(MessageFlatTest, NeedsRoomForAllOfIt)
{
    const BMessage message = Sample();
    std::vector<char> bytes(static_cast<size_t>(message.FlattenedSize()));

    EXPECT_EQ(message.Flatten(bytes.data(), message.FlattenedSize() - 1), B_BAD_VALUE);
    EXPECT_EQ(message.Flatten(nullptr, 1000), B_BAD_VALUE);
    EXPECT_EQ(BMessage().Unflatten(static_cast<const char*>(nullptr)), B_BAD_VALUE);
    EXPECT_EQ(BMessage().Unflatten("none of ours, by its first letters"), B_BAD_VALUE);
}

TEST(MessageFlatTest, GoesThroughAStream)
{
    BMallocIO io;
    ssize_t size = 0;
    ASSERT_EQ(Sample().Flatten(&io, &size), B_OK);
    EXPECT_EQ(size, Sample().FlattenedSize());
    io.Write("behind", 6);
    io.Seek(0, SEEK_SET);

    BMessage back;
    ASSERT_EQ(back.Unflatten(&io), B_OK);

    EXPECT_EQ(Flat(back), Flat(Sample()));
    EXPECT_EQ(io.Position(), size);
    EXPECT_EQ(back.Unflatten(&io), B_BAD_VALUE);
}

TEST(MessageFlatTest, TellsWhyAStreamFailed)
{
    std::vector<char> bytes = Flat(Sample());
    SlowStream whole(bytes, 0);
    bytes.pop_back();
    SlowStream cut(bytes, 0);
    SlowStream broken(bytes, B_IO_ERROR);
    BMessage message;

    EXPECT_EQ(message.Unflatten(&cut), B_BAD_VALUE);
    EXPECT_EQ(message.Unflatten(&broken), B_IO_ERROR);
    EXPECT_TRUE(message.IsEmpty());
    EXPECT_EQ(message.Flatten(&broken), B_DEVICE_FULL);
    EXPECT_EQ(message.Unflatten(&whole), B_OK);
}

TEST(MessageFlatTest, BelievesNoSizeThatAStreamDoesNotHave)
{
    std::vector<char> bytes = Flat(Sample());
    bytes[8 + 5] = 0x7f; // some hundred terabytes
    SlowStream stream(bytes, 0);
    BMessage message;

    EXPECT_EQ(message.Unflatten(&stream), B_BAD_VALUE);
}
