#include "ApplicationEnvironment.h"
#include "Checksums/SumLines.h"
#include "LoadedAddOn.h"
#include "SumTool.h"

#include <Autolock.h>
#include <Button.h>
#include <Clipboard.h>
#include <Entry.h>
#include <InterfaceDefs.h>
#include <ListView.h>
#include <StringView.h>
#include <TypeConstants.h>
#include <Window.h>

#include <gtest/gtest.h>

namespace {

using kits::testing::FindView;
using kits::testing::TypeKey;
using kits::testing::TypeText;
using kits::testing::WaitFor;

class SumWindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fTree.Write("a", "1");
        fTree.Write("b", "2");
        fTree.Write("sub/c", "3");
    }
    void TearDown() override
    {
        BWindow* window = kits::testing::CountShown("Checksums") > 0 ? fWindow : nullptr;
        if (window != nullptr && window->Lock()) {
            window->Quit();
        }
    }

    void Open(const std::vector<std::string>& names, const std::string& summary)
    {
        std::vector<entry_ref> refs;
        for (const std::string& name : names) {
            entry_ref ref;
            ASSERT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
            refs.push_back(ref);
        }
        static const LoadedAddOn addOn(CHECKSUMS);
        addOn.Call(refs);
        fWindow = kits::testing::WaitForWindow("Checksums");
        ASSERT_NE(fWindow, nullptr);
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
        ASSERT_TRUE(kits::testing::WaitUntilAnswers(fWindow));
        ASSERT_TRUE(WaitForLine("Summary", summary));
    }
    std::string Line(const char* name)
    {
        auto* line = dynamic_cast<BStringView*>(FindView(fWindow, name));
        const BAutolock lock(fWindow);
        return line != nullptr && lock.IsLocked() ? line->Text() : "(none)";
    }
    bool WaitForLine(const char* name, const std::string& text)
    {
        return WaitFor([&] { return Line(name) == text; }) || (ADD_FAILURE() << Line(name), false);
    }
    std::string RowText(int32 row)
    {
        auto* list = dynamic_cast<BListView*>(FindView(fWindow, "Sums"));
        const BAutolock lock(fWindow);
        return lock.IsLocked() && list->ItemAt(row) != nullptr ? list->ItemAt(row)->SpokenText()
                                                               : "(none)";
    }
    static std::string Clipboard()
    {
        if (!be_clipboard->Lock()) {
            return "(none)";
        }
        const void* bytes = nullptr;
        ssize_t count = 0;
        const bool isText =
            be_clipboard->Data()->FindData("text/plain", B_MIME_TYPE, &bytes, &count) == B_OK;
        std::string text(isText ? static_cast<const char*>(bytes) : "",
                         isText ? static_cast<size_t>(count) : 0);
        be_clipboard->Unlock();
        return text;
    }

    TempTree fTree;
    BWindow* fWindow = nullptr;
};

} // namespace

TEST_F(SumWindowTest, ShowsSums)
{
    Open({"a", "sub"}, "2 files: 2 done");
    EXPECT_EQ(RowText(0), "a, " + SumTool(fTree, "", "a").substr(0, 64));
    EXPECT_EQ(RowText(1), "sub/c, " + SumTool(fTree, "", "sub/c").substr(0, 64));
    TypeKey(B_ESCAPE);
    EXPECT_TRUE(kits::testing::WaitForNoWindow("Checksums"));
}

TEST_F(SumWindowTest, CopiesAllSums)
{
    Open({"a", "b"}, "2 files: 2 done");
    kits::testing::Click(FindView(fWindow, "Copy"));
    ASSERT_TRUE(WaitForLine("Summary", "Copied 2 sums"));
    EXPECT_EQ(Clipboard(), SumTool(fTree, "", "a b"));
}

TEST_F(SumWindowTest, CopiesSelectedSums)
{
    Open({"a", "b"}, "2 files: 2 done");
    TypeKey(B_TAB);
    TypeKey(B_DOWN_ARROW);
    TypeKey(B_DOWN_ARROW);
    kits::testing::Click(FindView(fWindow, "Copy"));
    ASSERT_TRUE(WaitForLine("Summary", "Copied 1 sum"));
    EXPECT_EQ(Clipboard(), SumTool(fTree, "", "b"));
}

TEST_F(SumWindowTest, SavesSums)
{
    Open({"a", "b"}, "2 files: 2 done");
    kits::testing::Click(FindView(fWindow, "Save"));
    ASSERT_TRUE(WaitForLine("Summary", "Saved as “SHA256SUMS”"));
    EXPECT_EQ(fTree.Read("SHA256SUMS"), SumTool(fTree, "", "a b"));
    EXPECT_EQ(SumTool(fTree, "", "-c SHA256SUMS"), "a: OK\nb: OK\n");
}

TEST_F(SumWindowTest, FindsTheFileOfASum)
{
    Open({"a", "b"}, "2 files: 2 done");
    TypeText(("  " + SumTool(fTree, "", "b")).c_str());
    ASSERT_TRUE(WaitForLine("Match", "This is the sum of “b”"));
    TypeKey('a', B_COMMAND_KEY);
    TypeText(std::string(64, '0').c_str());
    ASSERT_TRUE(WaitForLine("Match", "No file here has this sum"));
    TypeKey('a', B_COMMAND_KEY);
    TypeText("123");
    ASSERT_TRUE(WaitForLine("Match", "This is no SHA-256 sum, which has 64 hexadecimal digits"));
}

TEST_F(SumWindowTest, Verifies)
{
    fTree.Write("SHA256SUMS", SumTool(fTree, "", "a b"));
    fTree.Write("b", "3");
    Open({"SHA256SUMS"}, "2 files: 1 OK, 1 different");
    EXPECT_EQ(RowText(0), "a, OK");
    EXPECT_EQ(RowText(1), "b, differs");
    auto* save = dynamic_cast<BButton*>(FindView(fWindow, "Save"));
    const BAutolock lock(fWindow);
    EXPECT_FALSE(save->IsEnabled());
}
