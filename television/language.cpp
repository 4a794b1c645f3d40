#include "television/language.h"

#include <Elementary.h>
#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <dlfcn.h>
#include <string_view>
#include <vector>

#include "television/catalogue.h"
#include "television/theme_variants.h"

namespace vesk {

namespace {

constexpr std::array<std::string_view, 5> kRightToLeft{"ar_AE", "ckb_IQ", "fa_IR", "he_IL", "ur_PK"};

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

namespace {

/* What the toolkit is told when it asks for the locale of the texts. */
std::string told;

void tell_language(const std::string &locale)
{
    told = locale;
    evas_language_reinit();
}

} // namespace

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

    elm_config_mirrored_set(places_from_right_to_left(locale));
    tell_language(found ? without_encoding(locale) : kEnglish);
    show_script(found ? language_of(locale) : kEnglish);
    return found || language_of(locale) == language_of(kEnglish);
}

bool places_from_right_to_left(const std::string &locale)
{
    return std::ranges::any_of(kRightToLeft, [&](std::string_view start) { return locale.starts_with(start); });
}

} // namespace vesk

/* The toolkit draws Han characters in the forms of the locale's language, which differ in Japanese, Korean and Chinese.
   The process's own locale stays one that every system has. To see it: a name with U+76F4 and U+9AA8 under ja_JP and
   zh_CN. */
extern "C" __attribute__((visibility("default"))) char *setlocale(int category, const char *locale) noexcept
{
    if (category == LC_MESSAGES && !locale && !vesk::told.empty())
        return vesk::told.data();
    static const auto next = reinterpret_cast<decltype(&setlocale)>(dlsym(RTLD_NEXT, "setlocale"));
    return next(category, locale);
}
