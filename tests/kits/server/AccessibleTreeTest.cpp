#include "NativeFixture.h"

#include "server/NativeWindow.h"
#include "server/ServerState.h"
#include "server/Surface.h"
#include "testing/Native.h"

#include <QAccessible>
#include <QGuiApplication>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

using kits::AccessibleNode;
using kits::Published;
using namespace kits::testing;

namespace {

using Nodes = std::vector<std::shared_ptr<const AccessibleNode>>;

std::shared_ptr<const AccessibleNode> Node(int32 id, AccessibleNode::Role role, const char* name,
                                           uint32 states = 0, Nodes children = {})
{
    auto node = std::make_shared<AccessibleNode>();
    node->id = id;
    node->role = role;
    node->name = name;
    node->states = states;
    node->box = BRect(10, 20, 109, 39);
    node->children = std::move(children);
    return node;
}

class AccessibleTreeTest : public NativeFixture
{
protected:
    void Publish(Nodes children)
    {
        auto published = std::make_shared<Published>();
        published->root =
            Node(1, AccessibleNode::Role::kWindow, "Two panes", 0, std::move(children));
        fA.Link().Publish(published);
    }
    // Runs on the server with the window's root.
    void WithRoot(const std::function<void(QAccessibleInterface&)>& task)
    {
        OnServer([&] {
            kits::NativeWindow* native = kits::ServerState::Get().windows.Find(fA.Token());
            ASSERT_NE(native, nullptr);
            task(*native->Accessible().Interface(kits::AccessibleTree::kRoot));
        });
    }
    // The number under which an interface is registered as long as it lives.
    static QAccessible::Id IdOf(kits::NativeWindow& native, int32 node)
    {
        QAccessible::Id id = 0;
        OnServer([&] { id = QAccessible::uniqueId(native.Accessible().Interface(node)); });
        return id;
    }
    static bool IsRegistered(QAccessible::Id id)
    {
        bool isThere = false;
        OnServer([&] { isThere = QAccessible::accessibleInterface(id) != nullptr; });
        return isThere;
    }
    kits::NativeWindow& NativeA()
    {
        kits::NativeWindow* native = nullptr;
        OnServer([&] { native = kits::ServerState::Get().windows.Find(fA.Token()); });
        return *native;
    }
    static QAccessibleInterface* RootOf(kits::NativeWindow& native)
    {
        QAccessibleInterface* root = nullptr;
        OnServer([&] { root = native.Accessible().Interface(kits::AccessibleTree::kRoot); });
        return root;
    }
};

/// Listens as an assistive program does, and counts the changes of focus it is told.
class FocusListener
{
public:
    FocusListener()
    {
        OnServer([] {
            sCount = 0;
            SetActive(true);
            sBefore = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
                sCount += event->type() == QAccessible::Focus ? 1 : 0;
            });
        });
    }
    ~FocusListener()
    {
        OnServer([] {
            QAccessible::installUpdateHandler(sBefore);
            SetActive(false);
        });
    }
    FocusListener(const FocusListener&) = delete;
    FocusListener& operator=(const FocusListener&) = delete;

    int Count() const
    {
        int count = 0;
        OnServer([&] { count = sCount; });
        return count;
    }

private:
    static void SetActive(bool isActive)
    {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(isActive);
    }

    inline static int sCount = 0; // the server's thread's
    inline static QAccessible::UpdateHandler sBefore = nullptr;
};

} // namespace

TEST_F(AccessibleTreeTest, IsFoundFromTheApplication)
{
    ShowA();
    Publish({Node(7, AccessibleNode::Role::kButton, "OK")});

    OnServer([] {
        QAccessibleInterface* application = QAccessible::queryAccessibleInterface(qGuiApp);
        ASSERT_NE(application, nullptr);
        QAccessibleInterface* window = nullptr;
        for (int index = 0; index < application->childCount(); ++index) {
            QAccessibleInterface* child = application->child(index);
            ASSERT_NE(child, nullptr);
            EXPECT_EQ(application->indexOfChild(child), index);
            if (child->text(QAccessible::Name) == QStringLiteral("Two panes")) {
                window = child;
            }
        }
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(window->parent(), application);
        ASSERT_EQ(window->childCount(), 1);
        EXPECT_EQ(window->child(0)->text(QAccessible::Name), QStringLiteral("OK"));
    });
}

