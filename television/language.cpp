#include "television/language.h"

#include <Elementary.h>
#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <vector>

#include "desktop/paths.h"
#include "television/theme_variants.h"

namespace vesk {

namespace {

constexpr char kEnglish[] = "en_GB";
constexpr std::array<std::string_view, 5> kRightToLeft{"ar", "ckb", "fa", "he", "ur"};

/* The locale's name without its encoding: "sr_RS.UTF-8@latin" becomes "sr_RS@latin". */
std::string without_encoding(const std::string &locale)
{
    const auto dot = locale.find('.');
    if (dot == locale.npos)
        return locale;
    const auto modifier = locale.find('@', dot);
    return locale.substr(0, dot) + (modifier == locale.npos ? "" : locale.substr(modifier));
}

std::string language_of(const std::string &locale)
{
    return locale.substr(0, locale.find_first_of("_.@"));
}

/* The names that gettext looks under, the closest first. */
std::vector<std::string> catalogue_names(const std::string &locale)
{
    const auto full = without_encoding(locale);
    const auto modifier = full.find('@');
    const auto language = language_of(full);
    std::vector<std::string> names{full};
    if (modifier != full.npos) {
        names.push_back(language + full.substr(modifier));
        names.push_back(full.substr(0, modifier));
    }
    names.push_back(language);
    return names;
}

bool has_catalogue(const std::string &name)
{
    return std::filesystem::exists(vesk_port::share_folder() / "locale" / name / "LC_MESSAGES" / "ug-VeskUG-efl.mo");
}

/* The face for a language: Han characters differ between those who write them. Fonts that a user has chosen stay. */
void use_face(const std::string &locale)
{
    const auto folder = vesk_port::share_folder() / "theme";
    auto wanted = folder / "fonts.conf";
    for (const auto &name : catalogue_names(locale)) {
        if (const auto own = folder / ("fonts." + name + ".conf"); std::filesystem::exists(own)) {
            wanted = own;
            break;
        }
    }
    const char *used = getenv("FONTCONFIG_FILE");
    if (!used || std::filesystem::path(used).parent_path() != folder || used == wanted)
        return;
    setenv("FONTCONFIG_FILE", wanted.c_str(), 1);
    evas_font_reinit();
}

} // namespace

bool use_language(const std::string &locale)
{
    const bool found = std::ranges::any_of(catalogue_names(locale), has_catalogue);
    const std::string names = found ? without_encoding(locale) + ":" + kEnglish : kEnglish;
    setenv("LANGUAGE", names.c_str(), 1);
    /* In the locale "C" gettext looks up nothing; every system has "C.UTF-8", and LANGUAGE says the rest. Texts that
       were looked up before are forgotten only when the locale really changes. */
    setlocale(LC_ALL, "C");
    setlocale(LC_ALL, "C.UTF-8");

    const bool to_the_left = found && std::ranges::find(kRightToLeft, language_of(locale)) != kRightToLeft.end();
    elm_config_mirrored_set(to_the_left);
    use_face(found ? locale : kEnglish);
    show_script(found ? language_of(locale) : kEnglish);
    return found || language_of(locale) == language_of(kEnglish);
}

} // namespace vesk
