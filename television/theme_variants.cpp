#include "television/theme_variants.h"

#include <Edje.h>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
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

} // namespace

void show_form(Form form)
{
    if (form == Form::wide) {
        for_each_size("tall", [](const std::string &name, const auto &) { edje_size_class_del(name.c_str()); });
        return;
    }
    for_each_size(form == Form::tall ? "tall" : "compact", [](const std::string &name, const Edje_Size_Class &size) {
        edje_size_class_set(name.c_str(), size.minw, size.minh, size.maxw, size.maxh);
    });
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
