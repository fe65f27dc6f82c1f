#include "ViewerFixture.h"
#include "viewer/HexView.h"

#include <ScrollBar.h>

#include <filesystem>

namespace {

using namespace norvane;
using kits::testing::Sync;
using kits::testing::TypeKey;
using kits::testing::TypeText;
using kits::testing::WaitFor;

constexpr int64 kHuge = int64{10} << 30;

class ViewerHexTest : public ViewerFixture
{
protected:
    HexView* Hex()
    {
        return dynamic_cast<HexView*>(Locked([this] { return fWindow->FindView("hexView"); }));
    }
    BScrollBar* Bar()
    {
        return dynamic_cast<BScrollBar*>(Locked([this] { return fWindow->FindView("HexBar"); }));
    }
    std::string Row(int64 row)
    {
        return Locked([=, this] { return Hex()->RowText(row); });
    }
    int64 Top()
    {
        return Locked([this] { return Hex()->Top(); });
    }
    int64 Last()
    {
        return Locked([this] { return Hex()->Rows().Count() - Hex()->Room(); });
    }
    bool Shows(int64 row, const std::string& text)
    {
        return WaitFor([&] { return Row(row) == text; });
    }

    /// A text in a wide window, as bytes.
    void OpenBytes(const std::string& text)
    {
        fTree.Write("a.txt", text);
        OpenWide("a.txt");
    }
    void OpenWide(const std::string& name)
    {
        Begin(name, BRect(50, 50, 850, 450));
        ASSERT_TRUE(WaitFor([this] { return Text() != nullptr; }));
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
        Key('h');
        ASSERT_NE(Hex(), nullptr);
    }
    /// Nothing but a hole, with something at its end.
    void OpenHuge()
    {
        fTree.Write("a.txt", "");
        std::filesystem::resize_file(fTree.Path("a.txt"), kHuge);
        FILE* file = std::fopen(fTree.Path("a.txt").c_str(), "r+");
        ASSERT_NE(file, nullptr);
        ASSERT_EQ(fseeko(file, kHuge - 16, SEEK_SET), 0);
        ASSERT_EQ(std::fputs("the last 16 byte", file) < 0, false);
        std::fclose(file);
        fTree.Write("b.bin", "");
    }
    void GoTo(const char* offset)
    {
        TypeKey('l', B_COMMAND_KEY);
        BWindow* question = kits::testing::WaitForWindow("GoTo");
        ASSERT_NE(question, nullptr);
        ASSERT_TRUE(kits::testing::WaitForFocus(question));
        ASSERT_TRUE(kits::testing::WaitUntilAnswers(question));
        TypeText(offset);
        TypeKey(B_ENTER);
        ASSERT_TRUE(kits::testing::WaitForNoWindow("GoTo"));
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
        ASSERT_TRUE(Sync(fWindow));
    }
};

TEST_F(ViewerHexTest, ShowsOffsetsBytesAndCharacters)
{
    OpenBytes("Hello, world\n\x01\xff.and more");

    EXPECT_TRUE(Shows(0, "00000000  48 65 6c 6c  6f 2c 20 77  6f 72 6c 64  0a 01 ff 2e  "
                         "Hello, world...."))
        << Row(0);
    EXPECT_TRUE(Shows(1, "00000010  61 6e 64 20  6d 6f 72 65  and more")) << Row(1);
    EXPECT_TRUE(Item("Hexadecimal")->IsMarked());
    EXPECT_FALSE(Item("Find...")->IsEnabled());
}

TEST_F(ViewerHexTest, GoesBackToWhereOneWas)
{
    std::string text;
    for (int i = 0; i < 500; i++) {
        text += "line " + std::to_string(1000 + i) + "\n";
    }
    fTree.Write("a.txt", text);
    OpenText("a.txt");
    ASSERT_TRUE(WaitFor([&] {
        return Locked([&] { return Text()->TextLength() == static_cast<int32>(text.size()); });
    }));
    Key(B_END);
    const float place = Value(Text(), B_VERTICAL);
    ASSERT_GT(place, 0);

    Key('h');
    ASSERT_TRUE(Locked([this] { return Text()->IsHidden() && Hex()->IsFocus(); }));
    Key(B_PAGE_DOWN);
    Key('h');

    EXPECT_TRUE(Locked([this] { return !Text()->IsHidden() && Text()->IsFocus(); }));
    EXPECT_EQ(Value(Text(), B_VERTICAL), place);
    const int64 top = Top();
    Key('h');
    EXPECT_EQ(Top(), top);
}

TEST_F(ViewerHexTest, ReachesEachRowOfAHugeFile)
{
    OpenHuge();
    Begin("a.txt", BRect(50, 50, 850, 450));
    ASSERT_TRUE(WaitFor([this] { return Item("Hexadecimal") != nullptr; }));
    ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    Key('h');
    ASSERT_TRUE(
        WaitFor([this] { return Locked([this] { return Hex()->Rows().Count(); }) == kHuge / 16; }));

    Key(B_END);

    const int64 last = kHuge / 16 - 1;
    EXPECT_EQ(Top(), Last());
    EXPECT_TRUE(Shows(last, "27ffffff0  74 68 65 20  6c 61 73 74  20 31 36 20  62 79 74 65  "
                            "the last 16 byte"))
        << Row(last);
    Key(B_UP_ARROW);
    EXPECT_EQ(Top(), Last() - 1);
    GoTo("0x123456789");
    EXPECT_EQ(Top(), 0x12345678);
    GoTo("4294967311");
    EXPECT_EQ(Top(), 0x10000000);
    Key(B_HOME);
    EXPECT_EQ(Top(), 0);
}

TEST_F(ViewerHexTest, TheBarGoesByRowsInAHugeFileToo)
{
    OpenHuge();
    OpenWide("a.txt");
    ASSERT_TRUE(WaitFor([this] { return Last() > 1; }));
    const auto step = [this](float by) {
        Locked([=, this] {
            Bar()->SetValue(Bar()->Value() + by);
            return 0;
        });
    };

    step(1);
    EXPECT_EQ(Top(), 1);
    step(1);
    EXPECT_EQ(Top(), 2);
    step(-1);
    step(-1);
    EXPECT_EQ(Top(), 0);
    float large = 0;
    Locked([&] {
        Bar()->GetSteps(nullptr, &large);
        return 0;
    });
    step(large);
    EXPECT_EQ(Top(), Locked([this] { return Hex()->Room() - 1; }));
    step(1e9f);
    EXPECT_EQ(Top(), Last());
    step(-1);
    EXPECT_EQ(Top(), Last() - 1);
    step(1);
    EXPECT_EQ(Top(), Last());
}

TEST_F(ViewerHexTest, TheBarFollowsTheKeys)
{
    OpenBytes(std::string(64 * 1024, 'x'));
    ASSERT_TRUE(WaitFor([this] { return Last() > 100; }));

    Key(B_PAGE_DOWN);
    EXPECT_EQ(Locked([this] { return Bar()->Value(); }), static_cast<float>(Top()));
    EXPECT_GT(Top(), 1);
    Key(B_END);

    float most = 0;
    Locked([&] {
        Bar()->GetRange(nullptr, &most);
        return 0;
    });
    EXPECT_EQ(Locked([this] { return Bar()->Value(); }), most);
}

TEST_F(ViewerHexTest, TheWheelScrollsByRows)
{
    OpenBytes(std::string(64 * 1024, 'x'));
    ASSERT_TRUE(WaitFor([this] { return Last() > 100; }));

    BMessage wheel(B_MOUSE_WHEEL_CHANGED);
    wheel.AddFloat("be:wheel_delta_y", 3);
    fWindow->PostMessage(&wheel, Bar());
    ASSERT_TRUE(Sync(fWindow));

    EXPECT_EQ(Top(), 3);
}

TEST_F(ViewerHexTest, RowsOfAFileThatGoesAreBlank)
{
    OpenBytes(std::string(1000, 'x'));
    ASSERT_TRUE(WaitFor([this] { return Row(0).find("78") != std::string::npos; }));
    std::filesystem::remove(fTree.Path("a.txt"));

    Locked([this] {
        Hex()->Refresh();
        return 0;
    });

    EXPECT_TRUE(Shows(0, "00000000    ")) << Row(0);
}

TEST_F(ViewerHexTest, AFileThatShrinksHasFewerRows)
{
    OpenBytes(std::string(10000, 'x'));
    ASSERT_TRUE(WaitFor([this] { return Last() > 100; }));
    Key(B_END);
    std::filesystem::resize_file(fTree.Path("a.txt"), 20);

    Locked([this] {
        Hex()->Refresh();
        return 0;
    });

    EXPECT_TRUE(WaitFor([this] { return Locked([this] { return Hex()->Rows().Count(); }) == 2; }));
    EXPECT_TRUE(Shows(1, "00000010  78 78 78 78  xxxx")) << Row(1);
    EXPECT_EQ(Top(), 0);
}

TEST_F(ViewerHexTest, AnImageCanBeSeenAsBytes)
{
    WriteImage("a.png", 8, 8);
    OpenImage("a.png");

    Key('h');

    ASSERT_NE(Hex(), nullptr);
    EXPECT_TRUE(WaitFor([this] { return Row(0).starts_with("00000000  89 50 4e 47"); })) << Row(0);
    Key('h');
    EXPECT_TRUE(Locked([this] { return Image()->IsFocus() && !Image()->IsHidden(); }));
}

} // namespace
