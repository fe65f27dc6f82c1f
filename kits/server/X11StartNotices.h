#pragma once

#include "storage/StartNotices.h"

#include <SupportDefs.h>

#include <string>
#include <vector>

namespace kits {

/// The startup notification of X11 desktops: messages to all who watch the screen, as
/// https://specifications.freedesktop.org/startup-notification-spec/ has them. Each goes over a
/// connection of its own, so that it comes from any thread.
class X11StartNotices : public StartNotices
{
public:
    std::string Begin(const StartingProgram& program) override;
    void Fail(const std::string& id) override;

    /// When the person pressed a key or a button. Units: milliseconds of the X server's clock.
    static void NoteInput(uint32 time);
};

/// What a message says of a program: "new: ID="..." NAME="..." ...".
std::string StartMessage(const StartingProgram& program, const std::string& id);
/// The pieces that a message is sent in: 20 bytes each, with a zero byte at its end.
std::vector<std::string> PiecesOf(const std::string& message);

} // namespace kits
