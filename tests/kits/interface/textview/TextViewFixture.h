#pragma once

#include "ControlWindow.h"

#include <TextView.h>

#include <string>

/// A text view in a shown window, with the focus.
class TextViewFixture : public ControlTest
{
protected:
    BTextView* AddText(const char* text, BRect frame = BRect(10, 10, 209, 109))
    {
        auto* view =
            new BTextView(frame, "text", BRect(2, 2, frame.Width() - 2, frame.Height() - 2),
                          B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE);
        view->SetText(text);
        fView = Add(view);
        return view;
    }
    void ShowText(const char* text)
    {
        AddText(text);
        Show();
        Focus(fView);
    }

    std::string Text()
    {
        return Locked([this] { return std::string(fView->Text()); });
    }
    /// "start-end"; with the caret at the end that it is at.
    std::string Selection()
    {
        return Locked([this] {
            int32 start = -1;
            int32 end = -1;
            fView->GetSelection(&start, &end);
            return std::to_string(start) + "-" + std::to_string(end);
        });
    }
    void Select(int32 start, int32 end)
    {
        Locked([=, this] {
            fView->Select(start, end);
            return 0;
        });
    }
    /// The middle of a character on the screen.
    BPoint Inside(int32 offset)
    {
        return Locked([=, this] {
            const BPoint left = fView->PointAt(offset);
            const BPoint right = fView->PointAt(offset + 1);
            return BPoint(left.x + (right.x - left.x) * 0.3f, left.y + 7);
        });
    }

    BTextView* fView = nullptr;
};
