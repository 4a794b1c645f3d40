#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <sqlite3.h>

/* A connection of somebody else to a device database. */
class OtherProgram {
public:
    explicit OtherProgram(const std::filesystem::path &file)
    {
        EXPECT_EQ(sqlite3_open(file.c_str(), &database_), SQLITE_OK);
    }
    ~OtherProgram() { sqlite3_close(database_); }
    OtherProgram(const OtherProgram &) = delete;
    OtherProgram &operator=(const OtherProgram &) = delete;

    void run(const char *sql)
    {
        char *error = nullptr;
        EXPECT_EQ(sqlite3_exec(database_, sql, nullptr, nullptr, &error), SQLITE_OK) << error;
        sqlite3_free(error);
    }

private:
    sqlite3 *database_ = nullptr;
};
