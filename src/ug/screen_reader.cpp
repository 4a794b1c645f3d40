#include "ug/screen_reader.h"

#include <string>

#include "log.h"
#include "translate.h"
#include "ug/app_data.h"
#include "ug/edit_state.h"
#include "ug/markup.h"
#include "ug/rows.h"
#include "vesk/device_table.h"

bool b_check_tts = true;
int32_t subpopup_position;
bool b_subpopup_entered;
bool b_delete_popup_entered;

static std::string name_and_status(const Elm_Object_Item *item)
{
    return row_text(item, "elm.text") + "," + row_text(item, "elm.text.1");
}

char *_noitem_screen_reader(void * /*data*/, Evas_Object * /*obj*/)
{
    if (!b_check_tts || device_count != 0)
        return nullptr;
    b_check_tts = false;
    return new_text(std::string(translated("COM_SID_DEVICE_LIST_KR_LIST")) + "," +
                    translated("SID_NO_EQUIPMENT_STORED_MSG") + "," + translated("COM_SID_CLOSE"));
}

char *_list_reader(void *data, Evas_Object * /*obj*/)
{
    const Elm_Object_Item *item = static_cast<const Elm_Object_Item *>(data);
    std::string text;
    if (b_edit_status) {
        text = std::string(translated("TV_SID_CHECKBOX")) + "," + translated("TV_SID_UNCHECKED") + ",";
    } else if (b_check_tts) {
        text = std::string(translated("COM_SID_DEVICE_LIST_KR_LIST")) + ",";
        if (device_count > 0)
            text += text_with("TV_SID_MIX_ITEMS", count_text(device_count)) + ",";
        b_check_tts = false;
    }
    return new_text(text + name_and_status(item));
}

char *_subpopup_screen_reader(void * /*data*/, Evas_Object * /*obj*/)
{
    if (b_subpopup_entered)
        return nullptr;
    Elm_Object_Item *selected = app_data ? elm_genlist_selected_item_get(app_data->genlist) : nullptr;
    const int row = row_of_item(selected);
    if (row < 0) {
        LOG_W("no row is selected");
        return nullptr;
    }
    const bool allowed = gVeskTable[row].state & kStateAllowed;
    subpopup_position = allowed ? 0 : 1;
    b_subpopup_entered = true;
    const std::string text = row_text(selected, "elm.text") + "," + text_with("TV_SID_MIX_ITEMS", "3") + ", " +
                             translated(allowed ? "COM_SID_ALLOW" : "COM_SID_DENY_KR__SHARING");
    elm_access_say(text.c_str());
    return new_text(text);
}

char *_delete_screen_reader(void * /*data*/, Evas_Object * /*obj*/)
{
    std::string text = translated("COM_TV_SID_YES");
    if (!b_delete_popup_entered) {
        text = std::string(translated("COM_SID_DELETE")) + "," + translated("COM_SID_DELETE_SELECTED_DEVICES") + "," +
               text;
        b_delete_popup_entered = true;
    }
    elm_access_say(text.c_str());
    return new_text(text);
}
