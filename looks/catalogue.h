#pragma once
/* A share folder with one text replaced, to see a text of a length that no language has. */

#include <filesystem>
#include <string>

namespace vesk::looks {

/* Makes `folder` look like `share`, but for the catalogue of `language`, which says `text` for `id` and leaves every
   other text to the catalogue that the language shares with its neighbours ("de" for "de_DE"). Throws
   std::runtime_error. */
void replace_text(const std::filesystem::path &share, const std::filesystem::path &folder, const std::string &language,
                  const std::string &id, const std::string &text);

} // namespace vesk::looks
