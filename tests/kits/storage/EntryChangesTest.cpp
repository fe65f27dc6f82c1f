#include "NodeMonitorFixture.h"
#include "StoppedWatcher.h"
#include "storage/EntryChangeList.h"

#include <OS.h>

#include <algorithm>
#include <fcntl.h>
#include <map>
#include <sys/stat.h>

namespace {

using Kind = BEntryChange::Kind;
using Lines = std::vector<std::string>;

/// What messages tell of a folder's entries, one line each.
class ChangesLooper : public BLooper
{
public:
    ChangesLooper() : BLooper("changes") {}

    void MessageReceived(BMessage* message) override
    {
        BEntryChanges changes(*message);
        if (changes.InitCheck() != B_OK) {
            BLooper::MessageReceived(message);
            return;
        }
        const std::lock_guard lock(fMutex);
        BEntryChange change;
        fMessages++;
        while (changes.GetNext(&change)) {
            constexpr const char* kKinds[] = {"created",  "removed",   "renamed",
                                              "moved in", "exchanged", "changed"};
            std::string line = kKinds[static_cast<int>(change.kind)];
            line += std::string(" ") + change.name;
            line += *change.fromName != '\0' ? std::string(" from ") + change.fromName : "";
            line += change.record.status == B_ENTRY_NOT_FOUND ? " (gone)" : "";
            fLines.push_back(line);
            fSizes[change.name] = change.record.size;
        }
    }

    Lines Told()
    {
        const std::lock_guard lock(fMutex);
        return fLines;
    }
    off_t SizeOf(const std::string& name)
    {
        const std::lock_guard lock(fMutex);
        return fSizes[name];
    }
    int CountMessages()
    {
        const std::lock_guard lock(fMutex);
        return fMessages;
    }

private:
    std::mutex fMutex; // guards all below
    Lines fLines;
    std::map<std::string, off_t> fSizes;
    int fMessages = 0;
};

class EntryChangesTest : public NodeMonitorTest
{
protected:
    EntryChangesTest() : fChanges(new ChangesLooper), fTarget(nullptr, fChanges)
    {
        fTree.MakeFolder("d");
        fTree.Write("d/a", "");
        fTree.Write("d/b", "");
        fChanges->Run();
        const node_ref node = NodeOf("d");
        EXPECT_EQ(watch_node(&node, B_WATCH_ENTRIES, fTarget), B_OK);
    }

    ~EntryChangesTest() override
    {
        stop_watching(fTarget);
        fTarget.SendMessage(B_QUIT_REQUESTED);
    }

    /// All lines up to that of an entry made now.
    Lines Told()
    {
        fTree.Write("d/end", "");
        Lines lines;
        const auto isThere = [&] {
            lines = fChanges->Told();
            return std::find(lines.begin(), lines.end(), "created end") != lines.end();
        };
        for (int i = 0; i < 2000 && !isThere(); i++) {
            snooze(5000);
        }
        lines.erase(std::find(lines.begin(), lines.end(), "created end"), lines.end());
        return lines;
    }

