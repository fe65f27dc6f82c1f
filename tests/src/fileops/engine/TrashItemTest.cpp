#include "ItemFixture.h"

#include <sys/mount.h>
#include <unistd.h>

namespace norvane {

/// Items thrown into the Trash.
class TrashItemTest : public ItemFixture
{
protected:
    bool HasLine(const std::string& file, const std::string& line)
    {
        return ("\n" + fTree.Read(file)).find("\n" + line + "\n") != std::string::npos;
    }
};

TEST_F(TrashItemTest, MovesWithARecordOfOrigin)
{
    fTree.Write("from/tree/a", "1");
    fTree.Link("from/link", "gone");
    Trash("from/tree");
    Trash("from/link");
    EXPECT_EQ(Trashed(), "link\ntree\n");
    EXPECT_EQ(fTree.Read("data/Trash/files/tree/a"), "1");
    EXPECT_TRUE(HasLine("data/Trash/info/tree.trashinfo", "Path=" + fTree.Path("from/tree")));
    EXPECT_EQ(fTree.ReadLink("data/Trash/files/link"), "gone");
    EXPECT_EQ(fTree.List("from"), "");
}

TEST_F(TrashItemTest, NamesThatAreTakenAreCopies)
{
    for (const char* expected : {"report", "report copy", "report copy2", "report copy3"}) {
        fTree.Write("from/report", expected);
        Trash("from/report");
        EXPECT_EQ(fTree.Read(std::string("data/Trash/files/") + expected), expected);
    }
    EXPECT_EQ(Trashed(), "report\nreport copy\nreport copy2\nreport copy3\n");
}

TEST_F(TrashItemTest, ANameWhoseRecordIsTakenIsTaken)
{
    fTree.Write("data/Trash/info/a.trashinfo", "of something that is gone");
    fTree.MakeFolder("data/Trash/files");
    fTree.Write("from/a", "1");
    Trash("from/a");
    EXPECT_EQ(fTree.List("data/Trash/files"), "a copy\n");
    EXPECT_EQ(fTree.Read("data/Trash/info/a.trashinfo"), "of something that is gone");
}

TEST_F(TrashItemTest, NothingInTheTrashIsReplacedOrMergedInto)
{
    fTree.Write("data/Trash/files/tree/old", "old");
    fTree.Write("data/Trash/info/tree.trashinfo", "");
    fTree.Write("from/tree/new", "new");
    Trash("from/tree");
    EXPECT_EQ(fTree.List("data/Trash/files/tree"), "old\n");
    EXPECT_EQ(fTree.List("data/Trash/files/tree copy"), "new\n");
}

TEST_F(TrashItemTest, TellsWhatItSaidAboutEachCase)
{
    fTree.Write("from/a", "1");
    WithItem("from/a", [&](NorvaneEntry& item) {
        EXPECT_TRUE(item.TrashIt());
        EXPECT_EQ(item.TrashStatus(), B_OK);
    });
    fTree.Write("from/b", "1");
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("from/b").c_str(), &ref), B_OK);
    fTree.Remove("from/b");
    NorvaneEntry gone(&ref);
    EXPECT_FALSE(gone.TrashIt());
    EXPECT_EQ(gone.TrashStatus(), B_ENTRY_NOT_FOUND);
    NorvaneEntry none(nullptr);
    EXPECT_FALSE(none.TrashIt());
}

TEST_F(TrashItemTest, WhatMayNotBeMovedStaysAndIsTold)
{
    fTree.Write("from/a", "1");
    SetMode("from", 0555);
    {
        const WithoutFileRights rights;
        WithItem("from/a", [&](NorvaneEntry& item) { EXPECT_TRUE(item.TrashIt()); });
        Trash("from/a");
    }
    SetMode("from", 0755);
    EXPECT_EQ(fTree.Read("from/a"), "1");
    EXPECT_EQ(Trashed(), "");
    ASSERT_EQ(ProblemNames(), "a ");
    EXPECT_EQ(fUI.problems[0].second, "permission denied");
}

TEST_F(TrashItemTest, WhatIsGoneIsTold)
{
    fTree.Write("from/a", "1");
    const std::vector<entry_ref> refs = Refs({"from/a"});
    fTree.Remove("from/a");
    norvane::Trash(refs, fUI).Run();
    EXPECT_EQ(ProblemNames(), "a ");
    EXPECT_EQ(Trashed(), "");
}

TEST_F(TrashItemTest, LongNamesFit)
{
    const std::string name(255, 'n');
    for (const char* contents : {"first", "second"}) {
        fTree.Write("from/" + name, contents);
        Trash("from/" + name);
    }
    const std::string names = Trashed();
    EXPECT_EQ(std::count(names.begin(), names.end(), '\n'), 2);
    EXPECT_EQ(fTree.List("from"), "");
    EXPECT_TRUE(fUI.problems.empty());
}

// Other volumes

