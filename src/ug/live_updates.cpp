#include "ug/live_updates.h"

#include "log.h"
#include "ug/app_data.h"
#include "ug/edit_state.h"
#include "ug/focus.h"
#include "ug/main_list.h"
#include "vesk/device_list.h"
#include "vesk/device_table.h"

int vesk_rdm_callback(void *app, RdmDeviceInfo *info)
{
    if (!info) {
        LOG_W("callback without a record");
        return 0;
    }
    LOG_I("Status changed >> BTMAC[%.18s], WIFIMAC[%.18s], P2PMAC[%.18s], STATUS[%d]", info->bt_mac, info->wifi_mac,
          info->p2p_mac, info->status);
    switch (info->status) {
    case 0:
    case 1:
        break;
    case 3:
    case 4:
        return 0;
    default:
        LOG_W("Invalid status[%d]", info->status);
        return 0;
    }
    if (b_edit_status) {
        LOG_W("Edit mode now. refresh canceled.");
        return 0;
    }
    vesk_refresh_list(static_cast<AppData *>(app));
    return 0;
}

void vesk_refresh_list(AppData *app)
{
    vesk_read_all();
    if (!app || !app->base) {
        LOG_W("no screen to refresh");
        return;
    }
    refresh_genlist(app);
    focus_list(app);
    set_main_focus_chain(app);
    if (device_count != 0)
        undim_button(app->edit_button);
    else
        dim_button(app->edit_button);
    LOG_I("ListRefreshed [%d]", device_count);
}
