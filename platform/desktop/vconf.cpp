#include "vconf.h"

#include <algorithm>
#include <dlfcn.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fence.h"
#include "file_watch.h"
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
    for (KeyWatch &watch : watches) {
        std::optional<std::string> value;
        /* Somebody may be half-way through editing the file: what cannot be read stays as it was. */
        const int code = port_call("reading a changed setting", [&] { value = read_setting(watch.node.key); });
        if (code != 0 || value == watch.node.value)
            continue;
        watch.node.value = std::move(value);
        changed.push_back(watch);
    }
    for (KeyWatch &watch : changed) {
        if (std::ranges::find(watches, watch.number, &KeyWatch::number) != watches.end())
            fenced("the callback of a changed setting", [&] { watch.callback(&watch.node, watch.user_data); });
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

/* A file that cannot be read yet is followed all the same, until somebody mends it. */
std::optional<std::string> first_value(const std::string &key)
{
    std::optional<std::string> value;
    const int code = port_call("reading a watched setting", [&] { value = read_setting(key); });
    if (code == -ENOTDIR)
        throw PortError(code, "the settings file " + escaped(settings_file().string()) +
                                  " can never be there; name another in VESK_SETTINGS.");
    if (code != 0)
        value = default_setting(key);
    return value;
}

/* The program or shared object that some code belongs to; null for no code. */
const void *object_with(const void *code)
{
    Dl_info info{};
    return dladdr(code, &info) != 0 ? info.dli_fbase : nullptr;
}

void end_watching_without_watches()
{
    if (watches.empty())
        file_watch.reset();
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

void forget_setting_watches_of(const void *code)
{
    const void *object = object_with(code);
    std::erase_if(watches, [object](const KeyWatch &watch) {
        return object_with(reinterpret_cast<const void *>(watch.callback)) == object;
    });
    end_watching_without_watches();
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
            file_watch =
                std::make_unique<FileWatch>(settings_file(), [] { fenced("following the settings", report_changes); });
        watches.push_back({++last_number, {name, first_value(name)}, callback, user_data});
    });
}

int vconf_ignore_key_changed(const char *key, vconf_callback_fn callback)
{
    return port_call(__func__, [&] {
        const std::string name = given_key(key);
        if (std::erase_if(watches, [&](const KeyWatch &w) { return is_watch_of(w, name, callback); }) == 0)
            throw PortError(-ENOENT, "this callback does not watch " + name + ".");
        end_watching_without_watches();
    });
}
