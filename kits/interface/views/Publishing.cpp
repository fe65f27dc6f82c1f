#include "Publishing.h"

#include "Access.h"
#include "interface/text/TextDecoding.h"
#include "interface/textview/TextViewState.h"
#include "ViewState.h"
#include "WindowState.h"

#include "app/HandlerAccess.h"
#include "server/Published.h"

#include <Button.h>
#include <ListView.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <ScrollBar.h>
#include <StatusBar.h>
#include <StringView.h>
#include <TextControl.h>
#include <Window.h>

#include <algorithm>
#include <string>

namespace kits {

namespace {

using Role = AccessibleNode::Role;
using NodePointer = std::shared_ptr<AccessibleNode>;

// Rows and menu items are no views and have no number of their own: they get one as they are first
// seen, above those of views.
constexpr int32 kFirstThingId = 1 << 24;

// How much of a text is told; it is told anew at each frame while somebody listens.
constexpr int32 kMostFieldBytes = 4096;

class Describer
{
public:
    Describer(BWindow& window, WindowState& state) : fWindow(window), fState(state) {}

    NodePointer Describe()
    {
        NodePointer root = Make(0, Role::kWindow, fWindow.Bounds());
        root->name = fWindow.Title();
        AddChildren(*root, *fState.host->Root());
        fState.thingIds.swap(fSeen); // what is no longer there is forgotten
        return root;
    }

private:
    static NodePointer Make(int32 id, Role role, BRect box)
    {
        auto node = std::make_shared<AccessibleNode>();
        node->id = id;
        node->role = role;
        node->box = box;
        return node;
    }

    int32 IdOf(const void* thing)
    {
        const auto known = fState.thingIds.find(thing);
        const int32 id =
            known != fState.thingIds.end() ? known->second : kFirstThingId + fState.lastThing++;
        fSeen[thing] = id;
        return id;
    }

    static BRect InWindow(const BView& view, BRect rect)
    {
        double x = 0;
        double y = 0;
        ViewAccess::GetOrigin(view, &x, &y);
        return rect.OffsetByCopy(static_cast<float>(x), static_cast<float>(y));
    }

    void AddChildren(AccessibleNode& node, const BView& view)
    {
        for (BView* child : ViewAccess::Children(view)) {
            if (!ViewAccess::HidesItself(*child)) {
                node.children.push_back(Describe(*child));
            }
        }
    }

    NodePointer Describe(BView& view)
    {
        NodePointer node =
            Make(HandlerAccess::Token(&view), Role::kPane, InWindow(view, view.Bounds()));
        node->name = view.Name() != nullptr ? view.Name() : "";
        if ((view.Flags() & B_NAVIGABLE) != 0) {
            node->states |= AccessibleNode::kFocusable;
        }
        if (view.IsFocus()) {
            node->states |= AccessibleNode::kFocused;
        }
        if (auto* textControl = dynamic_cast<BTextControl*>(&view)) {
            node->name = textControl->Label(); // its field is the child
        } else if (auto* control = dynamic_cast<BControl*>(&view)) {
            DescribeControl(*node, *control);
        } else if (auto* field = dynamic_cast<BTextView*>(&view)) {
            DescribeField(*node, *field);
        } else if (auto* text = dynamic_cast<BStringView*>(&view)) {
            node->role = Role::kStaticText;
            node->name = text->Text() != nullptr ? text->Text() : "";
        } else if (auto* list = dynamic_cast<BListView*>(&view)) {
            DescribeList(*node, *list);
        } else if (auto* bar = dynamic_cast<BStatusBar*>(&view)) {
            DescribeProgress(*node, *bar);
        } else if (auto* menuBar = dynamic_cast<BMenuBar*>(&view)) {
            DescribeMenuBar(*node, *menuBar);
        } else if (dynamic_cast<BScrollBar*>(&view) != nullptr) {
            node->role = Role::kScrollBar;
        }
        AddChildren(*node, view);
        return node;
    }

    void DescribeControl(AccessibleNode& node, const BControl& control)
    {
        const auto* button = dynamic_cast<const BButton*>(&control);
        node.role = button != nullptr ? Role::kButton : Role::kCheckBox;
        node.name = control.Label();
        if (!control.IsEnabled()) {
            node.states |= AccessibleNode::kDisabled;
        }
        if (button != nullptr && button->IsDefault()) {
            node.states |= AccessibleNode::kDefault;
        }
        if (button == nullptr && control.Value() != B_CONTROL_OFF) {
            node.states |= AccessibleNode::kMarked;
        }
    }

