#pragma once
/* What the tests of the port share: files of their own, the log, the main loop, and veskctl as another process. */

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

struct ProcessResult {
    int exit_code = -1;
    std::string out;
    std::string err;
};

/* The path of the program. */
std::string veskctl_program();

/* Runs veskctl with the environment of this process; `input` is what it reads. */
ProcessResult veskctl(const std::vector<std::string> &arguments, const std::string &input = "");

/* Runs the main loop until `condition` holds. False when it does not come to hold within ten seconds. */
bool run_until(const std::function<bool()> &condition);

std::string contents_of(const std::filesystem::path &file);
void write_file(const std::filesystem::path &file, const std::string &contents);

/* Gives up root for its lifetime, for whom no file is read-only. */
class Unprivileged {
public:
    Unprivileged();
    ~Unprivileged();
};

/* Each test has its own folder, in which the port's files are, and sees the log. */
class PortTest : public testing::Test {
protected:
    PortTest();
    ~PortTest() override;

    /* All lines of the log so far, each with its tag. */
    const std::string &log() const { return log_; }

    const std::filesystem::path folder_;
    const std::filesystem::path devices_ = folder_ / "devices.db";
    const std::filesystem::path settings_ = folder_ / "settings.ini";

private:
    std::string log_;
};
