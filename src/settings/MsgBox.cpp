#include "settings/MsgBox.h"

namespace norvane {

bool MsgBox(const char* text, alert_type type)
{
    return MsgBox("foo", text, "OK", type);
}

bool MsgBox(const char* title, const char* text, const char* button, alert_type type)
{
    // It deletes itself once it is answered.
    auto* alert = new BAlert(title, text, button, nullptr, nullptr, B_WIDTH_AS_USUAL, type);
    return alert->Go() == 0;
}

} // namespace norvane
