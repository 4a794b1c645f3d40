#include "sqlite_database.h"

#include <cerrno>
#include <cstring>
#include <sqlite3.h>
#include <utility>

#include "port_error.h"

namespace vesk_port {

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

void SqliteDatabase::leave_files_alone(bool leave) const
{
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, leave ? 1 : 0, nullptr);
}

void SqliteDatabase::fail() const
{
    const std::string database = "the device database " + file_.string();
    const std::string elsewhere = " or name another file in VESK_DEVICES.";
    const int system_error = sqlite3_system_errno(handle());
    switch (sqlite3_errcode(handle())) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw PortError(-EBUSY, database + " is locked by another program. Try again, end that program" + elsewhere);
    case SQLITE_READONLY:
        throw PortError(-EROFS, database + " is read-only. Allow writing to the file and its folder" + elsewhere);
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:
        throw PortError(-EACCES, database + " cannot be opened" +
                                     (system_error ? std::string(": ") + std::strerror(system_error) : "") +
                                     ". Allow reading and writing of the file and its folder" + elsewhere);
    case SQLITE_FULL:
        throw PortError(-ENOSPC, database + " cannot be written, the disk is full. Make room" + elsewhere);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        fail_as_damaged();
    default:
        throw PortError(-EIO,
                        database + " cannot be used: " + sqlite3_errmsg(handle()) + ". Check the disk" + elsewhere);
    }
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
