#include <Directory.h>
#include <Entry.h>
#include <File.h>

#include <TempTree.h>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

class FileTest : public testing::Test
{
protected:
    std::string Path(const char* name) { return fTree.Path(name); }

    TempTree fTree;
};

std::string Pattern(size_t size)
{
    std::string bytes(size, '\0');
    std::minstd_rand random(static_cast<unsigned>(size));
    for (char& byte : bytes) {
        byte = static_cast<char>(random());
    }
    return bytes;
}

constexpr uint32 kNew = B_READ_WRITE | B_CREATE_FILE | B_ERASE_FILE;

} // namespace

TEST_F(FileTest, CopiesByChunksWhateverTheSize)
{
    for (const size_t size : {0ul, 1ul, 4095ul, 4096ul, 65536ul, 65537ul, 262144ul, 300000ul,
                              524288ul, 6000000ul, 9437184ul}) {
        const std::string contents = Pattern(size);
        fTree.Write("from", contents);
        BFile from(Path("from").c_str(), B_READ_ONLY);
        BFile to(Path("to").c_str(), kNew);
        char chunk[4096];
        ssize_t read;
        do {
            read = from.Read(chunk, sizeof(chunk));
            ASSERT_GE(read, 0);
            ASSERT_EQ(to.Write(chunk, static_cast<size_t>(read)), read);
        } while (read == ssize_t(sizeof(chunk)));
        // All of it is in the file now, with nothing closed.
        ASSERT_EQ(to.Write(chunk, 0), 0);
        ASSERT_EQ(fTree.Read("to"), contents) << size;
    }
}

TEST_F(FileTest, HandsOverAtAnEmptyWrite)
{
    BFile file(Path("f").c_str(), kNew);

    EXPECT_EQ(file.Write("abcd", 4), 4);
    EXPECT_EQ(fTree.Read("f"), "");
    EXPECT_EQ(file.Write("", 0), 0);
    EXPECT_EQ(fTree.Read("f"), "abcd");
}

TEST_F(FileTest, HandsOverAtAShorterWrite)
{
    BFile file(Path("f").c_str(), kNew);

    EXPECT_EQ(file.Write("abcd", 4), 4);
    EXPECT_EQ(file.Write("e", 1), 1);
    EXPECT_EQ(fTree.Read("f"), "abcde");
}

TEST_F(FileTest, HandsOverBeforeItIsAskedAnything)
{
    off_t size = 0;
    struct stat st;
    BFile file(Path("f").c_str(), kNew);
    file.Write("abcd", 4);
    EXPECT_EQ(file.GetSize(&size), B_OK);
    EXPECT_EQ(size, 4);
    file.Write("efgh", 4);
    EXPECT_EQ(file.GetStat(&st), B_OK);
    EXPECT_EQ(st.st_size, 8);
    file.Write("ijkl", 4);
    EXPECT_EQ(file.Seek(-2, SEEK_END), 10);
    EXPECT_EQ(fTree.Read("f"), "abcdefghijkl");
    file.Write("1234", 4);
    char read[4];
    EXPECT_EQ(file.Read(read, 4), 0);
    EXPECT_EQ(fTree.Read("f"), "abcdefghij1234");
    file.Write("5678", 4);
    file.Unset();
    EXPECT_EQ(fTree.Read("f"), "abcdefghij12345678");
}

TEST_F(FileTest, ReadsBackWhatWasJustWritten)
{
    BFile file(Path("f").c_str(), kNew);
    char read[8] = {};

    file.Write("hello", 5);
    EXPECT_EQ(file.Seek(0, SEEK_SET), 0);
    EXPECT_EQ(file.Read(read, 8), 5);
    EXPECT_STREQ(read, "hello");
    EXPECT_EQ(file.Seek(1, SEEK_SET), 1);
    file.Write("u", 1);
    EXPECT_EQ(file.ReadAt(0, read, 5), 5);
    EXPECT_STREQ(read, "hullo");
    EXPECT_EQ(file.Position(), 2);
    EXPECT_EQ(file.WriteAt(4, "a", 1), 1);
    EXPECT_EQ(file.Seek(0, SEEK_SET), 0);
    EXPECT_EQ(file.Read(read, 5), 5);
    EXPECT_STREQ(read, "hulla");
}

TEST_F(FileTest, NoticesThatTheFileHasGrown)
{
    fTree.Write("f", "one");
    BFile file(Path("f").c_str(), B_READ_ONLY);
    char read[16];

    EXPECT_EQ(file.Read(read, 16), 3);
    EXPECT_EQ(file.Read(read, 16), 0);
    fTree.Write("f", "onetwo");
    EXPECT_EQ(file.Read(read, 16), 3);
    EXPECT_EQ(std::string(read, 3), "two");
}

TEST_F(FileTest, MatchesAPlainFileUnderRandomCalls)
{
    std::minstd_rand random(7);
    std::string model;
    BFile file(Path("f").c_str(), kNew);
    off_t position = 0;
    for (int i = 0; i < 3000; ++i) {
        const size_t size = random() % 7 == 0 ? random() % 400000 : random() % 5000;
        switch (random() % 4) {
        case 0: {
            position = static_cast<off_t>(random() % (model.size() + 100));
            ASSERT_EQ(file.Seek(position, SEEK_SET), position);
            break;
        }
        case 1: {
            std::string read(size, '\0');
            const size_t at = std::min(static_cast<size_t>(position), model.size());
            const std::string expected = model.substr(at, size);
            ASSERT_EQ(file.Read(read.data(), size), ssize_t(expected.size()));
            ASSERT_EQ(read.substr(0, expected.size()), expected);
            position += static_cast<off_t>(expected.size());
            break;
        }
        default: {
            if (model.size() > 8'000'000) {
                ASSERT_EQ(file.SetSize(1000), B_OK);
                model.resize(1000);
                break;
            }
            const std::string bytes = Pattern(size);
            const size_t end = static_cast<size_t>(position) + size;
            if (size > 0) {
                model.resize(std::max(model.size(), end));
                model.replace(static_cast<size_t>(position), size, bytes);
            }
            ASSERT_EQ(file.Write(bytes.data(), size), ssize_t(size));
            position = static_cast<off_t>(end);
        }
        }
        ASSERT_EQ(file.Position(), position);
    }
    file.Unset();
    EXPECT_EQ(fTree.Read("f"), model);
}

