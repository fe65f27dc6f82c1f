#include <Message.h>

#include <Rect.h>

#include "app/MessageScalar.h"

// Points and rectangles.

status_t BMessage::AddPoint(const char* name, BPoint value)
{
    return kits::AddScalar(*this, name, B_POINT_TYPE, value);
}

status_t BMessage::FindPoint(const char* name, BPoint* value) const
{
    return FindPoint(name, 0, value);
}

status_t BMessage::FindPoint(const char* name, int32 index, BPoint* value) const
{
    return kits::FindScalar(*this, name, B_POINT_TYPE, index, value);
}

status_t BMessage::ReplacePoint(const char* name, BPoint value)
{
    return ReplacePoint(name, 0, value);
}

status_t BMessage::ReplacePoint(const char* name, int32 index, BPoint value)
{
    return kits::ReplaceScalar(*this, name, B_POINT_TYPE, index, value);
}

status_t BMessage::AddRect(const char* name, BRect value)
{
    return kits::AddScalar(*this, name, B_RECT_TYPE, value);
}

status_t BMessage::FindRect(const char* name, BRect* value) const
{
    return FindRect(name, 0, value);
}

status_t BMessage::FindRect(const char* name, int32 index, BRect* value) const
{
    return kits::FindScalar(*this, name, B_RECT_TYPE, index, value);
}

status_t BMessage::ReplaceRect(const char* name, BRect value)
{
    return ReplaceRect(name, 0, value);
}

status_t BMessage::ReplaceRect(const char* name, int32 index, BRect value)
{
    return kits::ReplaceScalar(*this, name, B_RECT_TYPE, index, value);
}
