#pragma once
/* The fence around code that C calls back: the toolkit, GLib and a module's C callers cannot let an exception pass. */

#include <exception>

#include "log.h"

namespace vesk_port {

/* Runs `body` and returns what it returns. What it throws becomes a log line that names `where`, and `otherwise` is
 * returned. */
template <class Result, class Body> Result fenced(const char *where, Result otherwise, Body body) noexcept
{
    try {
        return static_cast<Result>(body());
    } catch (const std::exception &error) {
        log_line(DLOG_ERROR, kPortTag, std::string(where) + ": " + error.what());
        return otherwise;
    }
}

/* The same for what returns nothing. */
template <class Body> void fenced(const char *where, Body body) noexcept
{
    try {
        body();
    } catch (const std::exception &error) {
        log_line(DLOG_ERROR, kPortTag, std::string(where) + ": " + error.what());
    }
}

} // namespace vesk_port
