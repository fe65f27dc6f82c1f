#include "query/QueryWindow.h"

#include "AlertText.h"
#include "ApplicationEnvironment.h"
#include "MessageCodes.h"
#include "TempTree.h"

#include <Autolock.h>
#include <CheckBox.h>
#include <InterfaceDefs.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <PopUpMenu.h>
#include <TabView.h>
#include <TextControl.h>
#include <TextView.h>

#include <algorithm>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <vector>

namespace norvane {

namespace {

using kits::testing::FindView;
using kits::testing::WaitFor;

constexpr bigtime_t kSearchLimit = 60'000'000; // all volumes of the machine are walked through

/// Stands for the main window: keeps what it is told of searches.
class QueryOwner : public BWindow
{
public:
    QueryOwner() : BWindow(BRect(100, 100, 900, 700), "Owner", B_TITLED_WINDOW, 0) {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what != 601) {
            BWindow::MessageReceived(message);
            return;
        }
        std::vector<std::string> names;
        entry_ref ref;
        for (int32 i = 0; message->FindRef("ref", i, &ref) == B_OK; i++) {
            names.emplace_back(ref.name);
        }
        std::sort(names.begin(), names.end());
        std::string joined = message->GetString("QueryString", "(none)");
        for (const std::string& name : names) {
            joined += " " + name;
        }
        const std::lock_guard lock(fMutex);
        fResults.push_back(joined);
    }
    /// The texts of all searches that ended, each followed by the names found.
    std::vector<std::string> Results()
    {
        const std::lock_guard lock(fMutex);
        return fResults;
    }

private:
    std::mutex fMutex;
    std::vector<std::string> fResults;
};

class QueryWindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fOwner = new QueryOwner;
        fOwner->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fOwner));
        fQuery = new QueryWindow(BRect(100, 100, 900, 700), fOwner);
        fQuery->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fQuery));
    }
    void TearDown() override
    {
        for (BWindow* window : {static_cast<BWindow*>(fQuery), static_cast<BWindow*>(fOwner)}) {
            // One that waits for an answer keeps its lock; the application quits it at its end.
            if (window != nullptr && window->LockWithTimeout(1'000'000) == B_OK) {
                window->Quit();
            }
        }
    }

    /// A name that no other entry of the machine has.
    std::string Name(const std::string& name)
    {
        const std::string folder = fTree.Path();
        return folder.substr(folder.rfind('/') + 1) + "-" + name;
    }

    /// The result of `ask`, called with the window locked.
    template<typename Ask>
    auto Locked(Ask ask)
    {
        const BAutolock lock(fQuery);
        EXPECT_TRUE(lock.IsLocked());
        return ask();
    }
    template<typename View>
    View* Find(const char* name)
    {
        auto* view = dynamic_cast<View*>(FindView(fQuery, name));
        EXPECT_NE(view, nullptr) << name;
        return view;
    }
    void Select(int32 page)
    {
        auto* tabs = Find<BTabView>("tab_view");
        Locked([=] {
            tabs->Select(page);
            return 0;
        });
    }
    void Enter(const char* field, const std::string& text)
    {
        auto* control = Find<BTextControl>(field);
        Locked([&] {
            control->SetText(text.c_str());
            return 0;
        });
    }
    /// A box as a person finds it: by its label.
    void Check(const char* label)
    {
        kits::testing::Click(FindView(fQuery, label));
        EXPECT_TRUE(kits::testing::Sync(fQuery));
    }
    bool IsChecked(const char* label)
    {
        auto* box = Find<BCheckBox>(label);
        return Locked([=] { return box->Value() != B_CONTROL_OFF; });
    }
    void Choose(const char* field, int32 index)
    {
        auto* menu = Find<BMenuField>(field);
        Locked([=, this] {
            BMenuItem* item = menu->Menu()->ItemAt(index);
            item->SetMarked(true);
            fQuery->PostMessage(item->Message());
            return 0;
        });
        EXPECT_TRUE(kits::testing::Sync(fQuery));
    }
    void Start() { kits::testing::Click(FindView(fQuery, "Query")); }
    /// What the last of `count` searches sent.
    std::string Result(size_t count = 1)
    {
        if (!WaitFor([=, this] { return fOwner->Results().size() >= count; }, kSearchLimit)) {
            return "(no result)";
        }
        return fOwner->Results().back();
    }
    static void Answer(const char* title)
    {
        BWindow* alert = kits::testing::WaitForWindow(title);
        ASSERT_TRUE(kits::testing::WaitUntilAnswers(alert));
        kits::testing::Click(FindView(alert, "OK"));
        ASSERT_TRUE(kits::testing::WaitForNoWindow(title));
    }

    TempTree fTree;
    QueryOwner* fOwner = nullptr;  // deletes itself
    QueryWindow* fQuery = nullptr; // deletes itself
};

