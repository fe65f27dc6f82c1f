#include "fileops/engine/FileInfoCopy.h"

#include <Bitmap.h>
#include <Node.h>
#include <NodeInfo.h>

namespace norvane {

namespace {

void CopyIcon(const BNodeInfo& from, BNodeInfo& to, icon_size which)
{
    const float side = which == B_MINI_ICON ? 15 : 31;
    BBitmap icon(BRect(0, 0, side, side), B_CMAP8);
    if (from.GetIcon(&icon, which) == B_OK) {
        to.SetIcon(&icon, which);
    }
}

} // namespace

void CopyFileInfo(BNode* source, BNode* target)
{
    // Most files have no attributes at all: one call tells, instead of four that find nothing.
    if (source->CountAttrs() == 0) {
        return;
    }
    const BNodeInfo from(source);
    BNodeInfo to(target);
    char text[B_FILE_NAME_LENGTH];
    if (from.GetPreferredApp(text) == B_OK) {
        to.SetPreferredApp(text);
    }
    if (from.GetType(text) == B_OK) {
        to.SetType(text);
    }
    CopyIcon(from, to, B_MINI_ICON);
    CopyIcon(from, to, B_LARGE_ICON);
}

} // namespace norvane
