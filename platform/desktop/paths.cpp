#include "paths.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "port_error.h"
#include "text.h"

namespace vesk_port {

namespace fs = std::filesystem;

namespace {

/* What the variable names; empty when it is unset. */
fs::path variable_path(const char *variable)
{
    const char *value = std::getenv(variable);
    return value ? value : "";
}

/* Absolute, and without links, so that the folder that is watched and written to is the one where the file really
 * stands. */
fs::path real_path(const fs::path &path)
{
    const fs::path absolute = fs::absolute(path);
    std::error_code ignored;
    const fs::path real = fs::weakly_canonical(absolute, ignored);
    return real.empty() ? absolute : real;
}

/* The folder that a variable of the desktop names: those are absolute, and a relative one would put the files into
 * whatever folder the program is started in. Empty when it is unset. */
fs::path absolute_variable(const char *variable)
{
    const fs::path folder = variable_path(variable);
    if (!folder.empty() && !folder.is_absolute())
        throw PortError(-EINVAL, std::string(variable) + " is \"" + escaped(folder.string()) +
                                     "\", which is no absolute path; begin it with / or unset it.");
    return folder;
}

/* GLib's own functions keep the variable's first value, and a program may change its environment. */
fs::path user_folder(const char *variable, const char *in_home)
{
    const fs::path folder = absolute_variable(variable);
    return folder.empty() ? home_folder() / in_home : folder;
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

fs::path home_folder()
{
    if (const fs::path home = absolute_variable("HOME"); !home.empty())
        return home;
    const passwd *user = getpwuid(getuid());
    if (!user || !user->pw_dir || *user->pw_dir != '/')
        throw PortError(-ENOENT, "there is no home folder to keep files in; name one in HOME.");
    return user->pw_dir;
}

fs::path devices_file()
{
    const fs::path named = variable_path("VESK_DEVICES");
    return real_path(named.empty() ? data_folder() / "devices.db" : named);
}

fs::path settings_file()
{
    const fs::path named = variable_path("VESK_SETTINGS");
    return real_path(named.empty() ? config_folder() / "settings.ini" : named);
}

fs::path product_choice_file()
{
    return config_folder() / "product";
}

fs::path share_folder()
{
    const fs::path named = variable_path("VESK_SHARE");
    std::error_code ignored;
    return real_path(named.empty() ? fs::read_symlink("/proc/self/exe", ignored).parent_path() / "../share/vesk"
                                   : named);
}

void make_folder_of(const fs::path &file)
{
    std::vector<fs::path> missing;
    std::error_code error;
    for (fs::path folder = file.parent_path(); !fs::exists(folder, error) && !folder.empty();
         folder = folder.parent_path())
        missing.push_back(folder);
    for (; !missing.empty(); missing.pop_back()) {
        const fs::path &folder = missing.back();
        /* Nobody else looks into what the user keeps, whatever umask the program was started with. */
        if (mkdir(folder.c_str(), S_IRWXU) == 0 && chmod(folder.c_str(), S_IRWXU) == 0)
            continue;
        const int code = errno;
        if (code == EEXIST && (fs::is_directory(folder, error) || error))
            continue; /* another program was faster, or nobody can tell: then the file tells */
        throw PortError(code == ENOSPC || code == EROFS ? -code : -EACCES,
                        "the folder " + escaped(folder.string()) + " cannot be made: " + std::strerror(code) +
                            ". Make it or name another file.");
    }
}

} // namespace vesk_port
