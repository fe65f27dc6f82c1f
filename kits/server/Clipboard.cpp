#include "Clipboard.h"
#include "OfferedData.h"
#include "SelectionReader.h"
#include "WindowServer.h"

#include "app/ClipboardHooks.h"
#include "storage/FileAddresses.h"

#include <AppDefs.h>
#include <Message.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <atomic>
#include <memory>
#include <string>
#include <utility>

// The desktop's clipboard, behind the application kit's.

namespace kits {

namespace {

QClipboard::Mode ModeOf(ClipboardKind kind)
{
    return kind == ClipboardKind::kPrimary ? QClipboard::Selection : QClipboard::Clipboard;
}

bool IsSupported(ClipboardKind kind)
{
    return kind != ClipboardKind::kPrimary || QGuiApplication::clipboard()->supportsSelection();
}

uint64 NextOffer()
{
    static std::atomic<uint64> last{0};
    return ++last;
}

uint64 Offer(ClipboardKind kind, SharedText text)
{
    const uint64 offer = NextOffer();
    WindowServer::Get().Post([kind, offer, text = std::move(text)]() mutable {
        if (IsSupported(kind)) {
            QGuiApplication::clipboard()->setMimeData(new OfferedData(std::move(text), offer),
                                                      ModeOf(kind)); // adopted
        }
    });
    return offer;
}

uint64 OfferEntries(const std::shared_ptr<const BMessage>& data)
{
    const uint64 offer = NextOffer();
    const bool isCut = data->GetInt32("be:actions", B_COPY_TARGET) == B_MOVE_TARGET;
    const OfferedData::Mark mark = isCut ? OfferedData::Mark::kCut : OfferedData::Mark::kCopied;
    WindowServer::Get().Post([offer, mark, files = OfferedFiles::Of(*data)] {
        QGuiApplication::clipboard()->setMimeData(new OfferedData(files, mark, offer)); // adopted
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
            content->text = own->Text();
            content->offer = own->Offer();
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

// The toolkit's way, where windows wait for the desktop's own server at most.
SelectionFiles FilesFromToolkit()
{
    SelectionFiles files;
    WindowServer::Get().Call([&] {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        if (data == nullptr) {
            return;
        }
        files.addresses = data->data(QStringLiteral("x-special/gnome-copied-files")).toStdString();
        files.areCut = files.addresses.starts_with("cut");
        if (files.addresses.empty()) {
            files.addresses = data->data(QStringLiteral("text/uri-list")).toStdString();
            files.areCut =
                data->data(QStringLiteral("application/x-kde-cutselection")).startsWith('1');
        }
        if (files.addresses.empty()) {
            files.text = data->text().toStdString();
        }
    });
    return files;
}

ClipboardContent FetchEntries()
{
    ClipboardContent content;
    if (Peek(ClipboardKind::kClipboard, &content)) {
        return content;
    }
    SelectionFiles files =
        IsOnX11() ? ReadSelectionFiles(nullptr, ClipboardKind::kClipboard, SelectionLimits())
                  : FilesFromToolkit();
    content.isOwnerSilent = files.state == SelectionText::State::kSilent;
    content.text = SharedText(std::move(files.text));
    auto entries = std::make_shared<BMessage>();
    AddRefsOfAddresses(files.addresses, entries.get());
    if (entries->HasRef("refs")) {
        entries->AddInt32("be:actions", files.areCut ? B_MOVE_TARGET : B_COPY_TARGET);
        content.entries = std::move(entries);
    }
    return content;
}

[[maybe_unused]] const bool sIsRegistered = [] {
    ClipboardHooks hooks;
    hooks.offer = Offer;
    hooks.offerEntries = OfferEntries;
    hooks.peek = Peek;
    hooks.fetch = Fetch;
    hooks.fetchEntries = FetchEntries;
    SetClipboardHooks(hooks);
    return true;
}();

} // namespace

void WatchClipboard()
{
    QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, qGuiApp, [] {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        if (dynamic_cast<const OfferedData*>(data) == nullptr) {
            ClipboardReplaced();
        }
    });
}

} // namespace kits
