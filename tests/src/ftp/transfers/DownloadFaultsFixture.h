#pragma once

#include "TransferFixture.h"

namespace norvane {

/// Servers that refuse, lie, break off and fall silent.
class DownloadFaultsFixture : public TransferFixture
{
protected:
    void Behave(FtpTree::Habits habits) { fRemote.SetHabits(std::move(habits)); }

    /// Says `reply` to the command, as often as it comes.
    void AnswerTo(const std::string& command, const std::string& reply)
    {
        FtpTree::Habits habits;
        habits.answer = [command, reply](const std::string& said) -> std::optional<std::string> {
            return said == command ? std::optional(reply) : std::nullopt;
        };
        Behave(habits);
    }

    /// Lists these lines in the folder.
    void List(const std::string& folder, const std::string& lines)
    {
        FtpTree::Habits habits;
        habits.listing = [folder, lines](const std::string& listed) -> std::optional<std::string> {
            return listed == folder ? std::optional(lines) : std::nullopt;
        };
        Behave(habits);
    }

    static std::string Line(const std::string& name, const std::string& kind = "-rw-r--r--",
                            int size = 1)
    {
        return kind + " 1 u g " + std::to_string(size) + " Jan  5 12:34 " + name + "\r\n";
    }
};

} // namespace norvane
