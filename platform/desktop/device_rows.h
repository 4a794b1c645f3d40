#pragma once
/* The rows of the table of devices. */

#include <array>
#include <string>
#include <unordered_set>
#include <vector>

#include "device.h"
#include "sqlite_database.h"

namespace vesk_port {

/* Throws PortError where `text`, the `what` of a device of that name, holds a NUL: most readers end there. */
void refuse_nul(const std::string &text, const std::string &what, const std::string &device);

/* The condition that a device has an address of that kind and it is, normalised, the next parameter. */
std::string where_mac(MacKind kind);

/* The devices in the order of registration; `limit` is empty or an SQL clause. */
std::vector<Device> read_devices(const SqliteDatabase &database, const std::string &limit);

/* Registers devices one after the other, within a transaction of the caller. */
class DeviceInsertion {
public:
    explicit DeviceInsertion(const SqliteDatabase &database);

    /* Throws PortError for an address that is registered already and for a text that holds a NUL. */
    void add(const Device &device);

private:
    const SqliteDatabase &database_;
    SqliteStatement statement_;
    std::array<std::unordered_set<std::string>, 3> taken_; /* the normalised addresses of each kind */
};

} // namespace vesk_port
