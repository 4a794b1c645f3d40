#pragma once
/* Small text helpers that several parts of the port share. */

#include <optional>
#include <string>
#include <string_view>

namespace vesk_port {

/* The whole of `text` as a decimal number of 32 bits; nothing when it is anything else. */
std::optional<int> parse_int(std::string_view text);

/* A malloc'ed copy for a caller that is to free it. */
char *allocated_copy(const std::string &text);

} // namespace vesk_port
