#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <glib-unix.h>
#include <nlohmann/json.hpp>

#include "desktop/port_error.h"
#include "desktop/settings.h"
#include "desktop/text.h"
#include "vconf.h"
#include "veskctl.h"
#include "veskctl_table.h"

namespace veskctl {

using vesk_port::escaped;
using vesk_port::PortError;

namespace {

/* The value in the words of a person; a full key that nobody has set has none. */
std::string word_of(const std::string &key)
{
    const std::optional<std::string> value = vesk_port::read_setting(key);
    if (!value)
        throw PortError(-ENOENT, "the setting " + key + " is unset; give it a value with: veskctl settings set " + key +
                                     " VALUE");
    return vesk_port::setting_word(key, *value);
}

/* The key of a name on the command line. */
std::string key_of(const std::string &name)
{
    return as_usage([&] { return vesk_port::setting_key(name); });
}

/* A switch is a truth value, anything else a text. */
nlohmann::json json_of(const std::string &key, const std::string &word)
{
    if (key == vesk_port::kHighContrastSetting.key && (word == "on" || word == "off"))
        return word == "on";
    return word;
}

void get_settings(const std::string &name, bool as_json)
{
    if (!name.empty()) {
        const std::string key = key_of(name);
        const std::string word = word_of(key);
        std::puts(as_json ? json_text(json_of(key, word)).c_str() : escaped(word).c_str());
        return;
    }
    nlohmann::json object = nlohmann::json::object();
    std::vector<std::vector<std::string>> rows;
    for (const vesk_port::Setting &setting : vesk_port::kSettings) {
        const std::string word = word_of(setting.key);
        object[setting.alias] = json_of(setting.key, word);
        rows.push_back({setting.alias, escaped(word), setting.key});
    }
    if (as_json)
        print_json(object);
    else
        print_table({"SETTING", "VALUE", "KEY"}, rows);
}

void set_setting(const std::string &name, const std::string &word)
{
    const std::string key = key_of(name);
    const std::string value = as_usage([&] { return vesk_port::setting_value(key, word); });
    vesk_port::write_setting(key, value);
}

/* One line for the setting as it is now, under the name that was asked for. */
void print_setting(const std::string &name)
{
    try {
        std::printf("%s %s\n", escaped(name).c_str(), escaped(word_of(vesk_port::setting_key(name))).c_str());
    } catch (const PortError &) {
        std::printf("%s\n", escaped(name).c_str());
    }
    std::fflush(stdout);
}

void watch_settings(std::vector<std::string> names)
{
    if (names.empty()) {
        for (const vesk_port::Setting &setting : vesk_port::kSettings)
            names.emplace_back(setting.alias);
    }
    const auto changed = [](keynode_t *, void *name) { print_setting(*static_cast<std::string *>(name)); };
    for (std::string &name : names) {
        const std::string key = key_of(name);
        if (const int code = vconf_notify_key_changed(key.c_str(), changed, &name))
            throw PortError(code, "the setting " + name + " cannot be watched; see the line above for the reason");
    }
    for (const std::string &name : names)
        print_setting(name);

    GMainLoop *loop = g_main_loop_new(nullptr, FALSE);
    const auto quit = [](gpointer the_loop) -> gboolean {
        g_main_loop_quit(static_cast<GMainLoop *>(the_loop));
        return G_SOURCE_CONTINUE;
    };
    g_unix_signal_add(SIGINT, quit, loop);
    g_unix_signal_add(SIGTERM, quit, loop);
    g_main_loop_run(loop);
    g_main_loop_unref(loop);
    vesk_port::forget_setting_watches();
}

std::string aliases()
{
    std::string names;
    for (const vesk_port::Setting &setting : vesk_port::kSettings)
        names.append(names.empty() ? "" : ", ").append(setting.alias);
    return names;
}

} // namespace

void add_setting_commands(CLI::App &program)
{
    CLI::App *settings = program.add_subcommand("settings", "The television's settings");
    settings->require_subcommand(1);
    const std::string name_help = aliases() + ", or a full key of the store";

    struct Arguments {
        std::string name;
        std::string value;
        bool as_json = false;
        std::vector<std::string> names;
    };
    const auto given = std::make_shared<Arguments>();

    CLI::App *get = settings->add_subcommand("get", "Shows one setting or all");
    get->add_option("name", given->name, name_help);
    get->add_flag("--json", given->as_json, "As JSON, for programs");
    get->callback([given] { get_settings(given->name, given->as_json); });

    CLI::App *set = settings->add_subcommand("set", "Changes a setting; panels that run follow");
    set->add_option("name", given->name, name_help)->required();
    set->add_option("value", given->value,
                    "orientation: landscape or portrait; high-contrast: on or off; language: a locale such as "
                    "ar_AE.UTF-8")
        ->required();
    set->callback([given] { set_setting(given->name, given->value); });

    CLI::App *unset = settings->add_subcommand("unset", "Takes a setting's value away, so that its default holds");
    unset->add_option("name", given->name, name_help)->required();
    unset->callback([given] { vesk_port::write_setting(key_of(given->name), std::nullopt); });

    CLI::App *watch =
        settings->add_subcommand("watch", "Prints settings now and after each change, until it is interrupted");
    watch->add_option("names", given->names, name_help + "; all when none is named");
    watch->callback([given] { watch_settings(given->names); });
}

} // namespace veskctl
