#include "panes/FtpViews.h"

#include "MessageCodes.h"
#include "panes/PaneLayout.h"

#include <Button.h>
#include <Message.h>
#include <ScrollView.h>
#include <TextView.h>
#include <View.h>

#include <algorithm>
#include <string>

namespace norvane {

namespace {

constexpr float kMargin = 2;
constexpr BRect kAnywhere(0, 0, 100, 20); // until the first layout
// A log that grows for days loses its first half.
constexpr int32 kMaxLogBytes = 256 * 1024;

/// A client's line, or several: their line ends are those of the wire.
std::string ForLog(std::string line)
{
    line.resize(line.find_last_not_of("\r\n") + 1);
    std::replace(line.begin(), line.end(), '\r', '\n');
    return "\n" + line;
}

} // namespace

FtpViews::FtpViews(BView& pane) : fPane(pane)
{
    fButton = new BButton(kAnywhere, "ButtonDisconnect", "Disconnect",
                          new BMessage(MSG_FTP_DISCONNECT), B_FOLLOW_TOP | B_FOLLOW_LEFT);
    fPane.AddChild(fButton);
    fButton->SetTarget(&fPane);
    fLog = new BTextView(kAnywhere, "StatusWindow", kAnywhere.InsetByCopy(kMargin, kMargin),
                         B_FOLLOW_ALL_SIDES);
    fLog->SetWordWrap(true);
    fLog->MakeEditable(false);
    fScroller = new BScrollView("ScrollContainer", fLog, B_FOLLOW_TOP | B_FOLLOW_LEFT, 0, false,
                                true, B_FANCY_BORDER);
    fPane.AddChild(fScroller);
}

FtpViews::~FtpViews()
{
    for (BView* view : {static_cast<BView*>(fButton), static_cast<BView*>(fScroller)}) {
        view->RemoveSelf();
        delete view;
    }
}

void FtpViews::LayOut(const PaneLayout& layout)
{
    fButton->MoveTo(layout.buttonPlace);
    fButton->ResizeTo(layout.buttonWidth, layout.headerHeight);
    fScroller->MoveTo(layout.logPlace);
    fScroller->ResizeTo(layout.logWidth, layout.logHeight);
    BRect text = fLog->Bounds();
    text.OffsetTo(0, 0);
    text.right = std::max(text.left, text.right);
    fLog->SetTextRect(text.InsetByCopy(kMargin, kMargin));
    fLog->ScrollToOffset(fLog->TextLength());
}

void FtpViews::Append(const char* line)
{
    if (fLog->TextLength() > kMaxLogBytes) {
        fLog->Delete(0, kMaxLogBytes / 2);
    }
    const std::string text = ForLog(line);
    // At the end, wherever somebody has selected something.
    fLog->Insert(fLog->TextLength(), text.c_str(), static_cast<int32>(text.size()));
    fLog->ScrollToOffset(fLog->TextLength());
}

} // namespace norvane
