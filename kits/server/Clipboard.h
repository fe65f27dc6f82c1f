#pragma once

namespace kits {

/// Has those told who watch the clipboard when another program changes it, as long as the
/// application object lives. Thread: the server's.
void WatchClipboard();

} // namespace kits
