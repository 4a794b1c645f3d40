#pragma once
/* Where the desktop's copies of the television's files are. */

#include <filesystem>
#include <string>

namespace vesk {

/* The module as it is built and installed: ../lib/libug-VeskUG-efl.so beside the program. */
std::filesystem::path module_file();

/* Maps a path in one of the module's fixed folders on a television to the desktop's file; every other path comes
   back as it is. */
std::string desktop_path(const std::string &path);

} // namespace vesk
