#include "Publishing.h"

#include "ViewAccess.h"
#include "ViewState.h"
#include "WindowAccess.h"
#include "WindowState.h"

#include "app/HandlerAccess.h"
#include "server/Published.h"
#include "server/WindowServer.h"

#include <ViewDescription.h>
#include <Window.h>

#include <string>
#include <unordered_map>
#include <utility>

namespace kits {

namespace {

using Role = AccessibleNode::Role;
using NodePointer = std::shared_ptr<AccessibleNode>;

// Rows and menu items are no views and have no number of their own: they get one as they are first
// seen, above those of views.
constexpr int32 kFirstThingId = 1 << 24;

BRect InWindow(const BView& view, BRect rect)
{
    double x = 0;
    double y = 0;
    ViewAccess::GetOrigin(view, &x, &y);
    return rect.OffsetByCopy(static_cast<float>(x), static_cast<float>(y));
}

// Whether the view takes text from input methods; fills in what they are to know.
bool DescribeInput(const BView* view, InputMethodState* state)
{
    if (view == nullptr || !view->DescribeInput(state)) {
        return false;
    }
    state->view = HandlerAccess::Token(view);
    state->caret = InWindow(*view, state->caret);
    return true;
}

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

    void AddChildren(AccessibleNode& node, const BView& view)
    {
        for (BView* child : ViewAccess::Children(view)) {
            if (!ViewAccess::HidesItself(*child)) {
                node.children.push_back(Describe(*child));
            }
        }
    }

    NodePointer Describe(const BView& view)
    {
        BViewDescription said;
        said.name = view.Name() != nullptr ? view.Name() : "";
        said.states = (view.Flags() & B_NAVIGABLE) != 0 ? uint32{BViewDescription::kFocusable} : 0;
        said.states |= view.IsFocus() ? uint32{BViewDescription::kFocused} : 0;
        view.Describe(&said);
        NodePointer node =
            Make(HandlerAccess::Token(&view), said.role, InWindow(view, view.Bounds()));
        node->states = said.states;
        node->name = std::move(said.name);
        node->value = std::move(said.value);
        node->rowCount = said.rowCount;
        for (BViewDescription::Part& part : said.parts) {
            NodePointer thing = Make(IdOf(part.thing), part.role, InWindow(view, part.frame));
            thing->states = part.states;
            thing->name = std::move(part.name);
            node->children.push_back(std::move(thing));
        }
        AddChildren(*node, view);
        return node;
    }

    BWindow& fWindow;
    WindowState& fState;
    std::unordered_map<const void*, int32> fSeen;
};

// Adds what of the view is seen within `visible` (window units), and takes drops.
void AddDropAreas(const BView& view, BRect visible, std::vector<BRect>* areas)
{
    const BRect seen = InWindow(view, view.Bounds()) & visible;
    if (ViewAccess::HidesItself(view) || !seen.IsValid()) {
        return;
    }
    if (view.TakesDrops()) {
        areas->push_back(seen);
    }
    for (const BView* child : ViewAccess::Children(view)) {
        AddDropAreas(*child, seen, areas);
    }
}

} // namespace

std::shared_ptr<const AccessibleNode> DescribeWindow(BWindow& window)
{
    return Describer(window, WindowAccess::State(window)).Describe();
}

void PublishIfChanged(BWindow& window, WindowState& state)
{
    const uint64 frame = state.host->CountFrames();
    const bool isListened = WindowServer::Get().IsAccessibilityActive();
    const bool isListenedAnew = isListened != state.isTreePublished;
    if (frame == state.publishedFrame && state.focus == state.publishedFocus && !isListenedAnew) {
        return;
    }
    auto published = std::make_shared<Published>();
    AddDropAreas(*state.host->Root(), window.Bounds(), &published->dropAreas);
    const bool isOtherDrops = published->dropAreas != state.publishedDrops;
    const bool isEditing = DescribeInput(state.focus, &published->inputMethod);
    const bool isNews = isListened || isListenedAnew || isEditing || state.isTextPublished ||
                        (state.publishedFocus != state.focus) || isOtherDrops;
    state.publishedFrame = frame;
    state.publishedFocus = state.focus;
    if (!isNews) {
        return;
    }
    if (isOtherDrops) {
        state.publishedDrops = published->dropAreas;
    }
    state.isTextPublished = isEditing;
    state.isTreePublished = isListened;
    if (isListened) {
        published->root = DescribeWindow(window);
    }
    state.host->Link().Publish(std::move(published));
}

} // namespace kits
