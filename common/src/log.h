#pragma once
/* The module's log lines: one call of the platform log each, under the module's tag, with source file, function and
 * line in front. The wording of the lines is an interface that test harnesses read. */

#include <dlog.h>

/* The base name of a path that the compiler wrote. */
constexpr const char *log_source_name(const char *path)
{
    const char *name = path;
    for (const char *at = path; *at != '\0'; ++at) {
        if (*at == '/')
            name = at + 1;
    }
    return name;
}

#define LOG_LINE(priority, format, ...)                                                                                \
    static_cast<void>(__dlog_print(LOG_ID_MAIN, (priority), "VESK_LOG", "%s: %s(%d) > " format,                        \
                                   log_source_name(__FILE__), __func__, __LINE__ __VA_OPT__(, ) __VA_ARGS__))

#define LOG_I(...) LOG_LINE(DLOG_INFO, __VA_ARGS__)
#define LOG_W(...) LOG_LINE(DLOG_WARN, __VA_ARGS__)
#define LOG_E(...) LOG_LINE(DLOG_ERROR, __VA_ARGS__)