TEST_F(TrashItemTest, FromAnotherVolumeItIsCopiedWithARecord)
{
    fTree.MakeFolder("from");
    fTree.Write("data/Trash/files/tree/old", "old");
    fTree.Write("data/Trash/info/tree.trashinfo", "");
    Privately([this] {
        if (!MountMemory(fTree.Path("from"), 1 << 20)) {
            return false;
        }
        fTree.Write("from/tree/a", "1");
        SetMode("from/tree/a", 0640);
        Trash("from/tree");
        return Check(Trashed() == "tree\ntree copy\n", "under a free name") &&
               Check(fTree.List("data/Trash/files/tree") == "old\n", "nothing merged") &&
               Check(fTree.Read("data/Trash/files/tree copy/a") == "1", "copied") &&
               Check(Mode("data/Trash/files/tree copy/a") == 0640, "with its mode") &&
               Check(HasLine("data/Trash/info/tree copy.trashinfo",
                             "Path=" + fTree.Path("from/tree")),
                     "with its origin") &&
               Check(fTree.List("from") == "", "and gone") &&
               Check(fUI.questions.empty() && fUI.problems.empty(), "without a word");
    });
}

TEST_F(TrashItemTest, ThroughAnotherMountOfItsVolumeItIsCopied)
{
    fTree.Write("other/tree/a", "1");
    fTree.MakeFolder("from");
    Privately([this] {
        // The same device, yet nothing can be moved out of it by renaming.
        if (mount(fTree.Path("other").c_str(), fTree.Path("from").c_str(), nullptr, MS_BIND,
                  nullptr) != 0) {
            return false;
        }
        Trash("from/tree");
        return Check(Trashed() == "tree\n", "in the Trash") &&
               Check(fTree.Read("data/Trash/files/tree/a") == "1", "whole") &&
               Check(fTree.List("other") == "", "and gone") &&
               Check(fUI.problems.empty(), "without a word");
    });
}

TEST_F(TrashItemTest, APartialCopyIsRemovedAndItsSourceInItsOwnTrash)
{
    fTree.MakeFolder("from");
    Privately([this] {
        if (!MountMemory(fTree.Path("from"), 1 << 20)) {
            return false;
        }
        fTree.Write("from/tree/a", "1");
        if (mkfifo(fTree.Path("from/tree/fifo").c_str(), 0600) != 0) {
            return false;
        }
        Trash("from/tree");
        const std::string own = "from/.Trash-" + std::to_string(getuid()) + "/files";
        return Check(Trashed() == "", "nothing is left in the home Trash") &&
               Check(fTree.List(own + "/tree") == "a\nfifo\n", "whole in its own") &&
               Check(!fTree.Exists("from/tree"), "not in its place") &&
               Check(ProblemNames() == "fifo tree ", "told");
    });
}

TEST_F(TrashItemTest, WithoutAnyTrashOnItsVolumeItStays)
{
    fTree.MakeFolder("from");
    Privately([this] {
        if (!MountMemory(fTree.Path("from"), 1 << 20)) {
            return false;
        }
        fTree.Write("from/tree/a", "1");
        fTree.Write("from/.Trash-" + std::to_string(getuid()), "in the way");
        if (mkfifo(fTree.Path("from/tree/fifo").c_str(), 0600) != 0) {
            return false;
        }
        Trash("from/tree");
        return Check(fTree.List("from/tree") == "a\nfifo\n", "stays") &&
               Check(Trashed() == "", "no part of it is left elsewhere") &&
               Check(ProblemNames() == "fifo tree ", "told");
    });
}

TEST_F(TrashItemTest, AFullHomeVolumeLeavesNoPart)
{
    fTree.MakeFolder("from");
    fTree.MakeFolder("data");
    Privately([this] {
        // The source on a volume of its own too: it goes into that one's Trash.
        if (!MountMemory(fTree.Path("data"), 1 << 20) ||
            !MountMemory(fTree.Path("from"), 8 << 20)) {
            return false;
        }
        fTree.Write("from/a", std::string(3 << 20, 'x'));
        Trash("from/a");
        return Check(fTree.List("data/Trash/files") == "" && fTree.List("data/Trash/info") == "",
                     "no part, no record") &&
               Check(!fUI.notices.empty(), "told");
    });
}

TEST_F(TrashItemTest, StoppedItKeepsTheSourceAndNoCopy)
{
    fTree.MakeFolder("from");
    Privately([this] {
        if (!MountMemory(fTree.Path("from"), 1 << 20)) {
            return false;
        }
        fTree.Write("from/tree/a", "1");
        fTree.Write("from/tree/b", "2");
        fUI.onBytes = [this](int64) {
            fUI.isStopped = true;
        };
        Trash("from/tree");
        return Check(fTree.List("from/tree") == "a\nb\n", "in its place") &&
               Check(Trashed() == "", "and nowhere else");
    });
}

TEST_F(TrashItemTest, AMountedVolumeIsNeitherCopiedNorDeleted)
{
    fTree.MakeFolder("from/memory");
    fTree.MakeFolder("from/bound");
    fTree.Write("other/a", "1");
    Privately([this] {
        if (!MountMemory(fTree.Path("from/memory"), 1 << 20) ||
            mount(fTree.Path("other").c_str(), fTree.Path("from/bound").c_str(), nullptr, MS_BIND,
                  nullptr) != 0) {
            return false;
        }
        fTree.Write("from/memory/b", "2");
        Trash("from/memory");
        Trash("from/bound");
        return Check(fTree.Read("from/memory/b") == "2" && fTree.Read("other/a") == "1", "kept") &&
               Check(Trashed() == "", "and not copied") &&
               Check(ProblemNames() == "memory bound ", "told");
    });
}

} // namespace norvane
