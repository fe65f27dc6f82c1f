#pragma once

#include "FtpServer.h"

#include "ftp/client/clsFTP.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

/// A client for tests, with all that its callback was told.
class FtpClient
{
public:
    struct Step
    {
        int percent;
        int bytes;
    };

    /// A second is the shortest time-out that is one.
    static constexpr unsigned int kShort = 1000;
    static constexpr unsigned int kLong = 10'000;

    explicit FtpClient(const FtpServer& server, unsigned int timeout = kLong)
        : ftp(server.Host(), server.Port(), nullptr, 0, timeout, &Told, this)
    {
    }

    int LogIn() { return ftp.Connect("anna", "secret", nullptr); }

    /// What a listing holds; "(null)" when there is none.
    std::string Listing(const char* path = nullptr)
    {
        char* listing = nullptr;
        EXPECT_EQ(ftp.List(path, &listing, true), 0);
        const std::string text = listing != nullptr ? listing : "(null)";
        std::free(listing);
        return text;
    }

    /// Lines that were told, a carriage return shown as "\r" is, each with a line feed.
    std::string log;
    std::vector<Step> steps;
    /// Called at each step of a transfer; its result is the callback's.
    std::function<int()> atStep;
    norvane::clsFTP ftp;

private:
    static int Told(int percent, int bytes, char* text, void* user)
    {
        auto* self = static_cast<FtpClient*>(user);
        if (percent == -1) {
            self->NoteLine(text);
            return 1;
        }
        self->steps.push_back({percent, bytes});
        return self->atStep ? self->atStep() : 1;
    }

    void NoteLine(const char* text)
    {
        for (const char* at = text; *at != '\0'; at++) {
            log += *at == '\r' ? "\\r" : *at == '\n' ? "\\n" : std::string(1, *at);
        }
        log += '\n';
    }
};