    static void DescribeField(AccessibleNode& node, const BTextView& field)
    {
        node.role = Role::kTextField;
        const auto* control = dynamic_cast<const BTextControl*>(field.Parent());
        if (control != nullptr) {
            node.name = control->Label()[0] != '\0' || control->Name() == nullptr ? control->Label()
                                                                                  : control->Name();
        }
        const TextBuffer& text = TextViewAccess::State(field).text;
        const int32 end = text.Clamp(std::min(text.Length(), kMostFieldBytes));
        node.value = DecodedText(text.Part(0, end), text.IsSingleLine()).Text().toStdString();
        if (!field.IsEditable()) {
            node.states |= AccessibleNode::kDisabled;
        }
    }

    // Only the rows that are seen, whatever the list's length.
    void DescribeList(AccessibleNode& node, BListView& list)
    {
        node.role = Role::kList;
        node.rowCount = list.CountItems();
        const BRect seen = list.Bounds();
        const int32 first = list.IndexOf(BPoint(seen.left, seen.top));
        for (int32 row = first; row >= 0 && row < node.rowCount; ++row) {
            const BRect frame = list.ItemFrame(row);
            if (frame.top > seen.bottom) {
                break;
            }
            const BListItem* item = list.ItemAt(row);
            NodePointer line = Make(IdOf(item), Role::kListItem, InWindow(list, frame & seen));
            line->name = item->SpokenText();
            line->states = item->IsSelected() ? uint32{AccessibleNode::kSelected} : 0;
            line->states |= item->IsEnabled() ? 0 : uint32{AccessibleNode::kDisabled};
            const bool isCurrent = list.IsFocus() && row == list.CurrentSelection();
            if (isCurrent) {
                line->states |= AccessibleNode::kFocused;
            }
            node.children.push_back(line);
        }
    }

    void DescribeProgress(AccessibleNode& node, const BStatusBar& bar)
    {
        node.role = Role::kProgressBar;
        node.name = bar.Text() != nullptr && bar.Text()[0] != '\0' ? bar.Text() : node.name;
        const float whole = bar.MaxValue();
        const float share = whole > 0 ? bar.CurrentValue() / whole * 100 : 0;
        node.value = std::to_string(static_cast<int32>(share)) + " %";
    }

    void DescribeMenuBar(AccessibleNode& node, const BMenuBar& bar)
    {
        node.role = Role::kMenuBar;
        for (int32 i = 0; i < bar.CountItems(); ++i) {
            const BMenuItem* item = bar.ItemAt(i);
            NodePointer title = Make(IdOf(item), Role::kMenuItem, InWindow(bar, item->Frame()));
            title->name = item->Label() != nullptr ? item->Label() : "";
            title->states = item->IsEnabled() ? 0 : uint32{AccessibleNode::kDisabled};
            node.children.push_back(title);
        }
    }

    BWindow& fWindow;
    WindowState& fState;
    std::unordered_map<const void*, int32> fSeen;
};

} // namespace

std::shared_ptr<const AccessibleNode> DescribeWindow(BWindow& window)
{
    return Describer(window, WindowAccess::State(window)).Describe();
}

void PublishIfChanged(BWindow& window, WindowState& state)
{
    const uint64 frame = state.host->CountFrames();
    if (frame == state.publishedFrame && state.focus == state.publishedFocus) {
        return;
    }
    const bool isListened = WindowServer::Get().IsAccessibilityActive();
    const EditingView* editing = EditingOf(state.focus);
    const bool isNews = isListened || editing != nullptr || state.isTextPublished ||
                        (state.publishedFocus != state.focus);
    state.publishedFrame = frame;
    state.publishedFocus = state.focus;
    if (!isNews) {
        return;
    }
    auto published = std::make_shared<Published>();
    if (editing != nullptr) {
        editing->GetInputMethod(&published->inputMethod);
    }
    state.isTextPublished = editing != nullptr;
    if (isListened) {
        published->root = DescribeWindow(window);
    }
    state.host->Link().Publish(std::move(published));
}

} // namespace kits
