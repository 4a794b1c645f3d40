#include "dlog.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>
#include <utility>

#include "log.h"
#include "port_call.h"
#include "text.h"

namespace vesk_port {

namespace {

constexpr int kLogOff = DLOG_ERROR + 1;

struct Log {
    int fd = STDERR_FILENO;
    int level = DLOG_WARN;
    bool colour = false;
    LogSink sink;
};

bool wants_colour(int fd)
{
    const char *no_colour = std::getenv("NO_COLOR");
    const char *terminal = std::getenv("TERM");
    return isatty(fd) && !(no_colour && *no_colour) && !(terminal && std::strcmp(terminal, "dumb") == 0);
}

int open_log_file(const std::string &path)
{
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (fd < 0)
        throw PortError(-errno, "the log file " + path + " cannot be opened: " + std::strerror(errno) +
                                    ". Name a file that can be written, or none for the terminal.");
    return fd;
}

/* The log before any option of a program: what the environment says. What is wrong in it is told on the terminal,
 * since that is where the log then goes. */
Log log_of_environment()
{
    Log log;
    std::string complaint;
    const char *path = std::getenv("VESK_LOG");
    const char *level = std::getenv("VESK_LOG_LEVEL");
    try {
        if (path && *path) {
            log.fd = open_log_file(path);
            log.level = DLOG_INFO;
        }
        if (level && *level)
            log.level = log_level_of(level);
    } catch (const PortError &error) {
        complaint = error.what();
    }
    log.colour = wants_colour(log.fd);
    if (!complaint.empty())
        std::fprintf(stderr, "%s: %s\n", kPortTag, complaint.c_str());
    return log;
}

Log &the_log()
{
    static Log log = log_of_environment();
    return log;
}

struct Level {
    char letter;
    const char *colour;
};

Level level_of(int priority)
{
    if (priority >= DLOG_ERROR)
        return {'E', "\033[31m"};
    if (priority == DLOG_WARN)
        return {'W', "\033[33m"};
    return {'I', "\033[2m"};
}

std::string time_of_day()
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    tm local{};
    localtime_r(&now.tv_sec, &local);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d.%03ld", local.tm_hour, local.tm_min, local.tm_sec,
                  now.tv_nsec / 1000000);
    return text.data();
}

/* The text as one line: a device's name must not be able to start a line of its own or to steer the terminal. Tabs
 * stay, with which the module lays out its tables. */
std::string single_line(std::string_view text)
{
    while (text.ends_with('\n'))
        text.remove_suffix(1);
    std::string line;
    for (;;) {
        const size_t tab = std::min(text.find('\t'), text.size());
        line += escaped(text.substr(0, tab));
        if (tab == text.size())
            return line;
        line += '\t';
        text.remove_prefix(tab + 1);
    }
}

} // namespace

void set_log_level(int priority)
{
    the_log().level = priority;
}

int log_level_of(const std::string &word)
{
    if (word == "info")
        return DLOG_INFO;
    if (word == "warning")
        return DLOG_WARN;
    if (word == "error")
        return DLOG_ERROR;
    if (word == "off")
        return kLogOff;
    throw PortError(-EINVAL, "\"" + word + "\" is no log level; use info, warning, error or off.");
}

void set_log_file(const std::string &path)
{
    Log &log = the_log();
    const int fd = path.empty() ? STDERR_FILENO : open_log_file(path);
    if (log.fd != STDERR_FILENO)
        close(log.fd);
    log.fd = fd;
    log.colour = wants_colour(fd);
}

void set_log_sink(LogSink sink)
{
    the_log().sink = std::move(sink);
}

int log_line(int priority, const char *tag, const std::string &text)
{
    Log &log = the_log();
    if (log.sink)
        log.sink(priority, tag, text);
    if (priority < log.level)
        return 0;
    const auto [letter, colour] = level_of(priority);
    std::string line = time_of_day() + " " + letter + " " + tag + "  " + single_line(text);
    if (log.colour)
        line = colour + line + "\033[0m";
    line += '\n';
    /* One write for one line, so that the lines of several processes do not run into each other. */
    return static_cast<int>(write(log.fd, line.data(), line.size()));
}

} // namespace vesk_port

int __dlog_print(int log_id, int priority, const char *tag, const char *format, ...)
{
    using namespace vesk_port;
    if (const int code = provoked_failure("__dlog_print"))
        return report_failure("__dlog_print", code, "the failure was asked for with VESK_FAIL.");
    if (log_id != LOG_ID_MAIN || !tag || !format)
        return report_failure("__dlog_print", -EINVAL, "the log id is unknown, or tag or format are missing.");
    va_list arguments;
    va_start(arguments, format);
    char *text = nullptr;
    const int length = vasprintf(&text, format, arguments);
    va_end(arguments);
    if (length < 0)
        return report_failure("__dlog_print", -ENOMEM, "the text could not be formatted.");
    const int written = log_line(priority, tag, text);
    std::free(text);
    return written;
}
