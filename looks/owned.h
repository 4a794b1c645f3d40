#pragma once
/* GLib's objects as members: given back with their owner. Within a function g_autoptr does the same. */

#include <gio/gio.h>
#include <memory>

namespace vesk::looks {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

template <typename Type> using Owned = std::unique_ptr<Type, Unref>;

} // namespace vesk::looks
