#include "panes/FolderMeasure.h"

#include "MessageCodes.h"
#include "NoThreads.h"
#include "RecordingLooper.h"

#include <Path.h>
#include <TempTree.h>

#include <gtest/gtest.h>

namespace {

using namespace norvane;

class FolderMeasureTest : public ::testing::Test
{
protected:
    FolderMeasureTest()
    {
        fTree.Write("folder/file", "123");
        const BEntry entry(fTree.Path("folder").c_str());
        entry.GetRef(&fRef);
        entry.GetNodeRef(&fNode);
        fLooper->Run();
    }
    ~FolderMeasureTest() override { EndLooper(fLooper); }

    TempTree fTree;
    entry_ref fRef;
    node_ref fNode;
    Record fRecord;
    RecordingLooper* fLooper = new RecordingLooper(fRecord);
};

TEST_F(FolderMeasureTest, TellsItsOwner)
{
    FolderMeasure measure;

    EXPECT_EQ(measure.Start(fRef, fNode, BMessenger(fLooper)), B_OK);

    ASSERT_TRUE(fRecord.Await());
    EXPECT_EQ(fRecord.All().front().second, kFolderMeasured);
}

TEST_F(FolderMeasureTest, SaysThatThereIsNoThreadAndWorksLater)
{
    FolderMeasure measure;
    {
        const NoThreads none;
        EXPECT_EQ(measure.Start(fRef, fNode, BMessenger(fLooper)), B_NO_MORE_THREADS);
    }

    EXPECT_EQ(measure.Start(fRef, fNode, BMessenger(fLooper)), B_OK);

    ASSERT_TRUE(fRecord.Await());
    EXPECT_EQ(fRecord.All().size(), 1u);
}

} // namespace
