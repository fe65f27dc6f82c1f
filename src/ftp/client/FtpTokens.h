#pragma once

namespace norvane {

/// Cuts `text` at any of the characters `delims` and returns how many tokens there are; empty ones
/// are skipped. 0 when there is no memory.
/// Ownership: `*tokens` and what it holds is the caller's (FreeTokens); null for none.
int StrTokenize(const char* text, const char* delims, char*** tokens);
void FreeTokens(char*** tokens, int count);

} // namespace norvane
