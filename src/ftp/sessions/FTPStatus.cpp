#include "ftp/sessions/FTPStatus.h"

#include "MessageCodes.h"

#include <Message.h>
#include <ScrollView.h>
#include <TextView.h>

namespace norvane {

namespace {

constexpr float kWidth = 200;
constexpr float kHeight = 100;
constexpr float kMargin = 2;

} // namespace

FTPStatus::FTPStatus(BRect frame)
    : BWindow(BRect(frame.right - kWidth, frame.top, frame.right, frame.top + kHeight), "Status",
              B_FLOATING_WINDOW_LOOK, B_FLOATING_APP_WINDOW_FEEL,
              B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE)
{
    const BRect area(0, 0, kWidth - B_V_SCROLL_BAR_WIDTH, kHeight);
    fLog =
        new BTextView(area, "StatusWindow", area.InsetByCopy(kMargin, kMargin), B_FOLLOW_ALL_SIDES);
    fLog->SetWordWrap(true);
    fLog->MakeEditable(false);
    AddChild(
        new BScrollView("ScrollContainer", fLog, B_FOLLOW_ALL_SIDES, 0, false, true, B_NO_BORDER));
}

FTPStatus::~FTPStatus() = default;

void FTPStatus::MessageReceived(BMessage* message)
{
    const char* status = nullptr;
    if (message->what != MSG_FTP_STATUS) {
        BWindow::MessageReceived(message);
    } else if (message->FindString("status", &status) == B_OK) {
        // At the end, wherever somebody has selected something: a log is read in its order.
        const std::string line = std::string("\n") + status;
        fLog->Insert(fLog->TextLength(), line.c_str(), static_cast<int32>(line.size()));
        fLog->ScrollToOffset(fLog->TextLength());
    }
}

} // namespace norvane
