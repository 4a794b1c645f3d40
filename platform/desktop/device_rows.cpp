#include "device_rows.h"

#include <algorithm>
#include <cerrno>

#include "port_error.h"

namespace vesk_port {

namespace {

const std::string kSelectDevices = "SELECT id, name, bt_mac, wifi_mac, p2p_mac, type, icon, status FROM devices";

struct Link {
    MacKind kind;
    const char *column;
    const char *word;
    std::string Device::*mac;
};

constexpr std::array kLinks{
    Link{MacKind::bluetooth, "bt_mac", "Bluetooth", &Device::bt_mac},
    Link{MacKind::wifi, "wifi_mac", "Wi-Fi", &Device::wifi_mac},
    Link{MacKind::p2p, "p2p_mac", "peer-to-peer", &Device::p2p_mac},
};

/* Several devices may have the address that stands for none. */
bool counts(const std::string &normal)
{
    return !normal.empty() && normal != "00:00:00:00:00:00";
}

} // namespace

void refuse_nul(const std::string &text, const std::string &what, const std::string &device)
{
    if (text.find('\0') != std::string::npos)
        throw PortError(-EINVAL, "the " + what + " of the device \"" + device.substr(0, device.find('\0')) +
                                     "\" holds a NUL character. Give it without.");
}

std::string where_mac(MacKind kind)
{
    const auto link = std::ranges::find(kLinks, kind, &Link::kind);
    if (link == kLinks.end())
        throw PortError(-EINVAL, std::to_string(static_cast<int>(kind)) +
                                     " is no kind of address; there are 1 Bluetooth, 2 Wi-Fi and 3 peer-to-peer.");
    const std::string column = link->column;
    return " WHERE " + column + " <> '' AND upper(replace(" + column + ", '-', ':')) = ?";
}

std::vector<Device> read_devices(const SqliteDatabase &database, const std::string &limit)
{
    std::vector<Device> devices;
    SqliteStatement rows(database, kSelectDevices + " ORDER BY id" + limit);
    while (rows.step())
        devices.push_back({rows.number(0), rows.text(1), rows.text(2), rows.text(3), rows.text(4),
                           static_cast<int32_t>(rows.number(5)), static_cast<int32_t>(rows.number(6)),
                           static_cast<int32_t>(rows.number(7))});
    return devices;
}

DeviceInsertion::DeviceInsertion(const SqliteDatabase &database)
    : database_(database), statement_(database, "INSERT INTO devices (name, bt_mac, wifi_mac, p2p_mac, type, icon, "
                                                "status) VALUES (?, ?, ?, ?, ?, ?, ?)")
{
    SqliteStatement rows(database, "SELECT bt_mac, wifi_mac, p2p_mac FROM devices");
    while (rows.step()) {
        for (size_t i = 0; i < taken_.size(); ++i)
            taken_[i].insert(normal_mac(rows.text(static_cast<int>(i))));
    }
}

void DeviceInsertion::add(const Device &device)
{
    refuse_nul(device.name, "name", device.name);
    for (size_t i = 0; i < kLinks.size(); ++i) {
        const Link &link = kLinks[i];
        refuse_nul(device.*link.mac, std::string(link.word) + " address", device.name);
        const std::string mac = normal_mac(device.*link.mac);
        if (!counts(mac) || taken_[i].insert(mac).second)
            continue;
        SqliteStatement same(database_, "SELECT name FROM devices" + where_mac(link.kind));
        const std::string owner = same.bind(mac).step() ? same.text(0) : "";
        throw PortError(-EEXIST, std::string("the ") + link.word + " address " + mac +
                                     " is registered already, for \"" + owner +
                                     "\". Remove that device or give another address.");
    }
    statement_.restart();
    statement_.bind(device.name).bind(device.bt_mac).bind(device.wifi_mac).bind(device.p2p_mac);
    statement_.bind(int64_t{device.type}).bind(int64_t{device.icon}).bind(int64_t{device.status}).step();
}

} // namespace vesk_port
