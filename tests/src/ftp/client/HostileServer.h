#pragma once

#include "FtpClient.h"

#include <chrono>
#include <functional>
#include <string>

/// What a server does that no server should, what the client is asked for, and what it makes of it.
struct HostileCase
{
    const char* name;
    FtpScript script;
    std::function<int(FtpClient&)> act;
    int code;
};

inline std::ostream& operator<<(std::ostream& out, const HostileCase& one)
{
    return out << one.name;
}

/// Says the text again and again until the client breaks the connection off.
inline FtpStep Flood(std::string text)
{
    return [text = std::move(text)](FtpSession& session) {
        while (session.Send(text)) {
        }
        return false;
    };
}

/// So many times.
inline FtpStep Repeat(int times, const std::string& text)
{
    std::string all;
    for (int i = 0; i < times; i++) {
        all += text;
    }
    return ftp_script::SayRaw(all);
}