TEST_F(AccessibleTreeTest, WindowThatIsLeavingGivesNothingOut)
{
    ShowA();
    auto leaving = std::make_unique<TestWindow>("leaving", BRect(10, 100, 99, 149));
    leaving->Show(OpenedBy(fA));
    ASSERT_TRUE(leaving->WaitForActivation());
    std::shared_ptr<kits::NativeWindow> native;
    OnServer([&] {
        native = kits::ServerState::Get().windows.Find(leaving->Token())->shared_from_this();
    });
    EXPECT_NE(RootOf(*native), nullptr);
    const QAccessible::Id id = IdOf(*native, kits::AccessibleTree::kRoot);
    EXPECT_TRUE(IsRegistered(id));

    OnServer([&] { kits::ServerState::Get().showing.Destroy(*native); });

    // The native window may be there until the focus has gone on.
    EXPECT_EQ(RootOf(*native), nullptr);
    EXPECT_FALSE(IsRegistered(id));
    leaving.reset();
}

TEST_F(AccessibleTreeTest, WindowThatIsNeverShownRegistersNothing)
{
    const FocusListener listener;
    auto published = std::make_shared<Published>();
    published->root =
        Node(1, AccessibleNode::Role::kWindow, "Hidden", 0,
             {Node(7, AccessibleNode::Role::kButton, "OK", AccessibleNode::State::kFocused)});

    fA.Link().Publish(published);

    OnServer([] {
        QAccessibleInterface* application = QAccessible::queryAccessibleInterface(qGuiApp);
        for (int index = 0; index < application->childCount(); ++index) {
            EXPECT_NE(application->child(index)->text(QAccessible::Name), QStringLiteral("Hidden"));
        }
    });
    EXPECT_EQ(listener.Count(), 0);
}

TEST_F(AccessibleTreeTest, TellsWhereTheFocusWent)
{
    ShowA();
    Publish({Node(7, AccessibleNode::Role::kButton, "OK")});
    const FocusListener listener;

    Publish({Node(7, AccessibleNode::Role::kButton, "OK", AccessibleNode::State::kFocused)});
    EXPECT_EQ(listener.Count(), 1);

    Publish({Node(7, AccessibleNode::Role::kButton, "Yes", AccessibleNode::State::kFocused)});
    EXPECT_EQ(listener.Count(), 1);
}

TEST_F(AccessibleTreeTest, HasItsTitleBeforeItSaysAnything)
{
    ShowA();

    WithRoot([](QAccessibleInterface& root) {
        EXPECT_EQ(root.role(), QAccessible::Window);
        EXPECT_EQ(root.text(QAccessible::Name), QStringLiteral("A"));
        EXPECT_EQ(root.rect(), QRect(50, 60, 200, 150));
        EXPECT_EQ(root.childCount(), 0);
    });
}

TEST_F(AccessibleTreeTest, AnswersFromWhatWasPublished)
{
    ShowA();
    Publish(
        {Node(7, AccessibleNode::Role::kButton, "OK",
              AccessibleNode::State::kFocusable | AccessibleNode::State::kFocused |
                  AccessibleNode::State::kDefault),
         Node(8, AccessibleNode::Role::kTable, "Files", 0,
              {Node(9, AccessibleNode::Role::kRow, "a.txt", AccessibleNode::State::kSelected)})});

    WithRoot([](QAccessibleInterface& root) {
        ASSERT_EQ(root.childCount(), 2);
        QAccessibleInterface* button = root.child(0);
        EXPECT_EQ(button->role(), QAccessible::Button);
        EXPECT_EQ(button->text(QAccessible::Name), QStringLiteral("OK"));
        EXPECT_EQ(button->rect(), QRect(60, 80, 100, 20));
        EXPECT_TRUE(button->state().focused);
        EXPECT_TRUE(button->state().defaultButton);
        EXPECT_EQ(button->parent(), &root);
        EXPECT_EQ(root.focusChild(), button);
        QAccessibleInterface* row = root.child(1)->child(0);
        EXPECT_EQ(row->text(QAccessible::Name), QStringLiteral("a.txt"));
        EXPECT_TRUE(row->state().selected);
        EXPECT_EQ(root.indexOfChild(row->parent()), 1);
        EXPECT_EQ(root.child(2), nullptr);
    });
}

