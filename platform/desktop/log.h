#pragma once
/* The platform log as the programs of the port see it. */

#include <functional>
#include <string>

#include "dlog.h"

namespace vesk_port {

/* The tag of the port's own lines. */
inline constexpr const char *kPortTag = "VESK_PORT";

/* Lines below `priority` are dropped (a number above DLOG_ERROR drops all). Without this call VESK_LOG_LEVEL holds
 * and, where that is unset, info for a file and warning for the terminal. */
void set_log_level(int priority);

/* The priority that a word of VESK_LOG_LEVEL stands for: info, warning, error or off. Throws PortError otherwise. */
int log_level_of(const std::string &word);

/* Appends the log to `path` from now on; "" is the standard error stream. Throws PortError when the file cannot be
 * opened; the log stays where it was then. */
void set_log_file(const std::string &path);

/* Sees every line's text as it was printed, of each priority and whatever the level; null ends that. For tests. */
using LogSink = std::function<void(int priority, const std::string &tag, const std::string &text)>;
void set_log_sink(LogSink sink);

/* Writes one line: time, level, tag and `text`. Returns the number of bytes written, 0 for a line below the level,
 * negative when writing failed. */
int log_line(int priority, const char *tag, const std::string &text);

} // namespace vesk_port
