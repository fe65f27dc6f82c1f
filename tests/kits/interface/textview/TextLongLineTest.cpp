#include "TextViewFixture.h"

#include <interface/text/TextBuffer.h>
#include <interface/text/TextPieces.h>

#include <Clipboard.h>
#include <TypeConstants.h>

#include <string>

namespace {

using namespace kits::testing;

/// A line of some pieces, most of whose characters are no text.
class TextLongLineTest : public TextViewFixture
{
protected:
    void ShowLine()
    {
        while (fBytes.size() < 12'000) {
            fBytes += "\xff\xc3\xa9\xfe\xe2\x82\xac";
        }
        kits::TextBuffer text;
        text.SetText(fBytes);
        fBorder = kits::TextPieces(text).Of(0)[2].start;
        ShowText(fBytes.c_str());
    }

    std::string fBytes;
    int32 fBorder = 0;
};

TEST_F(TextLongLineTest, BytesAroundABorderAreKept)
{
    ShowLine();
    std::string expected = fBytes;

    Select(fBorder, fBorder);
    TypeText("xy");
    expected.insert(static_cast<size_t>(fBorder), "xy");
    EXPECT_EQ(Text(), expected);

    TypeKey(B_BACKSPACE);
    TypeKey(B_BACKSPACE);
    EXPECT_EQ(Text(), fBytes);
    TypeKey(B_LEFT_ARROW);
    TypeKey(B_RIGHT_ARROW);
    EXPECT_EQ(Selection(), std::to_string(fBorder) + "-" + std::to_string(fBorder));
}

TEST_F(TextLongLineTest, ChangesOverABorderAreTakenBackAndDoneAgain)
{
    ShowLine();
    const int32 from = fBorder - 7 * 10;
    const int32 to = fBorder + 7 * 400; // over the next border, too
    std::string expected = fBytes;
    expected.replace(static_cast<size_t>(from), static_cast<size_t>(to - from), "z");

    Select(from, to);
    TypeText("z");
    EXPECT_EQ(Text(), expected);
    TypeKey('z', B_COMMAND_KEY);
    EXPECT_EQ(Text(), fBytes);
    EXPECT_EQ(Selection(), std::to_string(from) + "-" + std::to_string(to));
    TypeKey('z', B_COMMAND_KEY | B_SHIFT_KEY);
    EXPECT_EQ(Text(), expected);
}

TEST_F(TextLongLineTest, CopiedOverABorderItIsPastedAsItWas)
{
    ShowLine();
    const size_t from = static_cast<size_t>(fBorder) - 70;
    const std::string part = fBytes.substr(from, 140);

    Select(fBorder - 70, fBorder + 70);
    TypeKey('c', B_COMMAND_KEY);
    TypeKey(B_END, B_COMMAND_KEY);
    TypeKey('v', B_COMMAND_KEY);

    EXPECT_EQ(Text(), fBytes + part);
}

TEST_F(TextLongLineTest, AnAccentTypedAtABorderJoinsTheLetterBeforeIt)
{
    ShowText("");
    const std::string letters(12'000, 'a');
    kits::TextBuffer text;
    text.SetText(letters);
    const int32 border = kits::TextPieces(text).Of(0)[1].start;
    Locked([&, this] {
        fView->SetText(letters.c_str());
        return 0;
    });

    Select(border, border);
    CommitText("\xcc\x81");
    TypeKey(B_LEFT_ARROW);
    EXPECT_EQ(Selection(), std::to_string(border - 1) + "-" + std::to_string(border - 1));
    TypeKey(B_DELETE); // the letter with its accent

    EXPECT_EQ(Text(), std::string(11'999, 'a'));
}

TEST_F(TextLongLineTest, ALineThatGrowsLongAndShortAgainStaysWhole)
{
    ShowText("");
    const std::string letters(4090, 'm');
    Locked([&, this] {
        fView->SetText(letters.c_str());
        return 0;
    });
    TypeKey(B_END);

    TypeText("0123456789");
    EXPECT_EQ(Text(), letters + "0123456789");
    const float longX = Locked([this] { return fView->PointAt(4095).x; });
    for (int i = 0; i < 8; ++i) {
        TypeKey(B_BACKSPACE);
    }
    EXPECT_EQ(Text(), letters + "01");
    EXPECT_NEAR(Locked([this] { return fView->PointAt(4092).x; }), longX, 40);
}

TEST_F(TextLongLineTest, PressesInItsMiddleFindTheirCharacters)
{
    ShowLine();
    Select(fBorder, fBorder);
    Locked([this] {
        fView->ScrollToSelection();
        return 0;
    });

    Click(fView, Inside(fBorder));
    EXPECT_EQ(Selection(), std::to_string(fBorder) + "-" + std::to_string(fBorder));
    Drag(fView, Inside(fBorder - 7), Inside(fBorder + 7));
    EXPECT_EQ(Selection(), std::to_string(fBorder - 7) + "-" + std::to_string(fBorder + 7));
}

} // namespace
