#include "panes/PatternWin.h"

#include "MessageCodes.h"
#include "PaneWindowFixture.h"

#include <InterfaceDefs.h>
#include <StringView.h>
#include <TextControl.h>
#include <TextView.h>

#include <testing/Driver.h>

namespace {

using namespace norvane;

/// The question for a pattern, over a pane.
class PatternWinTest : public PaneWindowFixture
{
protected:
    void SetUp() override
    {
        PaneWindowFixture::SetUp();
        for (const char* name : {"a.c", "a.h", "b.c", "B.TXT"}) {
            fTree.Write(std::string("shown/") + name, "text");
        }
        Open();
    }

    /// Opens it by a key; its window, or null.
    static BWindow* Question(const char* title)
    {
        BWindow* question = kits::testing::WaitForWindow(title);
        return question != nullptr && kits::testing::WaitUntilKeysAnswer(question) ? question
                                                                                   : nullptr;
    }

    static std::string Field(BWindow* question)
    {
        const BAutolock lock(question);
        return dynamic_cast<BTextControl*>(question->FindView("PatternText"))->Text();
    }

    static std::string Label(BWindow* question)
    {
        const BAutolock lock(question);
        return dynamic_cast<BStringView*>(question->FindView("PatternLabel"))->Text();
    }

    static void Press(BWindow* question, char key)
    {
        kits::testing::TypeKey(key);
        kits::testing::SyncServer();
        kits::testing::Sync(question);
    }

    static void Write(BWindow* question, const std::string& text)
    {
        for (const char letter : text) {
            Press(question, letter);
        }
    }

    void Ask(char key, const char* title, const std::string& pattern)
    {
        Type(key, B_COMMAND_KEY);
        BWindow* question = Question(title);
        ASSERT_NE(question, nullptr);
        Write(question, pattern);
        kits::testing::TypeKey(B_ENTER);
        ASSERT_TRUE(kits::testing::WaitForNoWindow(title));
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    }
};

TEST_F(PatternWinTest, MarksAndUnmarks)
{
    Ask('+', "Mark", "*.c;b.*");
    EXPECT_TRUE(Becomes([this] { return Marked(); }, "B.TXT a.c b.c "));
    Ask('-', "Unmark", "a*");
    EXPECT_TRUE(Becomes([this] { return Marked(); }, "B.TXT b.c "));
}

TEST_F(PatternWinTest, OffersTheLastPatterns)
{
    Ask('+', "Mark", "one*");
    Ask('+', "Mark", "two*");
    Type('-', B_COMMAND_KEY);
    BWindow* question = Question("Unmark");
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(Field(question), "two*");
    Press(question, B_UP_ARROW);
    EXPECT_EQ(Field(question), "one*");
    Press(question, B_DOWN_ARROW);
    EXPECT_EQ(Field(question), "two*");
    Press(question, 'x'); // it was selected
    EXPECT_EQ(Field(question), "x");
    Press(question, B_ESCAPE);
    EXPECT_TRUE(kits::testing::WaitForFocus(fWindow));
    EXPECT_EQ(Marked(), "");
}

TEST_F(PatternWinTest, AsksAgainWhenThereIsNoPattern)
{
    Type('+', B_COMMAND_KEY);
    BWindow* question = Question("Mark");
    ASSERT_NE(question, nullptr);
    Press(question, ';');
    Press(question, B_ENTER);
    EXPECT_TRUE(kits::testing::WaitFor(
        [question] { return Label(question) == "Please type a pattern, such as *.txt"; }));
    Press(question, B_ESCAPE);
    EXPECT_TRUE(kits::testing::WaitForFocus(fWindow));
}

TEST_F(PatternWinTest, SelectingAllMarksAll)
{
    fWindow->PostMessage(B_SELECT_ALL, fList);
    EXPECT_TRUE(Becomes([this] { return Marked(); }, "B.TXT a.c a.h b.c "));
}

} // namespace
