#pragma once
/* The settings store as the programs of the port use it: a key file that several processes read and write. */

#include <array>
#include <optional>
#include <string>

namespace vesk_port {

/* A setting that the television's menu has. */
struct Setting {
    const char *key;
    const char *alias;         /* the short name on the command line */
    const char *default_value; /* what a read gives while the setting is unset */
};

inline constexpr Setting kOrientationSetting{"db/menu/onscreendisplay/display_orientation/onscreen_menu_orientation",
                                             "orientation", "0"};
inline constexpr Setting kLanguageSetting{"db/menu_widget/language", "language", "en_GB.UTF-8"};
inline constexpr Setting kHighContrastSetting{"db/menu/system/accessibility/highcontrast", "high-contrast", "0"};
inline constexpr std::array kSettings{kOrientationSetting, kLanguageSetting, kHighContrastSetting};

/* The key that `name` stands for: an alias or a key itself, which has a '/' in it. Throws PortError. */
std::string setting_key(const std::string &name);

/* The value to be stored for what a person writes: "portrait" is "1", "on" is "1". Throws PortError for a word that
 * the setting does not know. */
std::string setting_value(const std::string &key, const std::string &word);

/* The other way: what a person reads for a stored value. */
std::string setting_word(const std::string &key, const std::string &value);

/* The value of `key`, or its default, or nothing where there is neither. Throws PortError when the file cannot be
 * read, or the value is no text; RepeatedError when the file still fails as it did at the last call. */
std::optional<std::string> read_setting(const std::string &key);

/* Reads of `key` in this process give `value` from now on, until the stored value changes: a change while the program
 * runs is meant for it. What is stored stays. */
void override_setting(const std::string &key, const std::string &value);

/* What a read gives while the setting is unset, for the settings of kSettings. */
std::optional<std::string> default_setting(const std::string &key);

/* Stores a value, or takes the key out of the file for none; the file is replaced as a whole. Throws PortError when
 * that cannot be done, key or value are no UTF-8, or the file that is there is no key file, and leaves the file as it
 * is then. */
void write_setting(const std::string &key, const std::optional<std::string> &value);

/* Ends every watch of vconf_notify_key_changed. */
void forget_setting_watches();

/* Ends those watches whose callbacks lie in the same program or shared object as `code`. A host calls it with an entry
 * point of a module before it unloads that: the module may have left a watch, which would call into nothing. */
void forget_setting_watches_of(const void *code);

} // namespace vesk_port