    ChangesLooper* fChanges; // deletes itself
    BMessenger fTarget;
};

TEST_F(EntryChangesTest, TellsWhatHappensWithRecords)
{
    fTree.Write("d/new", "four");
    Rename("d/new", "d/other");
    fTree.Remove("d/a");
    Rename("d/b", "out");
    Rename("out", "d/in");
    const Lines lines = Told();
    ASSERT_GE(lines.size(), 5u);
    EXPECT_TRUE(lines[0].starts_with("created new"));
    const auto renamed = std::find(lines.begin(), lines.end(), "renamed other from new");
    EXPECT_NE(renamed, lines.end());
    EXPECT_EQ(Lines(lines.end() - 3, lines.end()),
              (Lines{"removed a", "removed b", "moved in in"}));
    EXPECT_EQ(fChanges->SizeOf("other"), 4);
}

TEST_F(EntryChangesTest, TellsAllOfWhatItHearsLate)
{
    {
        const StoppedWatcher stopped;
        ASSERT_TRUE(stopped.IsStopped());
        fTree.Write("d/t", "");
        Rename("d/t", "d/a"); // over a listed one
        Rename("d/a", "d/c");
        fTree.Remove("d/c");
        Rename("d/b", "d/x");
        Rename("d/x", "d/y");
    }
    EXPECT_EQ(Told(),
              (Lines{"created t (gone)", "renamed a from t (gone)", "renamed c from a (gone)",
                     "removed c", "renamed x from b (gone)", "renamed y from x"}));
    EXPECT_LE(fChanges->CountMessages(), 2);
}

TEST_F(EntryChangesTest, TellsAnExchangeOfBothNames)
{
    fTree.Write("d/b", "two");
    ASSERT_EQ(renameat2(AT_FDCWD, fTree.Path("d/a").c_str(), AT_FDCWD, fTree.Path("d/b").c_str(),
                        RENAME_EXCHANGE),
              0);
    const Lines lines = Told();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(Lines(lines.end() - 2, lines.end()), (Lines{"exchanged b", "exchanged a"}));
    EXPECT_EQ(fChanges->SizeOf("a"), 3);
    EXPECT_EQ(fChanges->SizeOf("b"), 0);
}

TEST_F(EntryChangesTest, WhatIsWrittenToANameThatGoesIsToldOfAnotherNameOfTheFile)
{
    ASSERT_EQ(link(fTree.Path("d/a").c_str(), fTree.Path("d/z").c_str()), 0);
    Told();
    {
        const StoppedWatcher stopped;
        fTree.Write("d/a", "written");
        fTree.Remove("d/a");
    }
    for (int i = 0; i < 1000 && fChanges->SizeOf("z") != 7; i++) {
        snooze(5000);
    }
    EXPECT_EQ(fChanges->SizeOf("z"), 7);
}

TEST_F(EntryChangesTest, WhatGoesWithItsFolderIsTold)
{
    fTree.Remove("d");
    Lines lines;
    for (int i = 0; i < 1000 && lines.size() < 2; i++) {
        snooze(5000);
        lines = fChanges->Told();
    }
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(lines, (Lines{"removed a", "removed b"}));
}

TEST(EntryChangeListTest, WhatIsPutInComesOut)
{
    kits::EntryChangeList list;
    BEntryRecord record;
    record.size = 5;
    list.Add(Kind::kCreated, "one", {}, record);
    list.Add(Kind::kRenamed, "two", "one", {});
    const BMessage notice = list.Notice(node_ref(3, 4));
    BEntryChanges changes(notice);
    ASSERT_EQ(changes.InitCheck(), B_OK);
    EXPECT_EQ(changes.Folder(), node_ref(3, 4));
    BEntryChange change;
    ASSERT_TRUE(changes.GetNext(&change));
    EXPECT_EQ(change.kind, Kind::kCreated);
    EXPECT_STREQ(change.name, "one");
    EXPECT_STREQ(change.fromName, "");
    EXPECT_EQ(change.record.size, 5);
    ASSERT_TRUE(changes.GetNext(&change));
    EXPECT_STREQ(change.name, "two");
    EXPECT_STREQ(change.fromName, "one");
    EXPECT_FALSE(changes.GetNext(&change));
}

TEST(EntryChangeListTest, ADamagedMessageEndsWhereItIsDamaged)
{
    kits::EntryChangeList list;
    list.Add(Kind::kRenamed, "two", "one", {});
    const BMessage whole = list.Notice(node_ref(3, 4));
    const void* bytes = nullptr;
    ssize_t size = 0;
    ASSERT_EQ(whole.FindData("changes", B_RAW_TYPE, &bytes, &size), B_OK);
    for (ssize_t length = 0; length < size; length++) {
        BMessage cut(whole);
        ASSERT_EQ(cut.RemoveName("changes"), B_OK);
        const std::vector<char> part(static_cast<const char*>(bytes),
                                     static_cast<const char*>(bytes) + length);
        cut.AddData("changes", B_RAW_TYPE, part.data(), length);
        BEntryChanges changes(cut);
        BEntryChange change;
        EXPECT_FALSE(changes.GetNext(&change)) << length;
    }
    EXPECT_NE(BEntryChanges(BMessage(B_NODE_MONITOR)).InitCheck(), B_OK);
}

} // namespace
