#include "file_watch.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>
#include <utility>

#include <glib-unix.h>

#include "fence.h"
#include "port_error.h"

namespace vesk_port {

namespace fs = std::filesystem;

namespace {

/* The folder is watched and not the file, since a rename puts another file in its place. IN_ATTRIB is how a writer
 * rings whose data was written before it became visible (see DeviceStore). */
constexpr uint32_t kFolderEvents = IN_ATTRIB | IN_CLOSE_WRITE | IN_MODIFY | IN_CREATE | IN_DELETE | IN_MOVED_FROM |
                                   IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

[[noreturn]] void throw_no_watch(const fs::path &file)
{
    throw PortError(-errno, "changes of " + file.string() + " cannot be followed: " + std::strerror(errno) +
                                ". Programs that watch many files may use up the system's limit "
                                "(fs.inotify.max_user_instances).");
}

} // namespace

FileWatch::FileWatch(fs::path file, std::function<void()> changed)
    : file_(std::move(file)), changed_(std::move(changed)), inotify_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (inotify_ < 0)
        throw_no_watch(file_);
    try {
        arm();
    } catch (const PortError &) {
        close(inotify_);
        throw;
    }
    const auto ready = [](gint, GIOCondition, gpointer self) -> gboolean {
        fenced("following a file", [self] { static_cast<FileWatch *>(self)->dispatch(); });
        return G_SOURCE_CONTINUE;
    };
    source_ = GlibSource(g_unix_fd_add(inotify_, G_IO_IN, ready, this));
}

FileWatch::~FileWatch()
{
    source_.end();
    close(inotify_);
}

/* Watches the file's folder, or, while that does not exist, the deepest folder above it that does. */
void FileWatch::arm()
{
    if (watch_ >= 0)
        inotify_rm_watch(inotify_, watch_);
    folder_ = file_.parent_path();
    awaited_ = file_.filename();
    for (;;) {
        watch_ = inotify_add_watch(inotify_, folder_.c_str(), kFolderEvents);
        std::error_code ignored;
        if (watch_ >= 0) {
            /* The next folder may have been made after the look at it and before the watch: then go down again. */
            if (folder_ == file_.parent_path() || !fs::is_directory(folder_ / awaited_, ignored))
                return;
            inotify_rm_watch(inotify_, watch_);
            folder_ = file_.parent_path();
            awaited_ = file_.filename();
        } else if ((errno == ENOENT || errno == ENOTDIR) && folder_.has_relative_path()) {
            awaited_ = folder_.filename();
            folder_ = folder_.parent_path();
        } else {
            throw_no_watch(file_);
        }
    }
}

/* Takes the pending events; tells whether any concerns the file. */
bool FileWatch::drain()
{
    bool concerned = false;
    bool rearm = false;
    alignas(inotify_event) std::array<char, 4096> buffer;
    ssize_t length = 0;
    while ((length = read(inotify_, buffer.data(), buffer.size())) > 0) {
        for (ssize_t at = 0; at < length;) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const char *name = event.len > 0 ? buffer.data() + at + sizeof event : "";
            at += static_cast<ssize_t>(sizeof event + event.len);
            const bool current = event.wd == watch_; /* and not late news of a folder that was left */
            const bool folder_lost = current && event.mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED | IN_UNMOUNT);
            if (folder_lost || event.mask & IN_Q_OVERFLOW)
                concerned = rearm = true;
            else if (current && awaited_ == name)
                concerned = true;
        }
    }
    /* What was awaited may have been a folder on the way to the file. */
    if (rearm || (concerned && folder_ != file_.parent_path()))
        arm();
    return concerned;
}

void FileWatch::dispatch()
{
    bool concerned = false;
    try {
        concerned = drain();
    } catch (const PortError &) {
        concerned = true; /* the folder went out of reach; the receiver finds out when it reads */
    }
    if (!concerned)
        return;
    const auto changed = changed_;
    changed(); /* `this` may be gone from here on */
}

} // namespace vesk_port
