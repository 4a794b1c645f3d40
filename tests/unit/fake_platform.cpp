#include "fake_platform.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlog.h>
#include <ea.h>
#include <gtest/gtest.h>
#include <libintl.h>
#include <regex>
#include <set>
#include <string_util.h>
#include <system_info.h>

namespace fake {

namespace {

Platform the_platform;

constexpr const char *kDomain = "ug-VeskUG-efl";

bool is_log_line(const std::string &entry)
{
    return entry.size() > 1 && entry[1] == ' ';
}

std::vector<std::string> entries(bool of_the_log)
{
    std::vector<std::string> chosen;
    std::copy_if(the_platform.chronicle.begin(), the_platform.chronicle.end(), std::back_inserter(chosen),
                 [=](const std::string &entry) { return is_log_line(entry) == of_the_log; });
    return chosen;
}

std::string written(const char *text)
{
    return text ? '"' + std::string(text) + '"' : "null";
}

std::string written(int number)
{
    return std::to_string(number);
}

std::string written(size_t number)
{
    return std::to_string(number);
}

/* Carries out what is to happen inside a call, records it with the arguments that are worth reading, and returns its
 * scripted result. */
template <typename... Arguments> int called(const char *function, const Arguments &...arguments)
{
    if (const auto action = the_platform.during.find(function); action != the_platform.during.end())
        action->second();
    std::string text;
    ((text += (text.empty() ? "" : ", ") + written(arguments)), ...);
    the_platform.chronicle.push_back(std::string(function) + '(' + text + ')');
    std::deque<int> &results = the_platform.results[function];
    if (results.empty())
        return 0;
    const int result = results.front();
    if (results.size() > 1)
        results.pop_front();
    return result;
}

template <typename Key, typename T> int answer(const std::map<Key, Answer<T>> &answers, const Key &key, T *value)
{
    const auto found = answers.find(key);
    if (found == answers.end())
        return -1;
    *value = found->second.value;
    return found->second.result;
}

/* As above for a text that the caller frees; a failure hands out none. */
template <typename Key> int answer_text(const std::map<Key, Answer<const char *>> &answers, const Key &key, char **text)
{
    const char *value = nullptr;
    const int result = answer(answers, key, &value);
    if (result == 0)
        *text = value ? strdup(value) : nullptr;
    return result;
}

void put(char *field, size_t size, const std::string &text)
{
    memset(field, 0, size);
    memcpy(field, text.data(), std::min(size, text.size()));
}

} // namespace

Platform &platform()
{
    return the_platform;
}

void reset()
{
    the_platform = Platform{};
}

std::vector<std::string> calls()
{
    return entries(false);
}

std::vector<std::string> lines()
{
    return entries(true);
}

RdmDeviceInfo device(const std::string &name, const std::string &bluetooth, const std::string &wifi,
                     const std::string &p2p, int status)
{
    RdmDeviceInfo info;
    memset(&info, '?', sizeof info);
    put(info.name, sizeof info.name, name);
    put(info.bt_mac, sizeof info.bt_mac, bluetooth);
    put(info.wifi_mac, sizeof info.wifi_mac, wifi);
    put(info.p2p_mac, sizeof info.p2p_mac, p2p);
    info.type = 0;
    info.icon = 0;
    info.status = status;
    return info;
}

} // namespace fake

using fake::called;
using fake::platform;

/* Registered-device service. */

int rdm_init(void)
{
    return called("rdm_init");
}

int rdm_deinit(void)
{
    return called("rdm_deinit");
}

int rdm_get_list(RdmDeviceInfo **list, size_t *count)
{
    const int result = called("rdm_get_list");
    const auto &devices = platform().devices;
    *count = devices.empty() ? platform().null_count : devices.size();
    *list = nullptr;
    if (result != 0 || devices.empty())
        return result;
    *list = static_cast<RdmDeviceInfo *>(malloc(devices.size() * sizeof(RdmDeviceInfo)));
    std::copy(devices.begin(), devices.end(), *list);
    ++platform().lists_out;
    return result;
}

void rdm_free_list(RdmDeviceInfo *list)
{
    called("rdm_free_list");
    if (!list)
        return;
    platform().given_back.assign(list, list + platform().devices.size());
    --platform().lists_out;
    free(list);
}

int rdm_set_status(const char *mac, int mac_kind, int status)
{
    return called("rdm_set_status", mac, mac_kind, status);
}

int rdm_remove_device(const char *mac, int mac_kind)
{
    return called("rdm_remove_device", mac, mac_kind);
}

int rdm_remove_all(void)
{
    return called("rdm_remove_all");
}

int rdm_callback_register(rdm_callback callback, void *user_data, int *handle)
{
    const int result = called("rdm_callback_register");
    platform().callback = callback;
    platform().callback_data = user_data;
    if (result == 0)
        *handle = platform().handle;
    return result;
}

