#include "ug/module_state.h"

#include <algorithm>
#include <iterator>

#include "ug/action_popup.h"
#include "ug/app_data.h"
#include "ug/app_keys.h"
#include "ug/delete_popup.h"
#include "ug/direction.h"
#include "ug/edit_state.h"
#include "ug/pending_focus.h"
#include "ug/rows.h"
#include "ug/screen_reader.h"
#include "ug/service_list.h"
#include "vesk/device_services.h"
#include "vesk/device_table.h"

void reset_module_state()
{
    app_data = nullptr;
    b_sound_mirroring = b_is_tablo = false;
    gVeskHandler = -1;

    std::fill(std::begin(gVeskTable), std::end(gVeskTable), DeviceEntry{});
    device_count = -1;
    std::fill(std::begin(services), std::end(services), nullptr);

    gbReverse = false;
    current_position = 0;

    b_popup_expanded = b_subpopup_entered = false;
    g_subpopup_index = selected_item_index = subpopup_position = 0;
    pItem = nullptr;
    forget_dropdown();

    b_edit_status = false;
    std::fill(std::begin(b_remove_status), std::end(b_remove_status), false);
    g_selected_count = g_checkbox_index = g_orientation_checkbox_count = 0;

    b_delete_popup_entered = b_disable_focus = false;
    toastTimerTag = 0;
    forget_toast();

    b_check_tts = true;
    reset_service_cursors();
    forget_focus();
}
