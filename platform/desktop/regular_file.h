#pragma once
/* Small files that are read as a whole. */

#include <filesystem>
#include <optional>
#include <string>

namespace vesk_port {

/* The contents of `file`; nothing where no file is. Throws PortError when it cannot be read or is something else, such
 * as a pipe, whose end might never come; `what` names it in the sentence ("settings file"), `advice` ends that. */
std::optional<std::string> read_regular_file(const std::filesystem::path &file, const std::string &what,
                                             const std::string &advice);

} // namespace vesk_port
