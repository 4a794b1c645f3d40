#pragma once
/* Files that the user names. */

#include <string>

namespace veskctl {

/* The whole of a file, or of the standard input for "-". Throws PortError. */
std::string contents_of(const std::string &file);

/* Writes into what is there: a pipe gets the text, and a file keeps its links, its mode and the symbolic link that it
 * is reached by. A file that the text does not fit into is left as it was. Throws PortError. */
void write_contents(const std::string &file, const std::string &text);

} // namespace veskctl
