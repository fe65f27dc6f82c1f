#include "fileops/windows/MessageBox.h"

#include <Alert.h>

namespace norvane {

int32 MessageBox(const char* text, const char* title, const char* button1, const char* button2,
                 const char* button3)
{
    BAlert* alert =
        new BAlert(title, text, button1, button2, button3, B_WIDTH_AS_USUAL, B_INFO_ALERT);
    return alert->Go();
}

} // namespace norvane
