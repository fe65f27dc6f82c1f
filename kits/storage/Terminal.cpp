#include "Terminal.h"

#include <glib.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <pwd.h>
#include <unistd.h>

namespace kits {

namespace {

/// How a terminal is told which command it is to run, by its own manual page: all words behind this
/// are the command's.
struct Known
{
    const char* name;
    std::vector<std::string> options;
};

const std::vector<Known>& KnownTerminals()
{
    // Those of the desktops first: who installed one wants it rather than what came along.
    static const std::vector<Known> sTerminals = {
        {"x-terminal-emulator", {"-e"}},
        {"ptyxis", {"--"}},
        {"kgx", {"--"}},
        {"gnome-terminal", {"--"}},
        {"konsole", {"-e"}},
        {"xfce4-terminal", {"-x"}},
        {"mate-terminal", {"-x"}},
        {"qterminal", {"-e"}},
        {"lxterminal", {"-e"}},
        {"terminator", {"-x"}},
        {"tilix", {"-x"}},
        {"ghostty", {"-e"}},
        {"kitty", {}},
        {"alacritty", {"-e"}},
        {"wezterm", {"start", "--"}},
        {"foot", {}},
        {"urxvt", {"-e"}},
        {"st", {"-e"}},
        {"xterm", {"-e"}},
    };
    return sTerminals;
}

std::string LastName(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// Nearly all take the option that the first of them brought up.
std::vector<std::string> OptionsOf(const std::string& name)
{
    for (const Known& known : KnownTerminals()) {
        if (name == known.name) {
            return known.options;
        }
    }
    return {"-e"};
}

std::optional<Terminal> ChosenTerminal()
{
    const char* chosen = std::getenv("TERMINAL");
    std::vector<std::string> words = WordsOf(chosen != nullptr ? chosen : "");
    const std::string path = words.empty() ? std::string() : FindProgram(words[0]);
    if (path.empty()) {
        return std::nullopt;
    }
    words.erase(words.begin());
    const std::vector<std::string> options = OptionsOf(LastName(path));
    words.insert(words.end(), options.begin(), options.end());
    return Terminal{path, words};
}

bool IsShell(const char* path)
{
    return path != nullptr && path[0] == '/' && ::access(path, X_OK) == 0;
}

} // namespace

std::string FindProgram(const std::string& name)
{
    const std::unique_ptr<gchar, decltype(&g_free)> found(g_find_program_in_path(name.c_str()),
                                                          &g_free);
    return found != nullptr ? found.get() : "";
}

std::vector<std::string> WordsOf(const std::string& command)
{
    gchar** parsed = nullptr;
    if (g_shell_parse_argv(command.c_str(), nullptr, &parsed, nullptr) == FALSE) {
        return {};
    }
    std::vector<std::string> words;
    for (gchar** word = parsed; *word != nullptr; ++word) {
        words.emplace_back(*word);
    }
    g_strfreev(parsed);
    return words;
}

std::optional<Terminal> FindTerminal()
{
    if (std::optional<Terminal> chosen = ChosenTerminal()) {
        return chosen;
    }
    for (const Known& known : KnownTerminals()) {
        const std::string path = FindProgram(known.name);
        if (!path.empty()) {
            return Terminal{path, known.options};
        }
    }
    return std::nullopt;
}

std::vector<std::string> LoginShell()
{
    // "-l" is what all shells take, "-login" only some.
    const char* chosen = std::getenv("SHELL");
    if (IsShell(chosen)) {
        return {chosen, "-l"};
    }
    struct passwd record;
    struct passwd* user = nullptr;
    std::vector<char> room(16384);
    if (::getpwuid_r(::getuid(), &record, room.data(), room.size(), &user) == 0 &&
        user != nullptr && IsShell(user->pw_shell)) {
        return {user->pw_shell, "-l"};
    }
    return {"/bin/sh", "-l"};
}

} // namespace kits
