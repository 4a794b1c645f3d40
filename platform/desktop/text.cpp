#include "text.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <new>

namespace vesk_port {

std::optional<int> parse_int(std::string_view text)
{
    int value = 0;
    const char *end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

char *allocated_copy(const std::string &text)
{
    char *copy = strdup(text.c_str());
    if (!copy)
        throw std::bad_alloc();
    return copy;
}

} // namespace vesk_port
