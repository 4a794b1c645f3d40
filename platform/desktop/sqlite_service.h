#pragma once
/* The registered devices of an SQLite file, which other programs change too. */

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <vector>

#include "device_service.h"
#include "device_store.h"
#include "file_watch.h"
#include "glib_owner.h"

namespace vesk_port {

class SqliteService : public DeviceService {
public:
    /* Opens and reads `file`. */
    explicit SqliteService(std::filesystem::path file);

    /* While another program keeps the file locked, the list is the one that was read last. */
    std::vector<Device> list() override;
    void set_status(std::string_view mac, MacKind kind, int32_t status) override;
    void remove(std::string_view mac, MacKind kind) override;
    void remove_all() override;
    void on_changed(std::function<void()> changed) override;

private:
    void file_changed();
    void look_again_later();

    std::filesystem::path file_;
    DeviceStore store_;
    std::vector<Device> last_;              /* what list() answered last */
    std::optional<struct stat> unreadable_; /* the file that could not be read, until it is another or has changed */
    std::function<void()> changed_;
    std::unique_ptr<FileWatch> watch_;
    GlibSource retry_; /* while the file is locked */
    unsigned retry_ms_ = 0;
};

} // namespace vesk_port
