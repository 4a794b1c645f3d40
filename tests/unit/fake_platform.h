#pragma once
/* A platform without a television: every function of platform/include, and the message catalogue, answered from a
 * script and written to a chronicle.
 *
 * Each call becomes one line such as `rdm_set_status("AA:BB:CC:DD:EE:FF", 1, 0)`, each line of the log one such as
 * `I [VESKAUTOTC][ALLOW]` (I, W or E for its priority), both in the order in which they happened. */

#include <deque>
#include <functional>
#include <map>
#include <rdm.h>
#include <string>
#include <ui_gadget.h>
#include <vconf.h>
#include <vector>

namespace fake {

/* A value that a key gives, and the result of reading it. The value is handed out also when the result is a failure,
 * as a platform might do. */
template <typename T> struct Answer {
    T value{};
    int result = 0;
};

struct LogLine {
    char priority; /* I, W or E */
    std::string file;
    std::string function;
    int line;
    std::string message;
};

struct Platform {
    /* Results by function name: one for each call, the last one for all that follow. Functions that are not named
     * here succeed with 0. */
    std::map<std::string, std::deque<int>> results;

    /* What is to happen inside a call before it looks at its arguments, by function name. */
    std::map<std::string, std::function<void()>> during;

    /* Product facts and settings; a key that is missing fails with -1. A null text is read without an error. */
    std::map<std::string, Answer<bool>> custom_bools;
    std::map<std::string, Answer<int>> custom_ints;
    std::map<std::string, Answer<const char *>> custom_texts;
    std::map<std::string, Answer<int>> platform_ints;
    std::map<int, Answer<const char *>> numbered_texts;
    std::map<std::string, Answer<int>> settings;
    std::map<std::string, const char *> text_settings;

    /* What rdm_get_list hands out a copy of, and the last array as it was when it was given back. */
    std::vector<RdmDeviceInfo> devices;
    std::vector<RdmDeviceInfo> given_back;
    int lists_out = 0;     /* handed out and not yet given back */
    size_t null_count = 0; /* told with a null list when there is no device */

    /* The handle of the next registration, and what was registered. */
    int handle = 7;
    rdm_callback callback = nullptr;
    void *callback_data = nullptr;
    vconf_callback_fn watch = nullptr;
    void *watch_data = nullptr;
    vconf_callback_fn ignored = nullptr;

    /* The window that gadgets get, and the gadget that asked for its end. */
    void *window = nullptr;
    ui_gadget_h ended = nullptr;

    std::vector<LogLine> log;
    std::vector<std::string> chronicle;
};

/* The platform of the running test. */
Platform &platform();

/* A fresh platform: nothing scripted, nothing recorded. */
void reset();

/* The chronicle's lines of one kind: calls of the platform, or lines of the log. */
std::vector<std::string> calls();
std::vector<std::string> lines();

/* A record of the registered-device service; every text is cut at the end of its field, and between and behind the
 * fields is rubbish. */
RdmDeviceInfo device(const std::string &name, const std::string &bluetooth, const std::string &wifi = "",
                     const std::string &p2p = "", int status = 0);

} // namespace fake
