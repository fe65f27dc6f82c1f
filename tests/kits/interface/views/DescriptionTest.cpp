#include "WindowFixture.h"

#include <interface/views/Publishing.h>
#include <server/Published.h>

#include <Button.h>
#include <ListView.h>
#include <Message.h>
#include <StatusBar.h>
#include <StringView.h>
#include <TextControl.h>
#include <TextView.h>

namespace {

using kits::AccessibleNode;
using Role = AccessibleNode::Role;

class DescriptionTest : public WindowFixture
{
protected:
    std::shared_ptr<const AccessibleNode> Describe() { return kits::DescribeWindow(*fWindow); }

    BListView* AddList(int32 rows)
    {
        auto* list = new BListView(BRect(10, 20, 109, 79), "names");
        for (int32 row = 0; row < rows; ++row) {
            fRows.push_back(std::make_unique<BStringItem>(("row " + std::to_string(row)).c_str()));
            list->AddItem(fRows.back().get());
        }
        fWindow->AddChild(list);
        return list;
    }
    void TearDown() override
    {
        WindowFixture::TearDown(); // the list first, which borrows its rows
        fRows.clear();
    }

    std::vector<std::unique_ptr<BListItem>> fRows;
};

TEST_F(DescriptionTest, NamesTheWindowAndItsControls)
{
    auto* button = new BButton(BRect(0, 0, 69, 24), "ok", "Continue", new BMessage('okay'));
    fWindow->AddChild(button);
    fWindow->SetDefaultButton(button);
    button->SetEnabled(false);
    fWindow->AddChild(new BStringView(BRect(0, 30, 99, 45), "text", "Are you sure?"));

    const auto root = Describe();

    EXPECT_EQ(root->role, Role::kWindow);
    EXPECT_EQ(root->name, "Test");
    ASSERT_EQ(root->children.size(), 2u);
    EXPECT_EQ(root->children[0]->role, Role::kButton);
    EXPECT_EQ(root->children[0]->name, "Continue");
    EXPECT_EQ(root->children[0]->states &
                  (AccessibleNode::State::kDefault | AccessibleNode::State::kDisabled),
              AccessibleNode::State::kDefault | AccessibleNode::State::kDisabled);
    EXPECT_EQ(root->children[1]->role, Role::kStaticText);
    EXPECT_EQ(root->children[1]->name, "Are you sure?");
}

TEST_F(DescriptionTest, FieldsTellTheirLabelAndText)
{
    auto* control = new BTextControl(BRect(0, 0, 199, 20), "host", "Host:", "caf\xff", nullptr);
    fWindow->AddChild(control);
    auto* text = new BTextView(BRect(0, 30, 99, 90), "log", BRect(0, 0, 99, 60), B_FOLLOW_NONE);
    text->SetText("one\ntwo");
    text->MakeEditable(false);
    fWindow->AddChild(text);

    const auto root = Describe();

    ASSERT_EQ(root->children.size(), 2u);
    ASSERT_EQ(root->children[0]->children.size(), 1u);
    const AccessibleNode& field = *root->children[0]->children[0];
    EXPECT_EQ(field.role, Role::kTextField);
    EXPECT_EQ(field.name, "Host:");
    EXPECT_EQ(field.value, "caf\xef\xbf\xbd");
    EXPECT_NE(field.states & AccessibleNode::State::kFocusable, 0u);
    EXPECT_EQ(root->children[1]->role, Role::kTextField);
    EXPECT_EQ(root->children[1]->name, "log");
    EXPECT_NE(root->children[1]->states & AccessibleNode::State::kDisabled, 0u);
}

TEST_F(DescriptionTest, ListsTellTheirVisibleRowsOnly)
{
    BListView* list = AddList(100'000);
    list->Select(1);
    list->MakeFocus(true);

    const auto node = Describe()->children.at(0);

    EXPECT_EQ(node->role, Role::kList);
    EXPECT_EQ(node->rowCount, 100'000);
    ASSERT_GE(node->children.size(), 2u);
    EXPECT_LE(node->children.size(), 10u);
    EXPECT_EQ(node->children[1]->name, "row 1");
    EXPECT_EQ(node->children[1]->states,
              AccessibleNode::State::kSelected | AccessibleNode::State::kFocused);
    EXPECT_EQ(node->children[0]->states, 0u);
    EXPECT_EQ(node->children[0]->box.left, 10);
    EXPECT_EQ(node->children[0]->box.top, 20);
}

TEST_F(DescriptionTest, RowsKeepTheirNumbers)
{
    BListView* list = AddList(3);
    const auto before = Describe()->children.at(0);
    const int32 second = before->children.at(1)->id;

    list->RemoveItem(0);
    const auto after = Describe()->children.at(0);

    EXPECT_EQ(after->children.at(0)->id, second);
    EXPECT_NE(after->children.at(1)->id, second);
    EXPECT_EQ(after->id, before->id);
}

TEST_F(DescriptionTest, HiddenViewsAreLeftOut)
{
    AddList(3)->Hide();

    EXPECT_TRUE(Describe()->children.empty());
}

TEST_F(DescriptionTest, ProgressSaysItsShare)
{
    auto* bar = new BStatusBar(BRect(0, 0, 99, 30), "bar");
    fWindow->AddChild(bar);
    bar->SetMaxValue(8);
    bar->Update(2);

    const auto node = Describe()->children.at(0);

    EXPECT_EQ(node->role, Role::kProgressBar);
    EXPECT_EQ(node->value, "25 %");
}

} // namespace
