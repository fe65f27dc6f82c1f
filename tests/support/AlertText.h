#pragma once

#include "testing/Driver.h"

#include <Alert.h>
#include <Autolock.h>
#include <Button.h>

#include <string>

/// Waits for the alert with that title and puts what it is, says and offers into one line: its
/// kind, its text, its buttons from the left, the default one marked by a star. "(none)" when none
/// comes.
inline std::string AlertText(const char* title)
{
    auto* alert = dynamic_cast<BAlert*>(kits::testing::WaitForWindow(title));
    if (alert == nullptr) {
        return "(none)";
    }
    const BAutolock lock(alert);
    const char* const kinds[] = {"plain", "info", "idea", "warning", "stop"};
    std::string line = std::string(kinds[alert->Type()]) + ": " + alert->Text();
    for (int32 index = 0; const BButton* button = alert->ButtonAt(index); index++) {
        line += std::string(" [") + button->Label() + "]" + (button->IsDefault() ? "*" : "");
    }
    return line;
}
