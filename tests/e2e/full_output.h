#pragma once
/* A program whose standard output leads to a full device. */

#include <glib.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <vector>

#include "port_fixture.h"

/* Runs the program; `out` of the result is empty. */
inline ProcessResult run_with_full_output(const std::string &program, const std::vector<std::string> &arguments)
{
    std::vector<std::string> words{"/bin/sh", "-c", "exec \"$0\" \"$@\" >/dev/full", program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char *> argv;
    for (std::string &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    gchar *err = nullptr;
    int status = 0;
    EXPECT_TRUE(g_spawn_sync(nullptr, argv.data(), nullptr, G_SPAWN_DEFAULT, nullptr, nullptr, nullptr, &err, &status,
                             nullptr));
    ProcessResult result;
    result.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.err = err ? err : "";
    g_free(err);
    return result;
}

inline void expect_loss_is_told(const std::string &program, const std::vector<std::string> &arguments)
{
    const ProcessResult result = run_with_full_output(program, arguments);
    EXPECT_EQ(result.exit_code, 1) << arguments.front();
    EXPECT_THAT(result.err, testing::HasSubstr(": the output cannot be written"));
}
