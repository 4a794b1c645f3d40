#include "vconf.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "file_watch.h"
#include "log.h"
#include "paths.h"
#include "port_call.h"
#include "settings.h"
#include "text.h"

/* What a change callback is handed. */
struct keynode {
    std::string key;
    std::optional<std::string> value;
};

namespace vesk_port {

namespace {

struct KeyWatch {
    int number; /* tells this watch from one that is registered later with the same key and callback */
    keynode node;
    vconf_callback_fn callback;
    void *user_data;
};

std::vector<KeyWatch> watches;
int last_number = 0;
std::unique_ptr<FileWatch> file_watch; /* while there are watches */

/* Calls those whose key has another value now. A callback may register and end watches. */
void report_changes()
{
    std::vector<KeyWatch> changed;
    try {
        for (KeyWatch &watch : watches) {
            std::optional<std::string> value = read_setting(watch.node.key);
            if (value == watch.node.value)
                continue;
            watch.node.value = std::move(value);
            changed.push_back(watch);
        }
    } catch (const PortError &error) {
        /* Somebody may be half-way through editing the file; the watched values stay as they were. */
        report_failure("reading the changed settings", error.code(), error.what());
    }
    for (KeyWatch &watch : changed) {
        if (std::ranges::find(watches, watch.number, &KeyWatch::number) != watches.end())
            watch.callback(&watch.node, watch.user_data);
    }
}

std::string given_key(const char *key)
{
    if (!key || !*key)
        throw PortError(-EINVAL, "the key is missing.");
    return key;
}

std::string stored_value(const char *key)
{
    const std::optional<std::string> value = read_setting(given_key(key));
    if (!value)
        throw PortError(-ENOENT, std::string("the setting ") + key + " is unset in " + settings_file().string() +
                                     "; give it a value with: veskctl settings set");
    return *value;
}

bool is_watch_of(const KeyWatch &watch, const std::string &key, vconf_callback_fn callback)
{
    return watch.node.key == key && watch.callback == callback;
}

} // namespace

void forget_setting_watches()
{
    watches.clear();
    file_watch.reset();
}

} // namespace vesk_port

using namespace vesk_port;

int vconf_get_int(const char *key, int *value)
{
    return port_call(__func__, [&] {
        if (!value)
            throw PortError(-EINVAL, "the place for the value is missing.");
        const std::string text = stored_value(key);
        const std::optional<int> number = parse_int(text);
        if (!number)
            throw PortError(-EINVAL, std::string("the setting ") + key + " in " + settings_file().string() + " is \"" +
                                         text + "\" and no whole number; give it one with: veskctl settings set");
        *value = *number;
    });
}

char *vconf_get_str(const char *key)
{
    char *text = nullptr;
    port_call(__func__, [&] { text = allocated_copy(stored_value(key)); });
    return text;
}

int vconf_notify_key_changed(const char *key, vconf_callback_fn callback, void *user_data)
{
    return port_call(__func__, [&] {
        const std::string name = given_key(key);
        if (!callback)
            throw PortError(-EINVAL, "the callback is missing.");
        for (const KeyWatch &watch : watches) {
            if (is_watch_of(watch, name, callback))
                throw PortError(-EEXIST, "this callback watches " + name + " already.");
        }
        if (!file_watch)
            file_watch = std::make_unique<FileWatch>(settings_file(), report_changes);
        watches.push_back({++last_number, {name, read_setting(name)}, callback, user_data});
    });
}

int vconf_ignore_key_changed(const char *key, vconf_callback_fn callback)
{
    return port_call(__func__, [&] {
        const std::string name = given_key(key);
        if (std::erase_if(watches, [&](const KeyWatch &w) { return is_watch_of(w, name, callback); }) == 0)
            throw PortError(-ENOENT, "this callback does not watch " + name + ".");
        if (watches.empty())
            file_watch.reset();
    });
}
