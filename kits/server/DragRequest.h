#pragma once

#include "app/HandlerAddress.h"

#include <Point.h>
#include <SupportDefs.h>

#include <QImage>

#include <memory>

class BMessage;

namespace kits {

class OfferedFiles;

/// What a view gives out by BView::DragMessage().
struct DragRequest
{
    std::shared_ptr<const BMessage> message;
    std::shared_ptr<OfferedFiles> files; // its "refs" for other programs; null: they get nothing
    HandlerAddress replyTo;
    QImage picture; // shown at the pointer, with its own density
    BPoint offset;  // where in the picture the pointer holds it, in units
};

} // namespace kits