constexpr char kNoCriteria[] =
    "info: No Criteria Entered, Or Invalid Criteria\nPleaes Modify Query [OK]*";

TEST_F(QueryWindowTest, LooksAsItShould)
{
    EXPECT_EQ(Locked([this] { return std::string(fQuery->Title()); }), "Norvane");
    EXPECT_EQ(Locked([this] { return fQuery->Bounds(); }), BRect(0, 0, 440, 212));
    EXPECT_EQ(Locked([this] { return fQuery->Frame().left + 220; }), 500);
    const BView* ground = FindView(fQuery, "QueryContainer");
    ASSERT_NE(ground, nullptr);
    EXPECT_EQ(ground->Frame(), BRect(0, 0, 440, 212));
    EXPECT_EQ(Find<BTabView>("tab_view")->Frame(), BRect(5, 5, 335, 207));
    const float top = 5 + Find<BTabView>("tab_view")->TabHeight();
    // A default button has its mark around it.
    EXPECT_EQ(FindView(fQuery, "StartQuery")->Frame().InsetByCopy(3, 3),
              BRect(345, top, 435, top + 20));
    EXPECT_EQ(FindView(fQuery, "CancelQuery")->Frame(), BRect(345, top + 30, 435, top + 50));
    auto* name = Find<BTextControl>("Text1");
    EXPECT_TRUE(Locked([=] { return name->TextView()->IsFocus(); }));
}

TEST_F(QueryWindowTest, HasItsChoices)
{
    struct
    {
        const char* field;
        std::vector<const char*> labels;
        std::vector<uint32> codes;
        int32 marked;
    } const kFields[] = {
        {"Name",
         {"contains", "is not", "is", "starts with", "ends with"},
         {2090, 2091, 2092, 2093, 2094},
         0},
        {"Volumes", {"All BFS Volumes", "Select Volume(s)"}, {3000, 3000}, 0},
        {"Units", {"Hours", "Days", "Weeks", "Years"}, {2060, 2061, 2062, 2063}, 1},
        {"FileSizeOperators", {" = ", " > ", " < "}, {2070, 2071, 2072}, 2},
        {"FileSizeUnits", {"Bytes", "Kilobytes", "Megabytes"}, {2080, 2081, 2082}, 1},
    };
    for (const auto& [field, labels, codes, marked] : kFields) {
        const BMenu* menu = Find<BMenuField>(field)->Menu();
        ASSERT_EQ(menu->CountItems(), static_cast<int32>(labels.size())) << field;
        for (size_t i = 0; i < labels.size(); i++) {
            const BMenuItem* item = menu->ItemAt(static_cast<int32>(i));
            EXPECT_STREQ(item->Label(), labels[i]);
            EXPECT_EQ(item->Command(), codes[i]) << labels[i];
            EXPECT_EQ(item->IsMarked(), static_cast<int32>(i) == marked) << labels[i];
        }
    }
}

TEST_F(QueryWindowTest, SendsWhatItFound)
{
    fTree.Write("one/" + Name("a"), "");
    fTree.MakeFolder(Name("b"));
    Enter("Text1", Name(""));

    Start();

    EXPECT_EQ(Result(), "(name==\"*" + Name("") + "*\") " + Name("a") + " " + Name("b"));
    EXPECT_EQ(Locked([this] { return std::string(fQuery->Title()); }), "Norvane");
}

TEST_F(QueryWindowTest, SendsAnEmptyResultToo)
{
    Enter("Text1", Name("nowhere"));

    Start();

    EXPECT_EQ(Result(), "(name==\"*" + Name("nowhere") + "*\")");
}

TEST_F(QueryWindowTest, SearchesAnewWithWhatStandsThere)
{
    fTree.Write(Name("a"), "");
    Enter("Text1", Name("a"));
    Start();
    ASSERT_EQ(Result(), "(name==\"*" + Name("a") + "*\") " + Name("a"));
    Choose("Name", 2);
    Enter("Text1", Name("b"));

    Start();

    EXPECT_EQ(Result(2), "(name==\"" + Name("b") + "\")");
}

