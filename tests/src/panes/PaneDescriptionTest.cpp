#include "PaneWindowFixture.h"
#include "clv/CLVColumnLabelView.h"

#include <ViewDescription.h>

namespace {

using namespace norvane;

// What a pane's own views say of themselves.

class PaneDescriptionTest : public PaneWindowFixture
{
protected:
    BViewDescription Described(const BView* view)
    {
        return Locked([view] {
            BViewDescription said;
            said.name = view->Name();
            view->Describe(&said);
            return said;
        });
    }
    const BView* Labels()
    {
        return Locked([this] { return fWindow->FindView("ColumnLabels"); });
    }
};

TEST_F(PaneDescriptionTest, StripsSayTheirTexts)
{
    Open();
    ASSERT_TRUE(kits::testing::WaitFor(
        [this] { return Locked([this] { return !fPane->Footer()->Space().empty(); }); }));

    const BViewDescription header = Described(fPane->Header());
    const BViewDescription footer = Described(fPane->Footer());

    EXPECT_EQ(header.role, BViewDescription::Role::kStaticText);
    EXPECT_EQ(header.name, fTree.Path("shown"));
    EXPECT_EQ(footer.role, BViewDescription::Role::kStaticText);
    EXPECT_EQ(footer.name,
              Locked([this] { return fPane->Footer()->Text() + "; " + fPane->Footer()->Space(); }));
}

TEST_F(PaneDescriptionTest, ColumnHeadersAreNamed)
{
    Open();
    ASSERT_NE(Labels(), nullptr);

    const BViewDescription strip = Described(Labels());

    EXPECT_EQ(strip.name, "");
    ASSERT_GE(strip.parts.size(), 2u);
    float left = -1;
    int named = 0;
    for (const BViewDescription::Part& part : strip.parts) {
        EXPECT_EQ(part.role, BViewDescription::Role::kColumnHeader);
        EXPECT_GT(part.frame.left, left);
        left = part.frame.left;
        named += part.name.empty() ? 0 : 1;
    }
    EXPECT_GE(named, 2);
}

} // namespace
