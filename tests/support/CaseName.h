#pragma once

#include <cctype>
#include <string>
#include <string_view>

/// A name for a parameterised test: the letters and digits of a label.
inline std::string CaseName(std::string_view label)
{
    std::string name;
    for (const char byte : label) {
        if (std::isalnum(static_cast<unsigned char>(byte)) != 0) {
            name += byte;
        }
    }
    return name;
}
