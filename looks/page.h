#pragma once
/* The gallery's page: every picture small, with filters, in one file that needs nothing from elsewhere. */

#include <filesystem>
#include <string>
#include <vector>

#include "states.h"

namespace vesk::looks {

struct PageEntry {
    const State *state = nullptr;
    Setting setting;
    std::string picture;               /* relative to the page */
    std::string thumbnail;             /* likewise */
    std::vector<std::string> findings; /* what is wrong with it */
};

/* Writes index.html into `folder`. Throws std::ios_base::failure. */
void write_page(const std::filesystem::path &folder, const std::vector<PageEntry> &entries);

} // namespace vesk::looks
