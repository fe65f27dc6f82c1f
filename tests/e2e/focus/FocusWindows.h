#pragma once

#include <Alert.h>
#include <Message.h>
#include <View.h>
#include <Window.h>

#include <atomic>
#include <mutex>
#include <string>

// The windows that the focus procedure plays with: an opener with two views that take keys, and the
// four kinds of dialog that a program opens over it.

namespace focus {

enum class DialogKind {
    kText,      // a view that takes text, a default button
    kModalText, // the same, keeping input from every other window
    kAlert,     // a real alert with three buttons; the thread that opens it waits for it
    kQuestion,  // a focused button; hidden and shown again, as between the clashes of one copy
};

constexpr int32 kDialogKinds = 4;
constexpr const char* kDialogTitle = "dialog";

/// What arrived where. Thread: any.
class Record
{
public:
    void Clear();
    void Add(std::string Record::*where, const BMessage& key);
    std::string Get(std::string Record::*where) const;

    // Letters that reached a dialog, the opener's focused view, its other view.
    std::string inDialog;
    std::string inFocus;
    std::string inOther;

    std::atomic<int32> answers{0};
    std::atomic<bigtime_t> lastKeyTime{0};
    std::atomic<bool> isOpenerActive{false};

private:
    mutable std::mutex fLock; // guards the three texts
};

/// Keeps every key that reaches it, and hands "o" to its window when that opens dialogs.
class KeyView : public BView
{
public:
    KeyView(BRect frame, const char* name, Record& record, std::string Record::*where);

    // BView
    void KeyDown(const char* bytes, int32 byteCount) override;

private:
    Record& fRecord;
    std::string Record::*fWhere;
};

/// Opens at "o" as many dialogs, one after the other, as it was told.
class Opener : public BWindow
{
public:
    explicit Opener(Record& record);

    /// The next "o" opens this kind, `count` times in a row. Thread: any.
    void Expect(DialogKind kind, int32 count);
    void Open();
    /// Whether the view that had the focus at first has it now. Thread: any but a window's.
    bool HasFocusInPlace();

    // BWindow
    void MessageReceived(BMessage* message) override;
    void WindowActivated(bool active) override;

private:
    void OpenOne();

    Record& fRecord;
    BView* fFocus; // child
    std::atomic<DialogKind> fKind{DialogKind::kText};
    std::atomic<int32> fCount{0};
};

} // namespace focus
