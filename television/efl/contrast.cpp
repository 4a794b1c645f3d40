/* High contrast. The module tells the base popup before that popup has its style, and a new style starts in its first
   state; other popups and rows are never told. So the theme's colours follow the setting as a whole, also while a
   screen is open. To see the gap: start with the setting on and without this room, and nothing has changed. */

#include "television/efl/contrast.h"

#include "desktop/settings.h"
#include "television/theme_variants.h"
#include "vconf.h"

namespace vesk::efl {

namespace {

void follow_setting(keynode_t *, void *)
{
    int value = 0;
    show_contrast(vconf_get_int(vesk_port::kHighContrastSetting.key, &value) == 0 && value == 1);
}

} // namespace

void begin_contrast()
{
    follow_setting(nullptr, nullptr);
    vconf_notify_key_changed(vesk_port::kHighContrastSetting.key, follow_setting, nullptr);
}

void end_contrast()
{
    vconf_ignore_key_changed(vesk_port::kHighContrastSetting.key, follow_setting);
}

} // namespace vesk::efl
