#pragma once

#include <SupportDefs.h>

namespace kits {

/// The use of the toolkit's fonts and image readers by a thread that nobody waits for: the toolkit
/// does not go away meanwhile, unless that takes long.
///
/// Thread: any; not nested.
class ToolkitUse
{
public:
    ToolkitUse();
    ~ToolkitUse();
    ToolkitUse(const ToolkitUse&) = delete;
    ToolkitUse& operator=(const ToolkitUse&) = delete;

    /// False when the toolkit is not there, or about to go: nothing may be done then.
    explicit operator bool() const { return fIsBegun; }

    /// Whether the toolkit is about to go: what can be broken off should be.
    static bool IsEnding();

    // Of the server's thread
    /// The toolkit is there.
    static void Open();
    /// It is about to go: waits for those who use it, a second at most.
    static void Close();

private:
    const bool fIsBegun;
};

} // namespace kits
