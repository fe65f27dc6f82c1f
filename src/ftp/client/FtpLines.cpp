#include "ftp/client/FtpLines.h"

#include <cstring>

namespace norvane {

bool IsOneLine(const char* text)
{
    return text != nullptr && std::strpbrk(text, "\r\n") == nullptr;
}

std::string CommandLine(const char* verb, const char* argument)
{
    std::string line = verb;
    if (argument != nullptr) {
        line += ' ';
        line += argument;
    }
    line += "\r\n";
    return line;
}

} // namespace norvane
