#pragma once
/* The file of a device database: how one is made, known again, and kept apart from the logs of others. */

#include <chrono>
#include <filesystem>
#include <memory>

#include "sqlite_database.h"

namespace vesk_port {

/* Makes the file with the sample household in it, unless somebody else does so first. */
void make_device_file(const std::filesystem::path &file, std::chrono::milliseconds patience);

/* Opens a file that exists. One that is no device database, or is damaged, is never changed. */
std::unique_ptr<SqliteDatabase> open_device_file(const std::filesystem::path &file, std::chrono::milliseconds patience);

/* Ends the write-ahead mode of a file that another program has put into it, as soon as nobody else has it open: a
 * write-ahead log stays behind when its database is moved or replaced, and would be taken for the next one's. */
void end_write_ahead_mode(const std::filesystem::path &file, const SqliteDatabase &database);

} // namespace vesk_port
