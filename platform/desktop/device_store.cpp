#include "device_store.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "paths.h"
#include "port_error.h"
#include "sample_household.h"

namespace vesk_port {

namespace {

/* The marks in the file's header by which the service knows its own: the letters VESK, and the form of the table. */
constexpr int64_t kApplicationId = 0x5645534b;
constexpr int64_t kSchemaVersion = 1;

/* AUTOINCREMENT keeps the order of registration also after the last device was removed and another one added. The
 * write-ahead log lets the panel read while another process writes, and a commit need not wait for the disk. */
const std::string kSchema = "PRAGMA journal_mode = WAL;"
                            "PRAGMA application_id = " +
                            std::to_string(kApplicationId) +
                            ";"
                            "PRAGMA user_version = " +
                            std::to_string(kSchemaVersion) +
                            ";"
                            "CREATE TABLE devices ("
                            " id INTEGER PRIMARY KEY AUTOINCREMENT,"
                            " name TEXT NOT NULL,"
                            " bt_mac TEXT NOT NULL,"
                            " wifi_mac TEXT NOT NULL,"
                            " p2p_mac TEXT NOT NULL,"
                            " type INTEGER NOT NULL,"
                            " icon INTEGER NOT NULL,"
                            " status INTEGER NOT NULL);";

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

/* The condition that a device has an address of that kind and it is, normalised, the next parameter. */
std::string where_mac(MacKind kind)
{
    const auto link = std::ranges::find(kLinks, kind, &Link::kind);
    if (link == kLinks.end())
        throw PortError(-EINVAL, std::to_string(static_cast<int>(kind)) +
                                     " is no kind of address; there are 1 Bluetooth, 2 Wi-Fi and 3 peer-to-peer.");
    const std::string column = link->column;
    return " WHERE " + column + " <> '' AND upper(replace(" + column + ", '-', ':')) = ?";
}

int64_t first_number(const SqliteDatabase &database, const std::string &sql)
{
    SqliteStatement statement(database, sql);
    return statement.step() ? statement.number(0) : 0;
}

/* Throws unless the file is a device database of this form and whole. Nothing has been written by then. */
void check_contents(const SqliteDatabase &database)
{
    const int64_t version = first_number(database, "PRAGMA user_version");
    if (first_number(database, "PRAGMA application_id") != kApplicationId || version < kSchemaVersion)
        database.fail_as_damaged();
    if (version > kSchemaVersion)
        database.fail_as_later();
    SqliteStatement check(database, "PRAGMA quick_check(1)");
    if (!check.step() || check.text(0) != "ok")
        database.fail_as_damaged();
    if (first_number(database, "SELECT count(*) FROM pragma_table_info('devices') WHERE name IN ('id', 'name', "
                               "'bt_mac', 'wifi_mac', 'p2p_mac', 'type', 'icon', 'status')") != 8)
        database.fail_as_damaged();
}

void insert(const SqliteDatabase &database, const Device &device)
{
    for (const Link &link : kLinks) {
        const std::string mac = normal_mac(device.*link.mac);
        if (mac.empty() || mac == "00:00:00:00:00:00")
            continue;
        SqliteStatement same(database, "SELECT name FROM devices" + where_mac(link.kind));
        if (same.bind(mac).step())
            throw PortError(-EEXIST, std::string("the ") + link.word + " address " + mac +
                                         " is registered already, for \"" + same.text(0) +
                                         "\". Remove that device or give another address.");
    }
    SqliteStatement statement(database, "INSERT INTO devices (name, bt_mac, wifi_mac, p2p_mac, type, icon, status)"
                                        " VALUES (?, ?, ?, ?, ?, ?, ?)");
    statement.bind(device.name).bind(device.bt_mac).bind(device.wifi_mac).bind(device.p2p_mac);
    statement.bind(int64_t{device.type}).bind(int64_t{device.icon}).bind(int64_t{device.status}).step();
}

std::vector<Device> rows(const SqliteDatabase &database, const std::string &limit)
{
    std::vector<Device> devices;
    SqliteStatement rows(database, kSelectDevices + " ORDER BY id" + limit);
    while (rows.step())
        devices.push_back({rows.number(0), rows.text(1), rows.text(2), rows.text(3), rows.text(4),
                           static_cast<int32_t>(rows.number(5)), static_cast<int32_t>(rows.number(6)),
                           static_cast<int32_t>(rows.number(7))});
    return devices;
}

} // namespace

DeviceStore::DeviceStore(std::filesystem::path file, std::chrono::milliseconds patience)
    : file_(std::move(file)), patience_(patience)
{
    database();
}

DeviceStore::~DeviceStore() = default;

const SqliteDatabase &DeviceStore::database()
{
    const SqliteDatabase &database = open_database();
    database.set_patience(patience_);
    return database;
}

/* Opened anew where another file has come to stand in its place, made where there is none. */
const SqliteDatabase &DeviceStore::open_database()
{
    struct stat now {};
    if (stat(file_.c_str(), &now) != 0) {
        if (errno != ENOENT && errno != ENOTDIR)
            throw PortError(-errno, "the device database " + file_.string() +
                                        " cannot be reached: " + std::strerror(errno) +
                                        ". Allow reading and writing of the file and its "
                                        "folder or name another file in VESK_DEVICES.");
        make_sample_file();
        if (stat(file_.c_str(), &now) != 0)
            throw PortError(-errno, "the device database " + file_.string() + " was removed again. Try once more.");
    }
    if (database_ && now.st_dev == open_device_ && now.st_ino == open_inode_)
        return *database_;

    /* What stands beside the path belongs to the new file; closing the old one must not tidy it up. */
    if (database_)
        database_->leave_files_alone(true);
    database_.reset();
    auto database = std::make_unique<SqliteDatabase>(file_, patience_);
    database->leave_files_alone(true);
    check_contents(*database);
    database->leave_files_alone(false);
    database->execute("PRAGMA synchronous = NORMAL");
    database_ = std::move(database);
    open_device_ = now.st_dev;
    open_inode_ = now.st_ino;
    return *database_;
}

/* The file is made under another name and then linked into place: nobody ever sees a half-made one, and of several
 * processes that start at once one makes it and the others find it. */
void DeviceStore::make_sample_file() const
{
    make_folder_of(file_);
    std::string draft = file_.string() + ".XXXXXX";
    const int fd = mkstemp(draft.data());
    if (fd < 0)
        throw PortError(-errno, "the device database " + file_.string() + " cannot be made: " + std::strerror(errno) +
                                    ". Allow writing to its folder or name another file in VESK_DEVICES.");
    close(fd);
    int error = 0;
    try {
        const SqliteDatabase database(draft, patience_);
        database.execute(kSchema);
        SqliteTransaction transaction(database);
        for (const Device &device : sample_household())
            insert(database, device);
        transaction.commit();
    } catch (const PortError &) {
        unlink(draft.c_str());
        throw;
    }
    if (link(draft.c_str(), file_.c_str()) != 0 && errno != EEXIST)
        error = errno;
    unlink(draft.c_str());
    if (error)
        throw PortError(-error, "the device database " + file_.string() + " cannot be made: " + std::strerror(error) +
                                    ". Name another file in VESK_DEVICES.");
}

std::vector<Device> DeviceStore::list()
{
    return rows(database(), "");
}

std::vector<Device> DeviceStore::first(size_t most, std::chrono::milliseconds patience)
{
    const SqliteDatabase &open = database();
    open.set_patience(patience);
    return rows(open, " LIMIT " + std::to_string(most));
}

void DeviceStore::add(const std::vector<Device> &devices)
{
    SqliteTransaction transaction(database());
    for (const Device &device : devices)
        insert(*database_, device);
    transaction.commit();
    ring();
}

void DeviceStore::replace(const std::vector<Device> &devices)
{
    SqliteTransaction transaction(database());
    database_->execute("DELETE FROM devices");
    for (const Device &device : devices)
        insert(*database_, device);
    transaction.commit();
    ring();
}

int64_t DeviceStore::set_status(std::string_view mac, MacKind kind, int32_t status)
{
    const std::string normal = normal_mac(mac);
    SqliteStatement update(database(), "UPDATE devices SET status = ?" + where_mac(kind) + " RETURNING id");
    update.bind(int64_t{status}).bind(normal);
    return finish_change(update, normal);
}

int64_t DeviceStore::remove(std::string_view mac, MacKind kind)
{
    const std::string normal = normal_mac(mac);
    SqliteStatement removal(database(), "DELETE FROM devices" + where_mac(kind) + " RETURNING id");
    removal.bind(normal);
    return finish_change(removal, normal);
}

void DeviceStore::set_status(int64_t id, int32_t status)
{
    SqliteStatement update(database(), "UPDATE devices SET status = ? WHERE id = ? RETURNING id");
    update.bind(int64_t{status}).bind(id);
    finish_change(update, "number " + std::to_string(id));
}

void DeviceStore::rename(int64_t id, const std::string &name)
{
    SqliteStatement update(database(), "UPDATE devices SET name = ? WHERE id = ? RETURNING id");
    update.bind(name).bind(id);
    finish_change(update, "number " + std::to_string(id));
}

void DeviceStore::remove(int64_t id)
{
    SqliteStatement removal(database(), "DELETE FROM devices WHERE id = ? RETURNING id");
    removal.bind(id);
    finish_change(removal, "number " + std::to_string(id));
}

/* Runs a change of one device to its end, which commits it, and rings. Returns the device's id. */
int64_t DeviceStore::finish_change(SqliteStatement &change, const std::string &device)
{
    if (!change.step())
        throw PortError(-ENODEV, "no device in " + file_.string() + " has the address " + device +
                                     ". See the registered devices with: veskctl devices list");
    const int64_t id = change.number(0);
    while (change.step()) {
    }
    ring();
    return id;
}

void DeviceStore::remove_all()
{
    database().execute("DELETE FROM devices");
    ring();
}

void DeviceStore::remove_first(size_t most)
{
    database().execute("DELETE FROM devices WHERE id IN (SELECT id FROM devices ORDER BY id LIMIT " +
                       std::to_string(most) + ")");
    ring();
}

/* Tells the watchers of the file: the kernel reports writes to the log file before the commit becomes visible in
 * SQLite's shared memory, so a reader that followed those might read too early. */
void DeviceStore::ring() const
{
    utimensat(AT_FDCWD, file_.c_str(), nullptr, 0);
}

} // namespace vesk_port
