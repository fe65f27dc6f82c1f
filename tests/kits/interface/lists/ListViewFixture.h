#pragma once

#include "ControlWindow.h"

#include <ListView.h>
#include <ScrollView.h>

#include <memory>
#include <string>
#include <vector>

/// A row that notes when it is drawn, and how often it is measured.
class CountingItem : public BStringItem
{
public:
    CountingItem(const char* text, std::vector<const BListItem*>& drawn, int32& updates)
        : BStringItem(text), fDrawn(drawn), fUpdates(updates)
    {
    }

    void DrawItem(BView* owner, BRect frame, bool complete) override
    {
        fDrawn.push_back(this);
        BStringItem::DrawItem(owner, frame, complete);
    }

    void Update(BView* owner, const BFont* font) override
    {
        fUpdates++;
        BStringItem::Update(owner, font);
    }

private:
    std::vector<const BListItem*>& fDrawn;
    int32& fUpdates;
};

/// A list of numbered rows in a window.
class ListViewFixture : public ControlTest
{
protected:
    // A list of 100 x 160 units in a scroll view; ten rows of 16 units and a little are seen.
    BListView* AddListView(list_view_type type = B_MULTIPLE_SELECTION_LIST)
    {
        fList = new BListView(BRect(10, 10, 109, 169), "list", type);
        fList->SetInvocationMessage(new BMessage('tesi'));
        fScroller = Add(new BScrollView("scroller", fList, B_FOLLOW_LEFT | B_FOLLOW_TOP, 0, false,
                                        true, B_FANCY_BORDER));
        return fList;
    }

    void AddRows(int32 count)
    {
        BList added;
        for (int32 i = 0; i < count; i++) {
            fItems.push_back(std::make_unique<CountingItem>(std::to_string(fItems.size()).c_str(),
                                                            fDrawn, fUpdates));
            added.AddItem(fItems.back().get());
        }
        fWindow->Lock();
        fList->AddList(&added);
        fWindow->Unlock();
    }

    std::vector<int32> Selected()
    {
        return Locked([this] {
            std::vector<int32> rows;
            for (int32 n = 0; fList->CurrentSelection(n) >= 0; n++) {
                rows.push_back(fList->CurrentSelection(n));
            }
            return rows;
        });
    }

    BPoint MiddleOf(int32 row)
    {
        return Locked([this, row] {
            const BRect frame = fList->ItemFrame(row);
            return BPoint(30, (frame.top + frame.bottom) / 2);
        });
    }

    float Top()
    {
        return Locked([this] { return fList->Bounds().top; });
    }

    using Rows = std::vector<int32>;

    BListView* fList = nullptr;       // the window's
    BScrollView* fScroller = nullptr; // the window's
    std::vector<std::unique_ptr<CountingItem>> fItems;
    std::vector<const BListItem*> fDrawn;
    int32 fUpdates = 0;
};
