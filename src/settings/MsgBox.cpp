#include "settings/MsgBox.h"

namespace norvane {

void MsgBox(const char* text, alert_type type)
{
    MsgBox("foo", text, "OK", type);
}

void MsgBox(const char* title, const char* text, const char* button, alert_type type)
{
    // It deletes itself once it is answered.
    auto* alert = new BAlert(title, text, button, nullptr, nullptr, B_WIDTH_AS_USUAL, type);
    alert->Go();
}

} // namespace norvane
