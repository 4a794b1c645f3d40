#include "shared_files.h"

#include <Edje.h>
#include <filesystem>
#include <optional>

#include "television/catalogue.h"
#include "television/language.h"
#include "television/toolkit.h"

namespace vesk {

namespace {

/* Every theme of the television has it. */
constexpr char kKnownGroup[] = "elm/label/base/default";

std::string complaint(const std::string &what, const std::filesystem::path &file, const std::string &consequence)
{
    std::error_code ignored;
    const bool exists = std::filesystem::exists(file, ignored);
    return "the " + what + " " + file.string() + (exists ? " is damaged" : " is missing") + consequence +
           "; install VESK again";
}

std::optional<std::string> complaint_about_theme()
{
    const auto &file = theme_file();
    if (edje_file_group_exists(file.c_str(), kKnownGroup))
        return {};
    return complaint("theme", file, ", so that the screens have the toolkit's look");
}

} // namespace

std::vector<std::string> complaints_about_files(const std::string &locale)
{
    std::vector<std::string> complaints;
    if (const auto theme = complaint_about_theme())
        complaints.push_back(*theme);
    for (const auto &name : catalogue_names(locale)) {
        const auto file = catalogue_file(name);
        if (state_of_catalogue(file) == Catalogue::damaged)
            complaints.push_back(complaint("message catalogue", file, ", and its texts are not used"));
    }
    const auto english = catalogue_file(kEnglish);
    if (state_of_catalogue(english) != Catalogue::good)
        complaints.push_back(complaint("message catalogue", english, ", so that texts are shown by their names"));
    return complaints;
}

std::string complaint_about_picture(const std::string &file)
{
    return complaint("picture", file, "");
}

} // namespace vesk
