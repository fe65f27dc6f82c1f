#include "OptionsFixture.h"
#include "prefs/SwitchList.h"

#include <Button.h>
#include <Screen.h>

namespace norvane {

namespace {

using kits::testing::CountShown;
using kits::testing::TypeKey;
using kits::testing::WaitFor;
using kits::testing::WaitForNoWindow;

using OptionsWindowTest = OptionsFixture;

constexpr char kAllKeys[] = "DateFormat=%a %b %d %x %Y\nShowProgressBar=0\nShowHeader=0\n"
                            "ShowFooter=0\n";

TEST_F(OptionsWindowTest, IsCentredOnTheGivenRectangle)
{
    Open(BRect(0, 0, 799, 599));

    const BRect frame = Locked([this] { return fWindow->Frame(); });
    EXPECT_EQ(frame.Width(), 440);
    EXPECT_EQ(frame.Height(), 212);
    EXPECT_LE(std::abs(frame.left - 180), 1);
    EXPECT_LE(std::abs(frame.top - 194), 1);
    EXPECT_STREQ(fWindow->Title(), kTitle);
}

TEST_F(OptionsWindowTest, ComesOntoTheScreenOverASmallOwner)
{
    Open(BRect(0, 0, 299, 149));

    const BRect frame = Locked([this] { return fWindow->Frame(); });
    EXPECT_TRUE(BScreen(B_MAIN_SCREEN_ID).Frame().Contains(frame));
}

TEST_F(OptionsWindowTest, HasItsViewsAndButtons)
{
    Open();

    for (const char* name : {"QueryContainer", "tab_view", "foo", "DateFormat", "ShowProgressBar",
                             "ShowHeader", "ShowFooter"}) {
        EXPECT_NE(Find<BView>(name), nullptr) << name;
    }
    struct
    {
        const char* name;
        const char* label;
        uint32 what;
    } const kButtons[] = {{"SaveOptions", "OK", 3500},
                          {"CancelOptions", "Cancel", B_QUIT_REQUESTED},
                          {"Help", "Help", 3501}};
    for (const auto& [name, label, what] : kButtons) {
        const auto* button = Find<BButton>(name);
        ASSERT_NE(button, nullptr) << name;
        EXPECT_STREQ(button->Label(), label);
        EXPECT_EQ(button->Message()->what, what);
    }
    const auto* pages = Find<BTabView>("tab_view");
    ASSERT_EQ(pages->CountTabs(), 3);
    EXPECT_STREQ(pages->TabAt(2)->Label(), "Extras");
    EXPECT_STREQ(pages->TabAt(0)->Label(), "General");
    EXPECT_STREQ(pages->TabAt(1)->Label(), "Advanced");
    EXPECT_STREQ(Find<BMenuField>("DateFormat")->Label(), "Select Date Fomat");
    EXPECT_STREQ(Find<BCheckBox>("ShowProgressBar")->Label(), "Show Progress Bar?");
    EXPECT_STREQ(Find<BCheckBox>("ShowHeader")->Label(), "Show Header?");
    EXPECT_STREQ(Find<BCheckBox>("ShowFooter")->Label(), "Show Footer?");
}

TEST_F(OptionsWindowTest, ShowsTheDefaultsWithoutASettingsFile)
{
    Open();

    EXPECT_EQ(MarkedFormat(), "%D %R");
    for (const char* box : {"ShowProgressBar", "ShowHeader", "ShowFooter"}) {
        EXPECT_TRUE(IsOn(box)) << box;
    }
    EXPECT_EQ(Settings(), "(none)"); // and looking writes nothing
}

TEST_F(OptionsWindowTest, ShowsWhatIsStored)
{
    WriteSettings("DateFormat=%D %T\nShowProgressBar=1\nShowHeader=0\nShowFooter=2\n");

    Open();

    EXPECT_EQ(MarkedFormat(), "%D %T");
    EXPECT_TRUE(IsOn("ShowProgressBar"));
    EXPECT_FALSE(IsOn("ShowHeader"));
    EXPECT_TRUE(IsOn("ShowFooter"));
}

TEST_F(OptionsWindowTest, LabelsOfFormatsAreTheTimeInThem)
{
    Open();
    const BMenu* formats = Formats();

    ASSERT_EQ(formats->CountItems(), 3);
    const char* const kFormats[] = {"%D %R", "%D %T", "%a %b %d %x %Y"};
    for (int32 i = 0; i < 3; i++) {
        EXPECT_STREQ(formats->ItemAt(i)->Message()->GetString("Date Format", ""), kFormats[i]);
        EXPECT_EQ(formats->ItemAt(i)->Message()->what, 3502u);
    }
    EXPECT_EQ(std::string(formats->ItemAt(0)->Label()).size(), 14u); // 11/23/26 06:30
    EXPECT_EQ(std::string(formats->ItemAt(1)->Label()).size(), 17u);
    EXPECT_EQ(std::string(formats->ItemAt(1)->Label()).substr(0, 9),
              std::string(formats->ItemAt(0)->Label()).substr(0, 9));
    EXPECT_TRUE(formats->IsRadioMode());
    EXPECT_TRUE(formats->IsLabelFromMarked());
    EXPECT_EQ(ShownFormat(), formats->ItemAt(0)->Label());
}

TEST_F(OptionsWindowTest, AcceptingStoresAllAndTellsTheOwner)
{
    Open();
    ChooseFormat(2);
    for (const char* box : {"ShowProgressBar", "ShowHeader", "ShowFooter"}) {
        Click(box);
    }

    Click("SaveOptions");

    EXPECT_EQ(Settings().substr(0, sizeof(kAllKeys) - 1), kAllKeys);
    EXPECT_EQ(fOwner->CountNotices(), 1u);
    EXPECT_EQ(CountShown(kTitle), 1); // it stays open
}

TEST_F(OptionsWindowTest, AcceptingTwiceWritesTheSameAndTellsTwice)
{
    Open();
    Click("ShowHeader");

    Click("SaveOptions");
    const std::string once = Settings();
    Click("SaveOptions");

    EXPECT_EQ(Settings(), once);
    EXPECT_EQ(fOwner->CountNotices(), 2u);
}

TEST_F(OptionsWindowTest, UnknownFormatMarksNothingAndIsKept)
{
    WriteSettings("DateFormat=%Y-%m-%d\n");
    Open();
    EXPECT_EQ(MarkedFormat(), "");
    EXPECT_EQ(ShownFormat(), "Date Format");

    Click("SaveOptions");

    EXPECT_EQ(Settings().substr(0, 20), "DateFormat=%Y-%m-%d\n");
}

TEST_F(OptionsWindowTest, LongerFormatLosesNoOtherSetting)
{
    WriteSettings("DateFormat=%D %R\nLeft=40\nPane0=/tmp\nNumPanes=1\n");
    Open();
    ChooseFormat(2);

    Click("SaveOptions");

    const std::string now = "\n" + Settings();
    for (const char* line : {"\nDateFormat=%a %b %d %x %Y\n", "\nLeft=40\n", "\nPane0=/tmp\n",
                             "\nNumPanes=1\n", "\nShowFooter=1\n"}) {
        EXPECT_NE(now.find(line), std::string::npos) << line << now;
    }
}

TEST_F(OptionsWindowTest, CancelClosesAndWritesNothing)
{
    WriteSettings("ShowHeader=1\n");
    Open();
    ChooseFormat(1);
    Click("ShowHeader");

    kits::testing::Click(Find<BView>("CancelOptions"));

    EXPECT_TRUE(WaitForNoWindow(kTitle));
    EXPECT_EQ(Settings(), "ShowHeader=1\n");
    EXPECT_EQ(fOwner->CountNotices(), 0u);
}

TEST_F(OptionsWindowTest, EscapeAndTheCloseBoxClose)
{
    Open();
    TypeKey(B_ESCAPE);
    EXPECT_TRUE(WaitForNoWindow(kTitle));

    fWindow = new OptionsWindow(BRect(0, 0, 799, 599), fOwner);
    fWindow->Show();
    ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    kits::testing::CloseWindow(fWindow);
    EXPECT_TRUE(WaitForNoWindow(kTitle));
    EXPECT_EQ(Settings(), "(none)");
}

TEST_F(OptionsWindowTest, HelpSaysThatThereIsNone)
{
    Open();

    kits::testing::Click(Find<BView>("Help"));

    EXPECT_EQ(AlertText("foo"),
              "info: Help not implemented for Options Dialog.\nMaybe Someday... [OK]*");
    BWindow* alert = kits::testing::WaitForWindow("foo");
    ASSERT_TRUE(kits::testing::WaitUntilAnswers(alert));
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitForNoWindow("foo"));
    EXPECT_EQ(CountShown(kTitle), 1);
}

TEST_F(OptionsWindowTest, IsWorkedByKeysAlone)
{
    Open();

    // From the field of formats: it opens, the next one is chosen
    for (const char key : {B_SPACE, B_DOWN_ARROW, B_ENTER}) {
        TypeKey(key);
        kits::testing::Sync(fWindow);
        kits::testing::SyncServer();
    }
    EXPECT_EQ(MarkedFormat(), "%D %T");
    for (const char key : {B_TAB, B_SPACE, B_TAB, B_TAB, B_SPACE}) {
        TypeKey(key);
    }
    EXPECT_FALSE(IsOn("ShowProgressBar"));
    EXPECT_TRUE(IsOn("ShowHeader"));
    EXPECT_FALSE(IsOn("ShowFooter"));
    TypeKey(B_ENTER); // the default button

    EXPECT_TRUE(WaitFor([this] { return fOwner->CountNotices() == 1; }));
    EXPECT_EQ(Settings().substr(0, 16), "DateFormat=%D %T");
}

TEST_F(OptionsWindowTest, OwnerThatIsGoneIsNotMissed)
{
    Open();
    fOwner->Lock();
    fOwner->Quit();
    fOwner = nullptr;

    Click("SaveOptions");

    EXPECT_NE(Settings().find("ShowHeader=1\n"), std::string::npos);
}

TEST_F(OptionsWindowTest, TellsWhatCannotBeSaved)
{
    fTree.Write("config/Norvane", "a file where the folder should be");
    Open();

    kits::testing::Click(Find<BView>("SaveOptions"));
    std::string text;
    ASSERT_TRUE(kits::testing::AnswerAlert("Oh well", &text));

    EXPECT_EQ(text.substr(0, 34), "The settings could not be saved.\n\n");
    EXPECT_TRUE(WaitFor([this] { return fOwner->CountNotices() == 1; }));
    EXPECT_EQ(CountShown(kTitle), 1);
}

// The notice is shown by the thread that reads, so this is also how a disk that answers late looks.
TEST_F(OptionsWindowTest, AcceptsNothingUntilTheSettingsAreRead)
{
    fTree.MakeFolder(kFile); // no file
    fOwner = new NoticedWindow;
    fOwner->Show();
    fWindow = new OptionsWindow(BRect(0, 0, 799, 599), fOwner);
    fWindow->Show();
    const auto isEnabled = [this](const char* name) {
        const auto* button = Find<BButton>(name);
        return Locked([=] { return button->IsEnabled(); });
    };

    ASSERT_NE(kits::testing::WaitForWindow("Hey"), nullptr);
    EXPECT_FALSE(isEnabled("SaveOptions"));
    EXPECT_TRUE(isEnabled("CancelOptions"));
    EXPECT_EQ(MarkedFormat(), "");

    std::string text;
    ASSERT_TRUE(kits::testing::AnswerAlert("Oh well", &text));
    EXPECT_EQ(text, "The settings could not be read.\n\nNorvane.pref: It is a folder");
    EXPECT_TRUE(WaitFor([&] { return isEnabled("SaveOptions"); }));
    EXPECT_EQ(MarkedFormat(), "%D %R");
    EXPECT_TRUE(IsOn("ShowFooter"));
}

// The extras, each by the name of its box, which is also its key.
class ExtrasTest : public OptionsFixture, public ::testing::WithParamInterface<const char*>
{
protected:
    void ShowExtras()
    {
        auto* pages = Find<BTabView>("tab_view");
        auto* box = Find<BCheckBox>(GetParam());
        Locked([=] {
            pages->Select(2);
            box->MakeFocus(); // and comes into sight
            return true;
        });
    }
    std::string Line(int value) const
    {
        return "\n" + std::string(GetParam()) + "=" + std::to_string(value) + "\n";
    }
};

TEST_P(ExtrasTest, IsOffAtFirstAndLeavesNoLine)
{
    Open();
    EXPECT_FALSE(IsOn(GetParam()));

    Click("SaveOptions");

    EXPECT_EQ(Settings().find(GetParam()), std::string::npos);
}

TEST_P(ExtrasTest, IsStoredShownAndTakenBack)
{
    Open();
    ShowExtras();
    Click(GetParam());
    Click("SaveOptions");
    EXPECT_NE(Settings().find(Line(1)), std::string::npos) << Settings();
    kits::testing::CloseWindow(fWindow);
    ASSERT_TRUE(WaitForNoWindow(kTitle));

    fWindow = new OptionsWindow(BRect(0, 0, 799, 599), fOwner);
    fWindow->Show();
    ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    EXPECT_TRUE(IsOn(GetParam()));
    ShowExtras();
    Click(GetParam());
    Click("SaveOptions");
    EXPECT_NE(Settings().find(Line(0)), std::string::npos) << Settings();
}

TEST_P(ExtrasTest, LabelHasRoom)
{
    Open();
    auto* box = Find<BCheckBox>(GetParam());

    float width = 0;
    float height = 0;
    Locked([&] {
        box->GetPreferredSize(&width, &height);
        return true;
    });

    EXPECT_GE(Locked([=] { return box->Bounds().Width(); }), width);
}

INSTANTIATE_TEST_SUITE_P(All, ExtrasTest,
                         ::testing::Values("ReadableSizes", "HideDotNames", "SortByColumns",
                                           "KeepAllInCopies", "MoveByRenaming"),
                         [](const auto& tested) { return std::string(tested.param); });

class FontSizeTest : public OptionsFixture
{
protected:
    void ShowField()
    {
        auto* pages = Find<BTabView>("tab_view");
        auto* field = Find<BMenuField>("FontSize");
        Locked([=] {
            pages->Select(2);
            field->MakeFocus(); // and comes into sight
            return true;
        });
    }
    std::string Marked()
    {
        auto* field = Find<BMenuField>("FontSize");
        return Locked([=] { return std::string(field->Menu()->FindMarked()->Label()); });
    }
};

TEST_F(FontSizeTest, IsChosenByKeysAndStored)
{
    Open();
    EXPECT_EQ(Marked(), "12");
    ShowField();
    kits::testing::TypeKey('2'); // the next that begins with it
    EXPECT_EQ(Marked(), "20");
    Click("SaveOptions");
    EXPECT_NE(Settings().find("\nFontSize=20\n"), std::string::npos) << Settings();
}

TEST_F(FontSizeTest, OneThatTheMenuHasNotIsKept)
{
    fTree.Write(kFile, "FontSize=17\n");
    Open();
    EXPECT_EQ(Marked(), "17");
    Click("SaveOptions");
    EXPECT_NE(Settings().find("FontSize=17\n"), std::string::npos) << Settings();
}

TEST_F(FontSizeTest, FieldHasRoomForItsLabelAndAllSizes)
{
    Open();
    auto* field = Find<BMenuField>("FontSize");
    float width = 0;
    float height = 0;
    Locked([&] {
        field->GetPreferredSize(&width, &height);
        return true;
    });
    EXPECT_GE(Locked([=] { return field->Bounds().Width(); }), width);
    EXPECT_GE(Locked([=] { return field->Bounds().Height(); }), height);
}

// Every view's frame lies within its parent's bounds, so nothing is cut but what scrolls.
void ExpectWhole(const BView& view)
{
    if (dynamic_cast<const SwitchList*>(&view) != nullptr) {
        return;
    }
    for (int32 i = 0; i < view.CountChildren(); i++) {
        const BView& child = *view.ChildAt(i);
        EXPECT_TRUE(view.Bounds().Contains(child.Frame()))
            << child.Name() << " " << child.Frame().left << "," << child.Frame().top << "-"
            << child.Frame().right << "," << child.Frame().bottom << " in " << view.Name();
        ExpectWhole(child);
    }
}

TEST_F(OptionsWindowTest, NothingIsCut)
{
    Open();

    Locked([this] {
        EXPECT_TRUE(fWindow->Bounds().Contains(fWindow->FindView("QueryContainer")->Frame()));
        ExpectWhole(*fWindow->FindView("QueryContainer"));
        return true;
    });
}

TEST_F(OptionsWindowTest, LongestDateHasRoom)
{
    Open();
    auto* field = Find<BMenuField>("DateFormat");

    float width = 0;
    float height = 0;
    Locked([&] {
        field->GetPreferredSize(&width, &height);
        return true;
    });

    EXPECT_GE(Locked([=] { return field->Bounds().Width(); }), width);
}

} // namespace

} // namespace norvane
