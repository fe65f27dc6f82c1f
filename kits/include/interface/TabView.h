#pragma once

#include <InterfaceDefs.h>
#include <View.h>

#include <memory>
#include <string>
#include <vector>

class BTabView;

/// One tab of a BTabView: a label, and the page that it brings to the front.
///
/// Thread: as the tab view's.
class BTab
{
public:
    /// Ownership: adopts `contents`, which may be null.
    explicit BTab(BView* contents = nullptr);
    /// Deletes the page.
    virtual ~BTab();
    BTab(const BTab&) = delete;
    BTab& operator=(const BTab&) = delete;

    /// Sets the text on the tab; null for the name of its page.
    virtual void SetLabel(const char* label);
    /// Lends the text on the tab, "" without one and without a page.
    const char* Label() const;
    /// Replaces the page and deletes the former one. Ownership: adopts `contents`, which may be
    /// null.
    virtual void SetView(BView* contents);
    /// Lends the page, or null.
    BView* View() const { return fView; }
    /// A disabled tab is drawn dimmed and cannot be chosen by a person.
    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const { return fIsEnabled; }
    /// Whether its page is the one in front.
    bool IsSelected() const;

private:
    friend class BTabView;

    std::string fLabel;
    bool fHasLabel = false;
    bool fIsEnabled = true;
    BView* fView = nullptr;     // owned; a child of the container while the tab is in a view
    BTabView* fOwner = nullptr; // borrowed
};

/// Pages one behind the other, with a row of tabs above them that brings one to the front.
///
/// All pages are in the container and follow its size; those behind are hidden, so that neither the
/// focus nor keys reach them. The first tab added is selected. Left, Right, Home and End choose
/// while the tabs have the focus, and from anywhere within, Ctrl-Tab (with Shift: the other way)
/// and Ctrl with Page Up and Page Down.
/// Thread: call with the window locked once the view is in one. Ownership: adopts its tabs.
class BTabView : public BView
{
public:
    /// `width` says how wide tabs are while there is room: of a usual width at least, all like the
    /// widest, or each like its label.
    BTabView(BRect frame, const char* name, button_width width = B_WIDTH_AS_USUAL,
             uint32 resizingMode = B_FOLLOW_ALL_SIDES,
             uint32 flags = B_FULL_UPDATE_ON_RESIZE | B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE |
                            B_NAVIGABLE_JUMP);
    /// Deletes the tabs with their pages.
    ~BTabView() override;

    /// Adds a page behind the others, with `tab` or else a tab that has the page's name as label.
    /// Ownership: adopts both; `page` may be null where `tab` has one of its own.
    virtual void AddTab(BView* page, BTab* tab = nullptr);
    /// Takes a tab out with its page; the caller deletes it. If it was selected the next one is,
    /// or the last. Null when there is none at `index`.
    virtual BTab* RemoveTab(int32 index);
    /// The tab at an index; null when there is none.
    BTab* TabAt(int32 index) const;
    /// The page of the tab at an index; null when there is none.
    BView* ViewForTab(int32 index) const;
    int32 CountTabs() const { return static_cast<int32>(fTabs.size()); }

    /// Brings the page at `index` to the front, of a disabled tab too. The focus goes from the page
    /// before to the tabs. Does nothing when the index is outside.
    virtual void Select(int32 index);
    /// The index of the tab whose page is in front; -1 without tabs.
    int32 Selection() const { return fSelection; }

    /// Sets what the constructor's `width` did.
    virtual void SetTabWidth(button_width width);
    button_width TabWidth() const { return fTabWidth; }
    /// Sets the height of the row of tabs; the container gives way.
    virtual void SetTabHeight(float height);
    /// The height of the row of tabs: where the border around the container begins.
    float TabHeight() const { return fTabHeight; }
    /// Where a tab lies, in the view's coordinates; an invalid rectangle when there is none.
    BRect TabFrame(int32 index) const;
    /// Lends the view that the pages lie in, below the tabs and within the border.
    BView* ContainerView() const { return fContainer; }

    // BView
    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    void MessageReceived(BMessage* message) override;
    void MakeFocus(bool focused = true) override;
    void WindowActivated(bool active) override;
    void Describe(BViewDescription* description) const override;

private:
    friend class BTab;

    void PutIn(BTab& tab);
    void TakeOut(BTab& tab);
    bool HasFocusIn(const BTab& tab) const;
    int32 IndexOf(const BTab& tab) const;
    bool ChooseByKey(const BMessage& key);
    void Choose(int32 from, int32 direction);
    void InvalidateTabs();
    BRect ContainerFrame() const;
    std::vector<BRect> LayOut() const;
    void DrawBorder();
    void DrawTab(const BTab& tab, BRect frame, bool isSelected);
    void DrawFocus(BRect frame);

    std::vector<std::unique_ptr<BTab>> fTabs;
    BView* fContainer; // a child
    int32 fSelection = -1;
    button_width fTabWidth;
    float fTabHeight;
};
