#include "ftp/client/FtpTokens.h"

#include <cstdlib>
#include <cstring>

namespace norvane {

namespace {

/// Adds a copy of `length` bytes; false when there is no memory.
bool AddToken(const char* token, size_t length, char*** tokens, int count)
{
    void* grown = std::realloc(*tokens, (static_cast<size_t>(count) + 1) * sizeof(char*));
    if (grown == nullptr) {
        return false;
    }
    *tokens = static_cast<char**>(grown);
    char* copy = static_cast<char*>(std::malloc(length + 1));
    if (copy == nullptr) {
        return false;
    }
    std::memcpy(copy, token, length);
    copy[length] = '\0';
    (*tokens)[count] = copy;
    return true;
}

} // namespace

int StrTokenize(const char* text, const char* delims, char*** tokens)
{
    *tokens = nullptr;
    int count = 0;
    for (const char* at = text + std::strspn(text, delims); *at != '\0';) {
        const size_t length = std::strcspn(at, delims);
        if (!AddToken(at, length, tokens, count)) {
            FreeTokens(tokens, count);
            return 0;
        }
        count++;
        at += length;
        at += std::strspn(at, delims);
    }
    return count;
}

void FreeTokens(char*** tokens, int count)
{
    for (int i = 0; i < count; i++) {
        std::free((*tokens)[i]);
    }
    std::free(*tokens);
    *tokens = nullptr;
}

} // namespace norvane
