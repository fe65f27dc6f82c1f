#include "ViewerFixture.h"

#include <cmath>

namespace {

using namespace norvane;
using kits::testing::TypeKey;
using kits::testing::WaitFor;

class ViewerTextTest : public ViewerFixture
{
protected:
    static std::string Lines(int count)
    {
        std::string text;
        for (int i = 0; i < count; i++) {
            text += "line " + std::to_string(i) + " with some words that are long enough to wrap\n";
        }
        return text;
    }

    void OpenLines(int count)
    {
        fTree.Write("a.txt", Lines(count));
        OpenText("a.txt");
        ASSERT_TRUE(WaitFor([=, this] { return CountRows() >= count; }));
    }

    int32 CountRows()
    {
        return Locked([this] { return Text()->CountLines(); });
    }
    float TextWidth()
    {
        return Locked([this] { return Text()->TextRect().Width(); });
    }
};

TEST_F(ViewerTextTest, ShowsAFileWithItsNameAsTheTitle)
{
    fTree.Write("a.txt", "one\ntwo");
    OpenText("a.txt");

    EXPECT_TRUE(WaitFor(
        [this] { return Locked([this] { return std::string(Text()->Text()); }) == "one\ntwo"; }));
    EXPECT_STREQ(fWindow->Title(), "a.txt");
    EXPECT_FALSE(Locked([this] { return Text()->IsEditable(); }));
    EXPECT_EQ(Item("Image"), nullptr);
}

TEST_F(ViewerTextTest, TakesAsTextsWhatIsOfThatKind)
{
    fTree.Write("data.json", "{}");
    fTree.Write("empty", "");
    fTree.Write("script", "#!/bin/sh\n");

    for (const char* name : {"data.json", "empty", "script"}) {
        OpenText(name);
        Close();
    }
}

TEST_F(ViewerTextTest, ScrollsAsFarAsItsWidestLineWithoutWrapping)
{
    OpenLines(100);

    EXPECT_FALSE(Locked([this] { return Text()->DoesWordWrap(); }));
    EXPECT_EQ(CountRows(), 101);
    const float widest = Locked([this] { return Text()->LineWidth(99); });
    const float room = Locked([this] { return Text()->Bounds().Width() + 1; });
    EXPECT_NEAR(Range(Text(), B_HORIZONTAL), std::ceil(widest) + 1 - room, 1);
    EXPECT_NEAR(TextWidth(), widest, 1);
}

TEST_F(ViewerTextTest, WrapsInsideTheWindowsEdgeAtEverySize)
{
    OpenLines(100);

    Send(kWrapText);

    EXPECT_TRUE(Item("Wrap Text")->IsMarked());
    EXPECT_TRUE(Item("Wrap to Edge")->IsEnabled());
    EXPECT_GT(CountRows(), 150);
    EXPECT_EQ(Range(Text(), B_HORIZONTAL), 0);
    EXPECT_EQ(TextWidth(), 250 - 17);

    kits::testing::ResizeWindow(fWindow, 400, 300);
    EXPECT_TRUE(WaitFor([this] { return TextWidth() == 400 - 17; })) << TextWidth();
    EXPECT_LT(CountRows(), 150);
}

TEST_F(ViewerTextTest, WrapsAtItsWidestLineUnlessToTheEdge)
{
    OpenLines(100);
    const float widest = TextWidth();
    Send(kWrapText);

    Send(kWrapToEdge);

    EXPECT_FALSE(Item("Wrap to Edge")->IsMarked());
    EXPECT_EQ(TextWidth(), widest);
    EXPECT_EQ(CountRows(), 101);

    Send(kWrapToEdge);
    EXPECT_TRUE(Item("Wrap to Edge")->IsMarked());
    EXPECT_EQ(TextWidth(), 250 - 17);
}

TEST_F(ViewerTextTest, WrapsToTheEdgeOnlyWhileItWraps)
{
    OpenLines(100);
    const float widest = TextWidth();
    EXPECT_TRUE(Item("Wrap to Edge")->IsMarked());
    EXPECT_FALSE(Item("Wrap to Edge")->IsEnabled());

    Send(kWrapToEdge);
    EXPECT_TRUE(Item("Wrap to Edge")->IsMarked());

    Send(kWrapText);
    Send(kWrapText);
    EXPECT_FALSE(Item("Wrap Text")->IsMarked());
    EXPECT_FALSE(Item("Wrap to Edge")->IsEnabled());
    EXPECT_EQ(TextWidth(), widest);
    EXPECT_EQ(CountRows(), 101);
}

TEST_F(ViewerTextTest, TakesTheMarkThatWasSetBefore)
{
    OpenLines(100);
    const float widest = TextWidth();
    Send(kWrapText);
    Send(kWrapToEdge);
    Send(kWrapText);

    Send(kWrapText);

    EXPECT_TRUE(Item("Wrap Text")->IsMarked());
    EXPECT_FALSE(Item("Wrap to Edge")->IsMarked());
    EXPECT_EQ(TextWidth(), widest);
}

TEST_F(ViewerTextTest, ScrollsByKeys)
{
    OpenLines(500);
    ViewedText* text = Text();

    Key(B_DOWN_ARROW);
    EXPECT_EQ(Value(text, B_VERTICAL), 15);
    Key(B_PAGE_DOWN);
    EXPECT_GT(Value(text, B_VERTICAL), 300);
    Key(B_END);
    EXPECT_EQ(Value(text, B_VERTICAL), Range(text, B_VERTICAL));
    Key(B_HOME);
    EXPECT_EQ(Value(text, B_VERTICAL), 0);
    Key(B_RIGHT_ARROW);
    EXPECT_GT(Value(text, B_HORIZONTAL), 0);
    Key(B_LEFT_ARROW);
    EXPECT_EQ(Value(text, B_HORIZONTAL), 0);
}

TEST_F(ViewerTextTest, ShowsBytesThatAreNoText)
{
    fTree.Write("a.txt", std::string("a\0b\xff\x01\n", 6) + std::string(100000, '\0'));
    OpenText("a.txt");

    EXPECT_TRUE(WaitFor([this] {
        return Locked([this] { return Text()->TextLength(); }) == 100007;
    })); // as Latin-1
    Send(kWrapText);
    EXPECT_GT(CountRows(), 100);
}

TEST_F(ViewerTextTest, CtrlWClosesIt)
{
    OpenLines(3);

    TypeKey('w', B_COMMAND_KEY);

    EXPECT_TRUE(kits::testing::WaitForNoWindow("a.txt"));
    fWindow = nullptr;
}

TEST_F(ViewerTextTest, ClosesWhileItStillLoads)
{
    fTree.Write("a.txt", Lines(100000));
    for (int i = 0; i < 20; i++) {
        Begin("a.txt");
        Close();
    }
    EXPECT_TRUE(kits::testing::WaitForNoWindow("a.txt"));
}

TEST_F(ViewerTextTest, OpensAPanel)
{
    OpenLines(3);
    EXPECT_TRUE(Item("Open")->IsEnabled());

    TypeKey('o', B_COMMAND_KEY);
    BWindow* panel = kits::testing::WaitForWindow("Open");
    ASSERT_NE(panel, nullptr);
    ASSERT_TRUE(kits::testing::WaitForFocus(panel));
    TypeKey(B_ESCAPE);
    EXPECT_TRUE(kits::testing::WaitForNoWindow("Open"));
    TypeKey('o', B_COMMAND_KEY);
    EXPECT_NE(kits::testing::WaitForWindow("Open"), nullptr); // goes with the viewer
}

} // namespace
