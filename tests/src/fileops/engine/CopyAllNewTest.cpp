#include "fileops/engine/NorvaneEntry.h"

#include "CopyFixture.h"
#include "fileops/engine/ItemCopier.h"
#include "fileops/engine/OperationContext.h"

#include <Directory.h>

namespace norvane {

/// Copies that touch nothing that is there, as those into the Trash.
class CopyAllNewTest : public CopyFixture
{
protected:
    bool CopyAllNew(const std::string& name, const char* targetName)
    {
        entry_ref ref;
        EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        BDirectory folder(fTree.Path("to").c_str());
        OperationContext context(fUI);
        context.journal.AddItem(ref);
        ItemCopy copy;
        ItemCopier(context).Copy(ref, {folder, fTree.Path("to")},
                                 targetName != nullptr ? targetName : ref.name, {.isAllNew = true},
                                 &copy);
        context.smallFiles.Drain();
        fIsWhole = copy.result.isWhole;
        return copy.result.isMade;
    }
};

TEST_F(CopyAllNewTest, CopiesUnderAnotherName)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/file", "2");
    fTree.Link("from/link", fTree.Path("from/file"));
    fTree.MakeFolder("to");
    EXPECT_TRUE(CopyAllNew("from/tree", "tree copy"));
    EXPECT_TRUE(CopyAllNew("from/file", "file copy"));
    EXPECT_TRUE(CopyAllNew("from/link", "link copy"));
    EXPECT_EQ(fTree.List("to"), "file copy\nlink copy\ntree copy\n");
    EXPECT_EQ(fTree.Read("to/tree copy/a"), "1");
    EXPECT_TRUE(fIsWhole);
}

TEST_F(CopyAllNewTest, AFileThatIsThereIsNeitherReplacedNorAskedAbout)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    fUI.answers = {kAnswerOverwrite};
    EXPECT_FALSE(CopyAllNew("from/a", nullptr));
    EXPECT_FALSE(fIsWhole);
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_EQ(fUI.problems.size(), 1u);
}

TEST_F(CopyAllNewTest, AFolderThatIsThereIsNotMergedInto)
{
    fTree.Write("from/tree/a", "new");
    fTree.Write("to/tree/b", "old");
    EXPECT_FALSE(CopyAllNew("from/tree", nullptr));
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.List("to/tree"), "b\n");
}

} // namespace norvane
