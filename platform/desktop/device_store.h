#pragma once
/* The table of registered devices in its SQLite file, which several processes use at once. */

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

#include "device.h"
#include "sqlite_database.h"

namespace vesk_port {

/* Every function throws PortError with a sentence that names the file. A file that is damaged or belongs to something
 * else is never changed. Where no file is, the first use makes one with the sample household in it. */
class DeviceStore {
public:
    /* Opens `file`. This and each later call wait as long as `patience` when other processes are in the way. */
    explicit DeviceStore(std::filesystem::path file,
                         std::chrono::milliseconds patience = std::chrono::milliseconds(250));
    ~DeviceStore();
    DeviceStore(const DeviceStore &) = delete;
    DeviceStore &operator=(const DeviceStore &) = delete;

    /* All devices in the order of registration. */
    std::vector<Device> list();

    /* The first `most` of them, with a patience of this call's own. */
    std::vector<Device> first(size_t most, std::chrono::milliseconds patience);

    /* Register devices behind those that are there, or in place of all. All or none of them; their ids are given anew.
     * An address that is registered already is refused. */
    void add(const std::vector<Device> &devices);
    void replace(const std::vector<Device> &devices);

    /* Change the device that has the address, and return its id. */
    int64_t set_status(std::string_view mac, MacKind kind, int32_t status);
    int64_t remove(std::string_view mac, MacKind kind);

    /* Change the device with that id. */
    void set_status(int64_t id, int32_t status);
    void rename(int64_t id, const std::string &name);
    void remove(int64_t id);

    void remove_all();
    void remove_first(size_t most);

private:
    const SqliteDatabase &database();
    const SqliteDatabase &open_database();
    void insert(const std::vector<Device> &devices, const std::string &before);
    int64_t finish_change(SqliteStatement &change, const std::string &device);
    void ring() const;

    std::filesystem::path file_;
    std::chrono::milliseconds patience_;
    std::unique_ptr<SqliteDatabase> database_;
    dev_t open_device_ = 0; /* with the inode: which file is open, to notice when another stands in its place */
    ino_t open_inode_ = 0;
};

} // namespace vesk_port
