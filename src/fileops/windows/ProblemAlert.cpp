#include "fileops/engine/ProblemList.h"

#include <Alert.h>

// Apart from the list, which operations fill where there is no window.

namespace norvane {

void ProblemList::Show() const
{
    if (IsEmpty()) {
        return;
    }
    BAlert* alert =
        new BAlert("Err", Text().c_str(), "OK", nullptr, nullptr, B_WIDTH_AS_USUAL, B_INFO_ALERT);
    alert->Go();
}

} // namespace norvane