TEST_F(QueryWindowTest, TakesSizeAndUnit)
{
    fTree.Write(Name("small"), std::string(2048, ' '));
    fTree.Write(Name("large"), std::string(2049, ' '));
    Enter("Text1", Name(""));
    Select(1);
    Check("File Size");
    Locked([this] { // the box has the same name as the field
        BView* page = FindView(fQuery, "Advanced");
        for (int32 i = 0; BView* child = page->ChildAt(i); i++) {
            auto* field = dynamic_cast<BTextControl*>(child);
            if (field != nullptr && std::string(field->Name()) == "FileSize") {
                field->SetText("2");
            }
        }
        return 0;
    });

    Start();

    EXPECT_EQ(Result(), "((name==\"*" + Name("") + "*\")&&(size<=2048)) " + Name("small"));
    Choose("FileSizeOperators", 1);
    Choose("FileSizeUnits", 0);
    Start();
    EXPECT_EQ(Result(2),
              "((name==\"*" + Name("") + "*\")&&(size>=2)) " + Name("large") + " " + Name("small"));
}

TEST_F(QueryWindowTest, KeepsFilesThatHoldTheText)
{
    fTree.Write(Name("a"), "hay and a needle");
    fTree.Write(Name("b"), "hay");
    fTree.MakeFolder(Name("c"));
    Enter("Text1", Name(""));
    Check("Find Text:");
    Enter("TextToFind", "needle");

    Start();

    EXPECT_EQ(Result(), "(name==\"*" + Name("") + "*\") " + Name("a"));
}

TEST_F(QueryWindowTest, RefusesToSearchForNothing)
{
    Start();

    EXPECT_EQ(AlertText("Foo"), kNoCriteria);
    Answer("Foo");
    EXPECT_TRUE(fOwner->Results().empty());
}

TEST_F(QueryWindowTest, RefusesAPredicateThatNobodyTakes)
{
    Enter("Text1", std::string(1024, 'x'));

    Start();

    EXPECT_EQ(AlertText("Foo"), kNoCriteria);
    Answer("Foo");
}

TEST_F(QueryWindowTest, TellsOfDatesInNoOrder)
{
    Select(1);
    Check("Date Between");
    for (const char* field : {"Date1m", "Date1d", "Date2m", "Date2d"}) {
        Enter(field, "1");
    }
    Enter("Date1y", "2000");
    Enter("Date2y", "2000");

    Start();

    EXPECT_EQ(AlertText("foo"), "info: Date 2 must be greater then Date1. [OK]*");
    Answer("foo");
    EXPECT_EQ(AlertText("Foo"), kNoCriteria);
    Answer("Foo");
    EXPECT_TRUE(fOwner->Results().empty());
}

TEST_F(QueryWindowTest, TakesOneOfTheDateBoxesAlone)
{
    Select(1);
    const auto checked = [this](bool isBetween, bool isNotOlder) {
        return WaitFor([=, this] {
            return IsChecked("DateBetween") == isBetween && IsChecked("NotOlderThan") == isNotOlder;
        });
    };
    Check("Date Between");
    EXPECT_TRUE(checked(true, false));

    Check("Not Older Than");
    EXPECT_TRUE(checked(false, true));

    Check("Date Between");
    EXPECT_TRUE(checked(true, false));
}

TEST_F(QueryWindowTest, HasNoHelp)
{
    kits::testing::Click(FindView(fQuery, "Help"));

    EXPECT_EQ(AlertText("foo"),
              "info: Sorry no Query Help is available at this time.hMaybe Someday... [OK]*");
    Answer("foo");
}

TEST_F(QueryWindowTest, ClosesByEscape)
{
    kits::testing::TypeKey(B_ESCAPE);

    EXPECT_TRUE(kits::testing::WaitForNoWindow("Norvane"));
    fQuery = nullptr;
}

TEST_F(QueryWindowTest, EndsItsSearchWhenItCloses)
{
    Enter("Text1", "*");
    Start();

    kits::testing::TypeKey(B_ESCAPE);

    ASSERT_TRUE(kits::testing::WaitForNoWindow("Norvane"));
    fQuery = nullptr;
    EXPECT_TRUE(WaitFor([] { return find_thread("query") < B_OK; }));
    EXPECT_TRUE(fOwner->Results().empty());
}

} // namespace

} // namespace norvane
