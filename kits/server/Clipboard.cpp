#include "SelectionReader.h"
#include "WindowServer.h"

#include "app/ClipboardHooks.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMetaType>
#include <QMimeData>
#include <QStringList>
#include <QVariant>

#include <atomic>
#include <string>
#include <utility>

// The desktop's clipboard, behind the application kit's.

namespace kits {

namespace {

constexpr char kTextType[] = "text/plain";

/// What this program offers. Bytes that are not UTF-8 stay as they are within the program; for
/// others the text is converted when they ask for it.
class OfferedData : public QMimeData
{
public:
    OfferedData(SharedText text, uint64 offer) : fText(std::move(text)), fOffer(offer) {}
    const SharedText& Text() const { return fText; }
    uint64 Offer() const { return fOffer; }

    // QMimeData
    bool hasFormat(const QString& type) const override { return type == QLatin1String(kTextType); }
    QStringList formats() const override { return {QString::fromLatin1(kTextType)}; }

protected:
    QVariant retrieveData(const QString& type, QMetaType) const override
    {
        const std::string_view text = fText.View();
        return hasFormat(type)
                   ? QVariant(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())))
                   : QVariant();
    }

private:
    SharedText fText;
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

uint64 Offer(ClipboardKind kind, SharedText text)
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

bool Peek(ClipboardKind kind, ClipboardContent* content)
{
    bool isKnown = true;
    WindowServer::Get().Call([&] {
        if (!IsSupported(kind)) {
            return;
        }
        const auto* own =
            dynamic_cast<const OfferedData*>(QGuiApplication::clipboard()->mimeData(ModeOf(kind)));
        isKnown = own != nullptr;
        if (own != nullptr) {
            *content = {own->Text(), own->Offer()};
        }
    });
    return isKnown;
}

bool IsOnX11()
{
    bool isX11 = false;
    WindowServer::Get().Call(
        [&] { isX11 = QGuiApplication::platformName() == QStringLiteral("xcb"); });
    return isX11;
}

ClipboardContent Fetch(ClipboardKind kind, const std::atomic<bool>* isCancelled)
{
    ClipboardContent content;
    if (Peek(kind, &content)) {
        return content;
    }
    if (IsOnX11()) {
        SelectionText read = ReadSelection(nullptr, kind, SelectionLimits(), isCancelled);
        content.isOwnerSilent = read.state == SelectionText::State::kSilent;
        content.text = SharedText(std::move(read.bytes));
        return content;
    }
    WindowServer::Get().Call([&] {
        content.text = SharedText(QGuiApplication::clipboard()->text(ModeOf(kind)).toStdString());
    });
    return content;
}

[[maybe_unused]] const bool sIsRegistered = [] {
    SetClipboardHooks({Offer, Peek, Fetch});
    return true;
}();

} // namespace

} // namespace kits
