#include "veskctl_table.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <glib.h>

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

std::string printable(const std::string &text)
{
    gchar *valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    std::string line;
    for (const char *c = valid; *c; c = g_utf8_next_char(c)) {
        const gunichar character = g_utf8_get_char(c);
        if (g_unichar_iscntrl(character)) {
            std::array<char, 16> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", character);
            line += escape.data();
        } else {
            line.append(c, static_cast<size_t>(g_utf8_next_char(c) - c));
        }
    }
    g_free(valid);
    return line;
}

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

} // namespace veskctl