TEST_F(FileTest, RefusesWhatIsNoFile)
{
    fTree.MakeFolder("folder");
    ASSERT_EQ(mkfifo(Path("fifo").c_str(), 0600), 0);
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    Path("socket").copy(address.sun_path, sizeof(address.sun_path) - 1);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    close(listener);

    for (const uint32 mode : {B_READ_ONLY, B_WRITE_ONLY, B_READ_WRITE}) {
        EXPECT_EQ(BFile(Path("fifo").c_str(), mode).InitCheck(), B_BAD_VALUE);
        EXPECT_EQ(BFile(Path("socket").c_str(), mode).InitCheck(), B_BAD_VALUE);
        EXPECT_EQ(BFile(Path("folder").c_str(), mode).InitCheck(), B_IS_A_DIRECTORY);
        EXPECT_EQ(BFile("/dev/null", mode).InitCheck(), B_BAD_VALUE);
    }
}

TEST_F(FileTest, FollowsALinkUnlessToldNotTo)
{
    fTree.Write("target", "x");
    fTree.Link("link", "target");

    EXPECT_EQ(BFile(Path("link").c_str(), B_READ_ONLY).InitCheck(), B_OK);
    EXPECT_EQ(BFile(Path("link").c_str(), B_READ_ONLY | B_NO_TRAVERSE).InitCheck(), B_LINK_LIMIT);
}

TEST_F(FileTest, OpensAChildItselfAndTellsWhatItIs)
{
    fTree.Write("f", "abc");
    fTree.Link("link", "f");
    const BDirectory folder(Path("").c_str());
    BFile file;
    struct stat st = {};

    EXPECT_EQ(file.SetToChild(folder, "f", &st), B_OK);
    EXPECT_EQ(st.st_size, 3);
    EXPECT_TRUE(file.IsReadable());
    EXPECT_FALSE(file.IsWritable());
    EXPECT_EQ(file.SetToChild(folder, "link", &st), B_LINK_LIMIT);
    EXPECT_EQ(file.SetToChild(folder, "gone", &st), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(file.SetToChild(folder, "../f", &st), B_BAD_VALUE);
    EXPECT_EQ(file.SetToChild(BDirectory(), "f", &st), B_BAD_VALUE);
    EXPECT_EQ(file.InitCheck(), B_BAD_VALUE);
}

TEST_F(FileTest, KeepsToItsMode)
{
    fTree.Write("f", "abc");
    BFile reader(Path("f").c_str(), B_READ_ONLY);
    BFile writer(Path("f").c_str(), B_WRITE_ONLY | B_OPEN_AT_END);
    char byte;

    EXPECT_EQ(reader.Write("x", 1), B_NOT_ALLOWED);
    EXPECT_EQ(writer.Read(&byte, 1), B_NOT_ALLOWED);
    EXPECT_EQ(writer.Position(), 3);
    EXPECT_EQ(writer.Write("d", 1), 1);
    EXPECT_EQ(writer.Close(), B_OK);
    EXPECT_EQ(fTree.Read("f"), "abcd");
    EXPECT_EQ(writer.Write("d", 1), B_NO_INIT);
}

TEST_F(FileTest, IsNotInheritedByPrograms)
{
    fTree.Write("f", "abc");
    BFile file(Path("f").c_str(), B_READ_ONLY);
    const int copy = file.Dup();

    ASSERT_GE(copy, 0);
    EXPECT_EQ(fcntl(copy, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    close(copy);
}

TEST_F(FileTest, ReadsOnWhereTheSystemGivesLessThanAsked)
{
    // The kernel's lists come by the page, however much is asked for.
    constexpr const char* kList = "/proc/kallsyms";
    std::ifstream list(kList);
    const std::string expected(std::istreambuf_iterator<char>(list), {});
    if (expected.size() < 100'000) {
        GTEST_SKIP() << "this system shows no " << kList;
    }
    BFile file(kList, B_READ_ONLY);
    std::string read;
    char chunk[4096];
    ssize_t count = 0;
    do {
        count = file.Read(chunk, sizeof(chunk));
        read.append(chunk, count > 0 ? static_cast<size_t>(count) : 0);
    } while (count == ssize_t(sizeof(chunk)));

    EXPECT_EQ(read.size(), expected.size());
    EXPECT_EQ(read, expected);
}

TEST_F(FileTest, OpensByEntryAndBelowAFolder)
{
    fTree.Write("a", "text");
    const BEntry entry(fTree.Path("a").c_str());
    const BDirectory folder(fTree.Path().c_str());

    BFile byEntry(&entry, B_READ_ONLY);
    BFile byFolder(&folder, "a", B_READ_ONLY);
    BFile missing(&folder, "none", B_READ_ONLY);

    char text[4];
    EXPECT_EQ(byEntry.Read(text, 4), 4);
    EXPECT_EQ(byFolder.Read(text, 4), 4);
    EXPECT_EQ(missing.InitCheck(), B_ENTRY_NOT_FOUND);
}
