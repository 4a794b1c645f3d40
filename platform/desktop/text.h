#pragma once
/* Small text helpers that several parts of the port share. */

#include <optional>
#include <string>
#include <string_view>

namespace vesk_port {

/* The whole of `text` as a decimal number of 32 bits; nothing when it is anything else. */
std::optional<int> parse_int(std::string_view text);

/* Whether a character could steer a terminal or turn the rest of a line round. All such are below U+10000. */
bool is_unprintable(char32_t character);

/* `text` as it can be shown on one line of a terminal or a log. A line end is \n, a tab \t, another control character
 * of one byte \x1b, one beyond ASCII \u009b; the characters that change the direction of writing or end a line are
 * written likewise (\u202e), and a byte that is no UTF-8 is \xff. All else stays, the backslash as well: the result is
 * for reading and not for reading back. */
std::string escaped(std::string_view text);

/* The text for a message: escaped, cut at 80 characters, and between quotation marks. */
std::string in_quotes(std::string_view text);

/* A message for a terminal: escaped, and without its middle where it is too long to be read. */
std::string short_message(std::string_view text);

/* A malloc'ed copy for a caller that is to free it. */
char *allocated_copy(const std::string &text);

} // namespace vesk_port
