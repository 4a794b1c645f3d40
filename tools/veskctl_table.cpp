#include "veskctl_table.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <glib.h>

#include "desktop/text.h"

namespace veskctl {

namespace {

size_t width_of(const std::string &text)
{
    size_t width = 0;
    for (const char *c = text.c_str(); *c; c = g_utf8_next_char(c)) {
        const gunichar character = g_utf8_get_char(c);
        if (!g_unichar_iszerowidth(character))
            width += g_unichar_iswide(character) ? 2 : 1;
    }
    return width;
}

void print_row(const std::vector<std::string> &cells, const std::vector<size_t> &widths)
{
    std::string line;
    for (size_t i = 0; i < cells.size(); ++i) {
        line += cells[i];
        if (i + 1 < cells.size())
            line.append(widths[i] - width_of(cells[i]) + 2, ' ');
    }
    std::puts(line.c_str());
}

} // namespace

void print_table(const std::vector<std::string> &titles, const std::vector<std::vector<std::string>> &rows)
{
    std::vector<size_t> widths;
    for (size_t column = 0; column < titles.size(); ++column) {
        size_t width = width_of(titles[column]);
        for (const std::vector<std::string> &row : rows)
            width = std::max(width, width_of(row[column]));
        widths.push_back(width);
    }
    print_row(titles, widths);
    for (const std::vector<std::string> &row : rows)
        print_row(row, widths);
}

std::string json_text(const nlohmann::json &value)
{
    const std::string dumped = value.dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
    std::string text;
    for (const char *c = dumped.c_str(); *c; c = g_utf8_next_char(c)) {
        const gunichar character = g_utf8_get_char(c);
        if (character != '\n' && vesk_port::is_unprintable(character)) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", character & 0xffffU);
            text += escape.data();
        } else {
            text.append(c, static_cast<size_t>(g_utf8_next_char(c) - c));
        }
    }
    return text;
}

void print_json(const nlohmann::json &value)
{
    std::puts(json_text(value).c_str());
}

} // namespace veskctl
