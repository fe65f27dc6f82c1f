#pragma once

#include <SupportDefs.h>

#include <memory>

class BMessage;

namespace kits {

/// What is being dragged, for the windows it is dragged over: messages of the pointer name it by a
/// number alone, so that a large one is not copied at each move. Thread: any.
class DraggedMessage
{
public:
    /// The message of that number; null when something else was dragged since.
    static std::shared_ptr<const BMessage> Find(int32 number);
    /// Makes this what is dragged, and returns its number, never 0.
    static int32 Set(std::shared_ptr<const BMessage> message);
    /// Nothing is dragged any more. Who is told only later still gets a message of that code.
    static void End();
};

} // namespace kits
