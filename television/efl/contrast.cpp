/* High contrast. The module tells the base popup before that popup has its style, and a new style starts in its first
   state; other popups and rows are never told. So the theme's colours follow the setting as a whole, also while a
   screen is open. To see the gap: start with the setting on and without this source, and nothing has changed. */

#include "television/efl/contrast.h"

#include "desktop/fence.h"
#include "desktop/settings.h"
#include "television/theme_variants.h"
#include "vconf.h"

namespace vesk::efl {

namespace {

void follow_setting(keynode_t *, void *)
{
    vesk_port::fenced("high contrast", [] {
        int value = 0;
        show_contrast(vconf_get_int(vesk_port::kHighContrastSetting.key, &value) == 0 && value == 1);
    });
}

} // namespace

Contrast::Contrast()
{
    follow_setting(nullptr, nullptr);
    vconf_notify_key_changed(vesk_port::kHighContrastSetting.key, follow_setting, nullptr);
}

Contrast::~Contrast()
{
    vconf_ignore_key_changed(vesk_port::kHighContrastSetting.key, follow_setting);
}

} // namespace vesk::efl
