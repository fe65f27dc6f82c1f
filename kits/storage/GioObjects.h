#pragma once

#include <gio/gio.h>

#include <memory>

namespace kits {

struct Unreference
{
    void operator()(gpointer object) const { g_object_unref(object); }
};
template<class T>
using Object = std::unique_ptr<T, Unreference>;

struct Free
{
    void operator()(gpointer memory) const { g_free(memory); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(gchar** texts) const { g_strfreev(texts); }
};
template<class T>
using Memory = std::unique_ptr<T, Free>;

} // namespace kits
