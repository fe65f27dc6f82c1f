#include "TextViewFixture.h"

#include <ScrollBar.h>
#include <ScrollView.h>
#include <TextContents.h>

#include <cmath>
#include <memory>
#include <string>

namespace {

std::string Lines(int32 count, const std::string& line = "some words")
{
    std::string text;
    for (int32 i = 0; i < count; ++i) {
        text += line + " " + std::to_string(i) + "\n";
    }
    return text;
}

class TextContentsTest : public TextViewFixture
{
protected:
    void Adopt(const std::string& text)
    {
        auto contents = std::make_unique<BTextContents>(text);
        Locked([&] {
            fView->AdoptText(std::move(contents));
            return 0;
        });
    }
    /// Measured, too.
    void AdoptMeasured(const std::string& text)
    {
        auto contents = std::make_unique<BTextContents>(text);
        contents->MeasureWidestLine(*be_plain_font);
        Locked([&] {
            fView->AdoptText(std::move(contents));
            return 0;
        });
    }
    float Top()
    {
        return Locked([this] { return fView->Bounds().top; });
    }
    void ScrollTo(float top)
    {
        Locked([=, this] {
            fView->ScrollTo(BPoint(0, top));
            return 0;
        });
    }
};

TEST_F(TextContentsTest, KnowsItsLines)
{
    const BTextContents contents("one\ntwo\n");

    EXPECT_EQ(contents.Length(), 8);
    EXPECT_EQ(contents.CountLines(), 3);
    EXPECT_EQ(BTextContents("").CountLines(), 1);
}

TEST_F(TextContentsTest, IsShownWithoutACopy)
{
    ShowText("before");
    std::string text = Lines(1000);
    const char* bytes = text.data();
    auto contents = std::make_unique<BTextContents>(std::move(text));

    Locked([&] {
        fView->AdoptText(std::move(contents));
        return 0;
    });

    EXPECT_EQ(Locked([this] { return static_cast<const void*>(fView->Text()); }), bytes);
    EXPECT_EQ(Locked([this] { return fView->CountLines(); }), 1001);
}

TEST_F(TextContentsTest, LeavesPlaceAndSelectionWhereTheTextGoesOn)
{
    ShowText(Lines(100).c_str());
    Select(5, 9);
    ScrollTo(300);

    Adopt(Lines(1000));

    EXPECT_EQ(Selection(), "5-9");
    EXPECT_EQ(Top(), 300);
}

TEST_F(TextContentsTest, BeginsAnewWithAnotherText)
{
    ShowText(Lines(100).c_str());
    Select(5, 9);
    ScrollTo(300);

    Adopt(Lines(1000, "other words"));

    EXPECT_EQ(Selection(), "0-0");
    EXPECT_EQ(Top(), 0);
}

TEST_F(TextContentsTest, LeavesTheRowInSightWhereTheTextIsWrapped)
{
    const std::string line(80, 'x');
    ShowText(Lines(200, line + " " + line).c_str());
    Locked([this] {
        fView->SetWordWrap(true);
        fView->ScrollTo(BPoint(0, 1500));
        return 0;
    });
    const auto seen = [this] {
        return Locked([this] { return fView->OffsetAt(BPoint(2, fView->Bounds().top + 1)); });
    };
    const int32 before = seen();

    Adopt(Lines(20000, line + " " + line));

    EXPECT_EQ(seen(), before);
}

TEST_F(TextContentsTest, ScrollsAsFarAsAnyLineReaches)
{
    std::string text = Lines(2000);
    const std::string wide(300, 'W');
    const std::string narrow(500, 'i'); // more bytes, and not as wide
    text += wide + "\n" + narrow + "\n" + Lines(2000);
    ShowText("");
    AdoptMeasured(text);

    EXPECT_EQ(Locked([this] { return fView->WidestLine(); }),
              Locked([this] { return fView->LineWidth(2000); }));
}

TEST_F(TextContentsTest, FindsTheWidestAmongLettersOfSeveralScripts)
{
    std::string text = Lines(100);
    std::string cyrillic;
    for (int i = 0; i < 80; ++i) {
        cyrillic += "\u0448";
    }
    text += cyrillic + "\n" + Lines(100);
    ShowText("");
    AdoptMeasured(text);

    EXPECT_EQ(Locked([this] { return fView->WidestLine(); }),
              Locked([this] { return fView->LineWidth(100); }));
}

TEST_F(TextContentsTest, MeasuresALongLine)
{
    ShowText("");
    AdoptMeasured("short\n" + std::string(100000, 'x') + "\n");

    const float letter = be_plain_font->StringWidth("x");
    EXPECT_NEAR(Locked([this] { return fView->WidestLine(); }), letter * 100000, letter * 1000);
}

TEST_F(TextContentsTest, ScrollBarReachesTheWidestLine)
{
    auto* view = new BTextView(BRect(2, 2, 200, 100), "text", BRect(0, 0, 190, 90), B_FOLLOW_ALL,
                               B_WILL_DRAW);
    auto* scroll = new BScrollView("scroll", view, B_FOLLOW_ALL, 0, true, true);
    fView = view;
    Add(scroll);
    Show();
    AdoptMeasured(Lines(1000) + std::string(200, 'W') + "\n" + Lines(1000));

    float least = -1;
    float most = -1;
    float width = 0;
    Locked([&] {
        scroll->ScrollBar(B_HORIZONTAL)->GetRange(&least, &most);
        width = view->LineWidth(1000);
        return 0;
    });
    EXPECT_EQ(most, std::ceil(width) + 1 - (view->Bounds().Width() + 1));
}

} // namespace
