#include "outside/Terminal.h"

#include "DetachedThread.h"
#include "fileops/engine/ProblemList.h"
#include "settings/MsgBox.h"

#include <AppFileInfo.h>
#include <Entry.h>
#include <File.h>
#include <Mime.h>
#include <Path.h>
#include <image.h>

#include <cstring>

extern char** environ;

namespace norvane {

namespace {

constexpr const char* kTerminal = "/boot/beos/apps/Terminal";
constexpr const char* kTerminalSignature = "application/x-vnd.be-shel";
constexpr const char* kShell = "/boot/beos/bin/sh";

void Tell(const std::string& text)
{
    MsgBox("Hey", text.c_str(), "Damn!", B_INFO_ALERT);
}

void TellNotLaunched(status_t status)
{
    Tell(std::string("Couldn't launch the terminal\n\n") + ReasonFor(status));
}

status_t FindProgram(const char* signature, std::string* path)
{
    const BMimeType type(signature);
    entry_ref ref;
    if (!type.IsInstalled() || type.GetAppHint(&ref) != B_OK) {
        return B_ENTRY_NOT_FOUND;
    }
    BFile file(&ref, B_READ_ONLY);
    const BAppFileInfo program(&file);
    char own[B_MIME_TYPE_LENGTH];
    status_t status = program.GetSignature(own);
    if (status == B_OK && std::strcmp(own, signature) != 0) {
        status = B_ENTRY_NOT_FOUND; // another one is there by now
    }
    BPath found;
    if (status == B_OK) {
        status = BEntry(&ref).GetPath(&found);
    }
    if (status == B_OK) {
        *path = found.Path();
    }
    return status;
}

} // namespace

bool valid_file(const char* path)
{
    return BFile(path, B_READ_ONLY).InitCheck() == B_OK;
}

int get_app_from_sig(const char* signature, std::string* path)
{
    return FindProgram(signature, path);
}

bool configure_argv(std::string argv[kTerminalWords])
{
    argv[0] = kTerminal;
    get_app_from_sig(kTerminalSignature, &argv[0]);
    if (!valid_file(argv[0].c_str())) {
        Tell("Couldn't locate the terminal");
        return false;
    }
    argv[1] = kShell;
    argv[2] = "-login";
    return true;
}

std::vector<std::string> my_putenv(const char* const* environment, const char* entry)
{
    std::vector<std::string> all;
    for (; environment != nullptr && *environment != nullptr; ++environment) {
        all.emplace_back(*environment);
    }
    all.emplace_back(entry);
    return all;
}

int LaunchTerminal(int argc, const char** argv, const char* folder)
{
    std::string entry = "FOLDER_PATH=";
    entry += folder;
    const std::vector<std::string> environment = my_putenv(environ, entry.c_str());
    std::vector<const char*> pointers;
    pointers.reserve(environment.size() + 1);
    for (const std::string& variable : environment) {
        pointers.push_back(variable.c_str());
    }
    pointers.push_back(nullptr);
    const thread_id terminal = load_image(argc, argv, pointers.data());
    status_t status = terminal;
    if (terminal >= B_OK) {
        const status_t waited = wait_for_thread(terminal, &status); // resumes it
        status = waited == B_OK ? status : waited;
    }
    if (status != B_OK) {
        TellNotLaunched(status);
        return -1;
    }
    return 1;
}

void OpenTerminal(const std::string& folder)
{
    const bool isStarted = StartDetached("opening", B_NORMAL_PRIORITY, [folder] {
        std::string words[kTerminalWords];
        if (configure_argv(words)) {
            const char* argv[kTerminalWords] = {words[0].c_str(), words[1].c_str(),
                                                words[2].c_str()};
            LaunchTerminal(kTerminalWords, argv, folder.c_str());
        }
    });
    if (!isStarted) {
        TellNotLaunched(B_NO_MORE_THREADS);
    }
}

} // namespace norvane
