/* High contrast. The module tells the base popup before that popup has its style, and a new style starts in its first
   state; other popups and rows are never told. So the theme's colours follow the setting as a whole, also while a
   screen is open: while it is on, the colours of a role are those that the theme names "ROLE/contrast". To see the
   toolkit's gap: turn the setting on without this room, start, and nothing has changed. */

#include "bends.h"

#include <Edje.h>

#include "desktop/settings.h"
#include "toolkit.h"
#include "vconf.h"

namespace vesk::bends {

namespace {

constexpr std::string_view kContrast = "/contrast";

/* Calls `visit(role, colours)` for every colour of the theme that has a value for high contrast. */
template <class Visit> void for_each_role(Visit visit)
{
    Eina_File *theme = eina_file_open(theme_file().c_str(), EINA_FALSE);
    if (!theme)
        return;
    Eina_Iterator *classes = edje_mmap_color_class_iterator_new(theme);
    void *data = nullptr;
    EINA_ITERATOR_FOREACH(classes, data)
    {
        const auto *colours = static_cast<const Edje_Color_Class *>(data);
        const std::string_view name = colours->name;
        if (name.ends_with(kContrast))
            visit(std::string(name.substr(0, name.size() - kContrast.size())), *colours);
    }
    eina_iterator_free(classes);
    eina_file_close(theme);
}

bool contrast_setting()
{
    int value = 0;
    return vconf_get_int(vesk_port::high_contrast_setting.key, &value) == 0 && value == 1;
}

void follow_setting(keynode_t *, void *)
{
    const bool on = contrast_setting();
    for_each_role([on](const std::string &role, const Edje_Color_Class &c) {
        if (on)
            edje_color_class_set(role.c_str(), c.r, c.g, c.b, c.a, c.r2, c.g2, c.b2, c.a2, c.r3, c.g3, c.b3, c.a3);
        else
            edje_color_class_del(role.c_str());
    });
}

} // namespace

void begin_contrast()
{
    follow_setting(nullptr, nullptr);
    vconf_notify_key_changed(vesk_port::high_contrast_setting.key, follow_setting, nullptr);
}

void end_contrast()
{
    vconf_ignore_key_changed(vesk_port::high_contrast_setting.key, follow_setting);
}

} // namespace vesk::bends