int rdm_callback_deregister(int handle)
{
    return called("rdm_callback_deregister", handle);
}

/* Settings store. */

int vconf_get_int(const char *key, int *value)
{
    called("vconf_get_int", key);
    return fake::answer(platform().settings, std::string(key), value);
}

char *vconf_get_str(const char *key)
{
    called("vconf_get_str", key);
    const char *text = platform().text_settings[key];
    return text ? strdup(text) : nullptr;
}

int vconf_notify_key_changed(const char *key, vconf_callback_fn callback, void *user_data)
{
    platform().watch = callback;
    platform().watch_data = user_data;
    return called("vconf_notify_key_changed", key);
}

int vconf_ignore_key_changed(const char *key, vconf_callback_fn callback)
{
    platform().ignored = callback;
    return called("vconf_ignore_key_changed", key);
}

/* System information. */

int system_info_get_custom_bool(const char *key, bool *value)
{
    called("system_info_get_custom_bool", key);
    return fake::answer(platform().custom_bools, std::string(key), value);
}

int system_info_get_custom_int(const char *key, int *value)
{
    called("system_info_get_custom_int", key);
    return fake::answer(platform().custom_ints, std::string(key), value);
}

int system_info_get_custom_string(const char *key, char **value)
{
    called("system_info_get_custom_string", key);
    return fake::answer_text(platform().custom_texts, std::string(key), value);
}

int system_info_get_platform_int(const char *key, int *value)
{
    called("system_info_get_platform_int", key);
    return fake::answer(platform().platform_ints, std::string(key), value);
}

int system_info_get_value_string(int key, char **value)
{
    called("system_info_get_value_string", key);
    return fake::answer_text(platform().numbered_texts, key, value);
}

/* Platform log. */

int __dlog_print(int log_id, int priority, const char *tag, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    char *text = nullptr;
    const int length = vasprintf(&text, format, arguments);
    va_end(arguments);
    EXPECT_EQ(log_id, LOG_ID_MAIN);
    EXPECT_STREQ(tag, "VESK_LOG");
    EXPECT_TRUE(std::string(format).starts_with("%s: %s(%d) > ")) << format;
    static const std::regex prefix(R"(^([^:]*): ([^(]*)\((\d+)\) > )");
    std::cmatch parts;
    const char letter = priority == DLOG_INFO ? 'I' : priority == DLOG_WARN ? 'W' : priority == DLOG_ERROR ? 'E' : '?';
    if (std::regex_search(text, parts, prefix)) {
        platform().log.push_back({letter, parts[1], parts[2], std::stoi(parts[3]), parts.suffix()});
        platform().chronicle.push_back(std::string{letter, ' '} + platform().log.back().message);
    } else {
        ADD_FAILURE() << "a log line without its prefix: " << text;
    }
    free(text);
    return length;
}

/* Gadget host. */

void *ug_get_window(void)
{
    called("ug_get_window");
    return platform().window;
}

int ug_destroy_me(ui_gadget_h ug)
{
    platform().ended = ug;
    return called("ug_destroy_me");
}

/* Application utility library. */

int ea_init(int first, int second)
{
    return called("ea_init", first, second);
}

int ea_shutdown(void)
{
    return called("ea_shutdown");
}

int CStringUtil::CombinateStrings(char *buffer, size_t size, const char *format, const char *first, const char *second,
                                  const char *third, const char *fourth)
{
    called("CombinateStrings", size, format, first, second, third, fourth);
    const char *const arguments[] = {first, second, third, fourth};
    std::string text;
    for (const char *at = format; *at != '\0'; ++at) {
        if (at[0] == '%' && at[1] >= '1' && at[1] <= '4') {
            const char *argument = arguments[*++at - '1'];
            text += argument ? argument : "";
        } else {
            text += *at;
        }
    }
    text.resize(std::min(text.size(), size - 1));
    memcpy(buffer, text.c_str(), text.size() + 1);
    return static_cast<int>(text.size());
}

/* Message catalogue: the translation of an id of the module is the id in angle brackets. Other domains, the toolkit's
 * among them, have no catalogue. */

char *dcgettext(const char *domain, const char *id, int /*category*/) noexcept
{
    static std::set<std::string> texts;
    const std::string text = strcmp(domain, fake::kDomain) == 0 ? '<' + std::string(id) + '>' : id;
    return const_cast<char *>(texts.insert(text).first->c_str());
}

char *bindtextdomain(const char *domain, const char *folder) noexcept
{
    if (strcmp(domain, fake::kDomain) == 0)
        called("bindtextdomain", domain, folder);
    return const_cast<char *>(folder);
}
