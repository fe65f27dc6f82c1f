#include "LaunchContext.h"

#include "ProgramStart.h"
#include "StartNotices.h"

#include <gio/gdesktopappinfo.h>

#include <string>

namespace kits {

namespace {

std::string TextOf(const char* text)
{
    return text != nullptr ? text : "";
}

StartingProgram Describe(GDesktopAppInfo* program)
{
    auto* info = reinterpret_cast<GAppInfo*>(program);
    GIcon* icon = g_app_info_get_icon(info);
    const Memory<gchar> iconName(icon != nullptr ? g_icon_to_string(icon) : nullptr);
    return {TextOf(g_app_info_get_name(info)), TextOf(iconName.get()),
            TextOf(g_desktop_app_info_get_startup_wm_class(program)),
            TextOf(g_desktop_app_info_get_filename(program))};
}

// Of the class below.

char* Begin(GAppLaunchContext*, GAppInfo* info, GList*)
{
    if (!G_IS_DESKTOP_APP_INFO(info)) {
        return nullptr;
    }
    auto* program = reinterpret_cast<GDesktopAppInfo*>(info);
    const std::shared_ptr<StartNotices> notices = StartNotices::Get();
    // Of one that does not answer the desktop would say for half a minute that it starts. Not all
    // versions of the library look.
    if (notices == nullptr ||
        g_desktop_app_info_get_boolean(program, G_KEY_FILE_DESKTOP_KEY_STARTUP_NOTIFY) == FALSE) {
        return nullptr;
    }
    const std::string id = notices->Begin(Describe(program));
    return id.empty() ? nullptr : g_strdup(id.c_str());
}

void Fail(GAppLaunchContext*, const char* id)
{
    const std::shared_ptr<StartNotices> notices = StartNotices::Get();
    if (notices != nullptr && id != nullptr) {
        notices->Fail(id);
    }
}

void SetCalls(gpointer made, gpointer)
{
    auto* calls = static_cast<GAppLaunchContextClass*>(made);
    calls->get_startup_notify_id = &Begin;
    calls->launch_failed = &Fail;
}

/// A class of the library's own kind that adds nothing but the two calls.
GType ContextClass()
{
    static const GType made = g_type_register_static_simple(
        G_TYPE_APP_LAUNCH_CONTEXT, "KitsLaunchContext", sizeof(GAppLaunchContextClass), &SetCalls,
        sizeof(GAppLaunchContext), nullptr, static_cast<GTypeFlags>(0));
    return made;
}

} // namespace

Object<GAppLaunchContext> MakeLaunchContext()
{
    Object<GAppLaunchContext> context(
        static_cast<GAppLaunchContext*>(g_object_new(ContextClass(), nullptr)));
    for (const char* const* name = kVariablesOfOwnStart; *name != nullptr; ++name) {
        g_app_launch_context_unsetenv(context.get(), *name);
    }
    return context;
}

} // namespace kits
