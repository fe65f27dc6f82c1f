#pragma once

#include <Rect.h>
#include <Window.h>

class BTextView;

namespace norvane {

/// A small floating window with the log of a connection: each MSG_FTP_STATUS adds a line.
class FTPStatus : public BWindow
{
public:
    /// At the right edge of `frame`, hidden.
    explicit FTPStatus(BRect frame);
    ~FTPStatus() override;

    // BWindow
    void MessageReceived(BMessage* message) override;

private:
    BTextView* fLog;
};

} // namespace norvane
