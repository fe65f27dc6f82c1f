// A program that the session's bus starts: it has files opened, writes their addresses, one a line,
// into the file that is its argument, behind them the number of the start that it was told of, and
// ends.

#include <gio/gio.h>

#include <fstream>
#include <string>

namespace {

const char kInterface[] = "<node><interface name='org.freedesktop.Application'>"
                          "<method name='Open'><arg type='as' direction='in'/>"
                          "<arg type='a{sv}' direction='in'/></method></interface></node>";

struct Reader
{
    const char* file;
    GMainLoop* loop;
};

void Open(GDBusConnection* bus, const gchar*, const gchar*, const gchar*, const gchar*,
          GVariant* parameters, GDBusMethodInvocation* call, gpointer data)
{
    const auto* reader = static_cast<const Reader*>(data);
    GVariant* addresses = g_variant_get_child_value(parameters, 0);
    {
        std::ofstream out(reader->file + std::string(".part"));
        for (gsize index = 0; index < g_variant_n_children(addresses); ++index) {
            const gchar* address = nullptr;
            g_variant_get_child(addresses, index, "&s", &address);
            out << address << '\n';
        }
        GVariant* said = g_variant_get_child_value(parameters, 1);
        const gchar* start = nullptr;
        if (g_variant_lookup(said, "desktop-startup-id", "&s", &start) != FALSE) {
            out << start << '\n';
        }
        g_variant_unref(said);
    }
    g_variant_unref(addresses);
    std::rename((reader->file + std::string(".part")).c_str(), reader->file);
    g_dbus_method_invocation_return_value(call, nullptr);
    g_dbus_connection_flush_sync(bus, nullptr, nullptr);
    g_main_loop_quit(reader->loop);
}

void Export(GDBusConnection* bus, const gchar*, gpointer data)
{
    static const GDBusInterfaceVTable table = {&Open, nullptr, nullptr, {}};
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(kInterface, nullptr);
    g_dbus_connection_register_object(bus, "/org/norvane/Reader", node->interfaces[0], &table, data,
                                      nullptr, nullptr);
}

} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2) {
        return 1;
    }
    Reader reader{arguments[1], g_main_loop_new(nullptr, FALSE)};
    g_bus_own_name(G_BUS_TYPE_SESSION, "org.norvane.Reader", G_BUS_NAME_OWNER_FLAGS_NONE, &Export,
                   nullptr, nullptr, &reader, nullptr);
    // Should nobody ask for anything, it ends all the same.
    g_timeout_add_seconds(
        20,
        [](gpointer loop) -> gboolean {
            g_main_loop_quit(static_cast<GMainLoop*>(loop));
            return FALSE;
        },
        reader.loop);
    g_main_loop_run(reader.loop);
    return 0;
}
