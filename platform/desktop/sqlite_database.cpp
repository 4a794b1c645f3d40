#include "sqlite_database.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>

#include "port_error.h"

namespace vesk_port {

namespace {

constexpr const char *kElsewhere = " or name another file in VESK_DEVICES.";

/* Why no file can be made beside `file`, or 0. SQLite tries a failed opening in another way, which loses the reason. */
int folder_error(const std::filesystem::path &file)
{
    const std::filesystem::path folder = file.parent_path();
    struct statvfs disk {};
    if (faccessat(AT_FDCWD, folder.c_str(), W_OK, AT_EACCESS) != 0)
        return errno == EROFS ? EROFS : 0;
    /* Some file systems do not count their files. */
    if (statvfs(folder.c_str(), &disk) == 0 && (disk.f_bavail == 0 || (disk.f_files > 0 && disk.f_favail == 0)))
        return ENOSPC;
    return 0;
}

} // namespace

void SqliteStatement::Finalize::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

SqliteStatement::SqliteStatement(const SqliteDatabase &database, const std::string &sql) : database_(database)
{
    sqlite3_stmt *statement = nullptr;
    const int result = sqlite3_prepare_v2(database.handle(), sql.c_str(), -1, &statement, nullptr);
    statement_.reset(statement);
    if (result != SQLITE_OK)
        database_.fail();
}

SqliteStatement &SqliteStatement::bind(std::string_view text)
{
    /* The text has to outlive the statement's steps, as it does with every caller here. */
    sqlite3_bind_text(statement_.get(), ++bound_, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    return *this;
}

SqliteStatement &SqliteStatement::bind(int64_t number)
{
    sqlite3_bind_int64(statement_.get(), ++bound_, number);
    return *this;
}

void SqliteStatement::restart()
{
    sqlite3_reset(statement_.get());
    bound_ = 0;
}

bool SqliteStatement::step()
{
    const int result = sqlite3_step(statement_.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        database_.fail();
    return result == SQLITE_ROW;
}

std::string SqliteStatement::text(int column) const
{
    const auto *text = static_cast<const char *>(sqlite3_column_blob(statement_.get(), column));
    return text ? std::string(text, static_cast<size_t>(sqlite3_column_bytes(statement_.get(), column))) : "";
}

int64_t SqliteStatement::number(int column) const
{
    return sqlite3_column_int64(statement_.get(), column);
}

void SqliteDatabase::Close::operator()(sqlite3 *handle) const
{
    sqlite3_close(handle);
}

SqliteDatabase::SqliteDatabase(std::filesystem::path file, std::chrono::milliseconds patience) : file_(std::move(file))
{
    sqlite3 *handle = nullptr;
    const int result = sqlite3_open_v2(file_.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
    handle_.reset(handle);
    if (result != SQLITE_OK)
        fail();
    set_patience(patience);
}

void SqliteDatabase::set_patience(std::chrono::milliseconds patience) const
{
    sqlite3_busy_timeout(handle(), static_cast<int>(patience.count()));
}

void SqliteDatabase::execute(const std::string &sql) const
{
    if (sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail();
}

void SqliteDatabase::try_to_execute(const std::string &sql) const
{
    sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr);
}

/* SQLite's own handle of the file: closing another one would end the locks that this process holds on it. */
sqlite3_file *SqliteDatabase::file() const
{
    sqlite3_file *file = nullptr;
    if (sqlite3_file_control(handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || !file ||
        !file->pMethods)
        fail();
    return file;
}

SqliteDatabase::Header SqliteDatabase::header() const
{
    Header header{};
    file()->pMethods->xRead(file(), header.data(), static_cast<int>(header.size()), 0);
    return header;
}

void SqliteDatabase::while_unused(const std::function<void()> &body) const
{
    sqlite3_file *const locked = file();
    const auto unlock = [](sqlite3_file *held) { held->pMethods->xUnlock(held, SQLITE_LOCK_NONE); };
    if (locked->pMethods->xLock(locked, SQLITE_LOCK_SHARED) != SQLITE_OK)
        return;
    const std::unique_ptr<sqlite3_file, decltype(unlock)> lock(locked, unlock);
    if (locked->pMethods->xLock(locked, SQLITE_LOCK_EXCLUSIVE) == SQLITE_OK)
        body();
}

bool SqliteDatabase::write_ahead() const
{
    SqliteStatement mode(*this, "PRAGMA journal_mode");
    return mode.step() && mode.text(0) == "wal";
}

void SqliteDatabase::leave_files_alone(bool leave) const
{
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, leave ? 1 : 0, nullptr);
}

void SqliteDatabase::fail() const
{
    const std::string database = "the device database " + file_.string();
    const int code = sqlite3_extended_errcode(handle());
    int system_error = 0;
    if ((code & 0xff) == SQLITE_IOERR)
        system_error = sqlite3_system_errno(handle());
    else if ((code & 0xff) == SQLITE_CANTOPEN && !(system_error = folder_error(file_)))
        system_error = sqlite3_system_errno(handle());
    if (code == SQLITE_READONLY_DBMOVED)
        throw PortError(-EBUSY, database + " was replaced by another file meanwhile. Try again.");
    if (system_error == EROFS || (code & 0xff) == SQLITE_READONLY)
        fail_as_read_only();
    if (system_error == ENOSPC || system_error == EDQUOT || code == SQLITE_FULL)
        throw PortError(-ENOSPC, database + " cannot be written, the disk is full. Make room" + kElsewhere);
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw PortError(-EBUSY, database + " is locked by another program. Try again, end that program" + kElsewhere);
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:
        throw PortError(-EACCES, database + " cannot be opened" +
                                     (system_error ? std::string(": ") + std::strerror(system_error) : "") +
                                     ". Allow reading and writing of the file and its folder" + kElsewhere);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        fail_as_damaged();
    default:
        throw PortError(-EIO,
                        database + " cannot be used: " + sqlite3_errmsg(handle()) + ". Check the disk" + kElsewhere);
    }
}

void SqliteDatabase::fail_as_read_only() const
{
    throw PortError(-EROFS, "the device database " + file_.string() +
                                " is read-only. Allow writing to the file and its folder" + kElsewhere);
}

void SqliteDatabase::fail_as_damaged() const
{
    throw PortError(-EBADMSG, "the file " + file_.string() +
                                  " is damaged or is no device database. It was left as it is; move it away to start "
                                  "anew, or name another file in VESK_DEVICES.");
}

void SqliteDatabase::fail_as_later() const
{
    throw PortError(-EBADMSG,
                    "the device database " + file_.string() +
                        " is of a later version of this program. It was left as it is; update the program, or "
                        "name another file in VESK_DEVICES.");
}

SqliteTransaction::SqliteTransaction(const SqliteDatabase &database) : database_(database)
{
    database_.execute("BEGIN IMMEDIATE");
}

SqliteTransaction::~SqliteTransaction()
{
    if (open_)
        sqlite3_exec(database_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void SqliteTransaction::commit()
{
    database_.execute("COMMIT");
    open_ = false;
}

} // namespace vesk_port
