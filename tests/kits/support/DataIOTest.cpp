#include <DataIO.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

std::string Content(const BMallocIO& io)
{
    return std::string(static_cast<const char*>(io.Buffer()), io.BufferLength());
}

} // namespace

TEST(MallocIOTest, GrowsWithWhatIsWritten)
{
    BMallocIO io;

    EXPECT_EQ(io.Write("hello ", 6), 6);
    EXPECT_EQ(io.Write("world", 5), 5);

    EXPECT_EQ(Content(io), "hello world");
    EXPECT_EQ(io.Position(), 11);
    off_t size = 0;
    EXPECT_EQ(io.GetSize(&size), B_OK);
    EXPECT_EQ(size, 11);
}

TEST(MallocIOTest, FillsGapsWithZeros)
{
    BMallocIO io;
    io.Write("abc", 3);

    EXPECT_EQ(io.WriteAt(5, "x", 1), 1);

    EXPECT_EQ(Content(io), std::string("abc\0\0x", 6));
    EXPECT_EQ(io.Position(), 3);
}

TEST(MallocIOTest, ShowsNothingOfWhatWasCutOff)
{
    BMallocIO io;
    io.Write("secret", 6);

    EXPECT_EQ(io.SetSize(2), B_OK);
    EXPECT_EQ(io.SetSize(4), B_OK);

    EXPECT_EQ(Content(io), std::string("se\0\0", 4));
    EXPECT_EQ(io.SetSize(-1), B_BAD_VALUE);
}

TEST(MallocIOTest, ReadsUpToItsEnd)
{
    BMallocIO io;
    io.Write("abcdef", 6);
    char buffer[10] = "";

    EXPECT_EQ(io.Read(buffer, 10), 0);
    EXPECT_EQ(io.Seek(2, SEEK_SET), 2);
    EXPECT_EQ(io.Read(buffer, 3), 3);
    EXPECT_STREQ(buffer, "cde");
    EXPECT_EQ(io.Position(), 5);
    EXPECT_EQ(io.ReadAt(4, buffer, 10), 2);
    EXPECT_EQ(io.Position(), 5);
    EXPECT_EQ(io.ReadAt(-1, buffer, 1), B_BAD_VALUE);
}

TEST(MallocIOTest, SeeksFromAllPlaces)
{
    BMallocIO io;
    io.Write("abcdef", 6);

    EXPECT_EQ(io.Seek(-2, SEEK_END), 4);
    EXPECT_EQ(io.Seek(-1, SEEK_CUR), 3);
    EXPECT_EQ(io.Seek(-4, SEEK_CUR), B_BAD_VALUE);
    EXPECT_EQ(io.Seek(0, 17), B_BAD_VALUE);
    EXPECT_EQ(io.Position(), 3);
    EXPECT_EQ(io.Seek(100, SEEK_SET), 100);
    EXPECT_EQ(io.Seek(INT64_MAX, SEEK_CUR), B_BAD_VALUE);
}

TEST(MallocIOTest, RefusesWhatCannotFit)
{
    BMallocIO io;
    io.Write("a", 1);

    EXPECT_EQ(io.WriteAt(INT64_MAX, "x", 1), B_NO_MEMORY);
    EXPECT_EQ(io.SetSize(INT64_MAX), B_NO_MEMORY);

    EXPECT_EQ(Content(io), "a");
}

TEST(MemoryIOTest, WritesOnlyWhatFits)
{
    char memory[5] = "----";
    BMemoryIO io(memory, 4);

    EXPECT_EQ(io.WriteAt(2, "abcdef", 6), 2);
    EXPECT_EQ(io.WriteAt(4, "x", 1), 0);

    EXPECT_STREQ(memory, "--ab");
}

TEST(MemoryIOTest, CountsAsManyBytesAsItIsTold)
{
    char memory[5] = "abcd";
    BMemoryIO io(memory, 4);
    char buffer[4];

    EXPECT_EQ(io.SetSize(2), B_OK);
    EXPECT_EQ(io.ReadAt(0, buffer, 4), 2);
    EXPECT_EQ(io.SetSize(5), B_ERROR);
    EXPECT_EQ(io.SetSize(4), B_OK);
    EXPECT_EQ(std::memcmp(memory, "ab\0\0", 4), 0);
}

TEST(MemoryIOTest, ReadsConstantMemoryOnly)
{
    const char* memory = "abcd";
    BMemoryIO io(static_cast<const void*>(memory), 4);
    char buffer[5] = "";

    EXPECT_EQ(io.Write("x", 1), B_NOT_ALLOWED);
    EXPECT_EQ(io.SetSize(1), B_NOT_ALLOWED);
    EXPECT_EQ(io.Read(buffer, 5), 4);
    EXPECT_STREQ(buffer, "abcd");
}
