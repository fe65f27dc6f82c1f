#include "PaneWindowFixture.h"

#include <Font.h>
#include <ToolTip.h>

namespace {

using namespace norvane;

class DirViewTipsTest : public PaneWindowFixture
{
protected:
    /// The tip of a row's cell, `column` as it is displayed at first.
    std::string Tip(const std::string& name, int32 column)
    {
        return Locked([&] {
            for (int32 i = 0; i < fList->CountItems(); i++) {
                if (fList->RowAt(i)->GetEntryName() == name) {
                    return TipAt(BPoint((fList->ColumnAt(column)->Begin() + 5),
                                        fList->ItemFrame(i).top + 5));
                }
            }
            return std::string("(no row)");
        });
    }

    std::string TipAt(BPoint where)
    {
        BToolTip* tip = nullptr;
        if (!fList->GetToolTipAt(where, &tip)) {
            return "";
        }
        return dynamic_cast<BTextToolTip*>(tip)->Text();
    }
};

TEST_F(DirViewTipsTest, CutNamesAreToldWhole)
{
    const std::string cut = "a name that is longer than its column is wide";
    const std::string odd = std::string(60, 'y') + "\n\u202E\xff";
    fTree.Write("shown/" + cut, "");
    fTree.Write("shown/" + odd, "");
    fTree.Write("shown/short", "");
    Open();

    EXPECT_EQ(Tip(cut, 1), cut);
    EXPECT_EQ(Tip("short", 1), "");
    EXPECT_EQ(Tip(odd, 1), std::string(60, 'y') + "\u20390A\u203A\u2039202E\u203A\uFFFD");
    Locked([this] {
        fList->SetColumnWidth(1, 420);
        return 0;
    });
    EXPECT_EQ(Tip(cut, 1), "");
}

TEST_F(DirViewTipsTest, WhatThePanesEdgeCutsIsCutToo)
{
    fTree.Write("shown/half a column", "");
    Open();
    EXPECT_EQ(Tip("half a column", 1), "");
    Locked([this] {
        fPane->ResizeTo(90, 300);
        return 0;
    });
    EXPECT_EQ(Tip("half a column", 1), "half a column");
}

TEST_F(DirViewTipsTest, SizesAreToldInBytes)
{
    fTree.Write("shown/none", "");
    fTree.Write("shown/one", "1");
    fTree.Write("shown/thousand", std::string(1000, 'x'));
    fTree.Write("shown/million", std::string(1234567, 'x'));
    fTree.MakeFolder("shown/folder");
    fTree.Link("shown/link", "one");
    Open();

    EXPECT_EQ(Tip("none", 2), "0 bytes");
    EXPECT_EQ(Tip("one", 2), "1 byte");
    EXPECT_EQ(Tip("thousand", 2), "1,000 bytes");
    EXPECT_EQ(Tip("million", 2), "1,234,567 bytes");
    EXPECT_EQ(Tip("folder", 2), "");
    EXPECT_EQ(Tip("link", 2), "");
    EXPECT_EQ(Tip("..", 2), "");
    EXPECT_EQ(Locked([this] { return TipAt(BPoint(60, 350)); }), ""); // below the rows
}

TEST_F(DirViewTipsTest, TheHeaderTellsThePathAndTheVolume)
{
    fTree.MakeFolder("shown/a\nb");
    Open("shown/a\nb");
    const auto tip = [this] {
        return Locked([this] {
            BToolTip* asked = nullptr;
            EXPECT_TRUE(fPane->Header()->GetToolTipAt(BPoint(5, 5), &asked));
            return std::string(dynamic_cast<BTextToolTip*>(asked)->Text());
        });
    };
    const std::string path = fTree.Path("shown/a\u20390A\u203Ab");
    EXPECT_EQ(tip().substr(0, path.size()), path);
    EXPECT_TRUE(kits::testing::WaitFor([&] {
        return tip().find("\n") == path.size() && tip().find(" free of ") != std::string::npos;
    })) << tip();
}

} // namespace
