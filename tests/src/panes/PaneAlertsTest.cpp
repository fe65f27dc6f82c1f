#include "AlertText.h"
#include "PaneWindowFixture.h"

#include <InterfaceDefs.h>

namespace norvane {

using kits::testing::AnswerAlert;
using kits::testing::TypeFunctionKey;
using kits::testing::TypeKey;

/// What a pane asks and tells, to the letter: kind, text, buttons, which one is the default.
class PaneAlertsTest : public PaneWindowFixture
{
protected:
    /// The question of F8 after all of so many files were marked.
    std::string QuestionAbout(const std::string& folder, int count)
    {
        for (int number = 1; number <= count; number++) {
            fTree.Write(folder + "/n" + std::to_string(100 + number), "1");
        }
        Open(folder);
        Type('+');
        TypeFunctionKey(B_F8_KEY);
        const std::string question = AlertText("Sir?");
        EXPECT_TRUE(AnswerAlert("Cancel"));
        EXPECT_TRUE(kits::testing::Sync(fWindow));
        return question;
    }

    static std::string Names(int count)
    {
        std::string names;
        for (int number = 1; number <= count; number++) {
            names += "\n\tn" + std::to_string(100 + number);
        }
        return names;
    }

    void DropIntoThePane()
    {
        fTree.Write("elsewhere/a", "1");
        BMessage dropped(kLocalEntries);
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(fTree.Path("elsewhere/a").c_str(), &ref), B_OK);
        dropped.AddRef("refs", &ref);
        dropped.AddString("From", fTree.Path("elsewhere").c_str());
        fWindow->PostMessage(&dropped, fList);
    }
};

TEST_F(PaneAlertsTest, AsksWithAWarningAboutTwenty)
{
    EXPECT_EQ(QuestionAbout("shown", 20),
              "warning: Do you really want to delete the following files/folders:" + Names(20) +
                  " [Cancel] [Delete]*");
}

TEST_F(PaneAlertsTest, AsksWithAWarningAboutTheNumberOfMore)
{
    EXPECT_EQ(QuestionAbout("shown", 21),
              "warning: Do you really want to delete the 21 selected files/folders? "
              "[Cancel] [Delete]*");
}

TEST_F(PaneAlertsTest, AsksWithAStopSignWhatIsForGood)
{
    EXPECT_EQ(QuestionAbout("data/Trash/files", 20),
              "stop: Do you really want permanently delete the following files/folders:" +
                  Names(20) + " [Cancel] [Delete]*");
}

TEST_F(PaneAlertsTest, AsksWithAStopSignAboutTheNumberOfMore)
{
    EXPECT_EQ(QuestionAbout("data/Trash/files", 21),
              "stop: Do you really want to permanently delete the 21 selected files/folders? "
              "[Cancel] [Delete]*");
}

TEST_F(PaneAlertsTest, ItsQuestionHasButtonsAsWideAsTheirLabels)
{
    fTree.Write("shown/a", "1");
    Open();
    Click(1);
    TypeFunctionKey(B_F8_KEY);
    auto* question = dynamic_cast<BAlert*>(kits::testing::WaitForWindow("Sir?"));
    ASSERT_NE(question, nullptr);
    ASSERT_TRUE(question->Lock());
    EXPECT_NE(question->ButtonAt(0)->Bounds().Width(), question->ButtonAt(1)->Bounds().Width());
    EXPECT_LT(question->ButtonAt(0)->Bounds().Width(), 75); // the usual width
    question->Unlock();
    EXPECT_TRUE(AnswerAlert("Cancel"));
}

TEST_F(PaneAlertsTest, RefusesANameThatExists)
{
    fTree.Write("shown/a", "1");
    fTree.Write("shown/b", "2");
    Open();
    fWindow->RunHere([this] { fList->Rename("b", 1); });
    EXPECT_EQ(AlertText("Foo"), "info: Could not rename: an entry of that name exists [OK]*");
    EXPECT_TRUE(AnswerAlert("OK"));
}

TEST_F(PaneAlertsTest, SaysWhyAFolderIsNotMade)
{
    fTree.Write("shown/taken", "1");
    Open();
    fWindow->RunHere([this] { fList->MkDir("taken"); });
    EXPECT_EQ(AlertText("Err"), "info: Some items could not be handled whole:"
                                "\n\ttaken: an entry of that name exists [OK]*");
    EXPECT_TRUE(AnswerAlert("OK"));
}

TEST_F(PaneAlertsTest, RefusesEntriesDroppedOnTheRoot)
{
    Open();
    Locked([this] { return fList->Populate("/"); });
    DropIntoThePane();
    EXPECT_EQ(AlertText("Warning"),
              "info: Sorry can't copy files or folders to the root of the file system! [OK]*");
    EXPECT_TRUE(AnswerAlert("OK"));
}

TEST_F(PaneAlertsTest, RefusesEntriesDroppedOnQueryResults)
{
    Open();
    Locked([this] {
        BMessage results('quer');
        return fList->Populate(&results);
    });
    DropIntoThePane();
    EXPECT_EQ(AlertText("Foo"),
              "info: This view contains Query Results. You cannot copy or move to it. [OK]*");
    EXPECT_TRUE(AnswerAlert("OK"));
}

} // namespace norvane
