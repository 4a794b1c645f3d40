#include "television/share.h"

#include <array>
#include <string_view>

#include "desktop/paths.h"

namespace vesk {

namespace {

struct Mapping {
    std::string_view television;
    std::string_view desktop; /* below the share folder */
};

constexpr std::array<Mapping, 3> kMappings{{
    {"/usr/share/resources/image/icon/r_icon_convergence", "pictures/r_icon_convergence"},
    {"/usr/apps/com.corvane.tv.theme-resource/shared/res/ug-VeskUG-efl", "pictures/ug-VeskUG-efl"},
    {"/usr/ug/res/locale", "locale"},
}};

} // namespace

std::filesystem::path module_file()
{
    const auto program_folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    return program_folder.parent_path() / "lib" / "libug-VeskUG-efl.so";
}

std::string desktop_path(const std::string &path)
{
    for (const auto &mapping : kMappings) {
        if (!path.starts_with(mapping.television))
            continue;
        const auto rest = path.substr(mapping.television.size());
        if (rest.empty() || rest.front() == '/')
            return (vesk_port::share_folder() / mapping.desktop).string() + rest;
    }
    return path;
}

} // namespace vesk
