#pragma once

#include "Published.h"

class QInputMethodQueryEvent;

namespace kits {

/// Answers what an input method asks, from what the window published; its thread is not asked.
void AnswerInputMethod(const InputMethodState& state, QInputMethodQueryEvent& event);

} // namespace kits
