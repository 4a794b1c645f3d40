#include "ug/orientation.h"

#include <vconf.h>

#include "log.h"

bool is_portrait_mode()
{
    int orientation = 0;
    if (vconf_get_int(kOrientationKey, &orientation) != 0) {
        LOG_E("error vconf_get_int : %d", orientation);
        return false;
    }
    return orientation != 0;
}
