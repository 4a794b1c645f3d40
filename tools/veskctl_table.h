#pragma once
/* Tables for people. */

#include <string>
#include <vector>

namespace veskctl {

/* The text as one line of a terminal: control characters are spelt out, and what is no UTF-8 is marked. */
std::string printable(const std::string &text);

/* Prints the rows below the titles, aligned by the width that the texts have on a terminal. The last column is not
 * padded, so it is the place for texts of any length or direction. */
void print_table(const std::vector<std::string> &titles, const std::vector<std::vector<std::string>> &rows);

} // namespace veskctl
