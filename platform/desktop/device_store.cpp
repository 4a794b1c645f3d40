#include "device_store.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

#include "device_file.h"
#include "device_rows.h"
#include "port_error.h"

namespace vesk_port {

namespace {

/* What puts many devices into the table waits for the disk: pages of it that arrive without the others would damage
 * the file when the power fails. */
class DurableTransaction {
public:
    explicit DurableTransaction(const SqliteDatabase &database) : sync_(database), transaction_(database) {}

    void commit() { transaction_.commit(); }

private:
    /* Set before the transaction begins and after it has ended; within one it cannot be changed. */
    struct Sync {
        explicit Sync(const SqliteDatabase &for_database) : database(for_database)
        {
            database.execute("PRAGMA synchronous = NORMAL");
        }
        ~Sync() { database.try_to_execute("PRAGMA synchronous = OFF"); }
        Sync(const Sync &) = delete;
        Sync &operator=(const Sync &) = delete;

        const SqliteDatabase &database;
    };

    Sync sync_;
    SqliteTransaction transaction_;
};

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
        make_device_file(file_, patience_);
        if (stat(file_.c_str(), &now) != 0)
            throw PortError(-errno, "the device database " + file_.string() + " was removed again. Try once more.");
    }
    if (database_ && now.st_dev == open_device_ && now.st_ino == open_inode_) {
        end_write_ahead_mode(file_, *database_);
        return *database_;
    }

    /* What stands beside the path belongs to the new file; closing the old one must not tidy it up. */
    if (database_)
        database_->leave_files_alone(true);
    database_.reset();
    database_ = open_device_file(file_, patience_);
    open_device_ = now.st_dev;
    open_inode_ = now.st_ino;
    return *database_;
}

std::vector<Device> DeviceStore::list()
{
    return read_devices(database(), "");
}

std::vector<Device> DeviceStore::first(size_t most, std::chrono::milliseconds patience)
{
    const SqliteDatabase &open = database();
    open.set_patience(patience);
    return read_devices(open, " LIMIT " + std::to_string(most));
}

void DeviceStore::add(const std::vector<Device> &devices)
{
    insert(devices, "");
}

void DeviceStore::replace(const std::vector<Device> &devices)
{
    insert(devices, "DELETE FROM devices");
}

void DeviceStore::insert(const std::vector<Device> &devices, const std::string &before)
{
    DurableTransaction transaction(database());
    database_->execute(before);
    DeviceInsertion insertion(*database_);
    for (const Device &device : devices)
        insertion.add(device);
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
    refuse_nul(name, "name", name);
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

/* Tells the watchers of the file: the kernel reports the writes while the file is still locked, so a reader that
 * followed those alone might read too early. It also tells that a log beside the file, in which another program may
 * have it written, is the file's own (see device_file.cpp). */
void DeviceStore::ring() const
{
    utimensat(AT_FDCWD, file_.c_str(), nullptr, 0);
}

} // namespace vesk_port
