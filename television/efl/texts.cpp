/* Texts on their way from the module to the theme. What a row shows is a stranger's name and a word of the catalogue,
   and the theme sees neither's meaning: the name is shown as it was typed, and the row is told the access.
   To see it: a device named "&amp;", one whose name is blank or holds U+202E, and the marks before the words. */

#include "television/efl/texts.h"

#include <Elementary.h>
#include <algorithm>
#include <array>
#include <cstdint>
#include <dlfcn.h>
#include <libintl.h>
#include <string_view>

#include "television/toolkit.h"

namespace vesk::efl {

namespace {

constexpr std::string_view kDeviceRow = "elm/genlist/item/C_TextItem_WhiteSingleline05/default";
constexpr std::string_view kMark = "&#x200e;"; /* around a name, of the module */
constexpr const char *kDomain = "ug-VeskUG-efl";
constexpr const char *kAllowed = "COM_SID_ALLOWED";
constexpr const char *kDenied = "COM_SID_DENIED_KR_DENY";
constexpr std::string_view kVisibleBlank = "\u2423";

struct Range {
    char32_t first;
    char32_t last;
};

/* Characters that set a direction for what follows them. */
constexpr std::array<Range, 2> kOverrides{{{0x202a, 0x202e}, {0x2066, 0x2069}}};
/* Characters that show nothing. */
constexpr std::array<Range, 10> kBlanks{{{0x00, 0x20},
                                         {0x7f, 0xa0},
                                         {0xad, 0xad},
                                         {0x1680, 0x1680},
                                         {0x2000, 0x200f},
                                         {0x2028, 0x202f},
                                         {0x205f, 0x206f},
                                         {0x2800, 0x2800},
                                         {0x3000, 0x3000},
                                         {0xfeff, 0xfeff}}};

template <class Ranges> bool within(const Ranges &ranges, char32_t character)
{
    return std::ranges::any_of(
        ranges, [character](const Range &range) { return character >= range.first && character <= range.last; });
}

std::string group_of(const Evas_Object *drawing)
{
    const char *group = nullptr;
    edje_object_file_get(drawing, nullptr, &group);
    return group ? group : "";
}

std::string_view without_marks(std::string_view text)
{
    if (text.starts_with(kMark))
        text.remove_prefix(kMark.size());
    if (text.ends_with(kMark))
        text.remove_suffix(kMark.size());
    return text;
}

std::string escaped(const std::string &text)
{
    std::string result;
    for (const char c : text) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == '>')
            result += "&gt;";
        else
            result += c;
    }
    return std::string(kMark) + result + std::string(kMark);
}

/* The colours of a text are the theme's, which also keep it readable in high contrast. */
std::string without_colours(std::string markup)
{
    constexpr std::string_view kColour = " color=";
    for (auto tag = markup.find('<'); tag != markup.npos; tag = markup.find('<', tag + 1)) {
        const auto colour = markup.find(kColour, tag);
        if (colour < markup.find('>', tag))
            markup.erase(colour, markup.find_first_of(" >", colour + 1) - colour);
    }
    return markup;
}

void tell_access(Evas_Object *row, std::string_view word)
{
    if (word == dgettext(kDomain, kAllowed))
        edje_object_signal_emit(row, "vesk,access,allowed", "vesk");
    else if (word == dgettext(kDomain, kDenied))
        edje_object_signal_emit(row, "vesk,access,denied", "vesk");
    if (loads_at_once())
        edje_object_signal_emit(row, "vesk,motion,none", "vesk");
}

} // namespace

void begin_texts() {}

std::string shown_name(const std::string &name)
{
    std::string result;
    std::string blanks;
    bool visible = false;
    int at = 0;
    for (int begin = 0;; begin = at) {
        const auto character = static_cast<char32_t>(eina_unicode_utf8_next_get(name.c_str(), &at));
        if (character == 0)
            break;
        if (within(kOverrides, character))
            continue;
        visible = visible || !within(kBlanks, character);
        blanks += kVisibleBlank;
        if (character < 0x20 || character == 0x7f)
            result += ' ';
        else
            result.append(name, static_cast<size_t>(begin), static_cast<size_t>(at - begin));
    }
    return visible ? result : blanks.empty() ? std::string(kVisibleBlank) : blanks;
}

} // namespace vesk::efl

extern "C" {

/* Every text of a widget comes by here, with its characters escaped. */
Eina_Bool edje_object_part_text_escaped_set(Evas_Object *drawing, const char *part, const char *text)
{
    using namespace vesk::efl;
    static const auto next = reinterpret_cast<decltype(&edje_object_part_text_escaped_set)>(
        dlsym(RTLD_NEXT, "edje_object_part_text_escaped_set"));
    const std::string_view name = part ? part : "";
    if (!text || (name != "elm.text" && name != "elm.text.1"))
        return next(drawing, part, text);
    const std::string group = group_of(drawing);
    if (group != kDeviceRow)
        return next(drawing, part, text);
    if (name == "elm.text.1") {
        tell_access(drawing, text);
        return next(drawing, part, text);
    }
    const std::string shown = escaped(shown_name(std::string(without_marks(text))));
    next(drawing, "vesk.name", shown.c_str());
    return next(drawing, part, shown.c_str());
}

/* What a block of text draws; what the module has set stays with its widget. */
void evas_object_textblock_text_markup_set(Evas_Object *block, const char *markup)
{
    static const auto next = reinterpret_cast<decltype(&evas_object_textblock_text_markup_set)>(
        dlsym(RTLD_NEXT, "evas_object_textblock_text_markup_set"));
    next(block, markup ? vesk::efl::without_colours(markup).c_str() : nullptr);
}

/* A label without a style of its own is given its sizes for the form of the panel, so it must not shrink with the
   window once more; one with a style follows the window. To see it: the details on a turned board. */
Evas_Object *elm_label_add(Evas_Object *parent)
{
    static const auto next = reinterpret_cast<decltype(&elm_label_add)>(dlsym(RTLD_NEXT, "elm_label_add"));
    auto *label = next(parent);
    if (label)
        elm_object_scale_set(label, 1.0);
    return label;
}

Eina_Bool elm_object_style_set(Evas_Object *object, const char *style)
{
    static const auto next =
        reinterpret_cast<decltype(&elm_object_style_set)>(dlsym(RTLD_NEXT, "elm_object_style_set"));
    const char *type = object ? evas_object_type_get(object) : nullptr;
    if (type && std::string_view(type) == "elm_label")
        elm_object_scale_set(object, 0.0);
    return next(object, style);
}

} // extern "C"
