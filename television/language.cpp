#include "television/language.h"

#include <Elementary.h>
#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "television/catalogue.h"

namespace vesk {

namespace {

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

bool has_catalogue(const std::string &name)
{
    return state_of_catalogue(catalogue_file(name)) == Catalogue::good;
}

} // namespace

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

bool use_language(const std::string &locale)
{
    const bool found = std::ranges::any_of(catalogue_names(locale), has_catalogue);
    const std::string english = has_catalogue(kEnglish) ? kEnglish : "";
    const std::string names = found ? without_encoding(locale) + ":" + english : english;
    setenv("LANGUAGE", names.c_str(), 1);
    /* In the locale "C" gettext looks up nothing; every system has "C.UTF-8", and LANGUAGE says the rest. Texts that
       were looked up before are forgotten only when the locale really changes. */
    setlocale(LC_ALL, "C");
    setlocale(LC_ALL, "C.UTF-8");

    const bool to_the_left = found && std::ranges::find(kRightToLeft, language_of(locale)) != kRightToLeft.end();
    elm_config_mirrored_set(to_the_left);
    return found || language_of(locale) == language_of(kEnglish);
}

} // namespace vesk
