#include "paths.h"

#include <cerrno>
#include <cstdlib>
#include <glib.h>

#include "port_error.h"

namespace vesk_port {

namespace fs = std::filesystem;

namespace {

/* The variable's path or else `fallback`; absolute, and without links, so that the folder that is watched and written
 * to is the one where the file really stands. */
fs::path path_of(const char *variable, const fs::path &fallback)
{
    const char *value = std::getenv(variable);
    const fs::path path = fs::absolute(value && *value ? fs::path(value) : fallback);
    std::error_code ignored;
    const fs::path real = fs::weakly_canonical(path, ignored);
    return real.empty() ? path : real;
}

/* GLib's own functions keep the variable's first value, and a program may change its environment. */
fs::path user_folder(const char *variable, const char *in_home)
{
    const char *value = std::getenv(variable);
    return value && *value ? fs::path(value) : fs::path(g_get_home_dir()) / in_home;
}

fs::path data_folder()
{
    return user_folder("XDG_DATA_HOME", ".local/share") / "vesk";
}

fs::path config_folder()
{
    return user_folder("XDG_CONFIG_HOME", ".config") / "vesk";
}

} // namespace

fs::path devices_file()
{
    return path_of("VESK_DEVICES", data_folder() / "devices.db");
}

fs::path settings_file()
{
    return path_of("VESK_SETTINGS", config_folder() / "settings.ini");
}

fs::path product_choice_file()
{
    return config_folder() / "product";
}

fs::path share_folder()
{
    std::error_code ignored;
    return path_of("VESK_SHARE", fs::read_symlink("/proc/self/exe", ignored).parent_path() / "../share/vesk");
}

void make_folder_of(const fs::path &file)
{
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    if (error)
        throw PortError(-EACCES, "the folder " + file.parent_path().string() + " cannot be made: " + error.message() +
                                     ". Make it or name another file.");
}

} // namespace vesk_port
