#pragma once

#include <sys/select.h>

namespace vesk {

/* select() that serves GLib's default main context besides: Debian's toolkit is built without its own bridge to GLib.
   `wait` does the waiting, with the timeout that both sides agree on; sources that are due are dispatched before this
   returns. The result counts the caller's own descriptors. */
int select_with_glib(int (*wait)(int, fd_set *, fd_set *, fd_set *, timeval *), int count, fd_set *reads,
                     fd_set *writes, fd_set *errors, timeval *timeout);

} // namespace vesk
