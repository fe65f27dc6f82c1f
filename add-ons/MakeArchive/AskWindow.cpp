#include "MakeArchive/AskWindow.h"

#include "MakeArchive/ArchiveFormat.h"
#include "common/DialogParts.h"

#include <Alert.h>
#include <Button.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>
#include <TextControl.h>
#include <Window.h>

#include <algorithm>
#include <future>
#include <optional>

namespace add_ons {

namespace {

constexpr uint32 kMake = 'Make';
constexpr float kWidth = 360;
constexpr float kLabels = 60;
constexpr float kDefaultMark = 3;           // around the face of a default button
constexpr bigtime_t kReadingTime = 200'000; // no key typed ahead makes an archive

using Answer = std::optional<ArchiveWish>;

class AskWindow : public BWindow
{
public:
    /// `answer` gets one, whatever becomes of the window.
    AskWindow(const ArchiveWish& offered, std::promise<Answer> answer)
        : BWindow(FrameOverActiveWindow(kWidth,
                                        4 * kEdge + 2 * kRow + ButtonHeight() + 2 * kDefaultMark),
                  "MakeArchive", B_TITLED_WINDOW, B_NOT_ZOOMABLE | B_NOT_RESIZABLE),
          fAnswer(std::move(answer))
    {
        SetAnswerDelay(kReadingTime, 0);
        BView* ground = MakeGround(Bounds(), "ground");
        AddChild(ground);
        const float right = ground->Bounds().right - kEdge;
        fName = new BTextControl(BRect(kEdge, kEdge, right, kEdge + kRow), "name",
                                 "Name:", offered.name.c_str(), nullptr);
        fName->SetDivider(kLabels);
        ground->AddChild(fName);
        AddFormats(ground, offered.format);
        AddButtons(ground);
        fName->MakeFocus(true);
    }

    ~AskWindow() override { fAnswer.set_value(fWish); }

    void MessageReceived(BMessage* message) override
    {
        if (message->what == kMake && !TakesAnswers()) {
            return;
        }
        if (message->what != kMake) {
            BWindow::MessageReceived(message);
            return;
        }
        const std::string name = fName->Text();
        if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos) {
            // It deletes itself once it is answered.
            auto* alert = new BAlert(
                "MakeArchive", "An archive's name has no \"/\" in it, and is not empty.", "OK");
            alert->Go(nullptr);
            fName->MakeFocus(true);
            return;
        }
        fWish = ArchiveWish{name, static_cast<size_t>(fFormats->IndexOf(fFormats->FindMarked()))};
        PostMessage(B_QUIT_REQUESTED);
    }

private:
    static constexpr float kRow = 25;

    void AddFormats(BView* ground, size_t chosen)
    {
        fFormats = new BPopUpMenu("");
        for (const ArchiveFormat& format : ArchiveFormats()) {
            fFormats->AddItem(new BMenuItem(format.label, nullptr)); // adopted
        }
        fFormats->ItemAt(static_cast<int32>(chosen))->SetMarked(true);
        const float top = 2 * kEdge + kRow - 2;
        auto* field = new BMenuField(BRect(kEdge, top, ground->Bounds().right - kEdge, top + kRow),
                                     "format", "Format:", fFormats);
        field->SetDivider(kLabels);
        ground->AddChild(field);
    }

    void AddButtons(BView* ground)
    {
        const float bottom = ground->Bounds().bottom - kEdge - kDefaultMark;
        const float width = std::max(ButtonWidth("Make"), ButtonWidth("Cancel"));
        const float right = ground->Bounds().right - kEdge - kDefaultMark;
        const float left = right - width - kGap - 2 * kDefaultMark;
        auto* cancel = new BButton(BRect(left - width, bottom - ButtonHeight(), left, bottom),
                                   "cancel", "Cancel", new BMessage(B_QUIT_REQUESTED));
        auto* make = new BButton(BRect(right - width, bottom - ButtonHeight(), right, bottom),
                                 "make", "Make", new BMessage(kMake));
        for (BButton* button : {cancel, make}) {
            ground->AddChild(button);
            button->SetTarget(this);
        }
        make->MakeDefault(true);
    }

    std::promise<Answer> fAnswer;
    Answer fWish;
    BTextControl* fName = nullptr;
    BPopUpMenu* fFormats = nullptr;
};

} // namespace

bool AskForArchive(ArchiveWish* wish)
{
    std::promise<Answer> promise;
    std::future<Answer> answer = promise.get_future();
    auto* window = new AskWindow(*wish, std::move(promise)); // deletes itself
    window->Show();
    const Answer given = answer.get();
    if (given) {
        *wish = *given;
    }
    return given.has_value();
}

} // namespace add_ons
