#pragma once

#include <string>
#include <vector>

namespace vesk {

/* The locale of the texts where another has none. */
inline constexpr char kEnglish[] = "en_GB";

/* The names that gettext looks for a locale's catalogue under, the closest first. */
std::vector<std::string> catalogue_names(const std::string &locale);

/* Makes this process speak the language of a locale name such as "ko_KR" or "ko_KR.UTF-8": texts by gettext, also on a
   system that has no locales generated, and the direction of the toolkit's layouts. Returns false when there is no
   catalogue for it; texts are English then. To be called when the toolkit has started, before a module looks up its
   first text. */
bool use_language(const std::string &locale);

/* Whether a television places its screens from right to left in that locale: five locales of such languages, of any
   encoding. In others, such as "ar_SA", the texts run from right to left and the places do not. */
bool places_from_right_to_left(const std::string &locale);

} // namespace vesk
