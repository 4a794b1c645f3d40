#include "ug/settings_watch.h"

#include <Elementary.h>
#include <vconf.h>

#include "log.h"

void _set_bg_contrast(Evas_Object *popup)
{
    int contrast = 0;
    if (vconf_get_int("db/menu/system/accessibility/highcontrast", &contrast) != 0) {
        LOG_W("Get high contrast vconf Fail or Null Pointer");
        return;
    }
    elm_object_signal_emit(popup, contrast == 1 ? "highcontrast_on" : "highcontrast_off", "bg_set");
}
