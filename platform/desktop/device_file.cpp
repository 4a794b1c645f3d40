#include "device_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "device_rows.h"
#include "paths.h"
#include "port_error.h"
#include "sample_household.h"

namespace vesk_port {

namespace fs = std::filesystem;

namespace {

/* The marks in the file's header by which the service knows its own: the letters VESK, and the form of the table. */
constexpr uint32_t kApplicationId = 0x5645534b;
constexpr uint32_t kSchemaVersion = 1;

/* Where SQLite's file format has them, and the mark of the write-ahead mode. */
constexpr size_t kReadVersionOffset = 19;
constexpr size_t kUserVersionOffset = 60;
constexpr size_t kApplicationIdOffset = 68;
constexpr char kWriteAheadVersion = 2;

/* AUTOINCREMENT keeps the order of registration also after the last device was removed and another one added. A draft
 * that breaks off is thrown away, so it needs no journal on the disk. */
const std::string kSchema = "PRAGMA journal_mode = MEMORY;"
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

fs::path beside(const fs::path &file, const char *suffix)
{
    return file.string() + suffix;
}

[[noreturn]] void throw_not_made(const fs::path &file, int error)
{
    throw PortError(-error, "the device database " + file.string() + " cannot be made: " + std::strerror(error) +
                                ". Allow writing to its folder and make room on its disk, or name another file in "
                                "VESK_DEVICES.");
}

/* Locks the folder of the file as long as it lives: one process at a time makes a file there. */
class FolderLock {
public:
    explicit FolderLock(const fs::path &file)
        : folder_(open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        if (folder_ < 0)
            throw_not_made(file, errno);
        while (flock(folder_, LOCK_EX) != 0) {
            if (errno == EINTR)
                continue;
            const int error = errno;
            close(folder_);
            throw_not_made(file, error);
        }
    }
    ~FolderLock() { close(folder_); }
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

private:
    int folder_;
};

/* What a database that is gone has left behind is kept under another name: it may hold its newest contents. */
void set_aside(const fs::path &log)
{
    if (rename(log.c_str(), beside(log, ".old").c_str()) != 0 && errno != ENOENT)
        throw PortError(-errno, "the file " + log.string() + " belongs to another device database and cannot be " +
                                    "moved: " + std::strerror(errno) + ". Move it away.");
}

void fill_draft(const fs::path &draft, std::chrono::milliseconds patience)
{
    const SqliteDatabase database(draft, patience);
    database.execute(kSchema);
    SqliteTransaction transaction(database);
    DeviceInsertion insertion(database);
    for (const Device &device : sample_household())
        insertion.add(device);
    transaction.commit();
}

/* Gives the draft its name unless that is taken. A file system without such a rename has links. */
void put_in_place(const fs::path &draft, const fs::path &file)
{
    if (renameat2(AT_FDCWD, draft.c_str(), AT_FDCWD, file.c_str(), RENAME_NOREPLACE) == 0)
        return;
    const bool made = errno == EINVAL && link(draft.c_str(), file.c_str()) == 0;
    const int error = errno;
    unlink(draft.c_str());
    if (!made && error != EEXIST && access(file.c_str(), F_OK) != 0)
        throw_not_made(file, error);
}

uint32_t number_at(const SqliteDatabase::Header &header, size_t offset)
{
    uint32_t number = 0;
    for (size_t i = 0; i < 4; ++i)
        number = number << 8 | static_cast<unsigned char>(header[offset + i]);
    return number;
}

/* Whether the write-ahead log beside the file is of another database that stood there: the file knows of no log, or is
 * older than it, while every change of a store of this kind touches the file. */
bool has_log_of_another(const fs::path &file, const SqliteDatabase::Header &header)
{
    struct stat log {};
    struct stat own {};
    if (stat(beside(file, "-wal").c_str(), &log) != 0 || log.st_size == 0 || stat(file.c_str(), &own) != 0)
        return false;
    if (header[kReadVersionOffset] != kWriteAheadVersion)
        return true;
    return std::pair(own.st_mtim.tv_sec, own.st_mtim.tv_nsec) < std::pair(log.st_mtim.tv_sec, log.st_mtim.tv_nsec);
}

/* Throws unless the file is whole and has the table. */
void check_contents(const SqliteDatabase &database)
{
    SqliteStatement check(database, "PRAGMA quick_check(1)");
    if (!check.step() || check.text(0) != "ok")
        database.fail_as_damaged();
    SqliteStatement columns(database, "SELECT count(*) FROM sqlite_schema AS entry, pragma_table_info('devices') AS "
                                      "field WHERE entry.name = 'devices' AND entry.type = 'table' AND field.name IN "
                                      "('id', 'name', 'bt_mac', 'wifi_mac', 'p2p_mac', 'type', 'icon', 'status')");
    if (!columns.step() || columns.number(0) != 8)
        database.fail_as_damaged();
}

} // namespace

void make_device_file(const fs::path &file, std::chrono::milliseconds patience)
{
    make_folder_of(file);
    const FolderLock lock(file);
    if (access(file.c_str(), F_OK) == 0)
        return;
    for (const char *log : {"-wal", "-journal"})
        set_aside(beside(file, log));
    unlink(beside(file, "-shm").c_str());

    /* Nobody ever sees a half-made file, and the draft of a start that was killed makes room for the next one's. */
    const fs::path draft = beside(file, ".new");
    unlink(draft.c_str());
    const int fd = open(draft.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd < 0)
        throw_not_made(file, errno);
    close(fd);
    try {
        fill_draft(draft, patience);
    } catch (const PortError &) {
        unlink(draft.c_str());
        throw;
    }
    put_in_place(draft, file);
}

std::unique_ptr<SqliteDatabase> open_device_file(const fs::path &file, std::chrono::milliseconds patience)
{
    auto database = std::make_unique<SqliteDatabase>(file, patience);
    database->leave_files_alone(true);
    const SqliteDatabase::Header header = database->header();
    const uint32_t version = number_at(header, kUserVersionOffset);
    if (number_at(header, kApplicationIdOffset) != kApplicationId || version < kSchemaVersion)
        database->fail_as_damaged();
    if (version > kSchemaVersion)
        database->fail_as_later();
    if (faccessat(AT_FDCWD, file.parent_path().c_str(), W_OK, AT_EACCESS) != 0)
        database->fail_as_read_only();
    /* Whoever has the file open shares the log, which is its own then. */
    if (has_log_of_another(file, header))
        database->while_unused([&file] {
            set_aside(beside(file, "-wal"));
            unlink(beside(file, "-shm").c_str());
        });
    check_contents(*database);
    database->leave_files_alone(false);
    end_write_ahead_mode(file, *database);
    /* A single change does not wait for the disk. A large one keeps to memory until its end, so that readers need not
     * wait for it. */
    database->execute("PRAGMA synchronous = OFF; PRAGMA cache_spill = OFF");
    return database;
}

void end_write_ahead_mode(const fs::path &file, const SqliteDatabase &database)
{
    if (access(beside(file, "-wal").c_str(), F_OK) != 0 && !database.write_ahead())
        return;
    try {
        database.execute("PRAGMA journal_mode = DELETE");
    } catch (const PortError &) {
        return; /* somebody else has the file open, or nobody may write */
    }
}

} // namespace vesk_port
