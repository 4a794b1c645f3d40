#include "sqlite_service.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "fence.h"
#include "log.h"
#include "port_error.h"

namespace vesk_port {

namespace {

/* After the opening a reader keeps no key waiting; while the file is locked it looks again, less and less often. */
constexpr std::chrono::milliseconds kOpenPatience(250);
constexpr std::chrono::milliseconds kReadPatience(5);
constexpr unsigned kFirstRetryMs = 20;
constexpr unsigned kLastRetryMs = 1000;

/* All zero for a file that cannot be reached. */
struct stat state_of(const std::filesystem::path &file)
{
    struct stat state {};
    if (stat(file.c_str(), &state) != 0)
        state = {};
    return state;
}

bool same_time(const timespec &one, const timespec &other)
{
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

bool same_state(const struct stat &one, const struct stat &other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_size == other.st_size &&
           same_time(one.st_mtim, other.st_mtim) && same_time(one.st_ctim, other.st_ctim);
}

} // namespace

SqliteService::SqliteService(std::filesystem::path file)
    : file_(std::move(file)), store_(file_, kOpenPatience), last_(store_.first(kListedDevices, kOpenPatience))
{
}

std::vector<Device> SqliteService::list()
{
    const struct stat state = state_of(file_);
    try {
        last_ = store_.first(kListedDevices, kReadPatience);
        unreadable_.reset();
        retry_ms_ = 0;
    } catch (const PortError &error) {
        if (error.code() != -EBUSY) {
            unreadable_ = state;
            throw;
        }
        look_again_later();
    }
    return last_;
}

void SqliteService::set_status(std::string_view mac, MacKind kind, int32_t status)
{
    store_.set_status(mac, kind, status);
}

void SqliteService::remove(std::string_view mac, MacKind kind)
{
    store_.remove(mac, kind);
}

void SqliteService::remove_all()
{
    store_.remove_first(kListedDevices);
}

void SqliteService::on_changed(std::function<void()> changed)
{
    changed_ = std::move(changed);
    try {
        watch_ = std::make_unique<FileWatch>(file_, [this] { file_changed(); });
    } catch (const PortError &error) {
        log_line(DLOG_WARN, kPortTag, std::string("changes made by other programs will not be seen: ") + error.what());
    }
}

/* Opening and closing a file that cannot be read rings too; it is looked at again when it has changed. */
void SqliteService::file_changed()
{
    if (unreadable_ && same_state(*unreadable_, state_of(file_)))
        return;
    changed_();
}

void SqliteService::look_again_later()
{
    if (retry_ || !changed_)
        return;
    retry_ms_ = std::clamp(retry_ms_ * 2, kFirstRetryMs, kLastRetryMs);
    const auto look = [](gpointer self) -> gboolean {
        auto *service = static_cast<SqliteService *>(self);
        service->retry_.let_end();
        fenced("looking again at the devices", [service] { service->changed_(); });
        return G_SOURCE_REMOVE;
    };
    retry_ = GlibSource(g_timeout_add(retry_ms_, look, this));
}

} // namespace vesk_port
