#include "text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <glib.h>
#include <new>

namespace vesk_port {

namespace {

constexpr size_t kQuotedCharacters = 80;
constexpr size_t kLongestCharacter = 4;  /* bytes of UTF-8 */
constexpr size_t kLongestMessage = 1000; /* bytes */
constexpr size_t kMessageHead = 600;     /* what is kept of a longer one; its end tells what to do */
constexpr size_t kMessageTail = 300;

bool continues_character(char c)
{
    return (static_cast<unsigned char>(c) & 0xc0U) == 0x80;
}

/* Characters that are not seen and turn the order of those around them, and the two line ends beyond ASCII. */
bool steers_the_line(gunichar character)
{
    return character == 0x061c || character == 0x200e || character == 0x200f ||
           (character >= 0x2028 && character <= 0x202e) || (character >= 0x2066 && character <= 0x2069);
}

std::string byte_escape(unsigned byte)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "\\x%02x", byte);
    return text.data();
}

std::string escape_of(gunichar character)
{
    if (character == '\n')
        return "\\n";
    if (character == '\t')
        return "\\t";
    if (character < 0x80)
        return byte_escape(character);
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "\\u%04x", character);
    return text.data();
}

} // namespace

bool is_unprintable(char32_t character)
{
    return g_unichar_iscntrl(character) || steers_the_line(character);
}

std::string escaped(std::string_view text)
{
    std::string line;
    while (!text.empty()) {
        const auto first = static_cast<unsigned char>(text.front());
        const gunichar character =
            first < 0x80 ? first : g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
        size_t length = 1;
        if (!g_unichar_validate(character)) {
            line += byte_escape(first);
        } else {
            length = static_cast<size_t>(g_unichar_to_utf8(character, nullptr));
            if (is_unprintable(character))
                line += escape_of(character);
            else
                line.append(text.substr(0, length));
        }
        text.remove_prefix(length);
    }
    return line;
}

std::optional<int> parse_int(std::string_view text)
{
    int value = 0;
    const char *end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

std::string in_quotes(std::string_view text)
{
    const size_t longest = std::min(text.size(), kQuotedCharacters * kLongestCharacter);
    size_t cut = 0;
    for (size_t characters = 0; cut < longest; ++cut) {
        if (!continues_character(text[cut]) && ++characters > kQuotedCharacters)
            break;
    }
    return "\"" + escaped(text.substr(0, cut)) + (cut < text.size() ? "..." : "") + "\"";
}

std::string short_message(std::string_view text)
{
    const std::string line = escaped(text);
    if (line.size() <= kLongestMessage)
        return line;
    size_t head = kMessageHead;
    while (continues_character(line[head]))
        --head;
    size_t tail = line.size() - kMessageTail;
    while (continues_character(line[tail]))
        ++tail;
    return line.substr(0, head) + " ... " + line.substr(tail);
}

char *allocated_copy(const std::string &text)
{
    char *copy = strdup(text.c_str());
    if (!copy)
        throw std::bad_alloc();
    return copy;
}

} // namespace vesk_port
