#pragma once

#include <filesystem>
#include <string>

namespace vesk {

enum class Catalogue { missing, damaged, good };

/* The compiled message catalogue of a language, by the name of its folder, such as "ko" or "sr@latin". */
std::filesystem::path catalogue_file(const std::string &name);

/* Whether gettext can read the file. It trusts what the file says about itself, and a file that has been cut off would
   end the process. */
Catalogue state_of_catalogue(const std::filesystem::path &file);

} // namespace vesk
