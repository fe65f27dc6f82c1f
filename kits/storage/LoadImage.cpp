#include <image.h>

#include "ProgramFile.h"
#include "ProgramStart.h"
#include "Terminal.h"

#include <memory>
#include <optional>

// Here and not with the kernel kit, which knows nothing of files.

namespace {

using kits::ProgramOrder;

constexpr const char* kPlatformShell = "/boot/beos/bin/sh";

/// Adds a variable; of one that is given twice the last counts, whoever reads it.
void Add(const std::string& variable, std::vector<std::string>* environment)
{
    const std::string name = variable.substr(0, variable.find('=') + 1);
    if (!name.empty()) {
        std::erase_if(*environment,
                      [&](const std::string& other) { return other.starts_with(name); });
    }
    environment->push_back(variable);
}

std::string ValueOf(const std::vector<std::string>& environment, const std::string& name)
{
    for (const std::string& variable : environment) {
        if (variable.starts_with(name + "=")) {
            return variable.substr(name.size() + 1);
        }
    }
    return {};
}

/// Whether it asks the terminal for a login shell, in the platform's words.
bool AsksForShell(const ProgramOrder& order, const std::optional<kits::Terminal>& terminal)
{
    return terminal && order.path == terminal->path && order.arguments.size() == 2 &&
           order.arguments[0] == kPlatformShell && order.arguments[1] == "-login";
}

/// Puts what this machine has in place of the platform's shell.
void TranslateShell(ProgramOrder* order)
{
    if (order->arguments.empty() || order->arguments[0] != kPlatformShell) {
        return;
    }
    const std::optional<kits::Terminal> terminal = kits::FindTerminal();
    if (!AsksForShell(*order, terminal)) {
        return;
    }
    order->arguments = terminal->options;
    for (const std::string& word : kits::LoginShell()) {
        order->arguments.push_back(word);
    }
    // Also for shells that read other files than the one that changes the folder.
    order->folder = ValueOf(order->environment, "FOLDER_PATH");
}

status_t StartOrdered(void* data)
{
    const std::unique_ptr<ProgramOrder> order(static_cast<ProgramOrder*>(data));
    return kits::StartProgram(*order, nullptr);
}

} // namespace

thread_id load_image(int32 argc, const char** argv, const char** environment)
{
    if (argc < 1 || argv == nullptr || environment == nullptr) {
        return B_BAD_VALUE;
    }
    auto order = std::make_unique<ProgramOrder>();
    for (int32 word = 0; word < argc; ++word) {
        if (argv[word] == nullptr) {
            return B_BAD_VALUE;
        }
        order->arguments.emplace_back(argv[word]);
    }
    order->path = order->arguments.front();
    order->arguments.erase(order->arguments.begin());
    order->environment.clear();
    for (const char** variable = environment; *variable != nullptr; ++variable) {
        if (!kits::SpeaksOfOwnStart(*variable)) {
            Add(*variable, &order->environment);
        }
    }
    TranslateShell(order.get());
    const status_t status = kits::CheckRunnable(order->path);
    if (status != B_OK) {
        return status;
    }
    const thread_id thread =
        spawn_thread(&StartOrdered, "starting", B_NORMAL_PRIORITY, order.get());
    if (thread >= 0) {
        [[maybe_unused]] const ProgramOrder* adopted = order.release(); // by the thread
    }
    return thread;
}
