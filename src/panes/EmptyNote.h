#pragma once

#include <Rect.h>

#include <string>
#include <vector>

class BView;

namespace norvane {

/// What a list without rows says in the middle of what is seen of it, and why: quiet, in as many
/// lines as it takes; nothing where these have no room.
///
/// Thread: the list's window's. Ownership: borrows the list.
class EmptyNote
{
public:
    explicit EmptyNote(BView& list) : fList(list) {}
    EmptyNote(const EmptyNote&) = delete;
    EmptyNote& operator=(const EmptyNote&) = delete;

    /// Empty: nothing.
    void SetText(const std::string& text);
    const std::string& Text() const { return fText; }
    /// The list was scrolled.
    void Scrolled();
    /// Draws it below `top`, where the rows end. With the list's lock, while it is drawn.
    void Draw(float top);

private:
    std::vector<std::string> Lines(float width) const;

    BView& fList;
    std::string fText;
};

} // namespace norvane
