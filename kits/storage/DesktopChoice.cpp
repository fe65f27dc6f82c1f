#include "DesktopChoice.h"

#include "GioObjects.h"
#include "OwnCommand.h"
#include "Terminal.h"

#include <gio/gdesktopappinfo.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>

namespace kits {

namespace {

constexpr std::string_view kFamily = "application/x-vnd.desktop.";
constexpr std::string_view kEnding = ".desktop";

/// A list of programs that the library hands over.
class Programs
{
public:
    explicit Programs(GList* taken) : fList(taken) {}
    ~Programs() { g_list_free_full(fList, &g_object_unref); }
    Programs(const Programs&) = delete;
    Programs& operator=(const Programs&) = delete;

    template<class Use>
    void ForEach(const Use& use) const
    {
        for (GList* item = fList; item != nullptr; item = item->next) {
            use(static_cast<GAppInfo*>(item->data));
        }
    }

private:
    GList* fList;
};

std::string IdOf(GAppInfo* program)
{
    const char* id = program != nullptr ? g_app_info_get_id(program) : nullptr;
    return id != nullptr ? id : "";
}

Object<GAppInfo> Find(const std::string& id)
{
    return Object<GAppInfo>(reinterpret_cast<GAppInfo*>(g_desktop_app_info_new(id.c_str())));
}

bool IsOfOthers(GAppInfo* program)
{
    const char* command = g_app_info_get_commandline(program);
    return command != nullptr && !IsOwnCommand(command);
}

bool OpensFiles(GAppInfo* program)
{
    return g_app_info_supports_uris(program) != FALSE ||
           g_app_info_supports_files(program) != FALSE;
}

bool IsPlain(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9') || letter == '.' || letter == '-' || letter == '_';
}

} // namespace

std::vector<std::string> ProgramsFor(const std::string& type)
{
    std::vector<std::string> ids;
    const auto add = [&](const std::string& id) {
        if (!id.empty() && std::find(ids.begin(), ids.end(), id) == ids.end()) {
            ids.push_back(id);
        }
    };
    add(ProgramSetFor(type));
    Programs(g_app_info_get_all_for_type(type.c_str())).ForEach([&](GAppInfo* program) {
        if (IsOfOthers(program)) {
            add(IdOf(program));
        }
    });
    return ids;
}

std::vector<std::string> AllPrograms()
{
    std::vector<std::pair<std::string, std::string>> found; // in the order of people, id
    Programs(g_app_info_get_all()).ForEach([&](GAppInfo* program) {
        if (g_app_info_should_show(program) != FALSE && OpensFiles(program) &&
            IsOfOthers(program)) {
            const Memory<gchar> folded(g_utf8_casefold(g_app_info_get_display_name(program), -1));
            const Memory<gchar> key(g_utf8_collate_key(folded.get(), -1));
            found.emplace_back(key.get(), IdOf(program));
        }
    });
    std::sort(found.begin(), found.end());
    std::vector<std::string> ids;
    ids.reserve(found.size());
    for (auto& [key, id] : found) {
        ids.push_back(std::move(id));
    }
    return ids;
}

std::string ProgramSetFor(const std::string& type)
{
    const Object<GAppInfo> program(g_app_info_get_default_for_type(type.c_str(), FALSE));
    return IdOf(program.get());
}

status_t SetProgramFor(const std::string& type, const std::string& id)
{
    const Object<GAppInfo> program = Find(id);
    if (program == nullptr) {
        return B_ENTRY_NOT_FOUND;
    }
    GError* error = nullptr;
    if (g_app_info_set_as_default_for_type(program.get(), type.c_str(), &error) == FALSE) {
        const Memory<GError> owned(error);
        return B_ERROR;
    }
    return B_OK;
}

std::string NameOfProgram(const std::string& id)
{
    const Object<GAppInfo> program = Find(id);
    const char* name = program != nullptr ? g_app_info_get_display_name(program.get()) : nullptr;
    return name != nullptr ? name : "";
}

std::string FileOfProgram(const std::string& id)
{
    const Object<GAppInfo> program = Find(id);
    const char* file =
        program != nullptr
            ? g_desktop_app_info_get_filename(reinterpret_cast<GDesktopAppInfo*>(program.get()))
            : nullptr;
    return file != nullptr ? file : "";
}

std::string SignatureOf(const std::string& id)
{
    std::string signature(kFamily);
    std::string_view name = id;
    name.remove_suffix(name.ends_with(kEnding) ? kEnding.size() : 0);
    for (const char letter : name) {
        if (IsPlain(letter)) {
            signature += letter;
        } else {
            char code[4];
            std::snprintf(code, sizeof(code), "%%%02x", static_cast<unsigned char>(letter));
            signature += code;
        }
    }
    return signature;
}

std::string ProgramOf(const std::string& signature)
{
    if (!signature.starts_with(kFamily)) {
        return {};
    }
    std::string id;
    for (size_t at = kFamily.size(); at < signature.size(); ++at) {
        if (signature[at] == '%' && at + 2 < signature.size()) {
            id += static_cast<char>(std::strtol(signature.substr(at + 1, 2).c_str(), nullptr, 16));
            at += 2;
        } else {
            id += signature[at];
        }
    }
    return id + std::string(kEnding);
}

std::string FileOfSignature(const std::string& signature)
{
    if (signature == kTerminalSignature) {
        const std::optional<Terminal> terminal = FindTerminal();
        return terminal ? terminal->path : "";
    }
    const std::string program = ProgramOf(signature);
    return program.empty() ? "" : FileOfProgram(program);
}

} // namespace kits
