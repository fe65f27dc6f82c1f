#include "RunningAlert.h"

#include <Button.h>
#include <Screen.h>
#include <ScrollBar.h>
#include <TextView.h>

#include <cmath>
#include <string>
#include <vector>

// How large alerts are, and what is seen of their text, buttons and kind.

namespace {

using namespace kits::testing;

void Discard(BAlert* alert)
{
    alert->Lock();
    alert->Quit();
}

TEST(AlertLookTest, LongTextMakesItHigherAndStaysOnTheScreen)
{
    std::string names = "Do you really want to delete the following files/folders:";
    for (int32 i = 0; i < 20; i++) {
        names += "\n\tfile number " + std::to_string(i);
    }
    const BRect screen = BScreen().Frame();
    RunningAlert running([&] { return new BAlert("Sir?", names.c_str(), "Cancel", "Delete"); });
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);

    alert->Lock();
    const BRect frame = alert->Frame();
    alert->Unlock();

    EXPECT_GT(frame.Height(), 21 * 15);
    EXPECT_GE(frame.top, screen.top);
    EXPECT_LE(frame.bottom, screen.bottom);
    ASSERT_TRUE(AnswerAlert("Cancel"));
    EXPECT_EQ(running.Answer(), 0);
}

TEST(AlertLookTest, TextThatIsTooLongScrollsAboveTheButtons)
{
    std::string names = "Do you really want to delete the following files/folders:";
    for (int32 i = 0; i < 90; i++) {
        names += "\n\t" + std::string(90, 'n') + " number " + std::to_string(i);
    }
    const BRect screen = BScreen().Frame();
    RunningAlert running([&] { return new BAlert("Sir?", names.c_str(), "Cancel", "Delete"); });
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(WaitForFocus(alert));
    ASSERT_TRUE(WaitUntilAnswers(alert));
    const auto read = [alert](const auto& get) {
        alert->Lock();
        const auto value = get();
        alert->Unlock();
        return value;
    };
    auto* text = dynamic_cast<BTextView*>(FindView(alert, "text"));
    BView* button = FindView(alert, "Cancel");
    ASSERT_NE(text, nullptr);
    ASSERT_NE(button, nullptr);

    EXPECT_LT(read([&] { return alert->Frame().Height(); }), screen.Height());
    EXPECT_LT(read([&] { return text->Frame().bottom; }),
              read([&] { return button->Frame().top; }));
    const float line = read([&] { return text->LineHeight(); });
    EXPECT_EQ(std::fmod(read([&] { return text->Bounds().Height(); }) + 1, line), 0);

    const auto top = [&] {
        return read([&] { return text->Bounds().top; });
    };
    EXPECT_EQ(top(), 0);
    TypeKey(B_PAGE_DOWN);
    Sync(alert);
    EXPECT_GT(top(), 10 * line);
    TypeKey(B_PAGE_UP);
    Sync(alert);
    EXPECT_EQ(top(), 0);
    TypeKey(B_PAGE_DOWN);
    TypeKey(B_PAGE_DOWN);
    TypeKey(B_HOME);
    Sync(alert);
    EXPECT_EQ(top(), 0);
    TurnWheel(text, BPoint(20, 20), 1);
    Sync(alert);
    EXPECT_GT(top(), 0);
    TypeKey(B_END);
    Sync(alert);
    const float height = read([&] { return text->TextHeight(0, text->CountLines() - 1); });
    EXPECT_EQ(top(), height - read([&] { return text->Bounds().Height() + 1; }));
    TypeKey(B_ESCAPE);
    EXPECT_EQ(running.Answer(), 0);
}

TEST(AlertLookTest, TextThatScrollsStandsBesideItsBar)
{
    std::string names;
    for (int32 i = 0; i < 200; i++) {
        names += std::string(static_cast<size_t>(60 + i), 'n') + "\n";
    }
    auto* alert = new BAlert("a", names.c_str(), "OK");
    alert->Lock();
    auto* text = dynamic_cast<BTextView*>(alert->FindView("text"));
    ASSERT_NE(text, nullptr);
    const auto bars = [text] {
        std::vector<BView*> found;
        for (int32 i = 0; i < text->Parent()->CountChildren(); ++i) {
            if (BView* child = text->Parent()->ChildAt(i); dynamic_cast<BScrollBar*>(child)) {
                found.push_back(child);
            }
        }
        return found;
    };

    ASSERT_EQ(bars().size(), 1u);
    EXPECT_LT(text->Frame().right, bars()[0]->Frame().left);
    for (int32 i = 0; i < text->CountLines(); ++i) {
        ASSERT_LE(text->LineWidth(i), text->Bounds().Width() + 1);
    }

    alert->SetType(B_EMPTY_ALERT);
    ASSERT_EQ(bars().size(), 1u);
    EXPECT_LT(text->Frame().right, bars()[0]->Frame().left);
    alert->Quit();
}