TEST_F(AccessibleTreeTest, FindsWhatHasTheFocusBelow)
{
    ShowA();
    Publish(
        {Node(7, AccessibleNode::Role::kButton, "OK"),
         Node(8, AccessibleNode::Role::kPane, "Pane", 0,
              {Node(9, AccessibleNode::Role::kButton, "Yes", AccessibleNode::State::kFocused)})});

    WithRoot([](QAccessibleInterface& root) {
        EXPECT_EQ(root.focusChild(), root.child(1)->child(0));
        EXPECT_EQ(root.child(1)->focusChild(), root.child(1)->child(0));
        EXPECT_EQ(root.child(0)->focusChild(), nullptr);
    });
}

TEST_F(AccessibleTreeTest, FindsWhatIsAtAPoint)
{
    ShowA();
    auto lower =
        std::make_shared<AccessibleNode>(*Node(8, AccessibleNode::Role::kButton, "Cancel"));
    lower->box = BRect(10, 60, 109, 79);
    Publish({Node(7, AccessibleNode::Role::kButton, "OK"), lower});

    WithRoot([](QAccessibleInterface& root) {
        EXPECT_EQ(root.childAt(65, 85), root.child(0));
        EXPECT_EQ(root.childAt(65, 125), root.child(1));
        EXPECT_EQ(root.childAt(65, 105), nullptr);
    });
}

TEST_F(AccessibleTreeTest, FieldsTellTheirValueAndWhetherItIsHidden)
{
    ShowA();
    auto field =
        std::make_shared<AccessibleNode>(*Node(7, AccessibleNode::Role::kTextField, "Name"));
    field->value = "text";
    Publish({field, Node(8, AccessibleNode::Role::kTextField, "Password",
                         AccessibleNode::State::kHidesText)});

    WithRoot([](QAccessibleInterface& root) {
        EXPECT_EQ(root.child(0)->text(QAccessible::Value), QStringLiteral("text"));
        EXPECT_FALSE(root.child(0)->state().passwordEdit);
        EXPECT_TRUE(root.child(1)->state().passwordEdit);
    });
}

TEST_F(AccessibleTreeTest, KeepsAnInterfaceWhileItsNodeLives)
{
    ShowA();
    Publish({Node(7, AccessibleNode::Role::kButton, "OK")});
    QAccessibleInterface* before = nullptr;
    WithRoot([&before](QAccessibleInterface& root) { before = root.child(0); });

    Publish({Node(6, AccessibleNode::Role::kButton, "New"),
             Node(7, AccessibleNode::Role::kButton, "Fine")});

    WithRoot([before](QAccessibleInterface& root) {
        ASSERT_EQ(root.childCount(), 2);
        EXPECT_EQ(root.child(1), before);
        EXPECT_EQ(before->text(QAccessible::Name), QStringLiteral("Fine"));
    });
}

TEST_F(AccessibleTreeTest, DropsNodesThatAreGone)
{
    ShowA();
    Publish({Node(7, AccessibleNode::Role::kButton, "OK")});
    const QAccessible::Id id = IdOf(NativeA(), 7);
    EXPECT_TRUE(IsRegistered(id));

    Publish({});

    WithRoot([](QAccessibleInterface& root) { EXPECT_EQ(root.childCount(), 0); });
    OnServer([this] {
        kits::NativeWindow* native = kits::ServerState::Get().windows.Find(fA.Token());
        EXPECT_EQ(native->Accessible().Interface(7), nullptr);
    });
    EXPECT_FALSE(IsRegistered(id));
}
