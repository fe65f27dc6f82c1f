#include <PopUpMenu.h>

#include "MenuSession.h"
#include "interface/views/WindowAccess.h"
#include "interface/views/WindowState.h"

#include <Looper.h>
#include <Message.h>
#include <OS.h>
#include <Window.h>

#include "app/LongWork.h"
#include "app/LooperCore.h"
#include "app/ProgramEnd.h"

#include <utility>
#include <vector>

namespace {

// How often a window whose menu is waited for looks whether it has something to paint.
constexpr bigtime_t kPaintInterval = 15'000;

BWindow* WindowOfThisThread()
{
    return dynamic_cast<BWindow*>(BLooper::LooperForThread(find_thread(nullptr)));
}

} // namespace

/// What a Go() that waits shares with the menus' session.
struct BPopUpMenu::Waiting
{
    BMenuItem* chosen = nullptr;
    bool isOver = false;

    /// Handles what the menus need and leaves the rest for later, until they are gone.
    void Run(BWindow& window, kits::MenuSession& session);

private:
    using Messages = std::vector<std::unique_ptr<BMessage>>;

    static std::unique_ptr<BMessage> Next(kits::LooperCore& core, BWindow& window);
    static void Handle(kits::LooperCore& core, kits::MenuSession& session,
                       std::unique_ptr<BMessage> message, Messages& later);
};

void BPopUpMenu::Waiting::Run(BWindow& window, kits::MenuSession& session)
{
    const std::shared_ptr<kits::LooperCore> core = kits::LooperCore::OfThisThread();
    const kits::LongWork waitingIsMeant;
    Messages later;
    while (!isOver && !core->IsEnding()) {
        if (kits::ProgramEnd::IsRequested()) {
            break;
        }
        if (std::unique_ptr<BMessage> message = Next(*core, window)) {
            Handle(*core, session, std::move(message), later);
        }
    }
    if (!isOver) {
        session.Abandon();
    }
    core->PutInFront(std::move(later));
}

/// Others may lock the window while it waits; null when it is to look around.
std::unique_ptr<BMessage> BPopUpMenu::Waiting::Next(kits::LooperCore& core, BWindow& window)
{
    std::unique_ptr<BMessage> message = core.NextMessage(0);
    if (message != nullptr) {
        return message;
    }
    window.UpdateIfNeeded();
    const int32 locks = core.UnlockAll();
    message = core.NextMessage(system_time() + kPaintInterval);
    core.LockAgain(locks);
    return message;
}

void BPopUpMenu::Waiting::Handle(kits::LooperCore& core, kits::MenuSession& session,
                                 std::unique_ptr<BMessage> message, Messages& later)
{
    core.SwapCurrent(message); // hooks of the menus look at it
    const bool isDone = session.Intercept(core.Current());
    core.SwapCurrent(message);
    if (!isDone) {
        later.push_back(std::move(message));
    }
}

BPopUpMenu::BPopUpMenu(const char* name, bool radioMode, bool labelFromMarked, menu_layout layout)
    : BMenu(name, layout)
{
    SetRadioMode(radioMode);
    if (labelFromMarked) {
        SetLabelFromMarked(true);
    }
}

BPopUpMenu::~BPopUpMenu()
{
    if (const auto session = std::exchange(fSession, nullptr)) {
        if (fDeletesItself) {
            session->TellNobody(); // it would be deleted once more
        }
        session->Abandon();
    }
}

BMenuItem* BPopUpMenu::Go(BPoint where, bool deliversMessage, bool openAnyway, bool async)
{
    return Go(where, deliversMessage, openAnyway, BRect(), async);
}

BMenuItem* BPopUpMenu::Go(BPoint where, bool deliversMessage, bool openAnyway,
                          BRect clickToOpenRect, bool async)
{
    BWindow* window = WindowOfThisThread();
    if (MayOpen(window, openAnyway)) {
        return async ? GoAsync(*window, where, deliversMessage, openAnyway, clickToOpenRect)
                     : GoSync(*window, where, deliversMessage, openAnyway, clickToOpenRect);
    }
    if (async && fIsAutoDestruct && Window() == nullptr) {
        delete this;
    }
    return nullptr;
}

bool BPopUpMenu::MayOpen(BWindow* window, bool openAnyway) const
{
    if (window == nullptr || !window->IsLocked() || window->IsHidden() || Window() != nullptr ||
        CountItems() == 0) {
        return false;
    }
    const BMessage* cause = window->CurrentMessage();
    return openAnyway || (cause != nullptr && kits::MenuSession::IsButtonHeld(*cause));
}

/// Menus that the window has open give way.
std::shared_ptr<kits::MenuSession> BPopUpMenu::NewSession(BWindow& window)
{
    kits::InputInterceptor* former = kits::WindowAccess::State(window).interceptor;
    if (former != nullptr) {
        former->Cancel();
    }
    if (fSession != nullptr) {
        fSession->Abandon();
    }
    fSession = std::make_shared<kits::MenuSession>(&window);
    return fSession;
}

BMenuItem* BPopUpMenu::GoAsync(BWindow& window, BPoint where, bool deliversMessage, bool openAnyway,
                               BRect clickToOpen)
{
    const auto session = NewSession(window);
    kits::PopUpOrder order{
        where, window.CurrentMessage(), deliversMessage, openAnyway, clickToOpen, nullptr};
    fDeletesItself = fIsAutoDestruct;
    if (fDeletesItself) {
        order.atEnd = [this](BMenuItem*) {
            delete this;
        };
    }
    session->StartPopUp(*this, order); // the menu may be gone by now
    return nullptr;
}

BMenuItem* BPopUpMenu::GoSync(BWindow& window, BPoint where, bool deliversMessage, bool openAnyway,
                              BRect clickToOpen)
{
    const auto session = NewSession(window);
    fDeletesItself = false;
    const auto waiting = std::make_shared<Waiting>();
    const auto atEnd = [waiting](BMenuItem* chosen) {
        waiting->chosen = chosen;
        waiting->isOver = true;
    };
    // From here on the menu may be deleted at any time.
    if (session->StartPopUp(*this, {where, window.CurrentMessage(), deliversMessage, openAnyway,
                                    clickToOpen, atEnd})) {
        waiting->Run(window, *session);
    }
    return waiting->chosen;
}
