#include "television/theme_variants.h"

#include <Edje.h>
#include <Elementary.h>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "television/toolkit.h"

namespace vesk {

namespace {

using ThemeFile = std::unique_ptr<Eina_File, decltype(&eina_file_close)>;
using Classes = std::unique_ptr<Eina_Iterator, decltype(&eina_iterator_free)>;

/* Calls `visit(name, values)` for every class "NAME/VARIANT" that `list` finds in the theme. */
template <class Class, class List, class Visit> void for_each_variant(std::string_view variant, List list, Visit visit)
{
    const ThemeFile theme(eina_file_open(theme_file().c_str(), EINA_FALSE), eina_file_close);
    if (!theme)
        return;
    const Classes classes(list(theme.get()), eina_iterator_free);
    const std::string ending = "/" + std::string(variant);
    void *data = nullptr;
    while (classes && eina_iterator_next(classes.get(), &data)) {
        const auto *values = static_cast<const Class *>(data);
        const std::string_view name = values->name;
        if (name.ends_with(ending))
            visit(std::string(name.substr(0, name.size() - ending.size())), *values);
    }
}

template <class Visit> void for_each_size(std::string_view variant, Visit visit)
{
    for_each_variant<Edje_Size_Class>(variant, edje_mmap_size_class_iterator_new, visit);
}

void put_sizes(std::string_view variant)
{
    for_each_size(variant, [](const std::string &name, const Edje_Size_Class &size) {
        edje_size_class_set(name.c_str(), size.minw, size.minh, size.maxw, size.maxh);
    });
}

void take_sizes_back(std::string_view variant)
{
    for_each_size(variant, [](const std::string &name, const auto &) { edje_size_class_del(name.c_str()); });
}

/* Of the wide panel, in pixels. */
constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kMargin = 60;
/* Of the theme, in design pixels. */
constexpr int kReach = 730;                 /* from the list's middle to the end of its popup */
constexpr int kFloor = 76;                  /* under the popup, as much as the title takes above */
constexpr int kHighest = 712;               /* the details with a heading of two lines */
constexpr double kGreatestTallScale = 1.15; /* 820 of the list, and the margins */

double scale_now = 1.0;
int middle_now = 0;

/* The popup stays on the panel in both writing directions, with its end at the margin when it would pass it. */
int fitting_middle(double scale)
{
    const int middle = theme_number("vesk/list-middle");
    const int reach = static_cast<int>(std::lround(kReach * scale));
    return elm_config_mirrored_get() ? std::max(middle, kMargin + reach) : std::min(middle, kWidth - kMargin - reach);
}

int fitting_floor(double scale)
{
    return std::clamp(static_cast<int>(kHeight / scale) - kHighest, 0, kFloor);
}

void show_text_sizes(bool compact)
{
    for_each_variant<Edje_Text_Class>(
        "compact", edje_mmap_text_class_iterator_new, [compact](const std::string &name, const Edje_Text_Class &text) {
            if (compact)
                edje_text_class_set(name.c_str(), nullptr, -text.size); /* below zero: in percent */
            else
                edje_text_class_del(name.c_str());
        });
}

} // namespace

double fitting_scale(Form form, double scale)
{
    return form == Form::tall ? std::min(scale, kGreatestTallScale) : scale;
}

void show_form(Form form, double scale)
{
    take_sizes_back("tall");
    if (form != Form::wide)
        put_sizes(form == Form::tall ? "tall" : "compact");
    show_text_sizes(form == Form::compact);
    scale_now = scale;
    middle_now = form == Form::wide ? fitting_middle(scale) : kHeight / 2;
    if (form != Form::wide || scale <= 1.0)
        return;
    edje_size_class_set("vesk/middle", middle_now, 0, middle_now, 0);
    edje_size_class_set("vesk/floor", 0, fitting_floor(scale), 0, fitting_floor(scale));
}

double shown_scale()
{
    return scale_now;
}

int list_middle()
{
    return middle_now;
}

void show_script(const std::string &language)
{
    static constexpr std::array<std::string_view, 3> kHan{"ja", "ko", "zh"};
    if (std::ranges::find(kHan, language) != kHan.end())
        put_sizes("cjk");
    else
        take_sizes_back("cjk");
}

void show_contrast(bool high)
{
    for_each_variant<Edje_Color_Class>(
        "contrast", edje_mmap_color_class_iterator_new, [high](const std::string &name, const Edje_Color_Class &c) {
            if (high)
                edje_color_class_set(name.c_str(), c.r, c.g, c.b, c.a, c.r2, c.g2, c.b2, c.a2, c.r3, c.g3, c.b3, c.a3);
            else
                edje_color_class_del(name.c_str());
        });
}

int theme_number(const char *name)
{
    const std::unique_ptr<char, decltype(&std::free)> text(edje_file_data_get(theme_file().c_str(), name), std::free);
    int number = 0;
    if (text)
        std::from_chars(text.get(), text.get() + std::strlen(text.get()), number);
    return number;
}

} // namespace vesk
