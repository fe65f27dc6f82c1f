#pragma once

#include <ScrollView.h>

#include <functional>
#include <utility>

namespace norvane {

class ScrollViewCorner;

/// The scroll container of a ColumnListView: header strip, rows, scroll bars and the corner between
/// them.
class CLVContainerView : public BScrollView
{
public:
    CLVContainerView(const char* name, BView* list, BView* strip, uint32 resizingMode, uint32 flags,
                     bool horizontal, bool vertical, border_style border);
    ~CLVContainerView() override;

    /// The filler between the scroll bars; null when there are not both.
    ScrollViewCorner* Corner() const { return fCorner; }
    /// Resizes the container so that strip and rows together measure `width` x `height`.
    void ResizeContentTo(float width, float height);

    /// Called when the container goes away before the list does.
    void SetFarewell(std::function<void()> farewell) { fFarewell = std::move(farewell); }
    /// The list goes away before the container.
    void ForgetList() { fList = nullptr; }

private:
    float BorderInset() const;

    BView* fList;                        // a child of ours; null once it is gone
    BView* fStrip;                       // a child of ours
    ScrollViewCorner* fCorner = nullptr; // a child of ours
    std::function<void()> fFarewell;
};

} // namespace norvane
