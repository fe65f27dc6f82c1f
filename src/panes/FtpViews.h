#pragma once

class BButton;
class BScrollView;
class BTextView;
class BView;

namespace norvane {

struct PaneLayout;

/// What a pane shows besides its list while it is on a server: the button that leaves it, and the
/// log of what is said there.
///
/// Thread: the pane's window's. Ownership: the views are the pane's children as long as it lives.
class FtpViews
{
public:
    /// Ownership: borrows `pane` for its own life.
    explicit FtpViews(BView& pane);
    ~FtpViews();
    FtpViews(const FtpViews&) = delete;
    FtpViews& operator=(const FtpViews&) = delete;

    void LayOut(const PaneLayout& layout);
    /// Adds a line to the log and shows it.
    void Append(const char* line);

private:
    BView& fPane;
    BButton* fButton;
    BTextView* fLog;
    BScrollView* fScroller;
};

} // namespace norvane
