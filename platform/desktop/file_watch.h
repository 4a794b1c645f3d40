#pragma once
/* News of one file's changes, by notification of the kernel. */

#include <filesystem>
#include <functional>

#include "glib_owner.h"

namespace vesk_port {

/* Calls `changed` on the main loop (GLib's default context) after the file may have changed: written, replaced by a
 * rename, touched, made or removed, also when the file or its folder does not exist yet. Several changes may come as
 * one call, and a call may come without a change; the receiver compares. It may destroy the watch inside the call. */
class FileWatch {
public:
    /* Throws PortError when the kernel hands out no watch. `file` is absolute and without symbolic links. */
    FileWatch(std::filesystem::path file, std::function<void()> changed);
    ~FileWatch();
    FileWatch(const FileWatch &) = delete;
    FileWatch &operator=(const FileWatch &) = delete;

private:
    void arm();
    bool drain();
    void dispatch();

    std::filesystem::path file_;
    std::function<void()> changed_;
    int inotify_ = -1;
    GlibSource source_;
    int watch_ = -1;
    std::filesystem::path folder_;  /* the watched one: the file's own or the deepest one above it that exists */
    std::filesystem::path awaited_; /* the entry of that folder on the way to the file, or the file itself */
};

} // namespace vesk_port
