#include <View.h>

#include "ViewHost.h"

#include "app/HandlerAccess.h"
#include "interface/graphics/BitmapAccess.h"
#include "server/DragRequest.h"
#include "server/OfferedFiles.h"

#include <Bitmap.h>
#include <Message.h>

#include <QPainter>

#include <algorithm>
#include <memory>
#include <utility>

// What a view drags.

namespace {

constexpr QColor kFrameColor(0, 0, 0, 128);

// The frame that stands for what has no picture of its own, one unit broad.
QImage FramePicture(BRect frame, float scale)
{
    const QSize size(static_cast<int>((frame.Width() + 1) * scale),
                     static_cast<int>((frame.Height() + 1) * scale));
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull()) {
        return picture;
    }
    picture.fill(Qt::transparent);
    const int line = std::max(1, static_cast<int>(scale + 0.25F));
    QPainter painter(&picture);
    painter.fillRect(0, 0, size.width(), line, kFrameColor);
    painter.fillRect(0, size.height() - line, size.width(), line, kFrameColor);
    painter.fillRect(0, line, line, size.height() - 2 * line, kFrameColor);
    painter.fillRect(size.width() - line, line, line, size.height() - 2 * line, kFrameColor);
    painter.end();
    picture.setDevicePixelRatio(static_cast<qreal>(scale));
    return picture;
}

QImage BitmapPicture(const BBitmap& bitmap, drawing_mode mode, float scale)
{
    const BRect bounds = bitmap.Bounds();
    const QRectF whole(0, 0, static_cast<qreal>(bounds.Width()) + 1,
                       static_cast<qreal>(bounds.Height()) + 1);
    const kits::BitmapPart part =
        kits::BitmapAccess::Picture(bitmap, whole, static_cast<double>(scale), mode != B_OP_COPY);
    QImage picture = part.image.copy(part.pixels.toAlignedRect()); // the pixels are only lent
    picture.setDevicePixelRatio(picture.width() / whole.width());
    return picture;
}

kits::DragRequest RequestFor(const BMessage& message, const BHandler* replyTo)
{
    kits::DragRequest request;
    request.message = std::make_shared<const BMessage>(message);
    request.files = kits::OfferedFiles::Of(message);
    request.replyTo.token = kits::HandlerAccess::Token(replyTo);
    return request;
}

} // namespace

void BView::DragMessage(BMessage* message, BRect frame, BHandler* replyTo)
{
    CheckLock();
    if (fHost == nullptr || message == nullptr) {
        return;
    }
    kits::DragRequest request = RequestFor(*message, replyTo != nullptr ? replyTo : this);
    if (frame.IsValid()) {
        BPoint where;
        GetMouse(&where, nullptr);
        request.picture = FramePicture(frame, fHost->Link().Scale());
        request.offset = where - frame.LeftTop();
    }
    fHost->Link().Drag(std::move(request));
}

void BView::DragMessage(BMessage* message, BBitmap* bitmap, BPoint offset, BHandler* replyTo)
{
    DragMessage(message, bitmap, B_OP_COPY, offset, replyTo);
}

void BView::DragMessage(BMessage* message, BBitmap* bitmap, drawing_mode mode, BPoint offset,
                        BHandler* replyTo)
{
    CheckLock();
    const std::unique_ptr<BBitmap> adopted(bitmap);
    if (fHost == nullptr || message == nullptr) {
        return;
    }
    kits::DragRequest request = RequestFor(*message, replyTo != nullptr ? replyTo : this);
    if (adopted != nullptr && adopted->IsValid()) {
        request.picture = BitmapPicture(*adopted, mode, fHost->Link().Scale());
        request.offset = offset;
    }
    fHost->Link().Drag(std::move(request));
}
