#include "ClipboardOwner.h"
#include "WindowServer.h"

#include "app/ClipboardHooks.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <atomic>
#include <string>
#include <utility>

// The desktop's clipboard, behind the application kit's.

namespace kits {

namespace {

// One that has not answered by then hangs; a living one needs less than a millisecond.
constexpr bigtime_t kOwnerLimit = 300'000;

/// What this program offers. Bytes that are not UTF-8 stay as they are within the program.
class OfferedData : public QMimeData
{
public:
    OfferedData(std::string text, uint64 offer) : fText(std::move(text)), fOffer(offer)
    {
        setText(QString::fromStdString(fText));
    }
    const std::string& Bytes() const { return fText; }
    uint64 Offer() const { return fOffer; }

private:
    std::string fText;
    uint64 fOffer;
};

QClipboard::Mode ModeOf(ClipboardKind kind)
{
    return kind == ClipboardKind::kPrimary ? QClipboard::Selection : QClipboard::Clipboard;
}

bool IsSupported(ClipboardKind kind)
{
    return kind != ClipboardKind::kPrimary || QGuiApplication::clipboard()->supportsSelection();
}

uint64 Offer(ClipboardKind kind, std::string text)
{
    static std::atomic<uint64> last{0};
    const uint64 offer = ++last;
    WindowServer::Get().Post([kind, offer, text = std::move(text)]() mutable {
        if (IsSupported(kind)) {
            QGuiApplication::clipboard()->setMimeData(new OfferedData(std::move(text), offer),
                                                      ModeOf(kind)); // adopted
        }
    });
    return offer;
}

// Whether it is known without asking another program.
bool FetchOwn(ClipboardKind kind, ClipboardContent& content, bool& needsAsking)
{
    bool isKnown = true;
    WindowServer::Get().Call([&] {
        if (!IsSupported(kind)) {
            return;
        }
        const auto* own =
            dynamic_cast<const OfferedData*>(QGuiApplication::clipboard()->mimeData(ModeOf(kind)));
        isKnown = own != nullptr;
        needsAsking = QGuiApplication::platformName() == QStringLiteral("xcb");
        if (own != nullptr) {
            content = {own->Bytes(), own->Offer()};
        }
    });
    return isKnown;
}

ClipboardContent Fetch(ClipboardKind kind)
{
    ClipboardContent content;
    bool needsAsking = false;
    if (FetchOwn(kind, content, needsAsking)) {
        return content;
    }
    if (needsAsking && AskOwner(kind, kOwnerLimit) != OwnerState::kAnswers) {
        return content;
    }
    WindowServer::Get().Call(
        [&] { content.text = QGuiApplication::clipboard()->text(ModeOf(kind)).toStdString(); });
    return content;
}

[[maybe_unused]] const bool sIsRegistered = [] {
    SetClipboardHooks({Offer, Fetch});
    return true;
}();

} // namespace

} // namespace kits
