#include "ug/rows.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "log.h"
#include "translate.h"
#include "ug/app_data.h"
#include "ug/device_icons.h"
#include "ug/markup.h"
#include "vesk/device_table.h"

int32_t selected_item_index;

void refresh_table()
{
    if (app_data)
        vesk_get_table(&app_data->table);
}

Evas_Object *add_device_icon(Evas_Object *list, const void *data)
{
    Evas_Object *icon = elm_icon_add(list);
    if (const DeviceEntry *entry = static_cast<const DeviceEntry *>(data))
        _load_device_icon(icon, entry->type, entry->icon);
    return icon;
}

char *_item_label_get(void *data, Evas_Object * /*obj*/, const char *part)
{
    char text[256] = "";
    const DeviceEntry *entry = static_cast<const DeviceEntry *>(data);
    if (entry && strcmp(part, "elm.text") == 0) {
        /* The marks let a name keep its own direction inside a right-to-left layout. */
        snprintf(text, sizeof text, "&#x200e;%s&#x200e;", entry->name[0] != '\0' ? entry->name : "UNKNOWN");
    } else if (entry && strcmp(part, "elm.text.1") == 0) {
        snprintf(text, sizeof text, "%s",
                 entry->state & kStateAllowed ? translated("COM_SID_ALLOWED") : translated("COM_SID_DENIED_KR_DENY"));
    }
    return new_text(text);
}

Evas_Object *_item_content_get(void *data, Evas_Object *obj, const char *part)
{
    refresh_table();
    return strcmp(part, "elm.swallow.icon") == 0 ? add_device_icon(obj, data) : nullptr;
}

Elm_Genlist_Item_Class *new_row_class(Elm_Gen_Item_Content_Get_Cb content_get)
{
    Elm_Genlist_Item_Class *row_class = elm_genlist_item_class_new();
    if (!row_class) {
        LOG_E("Cannot create genlist item class");
        return nullptr;
    }
    row_class->item_style = "C_TextItem_WhiteSingleline05";
    row_class->func.text_get = _item_label_get;
    row_class->func.content_get = content_get;
    row_class->func.state_get = nullptr;
    row_class->func.del = nullptr;
    return row_class;
}

void append_device_rows(AppData *app, const Elm_Genlist_Item_Class *row_class, int count, Evas_Smart_Cb selected)
{
    for (int i = 0; i < std::min(count, kTableCapacity); ++i)
        elm_genlist_item_append(app->genlist, row_class, &app->table[i], nullptr, ELM_GENLIST_ITEM_NONE, selected, app);
}

int row_of_item(const Elm_Object_Item *item)
{
    if (!item)
        return -1;
    /* The toolkit counts from 1. */
    const int row = elm_genlist_item_index_get(item) - 1;
    return row >= 0 && row < kTableCapacity ? row : -1;
}

Evas_Object *check_of_item(const Elm_Object_Item *item)
{
    return elm_object_item_part_content_get(item, "elm.swallow.checkbox");
}

void set_row_reader(Elm_Object_Item *item, Elm_Access_Info_Cb callback)
{
    if (!elm_config_access_get())
        return;
    Evas_Object *access = elm_object_item_access_object_get(item);
    if (access)
        elm_access_info_cb_set(access, ELM_ACCESS_INFO, callback, item);
    else
        LOG_E("access object NULL");
}

void unselect_row(Evas_Object *list)
{
    if (Elm_Object_Item *selected = elm_genlist_selected_item_get(list))
        elm_genlist_item_selected_set(selected, EINA_FALSE);
}
