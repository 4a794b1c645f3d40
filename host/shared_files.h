#pragma once
/* The files that the program shares with others of its installation. */

#include <string>
#include <vector>

namespace vesk {

/* What is wrong with the theme and the catalogues that a panel in this locale needs: sentences that name the file and
   say what to do. To be called when the toolkit has started. */
std::vector<std::string> complaints_about_files(const std::string &locale);

/* The same for a picture that cannot be shown. */
std::string complaint_about_picture(const std::string &file);

} // namespace vesk