TEST(AlertLookTest, LongNamesAreBrokenAnywhere)
{
    auto* alert = new BAlert("a", std::string(400, 'm').c_str(), "OK");

    alert->Lock();
    auto* text = dynamic_cast<BTextView*>(alert->FindView("text"));
    ASSERT_NE(text, nullptr);
    EXPECT_GT(text->CountLines(), 3);
    for (int32 i = 0; i < text->CountLines(); ++i) {
        EXPECT_LE(text->LineWidth(i), text->Bounds().Width() + 1);
    }
    alert->Quit();
}

TEST(AlertLookTest, LinesOfAListStayWhole)
{
    const std::string head = "These are the items:\n\t";
    const std::string item = "one: " + std::string(20, 'm');
    const std::vector<std::string> texts = {
        head + "one: m", head + item, head + item + std::string(16, 'm'), head + item + "\n\ttwo"};
    std::vector<BAlert*> alerts;
    for (const std::string& text : texts) {
        alerts.push_back(new BAlert("a", text.c_str(), "OK"));
    }

    EXPECT_EQ(alerts[0]->Bounds().Width(), 310);
    EXPECT_EQ(alerts[1]->Bounds().Width(), 400);
    EXPECT_EQ(alerts[2]->Bounds().Width(), 600);
    EXPECT_EQ(alerts[3]->Bounds().Width(), 400);
    EXPECT_EQ(alerts[1]->Bounds().Height(), alerts[0]->Bounds().Height());
    for (BAlert* alert : alerts) {
        Discard(alert);
    }
}

TEST(AlertLookTest, ButtonsAreAsBroadAsAsked)
{
    auto* usual = new BAlert("a", "b", "I", "A rather long label", nullptr, B_WIDTH_AS_USUAL);
    EXPECT_EQ(usual->ButtonAt(0)->Bounds().Width(), 75);
    EXPECT_GT(usual->ButtonAt(1)->Bounds().Width(), 100);

    auto* widest = new BAlert("a", "b", "I", "A rather long label", nullptr, B_WIDTH_FROM_WIDEST);
    EXPECT_EQ(widest->ButtonAt(0)->Bounds().Width() + 6, widest->ButtonAt(1)->Bounds().Width());

    auto* own = new BAlert("a", "b", "I", "A rather long label", nullptr, B_WIDTH_FROM_LABEL);
    EXPECT_LT(own->ButtonAt(0)->Bounds().Width(), 40);
    EXPECT_EQ(own->ButtonAt(2), nullptr);
    for (BAlert* alert : {usual, widest, own}) {
        Discard(alert);
    }
}

TEST(AlertLookTest, IsOfTheKindItWasMadeAs)
{
    BAlert* warning = MakeAlert();
    auto* offset = new BAlert("a", "b", "I", nullptr, nullptr, B_WIDTH_AS_USUAL, B_OFFSET_SPACING,
                              B_STOP_ALERT);
    auto* usual = new BAlert("a", "b", "I");

    EXPECT_EQ(warning->Type(), B_WARNING_ALERT);
    EXPECT_EQ(offset->Type(), B_STOP_ALERT);
    EXPECT_EQ(usual->Type(), B_INFO_ALERT);
    for (BAlert* alert : {warning, offset, usual}) {
        Discard(alert);
    }
}

TEST(AlertLookTest, AnotherKindMakesRoomForItsIcon)
{
    const auto make = [](alert_type type) {
        return new BAlert("a", "b", "No", "Yes", nullptr, B_WIDTH_FROM_LABEL, type);
    };
    BAlert* const plain = make(B_EMPTY_ALERT);
    BAlert* const changed = make(B_STOP_ALERT);

    changed->SetType(B_EMPTY_ALERT);

    EXPECT_EQ(changed->Type(), B_EMPTY_ALERT);
    EXPECT_EQ(changed->Bounds(), plain->Bounds());
    EXPECT_EQ(changed->ButtonAt(0)->Frame(), plain->ButtonAt(0)->Frame());
    EXPECT_EQ(changed->ButtonAt(1)->Frame(), plain->ButtonAt(1)->Frame());
    changed->SetType(B_WARNING_ALERT);
    EXPECT_GT(changed->Bounds().Height(), plain->Bounds().Height());
    Discard(plain);
    Discard(changed);
}

TEST(AlertLookTest, ItsKindIsSeenInTheIconStrip)
{
    constexpr rgb_color kRed = {204, 36, 36, 255};
    constexpr rgb_color kYellow = {255, 206, 40, 255};
    RunningAlert running([] {
        BAlert* made = MakeAlert();
        made->SetType(B_STOP_ALERT);
        return made;
    });
    BWindow* alert = WaitForWindow("Sir?");
    ASSERT_NE(alert, nullptr);

    const Picture picture = TakePicture(alert);

    EXPECT_GT(picture.Count(kRed, 18, 10, 50, 42), 100);
    EXPECT_EQ(picture.Count(kYellow, 18, 10, 50, 42), 0);
    ASSERT_TRUE(AnswerAlert("Cancel"));
    EXPECT_EQ(running.Answer(), 0);
}

} // namespace
