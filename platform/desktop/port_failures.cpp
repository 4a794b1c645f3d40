#include "port_failures.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "log.h"
#include "port_call.h"
#include "text.h"

namespace vesk_port {

namespace {

/* Every call of the platform interfaces that has a way to fail. */
constexpr std::array<std::string_view, 23> kKnownCalls{
    "rdm_init",
    "rdm_deinit",
    "rdm_get_list",
    "rdm_set_status",
    "rdm_remove_device",
    "rdm_remove_all",
    "rdm_callback_register",
    "rdm_callback_deregister",
    "vconf_get_int",
    "vconf_get_str",
    "vconf_notify_key_changed",
    "vconf_ignore_key_changed",
    "system_info_get_custom_bool",
    "system_info_get_custom_int",
    "system_info_get_custom_string",
    "system_info_get_platform_int",
    "system_info_get_value_string",
    "__dlog_print",
    "ug_get_window",
    "ug_destroy_me",
    "ea_init",
    "ea_shutdown",
    "CStringUtil::CombinateStrings",
};

struct Failure {
    std::string call;
    int code = 0;
    int first = 1; /* the call, counted from 1, that fails first */
    int times = 0; /* calls so far */
};

std::vector<Failure> failures;
bool variable_read = false;

Failure parse_failure(std::string_view text)
{
    const auto malformed = [&] {
        return PortError(-EINVAL, "\"" + std::string(text) +
                                      "\" is no provoked failure; write call=code or call=code@n, with a code that is "
                                      "not 0 and n from 1, such as rdm_get_list=-5 or vconf_get_int=-1@3.");
    };
    const size_t equals = text.find('=');
    if (equals == std::string_view::npos)
        throw malformed();
    const std::string_view call = text.substr(0, equals);
    const std::string_view rest = text.substr(equals + 1);
    const size_t at = rest.find('@');
    const auto code = parse_int(rest.substr(0, at));
    const auto first = at == std::string_view::npos ? 1 : parse_int(rest.substr(at + 1));
    if (!code || *code == 0 || !first || *first < 1)
        throw malformed();
    if (std::ranges::find(kKnownCalls, call) == kKnownCalls.end()) {
        std::string names;
        for (const std::string_view known : kKnownCalls)
            names.append(names.empty() ? "" : ", ").append(known);
        throw PortError(-EINVAL,
                        "\"" + std::string(call) + "\" is no call that can be made to fail; there are " + names + ".");
    }
    return {std::string(call), *code, *first, 0};
}

void read_variable()
{
    variable_read = true;
    const char *text = std::getenv("VESK_FAIL");
    if (!text)
        return;
    try {
        set_failures(text);
    } catch (const PortError &error) {
        report_failure("VESK_FAIL", error.code(), error.what());
    }
}

} // namespace

void set_failures(const std::string &text)
{
    std::vector<Failure> parsed;
    std::string_view rest = text;
    while (!rest.empty()) {
        const size_t comma = std::min(rest.find(','), rest.size());
        parsed.push_back(parse_failure(rest.substr(0, comma)));
        rest.remove_prefix(std::min(comma + 1, rest.size()));
    }
    failures = std::move(parsed);
    variable_read = true;
}

void clear_failures()
{
    failures.clear();
    variable_read = true;
}

int provoked_failure(const char *call)
{
    if (!variable_read)
        read_variable();
    int code = 0;
    for (Failure &failure : failures) {
        if (failure.call == call && ++failure.times >= failure.first)
            code = failure.code;
    }
    return code;
}

int report_failure(const char *call, int code, const char *sentence)
{
    /* A service that is not open has told why when it was to be opened, or is closed a second time, which harms nobody.
     */
    const int priority = code == -ENOTCONN ? DLOG_INFO : DLOG_ERROR;
    log_line(priority, kPortTag, std::string(call) + " failed (" + std::to_string(code) + "): " + sentence);
    return code;
}

} // namespace vesk_port
