#include "DesktopPrograms.h"

#include "GioObjects.h"
#include "LaunchContext.h"
#include "OwnCommand.h"
#include "PathLookup.h"
#include "ProgramFile.h"
#include "ProgramStart.h"
#include "Terminal.h"

#include <Mime.h>

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <cstdlib>
#include <memory>
#include <optional>

namespace kits {

namespace {

/// The addresses of files. Bytes that are no letters of an address are written as numbers in it, so
/// that any name reaches the program whole.
class Addresses
{
public:
    explicit Addresses(const std::vector<std::string>& paths)
    {
        for (const std::string& path : paths) {
            fList = g_list_append(fList, g_filename_to_uri(path.c_str(), nullptr, nullptr));
        }
    }
    ~Addresses() { g_list_free_full(fList, &g_free); }
    Addresses(const Addresses&) = delete;
    Addresses& operator=(const Addresses&) = delete;

    GList* List() const { return fList; }
    /// Whether each file has one: a path that is not absolute has none.
    bool AreWhole() const { return g_list_find(fList, nullptr) == nullptr; }

private:
    GList* fList = nullptr;
};

status_t StatusOf(const GError& error)
{
    if (error.domain == G_SPAWN_ERROR) {
        switch (error.code) {
        case G_SPAWN_ERROR_NOENT:
        case G_SPAWN_ERROR_NOTDIR:
            return B_LAUNCH_FAILED_APP_NOT_FOUND;
        case G_SPAWN_ERROR_ACCES:
        case G_SPAWN_ERROR_PERM:
            return B_PERMISSION_DENIED;
        case G_SPAWN_ERROR_NOEXEC:
            return B_LAUNCH_FAILED_EXECUTABLE;
        case G_SPAWN_ERROR_FORK:
            return B_NO_MORE_TEAMS;
        default:
            return B_LAUNCH_FAILED;
        }
    }
    if (error.domain == G_DBUS_ERROR && error.code == G_DBUS_ERROR_SERVICE_UNKNOWN) {
        return B_LAUNCH_FAILED_APP_NOT_FOUND;
    }
    if (error.domain == G_IO_ERROR && error.code == G_IO_ERROR_TIMED_OUT) {
        return B_TIMED_OUT;
    }
    return B_LAUNCH_FAILED;
}

// Which program

bool IsOwn(GAppInfo* program)
{
    const char* command = g_app_info_get_commandline(program);
    return command != nullptr && IsOwnCommand(command);
}

/// The first of the programs for folders that is not this one: what the person chose stands first.
Object<GAppInfo> FindFileManager()
{
    Object<GAppInfo> chosen(g_app_info_get_default_for_type(B_DIRECTORY_MIME_TYPE, FALSE));
    if (chosen == nullptr || !IsOwn(chosen.get())) {
        return chosen;
    }
    Object<GAppInfo> other;
    GList* all = g_app_info_get_all_for_type(B_DIRECTORY_MIME_TYPE);
    for (GList* item = all; item != nullptr && other == nullptr; item = item->next) {
        auto* program = static_cast<GAppInfo*>(item->data);
        if (!IsOwn(program)) {
            other.reset(static_cast<GAppInfo*>(g_object_ref(program)));
        }
    }
    g_list_free_full(all, &g_object_unref);
    return other;
}

// Starting

/// The session's bus; null without one. Its end is not this program's.
Object<GDBusConnection> SessionBus()
{
    Object<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus != nullptr) {
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    }
    return bus;
}

GDesktopAppInfo* AsDesktopProgram(GAppInfo* program)
{
    return G_IS_DESKTOP_APP_INFO(program) ? reinterpret_cast<GDesktopAppInfo*>(program) : nullptr;
}

/// Whether the bus starts it: it says so, and is called like a name on the bus.
bool IsStartedByBus(GDesktopAppInfo* program)
{
    const char* file = g_desktop_app_info_get_filename(program);
    if (file == nullptr || g_desktop_app_info_get_boolean(program, "DBusActivatable") == FALSE) {
        return false;
    }
    constexpr std::string_view kEnding = ".desktop";
    const Memory<gchar> base(g_path_get_basename(file));
    std::string name = base.get();
    if (!name.ends_with(kEnding)) {
        return false;
    }
    name.resize(name.size() - kEnding.size());
    return g_dbus_is_interface_name(name.c_str()) != FALSE;
}

struct BusAnswer
{
    bool isThere = false;
    status_t status = B_OK;
};

void TakeBusAnswer(GObject* program, GAsyncResult* result, gpointer data)
{
    auto* answer = static_cast<BusAnswer*>(data);
    GError* error = nullptr;
    if (g_app_info_launch_uris_finish(reinterpret_cast<GAppInfo*>(program), result, &error) ==
        FALSE) {
        const Memory<GError> owned(error);
        // Whoever is to answer is not there, or does not.
        answer->status = error != nullptr ? StatusOf(*error) : B_LAUNCH_FAILED;
    }
    answer->isThere = true;
}

/// Waits for the program's own answer, in a loop of the calling thread.
status_t StartByBus(GAppInfo* program, const Addresses& files)
{
    GMainContext* loop = g_main_context_new();
    g_main_context_push_thread_default(loop);
    BusAnswer answer;
    // The program is told of the notice; the environment is nothing to what the bus starts.
    const Object<GAppLaunchContext> context = MakeLaunchContext();
    g_app_info_launch_uris_async(program, files.List(), context.get(), nullptr, &TakeBusAnswer,
                                 &answer);
    while (!answer.isThere) {
        g_main_context_iteration(loop, TRUE);
    }
    g_main_context_pop_thread_default(loop);
    g_main_context_unref(loop);
    return answer.status;
}

void PrepareDesktopChild(gpointer folder)
{
    PrepareChild(static_cast<const char*>(folder));
}

void NoteProcess(GDesktopAppInfo*, GPid process, gpointer team)
{
    *static_cast<team_id*>(team) = process;
}

status_t StartBySpawning(GDesktopAppInfo* program, const Addresses& files, team_id* team)
{
    // One that was made of a command has no file to read, and so no folder either.
    const bool hasFile = g_desktop_app_info_get_filename(program) != nullptr;
    const Memory<gchar> ownFolder(
        hasFile ? g_desktop_app_info_get_string(program, G_KEY_FILE_DESKTOP_KEY_PATH) : nullptr);
    std::string home = HomeFolder();
    // A program that stays in a document's folder would keep its volume from being unmounted.
    char* folder = ownFolder == nullptr ? home.data() : nullptr;
    // The library's own idea of the program's name ends at the first blank, also within quotes.
    const char* command = g_app_info_get_commandline(reinterpret_cast<GAppInfo*>(program));
    const std::vector<std::string> words = WordsOf(command != nullptr ? command : "");
    const std::string file = words.empty() ? "" : FindProgram(words[0]);
    // A child in between starts it, and does not tell when it cannot.
    if (file.empty() || !HasInterpreter(file)) {
        return B_LAUNCH_FAILED_APP_NOT_FOUND;
    }
    const Object<GAppLaunchContext> context = MakeLaunchContext();
    GError* error = nullptr;
    // The child that starts the program ends at once, so that nobody has to wait for the program's.
    if (g_desktop_app_info_launch_uris_as_manager(program, files.List(), context.get(),
                                                  G_SPAWN_SEARCH_PATH, &PrepareDesktopChild, folder,
                                                  &NoteProcess, team, &error) == FALSE) {
        const Memory<GError> owned(error);
        return error != nullptr ? StatusOf(*error) : B_LAUNCH_FAILED;
    }
    return B_OK;
}

status_t Start(GAppInfo* program, const std::vector<std::string>& paths, team_id* team)
{
    GDesktopAppInfo* desktopProgram = program != nullptr ? AsDesktopProgram(program) : nullptr;
    if (desktopProgram == nullptr) {
        return B_LAUNCH_FAILED_NO_PREFERRED_APP;
    }
    const Addresses files(paths);
    if (!files.AreWhole()) {
        return B_BAD_VALUE;
    }
    const Object<GDBusConnection> bus = SessionBus();
    team_id started = 0;
    const status_t status = bus != nullptr && IsStartedByBus(desktopProgram)
                                ? StartByBus(program, files)
                                : StartBySpawning(desktopProgram, files, &started);
    if (status == B_OK && team != nullptr) {
        *team = started;
    }
    return status;
}

// Editors of the environment

std::string Variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// The words, as a command that is read again; '%' would begin a place for files.
std::string CommandOf(const std::vector<std::string>& words)
{
    std::string command;
    for (const std::string& word : words) {
        const Memory<gchar> quoted(g_shell_quote(word.c_str()));
        command += command.empty() ? "" : " ";
        for (const char* letter = quoted.get(); *letter != '\0'; ++letter) {
            command += *letter;
            if (*letter == '%') {
                command += *letter;
            }
        }
    }
    return command;
}

status_t OpenInTerminal(const std::string& editor, const std::vector<std::string>& paths,
                        team_id* team)
{
    std::vector<std::string> words = WordsOf(editor);
    if (words.empty() || FindProgram(words[0]).empty()) {
        return B_LAUNCH_FAILED_APP_NOT_FOUND;
    }
    const std::optional<Terminal> terminal = FindTerminal();
    if (terminal) {
        words.insert(words.begin(), terminal->options.begin(), terminal->options.end());
        words.insert(words.begin(), terminal->path);
    }
    const std::string command = CommandOf(words);
    GError* error = nullptr;
    const Object<GAppInfo> program(g_app_info_create_from_commandline(
        command.c_str(), nullptr,
        terminal ? G_APP_INFO_CREATE_NONE : G_APP_INFO_CREATE_NEEDS_TERMINAL, &error));
    if (program == nullptr) {
        const Memory<GError> owned(error);
        return B_LAUNCH_FAILED;
    }
    return Start(program.get(), paths, team);
}

} // namespace

