#include "viewer/ViewerKeys.h"

#include "MessageCodes.h"

#include <InterfaceDefs.h>
#include <View.h>
#include <Window.h>

namespace norvane {

bool ViewerKey(BView& view, char key)
{
    switch (key) {
    case 'h':
    case 'H':
        view.Window()->PostMessage(kShowHex);
        return true;
    case B_ESCAPE:
        view.Window()->PostMessage(kStopFinding);
        return true;
    case 'f':
    case 'F':
        view.Window()->PostMessage(kFollowFile);
        return true;
    default:
        return false;
    }
}

} // namespace norvane
