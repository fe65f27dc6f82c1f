#include "ViewerFixture.h"

#include <filesystem>
#include <fstream>

namespace {

using namespace norvane;
using namespace std::literals;
using kits::testing::Sync;
using kits::testing::WaitFor;

class ViewerFollowingTest : public ViewerFixture
{
protected:
    std::string Shown()
    {
        return Locked([this] {
            return std::string(Text()->Text(), static_cast<size_t>(Text()->TextLength()));
        });
    }
    bool Shows(const std::string& text)
    {
        return WaitFor([&] { return Shown() == text; });
    }
    void Open(const std::string& text)
    {
        fTree.Write("a.txt", text);
        OpenText("a.txt");
    }
    void Append(const std::string& text)
    {
        std::ofstream(fTree.Path("a.txt"), std::ios::app) << text;
    }
    bool IsAtEnd()
    {
        const float most = Range(Text(), B_VERTICAL);
        return most > 0 && Value(Text(), B_VERTICAL) == most;
    }
    void Choose(const char* encoding)
    {
        BMenuItem* item = Item(encoding);
        ASSERT_NE(item, nullptr);
        BMessage choice(*Locked([=] { return item->Message(); }));
        fWindow->PostMessage(&choice);
        ASSERT_TRUE(Sync(fWindow));
    }
    bool IsMarked(const char* label)
    {
        return Locked([=, this] { return fWindow->KeyMenuBar()->FindItem(label)->IsMarked(); });
    }
};

std::string Lines(int count)
{
    std::string text;
    for (int i = 0; i < count; i++) {
        text += "line " + std::to_string(i) + "\n";
    }
    return text;
}

TEST_F(ViewerFollowingTest, ShowsWhatComesToTheFile)
{
    Open("one\n");
    ASSERT_TRUE(Shows("one\n"));
    Key('f');
    EXPECT_TRUE(IsMarked("Follow"));

    Append("two\n");

    EXPECT_TRUE(Shows("one\ntwo\n")) << Shown();
    Append("three\n");
    EXPECT_TRUE(Shows("one\ntwo\nthree\n")) << Shown();
}

TEST_F(ViewerFollowingTest, ShowsWhatCameBeforeItBegan)
{
    Open("one\n");
    ASSERT_TRUE(Shows("one\n"));
    Append("two\n");
    ASSERT_TRUE(Sync(fWindow));
    EXPECT_EQ(Shown(), "one\n");

    Key('f');

    EXPECT_TRUE(Shows("one\ntwo\n")) << Shown();
}

TEST_F(ViewerFollowingTest, StaysAtTheEndAndNowhereElse)
{
    Open(Lines(200));
    ASSERT_TRUE(Shows(Lines(200)));
    Key('f');
    EXPECT_TRUE(WaitFor([this] { return IsAtEnd(); }));

    Append("and more\n");
    ASSERT_TRUE(Shows(Lines(200) + "and more\n"));
    EXPECT_TRUE(IsAtEnd());
    Locked([this] {
        Text()->ScrollBar(B_VERTICAL)->SetValue(30);
        return 0;
    });
    Append("still more\n");

    ASSERT_TRUE(Shows(Lines(200) + "and more\nstill more\n"));
    EXPECT_EQ(Value(Text(), B_VERTICAL), 30);
}

TEST_F(ViewerFollowingTest, BeginsAnewWithWhatIsCutOrReplaced)
{
    Open("a first text\n");
    ASSERT_TRUE(Shows("a first text\n"));
    Key('f');

    fTree.Write("a.txt", "cut\n");
    EXPECT_TRUE(Shows("cut\n")) << Shown();

    std::filesystem::rename(fTree.Path("a.txt"), fTree.Path("a.txt.1"));
    fTree.Write("a.txt", "another, longer one\n");
    EXPECT_TRUE(Shows("another, longer one\n")) << Shown();
    Append("and on\n");
    EXPECT_TRUE(Shows("another, longer one\nand on\n")) << Shown();
}

TEST_F(ViewerFollowingTest, ReadsALongPieceWhole)
{
    Open("one\n");
    ASSERT_TRUE(Shows("one\n"));
    Key('f');

    Append(Lines(300000));

    EXPECT_TRUE(Shows("one\n" + Lines(300000))) << Shown().size();
}

TEST_F(ViewerFollowingTest, AppendsInTheEncodingOfTheText)
{
    Open("\xff\xfe"
         "a\0"s);
    ASSERT_TRUE(Shows("a"));
    Key('f');

    Append("b\0\xac"s);
    EXPECT_TRUE(Shows("ab")) << Shown();
    Append("\x20");
    EXPECT_TRUE(Shows("ab\xe2\x82\xac")) << Shown();
}

TEST_F(ViewerFollowingTest, EndsWhenAskedTo)
{
    Open("one\n");
    ASSERT_TRUE(Shows("one\n"));
    Key('f');
    Append("two\n");
    ASSERT_TRUE(Shows("one\ntwo\n"));

    Key('f');
    Append("three\n");
    fTree.Write("b.txt", "");
    BMessage change(B_NODE_MONITOR);
    change.AddString("name", "a.txt");
    fWindow->PostMessage(&change);
    ASSERT_TRUE(Sync(fWindow));

    EXPECT_FALSE(IsMarked("Follow"));
    EXPECT_EQ(Shown(), "one\ntwo\n");
}

TEST_F(ViewerFollowingTest, GuessesTheEncodingAndMarksIt)
{
    Open("gr\xfc\xdf"
         "e\n");

    EXPECT_TRUE(Shows("gr\xc3\xbc\xc3\x9f"
                      "e\n"))
        << Shown();
    EXPECT_TRUE(WaitFor([this] { return IsMarked("Latin-1"); }));
}

TEST_F(ViewerFollowingTest, ReadsAgainInAnotherEncoding)
{
    Open("\xc3\xa4\n");
    ASSERT_TRUE(Shows("\xc3\xa4\n"));
    EXPECT_TRUE(WaitFor([this] { return IsMarked("UTF-8"); }));

    Choose("Latin-1");
    EXPECT_TRUE(Shows("\xc3\x83\xc2\xa4\n")) << Shown();
    EXPECT_TRUE(WaitFor([this] { return IsMarked("Latin-1") && !IsMarked("UTF-8"); }));
    Choose("UTF-16 BE");
    EXPECT_TRUE(Shows("\xec\x8e\xa4")) << Shown();
    Choose("UTF-8");
    EXPECT_TRUE(Shows("\xc3\xa4\n")) << Shown();
}

} // namespace
