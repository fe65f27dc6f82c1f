#include "FocusWindows.h"

#include <AppDefs.h>
#include <Autolock.h>
#include <Button.h>
#include <InterfaceDefs.h>
#include <OS.h>

#include <cstring>

namespace focus {

namespace {

constexpr uint32 kAnswer = 'Answ';   // from a dialog's button
constexpr uint32 kAnswered = 'Done'; // to the opener
constexpr bigtime_t kAfterFirstFrame = 200'000;
constexpr bigtime_t kAfterLastKey = 500'000;

std::string BytesOf(const BMessage& key)
{
    const char* bytes = "";
    key.FindString("bytes", &bytes);
    return bytes;
}

// Letters a dialog is given are kept where the window gets them, whatever its views make of them.
void KeepLetter(Record& record, const BMessage& message)
{
    if (message.what != B_KEY_DOWN) {
        return;
    }
    record.lastKeyTime = system_time();
    const std::string bytes = BytesOf(message);
    if (bytes.size() == 1 && bytes[0] >= 'a' && bytes[0] <= 'z') {
        record.Add(&Record::inDialog, message);
    }
}

/// A dialog with a button that answers; what else is in it depends on its kind.
class Dialog : public BWindow
{
public:
    Dialog(Record& record, DialogKind kind, int32 times, BWindow* opener)
        : BWindow(BRect(80, 100, 379, 299), kDialogTitle,
                  kind == DialogKind::kQuestion ? B_MODAL_WINDOW_LOOK : B_TITLED_WINDOW_LOOK,
                  kind == DialogKind::kModalText ? B_MODAL_APP_WINDOW_FEEL : B_NORMAL_WINDOW_FEEL,
                  B_NOT_CLOSABLE),
          fRecord(record), fKind(kind), fTimes(times), fOpener(nullptr, opener)
    {
        SetOpener(opener);
        auto* button = new BButton(BRect(10, 150, 100, 180), "ok", "OK", new BMessage(kAnswer));
        AddChild(button); // adopted
        button->SetTarget(this);
        if (kind == DialogKind::kQuestion) {
            SetAnswerDelay(kAfterFirstFrame, kAfterLastKey);
            button->MakeFocus(true);
            return;
        }
        SetAnswerDelay(kAfterFirstFrame, 0);
        button->MakeDefault(true);
        // Here the view itself keeps the letters: they must come as far as that.
        auto* text = new KeyView(BRect(0, 0, 299, 140), "text", record, &Record::inDialog);
        AddChild(text); // adopted
        text->MakeFocus(true);
    }

    // BWindow
    void DispatchMessage(BMessage* message, BHandler* target) override
    {
        if (fKind == DialogKind::kQuestion) {
            KeepLetter(fRecord, *message);
        } else if (message->what == B_KEY_DOWN) {
            fRecord.lastKeyTime = system_time();
        }
        BWindow::DispatchMessage(message, target);
    }
    void MessageReceived(BMessage* message) override
    {
        if (message->what != kAnswer) {
            BWindow::MessageReceived(message);
            return;
        }
        ++fRecord.answers;
        Hide();
        if (--fTimes > 0) {
            Show();
            return;
        }
        fOpener.SendMessage(kAnswered);
        PostMessage(B_QUIT_REQUESTED);
    }

private:
    Record& fRecord;
    DialogKind fKind;
    int32 fTimes;
    BMessenger fOpener;
};

/// An alert that tells which letters reached it.
class Alert : public BAlert
{
public:
    explicit Alert(Record& record)
        : BAlert(kDialogTitle, "Which of the three?", "Abacus", "Bead", "Counter"), fRecord(record)
    {
    }

    // BAlert
    void DispatchMessage(BMessage* message, BHandler* target) override
    {
        KeepLetter(fRecord, *message);
        BAlert::DispatchMessage(message, target);
    }

private:
    Record& fRecord;
};

} // namespace

// Record

void Record::Clear()
{
    std::lock_guard<std::mutex> lock(fLock);
    inDialog.clear();
    inFocus.clear();
    inOther.clear();
    answers = 0;
}

void Record::Add(std::string Record::*where, const BMessage& key)
{
    std::lock_guard<std::mutex> lock(fLock);
    const std::string bytes = BytesOf(key);
    this->*where += bytes == "\n" ? "<Return>" : bytes;
}

std::string Record::Get(std::string Record::*where) const
{
    std::lock_guard<std::mutex> lock(fLock);
    return this->*where;
}

// KeyView

KeyView::KeyView(BRect frame, const char* name, Record& record, std::string Record::*where)
    : BView(frame, name, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE), fRecord(record),
      fWhere(where)
{
}

void KeyView::KeyDown(const char* bytes, int32)
{
    const BMessage* key = Window()->CurrentMessage();
    auto* opener = dynamic_cast<Opener*>(Window());
    if (opener == nullptr || std::strcmp(bytes, "o") != 0) {
        fRecord.Add(fWhere, *key);
    } else if (!key->HasInt32("be:key_repeat")) {
        opener->Open();
    }
}

// Opener

Opener::Opener(Record& record)
    : BWindow(BRect(40, 60, 439, 359), "opener", B_TITLED_WINDOW, 0), fRecord(record)
{
    AddChild(new KeyView(BRect(0, 0, 190, 299), "left", record, &Record::inOther)); // adopted
    fFocus = new KeyView(BRect(200, 0, 399, 299), "right", record, &Record::inFocus);
    AddChild(fFocus); // adopted
    fFocus->MakeFocus(true);
}

void Opener::Expect(DialogKind kind, int32 count)
{
    fKind = kind;
    fCount = count;
}

void Opener::Open()
{
    if (fKind == DialogKind::kAlert) {
        while (fCount > 0) {
            --fCount;
            const int32 button = (new Alert(fRecord))->Go();
            fRecord.answers += button == 2 ? 1 : 100;
        }
        return;
    }
    OpenOne();
}

void Opener::OpenOne()
{
    if (fCount == 0) {
        return;
    }
    const DialogKind kind = fKind;
    const int32 times = kind == DialogKind::kQuestion ? fCount.load() : 1;
    fCount -= times;
    (new Dialog(fRecord, kind, times, this))->Show();
}

bool Opener::HasFocusInPlace()
{
    BAutolock lock(this);
    return lock.IsLocked() && CurrentFocus() == fFocus;
}

void Opener::MessageReceived(BMessage* message)
{
    if (message->what == kAnswered) {
        OpenOne();
    } else {
        BWindow::MessageReceived(message);
    }
}

void Opener::WindowActivated(bool active)
{
    fRecord.isOpenerActive = active;
}

} // namespace focus
