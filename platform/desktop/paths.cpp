#include "paths.h"

#include "port_error.h"

#include <cerrno>
#include <cstdlib>
#include <glib.h>

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

} // namespace

fs::path devices_file()
{
    return path_of("VESK_DEVICES", fs::path(g_get_user_data_dir()) / "vesk" / "devices.db");
}

fs::path settings_file()
{
    return path_of("VESK_SETTINGS", fs::path(g_get_user_config_dir()) / "vesk" / "settings.ini");
}

fs::path product_choice_file()
{
    return fs::path(g_get_user_config_dir()) / "vesk" / "product";
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
