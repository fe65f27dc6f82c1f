#pragma once

#include "Published.h"

#include <memory>
#include <vector>

class BMessage;
class QInputMethodEvent;
class QInputMethodQueryEvent;

namespace kits {

/// Answers what an input method asks, from what the window published; its thread is not asked.
void AnswerInputMethod(const InputMethodState& state, QInputMethodQueryEvent& event);

/// Whether an input method has to begin anew: what it showed is for a field that has changed.
bool IsAnew(const InputMethodState& before, const InputMethodState& now);
/// Lets the input method ask again, or begin anew.
void TellInputMethod(bool isAnew);

/// What a text field is told of an input method's event: what to enter, then what to show.
std::vector<std::unique_ptr<BMessage>> TextInputMessages(const InputMethodState& state,
                                                         const QInputMethodEvent& event);

} // namespace kits