status_t OpenByType(const std::string& type, const std::vector<std::string>& paths, team_id* team)
{
    const Object<GAppInfo> program(g_app_info_get_default_for_type(type.c_str(), FALSE));
    return Start(program.get(), paths, team);
}

status_t OpenByProgram(const std::string& id, const std::vector<std::string>& paths, team_id* team)
{
    GDesktopAppInfo* program = g_desktop_app_info_new(id.c_str());
    const Object<GAppInfo> owned(reinterpret_cast<GAppInfo*>(program));
    const status_t status = Start(owned.get(), paths, team);
    return status == B_LAUNCH_FAILED_NO_PREFERRED_APP ? status_t(B_LAUNCH_FAILED_APP_NOT_FOUND)
                                                      : status;
}

status_t OpenInTextEditor(const std::vector<std::string>& paths, team_id* team)
{
    const status_t status = OpenByType("text/plain", paths, team);
    if (status != B_LAUNCH_FAILED_NO_PREFERRED_APP) {
        return status;
    }
    for (const char* name : {"VISUAL", "EDITOR"}) {
        const std::string editor = Variable(name);
        if (!editor.empty()) {
            return OpenInTerminal(editor, paths, team);
        }
    }
    return status;
}

status_t OpenInFileManager(const std::vector<std::string>& paths, team_id* team)
{
    return Start(FindFileManager().get(), paths, team);
}

} // namespace kits
