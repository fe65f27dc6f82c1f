#include "settings/Numbers.h"

#include <climits>
#include <cstring>
#include <utility>

namespace norvane {

void itoa(int number, char* text)
{
    ltoa(number, text);
}

void ltoa(long number, char* text)
{
    // The smallest number has no positive counterpart of its own type.
    unsigned long rest = static_cast<unsigned long>(number);
    if (number < 0) {
        rest = 0 - rest;
    }
    int length = 0;
    do {
        text[length++] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest > 0);
    if (number < 0) {
        text[length++] = '-';
    }
    text[length] = '\0';
    reverse(text);
}

void reverse(char* text)
{
    const std::size_t length = std::strlen(text);
    for (std::size_t i = 0; i < length / 2; i++) {
        std::swap(text[i], text[length - 1 - i]);
    }
}

int atoi(const char* text)
{
    long long value = 0;
    for (; *text >= '0' && *text <= '9'; text++) {
        value = value * 10 + (*text - '0');
        if (value > INT_MAX) {
            return INT_MAX;
        }
    }
    return static_cast<int>(value);
}

} // namespace norvane
