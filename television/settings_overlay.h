#pragma once
/* Settings that hold for this process only: what an option says instead of the user's stored value. */

#include <optional>
#include <string>

namespace vesk {

/* Every reader in this process reads `value` for `key` from now on, until the stored value changes: a change while
   the program runs is meant for it. The stored value is left alone. */
void overlay_setting(const std::string &key, const std::string &value);

/* The value laid over `key`, if there is one. */
std::optional<std::string> overlaid_setting(const std::string &key);

} // namespace vesk
