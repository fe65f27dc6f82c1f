#include <File.h>
#include <FileTransfer.h>

#include <TempTree.h>
#include <gtest/gtest.h>
#include <string>

namespace {

/// Copies `from` to `to` piece by piece; the sum of what each piece stands for, or a status.
ssize_t Transfer(const std::string& from, const std::string& to)
{
    BFile source(from.c_str(), B_READ_ONLY);
    BFile target(to.c_str(), B_READ_WRITE | B_CREATE_FILE | B_ERASE_FILE);
    BFileTransfer transfer(&source, &target);
    ssize_t sum = 0;
    for (;;) {
        const ssize_t count = transfer.Next();
        if (count <= 0) {
            EXPECT_FALSE(transfer.HasFailedReading());
            return count < 0 ? count : sum;
        }
        sum += count;
    }
}

class FileTransferTest : public testing::Test
{
protected:
    TempTree fTree;
};

} // namespace

TEST_F(FileTransferTest, CopiesFilesOfAnySize)
{
    for (const size_t size : {size_t{0}, size_t{1}, size_t{4096}, size_t{65536}, size_t{65537},
                              size_t{9 * 1024 * 1024 + 3}}) {
        std::string contents(size, '\0');
        for (size_t i = 0; i < size; i++) {
            contents[i] = static_cast<char>(i * 7 + i / 251);
        }
        fTree.Write("source", contents);
        EXPECT_EQ(Transfer(fTree.Path("source"), fTree.Path("target")), ssize_t(size));
        EXPECT_TRUE(fTree.Read("target") == contents) << size;
    }
}

TEST_F(FileTransferTest, TellsThatTheTargetCannotBeWritten)
{
    fTree.Write("source", std::string(10'000, 'x'));
    BFile source(fTree.Path("source").c_str(), B_READ_ONLY);
    BFile target(fTree.Path("source").c_str(), B_READ_ONLY); // nothing can be written there
    BFileTransfer transfer(&source, &target);
    EXPECT_EQ(transfer.Next(), B_NOT_ALLOWED);
    EXPECT_FALSE(transfer.HasFailedReading());
}

TEST_F(FileTransferTest, TellsThatTheSourceCannotBeRead)
{
    BFile source(fTree.Path("source").c_str(), B_WRITE_ONLY | B_CREATE_FILE);
    BFile target(fTree.Path("target").c_str(), B_WRITE_ONLY | B_CREATE_FILE);
    BFileTransfer transfer(&source, &target);
    EXPECT_EQ(transfer.Next(), B_NOT_ALLOWED);
    EXPECT_TRUE(transfer.HasFailedReading());
}
