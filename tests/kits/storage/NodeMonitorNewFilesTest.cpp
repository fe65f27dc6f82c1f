#include "NodeMonitorFixture.h"

#include <fcntl.h>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Looks at what each notice speaks of when it gets it, as a listing does.
class Looker : public BLooper
{
public:
    explicit Looker(std::string folder) : BLooper("looker"), fFolder(std::move(folder)) {}

    void MessageReceived(BMessage* message) override
    {
        const char* name = nullptr;
        int32 opcode = 0;
        if (message->what != B_NODE_MONITOR || message->FindString("name", &name) != B_OK ||
            message->FindInt32("opcode", &opcode) != B_OK) {
            return;
        }
        struct stat record = {};
        const int status = stat((fFolder + "/" + name).c_str(), &record);
        std::lock_guard lock(fMutex);
        fCreated += opcode == B_ENTRY_CREATED ? 1 : 0;
        fChanged += opcode == B_STAT_CHANGED ? 1 : 0;
        if (status == 0) {
            fSeen[name] = {record.st_size, record.st_mode & 07777};
        }
        fArrival.notify_all();
    }

    struct Look
    {
        off_t size;
        mode_t mode;
        bool operator==(const Look&) const = default;
    };

    /// Whether within some seconds all was seen like that.
    bool HasSeen(const std::map<std::string, Look>& expected)
    {
        std::unique_lock lock(fMutex);
        return fArrival.wait_for(lock, std::chrono::seconds(10), [&] { return fSeen == expected; });
    }
    int Created()
    {
        std::lock_guard lock(fMutex);
        return fCreated;
    }
    int Changed()
    {
        std::lock_guard lock(fMutex);
        return fChanged;
    }

private:
    const std::string fFolder;
    std::mutex fMutex; // guards what follows
    std::condition_variable fArrival;
    std::map<std::string, Look> fSeen;
    int fCreated = 0;
    int fChanged = 0;
};

class NodeMonitorNewFilesTest : public testing::Test
{
protected:
    NodeMonitorNewFilesTest()
    {
        fTree.MakeFolder("d");
        fLooker = new Looker(fTree.Path("d"));
        fLooker->Run();
        fMessenger = BMessenger(nullptr, fLooker);
        node_ref node;
        EXPECT_EQ(BEntry(fTree.Path("d").c_str()).GetNodeRef(&node), B_OK);
        EXPECT_EQ(watch_node(&node, B_WATCH_DIRECTORY | B_WATCH_STAT, fMessenger), B_OK);
    }
    ~NodeMonitorNewFilesTest() override
    {
        stop_watching(fMessenger);
        fLooker->Lock();
        fLooker->Quit();
    }

    TempTree fTree;
    Looker* fLooker;
    BMessenger fMessenger;
};

} // namespace

// A notice of a change may be left out only when who hears of the creation sees the change.
TEST_F(NodeMonitorNewFilesTest, WhoLooksAtEachNoticeSeesTheLastOfEachFile)
{
    constexpr int kFiles = 3000;
    std::map<std::string, Looker::Look> expected;
    for (int i = 0; i < kFiles; ++i) {
        const std::string name = "file" + std::to_string(i);
        const int file = open(fTree.Path("d/" + name).c_str(), O_CREAT | O_WRONLY, 0600);
        ASSERT_GE(file, 0);
        ASSERT_EQ(write(file, "12345", 5), 5);
        if (i % 7 == 0) {
            usleep(300); // so that turns end between the calls, too
        }
        ASSERT_EQ(write(file, "12345", 5), 5);
        if (i % 11 == 0) {
            usleep(300);
        }
        ASSERT_EQ(fchmod(file, 0644), 0);
        close(file);
        expected[name] = {10, 0644};
    }
    EXPECT_TRUE(fLooker->HasSeen(expected));
    EXPECT_EQ(fLooker->Created(), kFiles);
    EXPECT_LT(fLooker->Changed(), kFiles) << "most are told with their creation";
}

// Who has it listed by its first name hears of nothing created there.
TEST_F(NodeMonitorNewFilesTest, WhatIsWrittenToANewLinkIsToldOfTheFile)
{
    constexpr int kRounds = 20;
    for (int i = 0; i < kRounds; ++i) {
        fTree.Write("d/first" + std::to_string(i), "");
    }
    usleep(300'000); // told, and quiet
    for (int i = 0; i < kRounds; ++i) {
        const std::string number = std::to_string(i);
        ASSERT_EQ(
            link(fTree.Path("d/first" + number).c_str(), fTree.Path("d/other" + number).c_str()),
            0);
        const int file = open(fTree.Path("d/other" + number).c_str(), O_WRONLY);
        ASSERT_EQ(write(file, "12345", 5), 5);
        close(file);
    }
    usleep(300'000);
    EXPECT_GE(fLooker->Changed(), kRounds);
}
