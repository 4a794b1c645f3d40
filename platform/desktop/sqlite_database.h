#pragma once
/* What the port needs of SQLite: a file, its statements and transactions, with errors as sentences. */

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_file;
struct sqlite3_stmt;

namespace vesk_port {

class SqliteDatabase;

class SqliteStatement {
public:
    SqliteStatement(const SqliteDatabase &database, const std::string &sql);

    /* Binds the next parameter. */
    SqliteStatement &bind(std::string_view text);
    SqliteStatement &bind(int64_t number);

    /* Back to before the first row and the first parameter. */
    void restart();

    /* Goes to the next row; false when there is none. */
    bool step();

    std::string text(int column) const;
    int64_t number(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt *statement) const;
    };

    const SqliteDatabase &database_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
    int bound_ = 0;
};

class SqliteDatabase {
public:
    /* Opens a file that exists, for writing where that is allowed, and waits as long as `patience` whenever another
     * process is in the way. */
    SqliteDatabase(std::filesystem::path file, std::chrono::milliseconds patience);

    void set_patience(std::chrono::milliseconds patience) const;

    void execute(const std::string &sql) const;

    /* For what may fail without harm. */
    void try_to_execute(const std::string &sql) const;

    /* The beginning of the file as it stands on the disk, without any log; zeros where the file is shorter. */
    using Header = std::array<char, 100>;
    Header header() const;

    /* Runs `body` while nobody can use the file; not at all when somebody has it open in write-ahead mode or locked.
     * Comes before any statement. */
    void while_unused(const std::function<void()> &body) const;

    /* Whether the file is in write-ahead mode, as far as the last read tells. */
    bool write_ahead() const;

    /* Closing is not to write to the files any more, though this may be their last user. */
    void leave_files_alone(bool leave) const;

    /* Throws PortError for what SQLite reported last, in words that name the file and tell what to do. */
    [[noreturn]] void fail() const;

    [[noreturn]] void fail_as_read_only() const;

    /* The sentence of every file that holds no table of devices that can be trusted. */
    [[noreturn]] void fail_as_damaged() const;

    /* The sentence of a table in a form that only later programs know. */
    [[noreturn]] void fail_as_later() const;

    sqlite3 *handle() const { return handle_.get(); }

private:
    struct Close {
        void operator()(sqlite3 *handle) const;
    };

    sqlite3_file *file() const;

    std::filesystem::path file_;
    std::unique_ptr<sqlite3, Close> handle_;
};

/* Everything between its construction and commit() happens or, without commit(), nothing. */
class SqliteTransaction {
public:
    explicit SqliteTransaction(const SqliteDatabase &database);
    ~SqliteTransaction();
    SqliteTransaction(const SqliteTransaction &) = delete;
    SqliteTransaction &operator=(const SqliteTransaction &) = delete;

    void commit();

private:
    const SqliteDatabase &database_;
    bool open_ = true;
};

} // namespace vesk_port
