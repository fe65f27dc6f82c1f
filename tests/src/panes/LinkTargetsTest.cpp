#include "panes/LinkTargets.h"

#include "NoThreads.h"
#include "TempTree.h"

#include <Entry.h>
#include <Looper.h>
#include <Message.h>
#include <OS.h>

#include <gtest/gtest.h>
#include <mutex>
#include <sys/stat.h>

namespace {

using namespace norvane;

class LinkTargetsTest : public ::testing::Test
{
protected:
    LinkTargetsTest()
    {
        fTree.MakeFolder("folder");
        fTree.Write("file", "");
        fTree.Link("to-folder", "folder");
        fTree.Link("to-file", "file");
        fTree.Link("to-nothing", "missing");
    }

    LinkQuestion About(const std::string& name, int32 number = 0) const
    {
        LinkQuestion question;
        const BEntry entry(fTree.Path(name).c_str());
        EXPECT_EQ(entry.GetRef(&question.link), B_OK);
        question.folder = node_ref(1, 2);
        question.record.size = 17;
        question.number = number;
        return question;
    }

    std::vector<LinkQuestion> Three() const
    {
        return {About("to-folder"), About("to-nothing"), About("to-file")};
    }

    static void ExpectThree(const std::vector<int64>& targets)
    {
        ASSERT_EQ(targets.size(), 3u);
        EXPECT_TRUE(S_ISDIR(static_cast<mode_t>(targets[0])));
        EXPECT_EQ(targets[1], 0);
        EXPECT_TRUE(S_ISREG(static_cast<mode_t>(targets[2])));
    }

    TempTree fTree;
};

TEST_F(LinkTargetsTest, FindsWhatLinksLeadTo)
{
    LinkTargets links{BMessenger()};
    ExpectThree(links.FindAll(Three()));
    ExpectThree(links.FindAll(Three()));
    EXPECT_TRUE(links.FindAll({}).empty());
}

TEST_F(LinkTargetsTest, FindsManyInTheirOrder)
{
    LinkTargets links{BMessenger()};
    std::vector<LinkQuestion> questions;
    for (int i = 0; i < 3000; i++) {
        questions.push_back(About(i % 2 == 0 ? "to-folder" : "to-file"));
    }
    const std::vector<int64> targets = links.FindAll(questions);
    ASSERT_EQ(targets.size(), questions.size());
    for (size_t i = 0; i < targets.size(); i++) {
        EXPECT_EQ(S_ISDIR(static_cast<mode_t>(targets[i])), i % 2 == 0) << i;
    }
}

TEST_F(LinkTargetsTest, FindsThemWithoutAThread)
{
    const NoThreads none;
    LinkTargets links{BMessenger()};
    ExpectThree(links.FindAll(Three()));
}

/// Keeps what it is told.
class AnswerLooper : public BLooper
{
public:
    AnswerLooper() : BLooper("answers") {}

    void MessageReceived(BMessage* message) override
    {
        LinkAnswer answer;
        if (answer.Read(*message)) {
            const std::lock_guard lock(fMutex);
            fAnswers.push_back(answer);
        } else {
            BLooper::MessageReceived(message);
        }
    }

    std::vector<LinkAnswer> WaitFor(size_t count)
    {
        for (int i = 0; i < 1000; i++) {
            {
                const std::lock_guard lock(fMutex);
                if (fAnswers.size() >= count) {
                    return fAnswers;
                }
            }
            snooze(5000);
        }
        return {};
    }

private:
    std::mutex fMutex;
    std::vector<LinkAnswer> fAnswers; // guarded by fMutex
};

TEST_F(LinkTargetsTest, TellsOfOneThatIsAskedFor)
{
    auto* looper = new AnswerLooper; // deletes itself
    looper->Run();
    const BMessenger target(nullptr, looper);
    LinkTargets links(target);
    links.Ask(About("to-file", 5));
    const std::vector<LinkAnswer> answers = looper->WaitFor(1);
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_EQ(answers[0].name, "to-file");
    EXPECT_EQ(answers[0].folder, node_ref(1, 2));
    EXPECT_EQ(answers[0].number, 5);
    EXPECT_EQ(answers[0].record.size, 17);
    EXPECT_TRUE(S_ISREG(answers[0].target));
    target.SendMessage(B_QUIT_REQUESTED);
}

TEST_F(LinkTargetsTest, ReadsNoOtherMessage)
{
    LinkAnswer answer;
    EXPECT_FALSE(answer.Read(BMessage(B_QUIT_REQUESTED)));
    EXPECT_FALSE(answer.Read(BMessage('Link')));
}

} // namespace
