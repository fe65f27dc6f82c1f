#pragma once

#include <Rect.h>
#include <SupportDefs.h>

#include <string>

class BFont;
class BListView;
class BView;

/// One row of a BListView. Derive from it and draw.
///
/// Ownership: a list borrows its rows; whoever made them deletes them, after taking them out.
class BListItem
{
public:
    /// The level and whether it is expanded are for lists that show a tree.
    explicit BListItem(uint32 outlineLevel = 0, bool expanded = true);
    virtual ~BListItem();
    BListItem(const BListItem&) = delete;
    BListItem& operator=(const BListItem&) = delete;

    /// The row's height and width, in view units: the bottom is `top + Height()`, inclusive.
    float Height() const { return fHeight; }
    float Width() const { return fWidth; }
    /// Sets the size, from Update() of derived classes; the rows below move.
    void SetHeight(float height);
    void SetWidth(float width) { fWidth = width; }

    /// Whether the row is selected, by a person or by Select().
    bool IsSelected() const { return fIsSelected; }
    /// Marks the row only; a list's own Select() also draws and reports.
    void Select() { fIsSelected = true; }
    void Deselect() { fIsSelected = false; }
    /// Whether a person can select the row.
    bool IsEnabled() const { return fIsEnabled; }
    /// Whether what hangs below the row in a tree is shown, and how deep the row itself is.
    bool IsExpanded() const { return fIsExpanded; }
    void SetExpanded(bool expanded) { fIsExpanded = expanded; }
    uint32 OutlineLevel() const { return fOutlineLevel; }

    /// A disabled row cannot be selected by a person.
    virtual void SetEnabled(bool enabled);
    /// Draws the row into `frame` of `owner`; with `complete` the background too.
    virtual void DrawItem(BView* owner, BRect frame, bool complete = false) = 0;
    /// Is called when the row joins a list in a window and when the list's font changes; sets width
    /// (the owner's) and height (the font's).
    virtual void Update(BView* owner, const BFont* font);

    /// An extension of the platform. What assistive programs say of the row; this one says nothing.
    virtual std::string SpokenText() const { return {}; }

private:
    friend class BListView;

    BListView* fOwner = nullptr; // the list the row is in; borrowed
    float fWidth = 0;
    float fHeight = 0;
    uint32 fOutlineLevel;
    bool fIsSelected = false;
    bool fIsEnabled = true;
    bool fIsExpanded;
};

/// A row that shows one line of text.
class BStringItem : public BListItem
{
public:
    /// Copies the text; null counts as empty.
    explicit BStringItem(const char* text, uint32 outlineLevel = 0, bool expanded = true);

    /// Changes the text; the list is not redrawn until InvalidateItem().
    virtual void SetText(const char* text);
    /// Lends the text, until the next change.
    const char* Text() const { return fText.c_str(); }

    // BListItem
    void DrawItem(BView* owner, BRect frame, bool complete = false) override;
    void Update(BView* owner, const BFont* font) override;
    std::string SpokenText() const override { return fText; }

private:
    std::string fText;
    float fBaselineOffset = 0;
};
