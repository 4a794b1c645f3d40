#include "ug/watches.h"

#include <vconf.h>

#include "log.h"
#include "ug/app_data.h"
#include "ug/orientation.h"
#include "ug/turn.h"

void register_rdm_callback(rdm_callback callback, AppData *app)
{
    const int result = rdm_callback_register(callback, app, &gVeskHandler);
    if (result == 0)
        LOG_I("RDM callback registered successfully - handler[%d]", gVeskHandler);
    else
        LOG_E("Failed to set RDM callback[%d]", result);
}

void deregister_rdm_callback()
{
    const int result = rdm_callback_deregister(gVeskHandler);
    if (result != 0) {
        LOG_E("Failed to unset RDM callback[%d]", result);
        return;
    }
    LOG_I("RDM callback deregistered successfully - handler[%d]", gVeskHandler);
    gVeskHandler = 0;
}

/* The two lines of the orientation watch speak of the RDM callback on purpose: log readers know them so. */
void watch_orientation()
{
    const int result = vconf_notify_key_changed(kOrientationKey, VconfNotifyCB, nullptr);
    if (result != 0)
        LOG_E("Failed to set RDM callback[%d]", result);
    else
        LOG_I("Success to set RDM callback[%d]", result);
}

static void unwatch_orientation()
{
    const int result = vconf_ignore_key_changed(kOrientationKey, VconfNotifyCB);
    if (result != 0)
        LOG_E("Failed to unset RDM callback[%d]", result);
    else
        LOG_I("Sucess to unset RDM callback[%d]", result);
}

void destroy_ug(AppData *app)
{
    if (gVeskHandler != 0) {
        deregister_rdm_callback();
        unwatch_orientation();
        rdm_deinit();
    }
    ug_destroy_me(app->ug);
}
