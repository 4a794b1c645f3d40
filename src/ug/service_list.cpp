#include "ug/service_list.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "log.h"
#include "translate.h"
#include "ug/app_data.h"
#include "ug/markup.h"
#include "ug/platform_facts.h"
#include "ug/rows.h"
#include "ug/screen_reader.h"
#include "vesk/device_services.h"
#include "vesk/device_table.h"
#include "vesk/product_name.h"

#define PICTURE_FOLDER "/usr/apps/com.corvane.tv.theme-resource/shared/res/ug-VeskUG-efl/"

static const char *const kHomeConnectPicture = PICTURE_FOLDER "r_icon_service_s_corvaneconnect_w.webp";
static const char *const kMirroringPicture = PICTURE_FOLDER "r_icon_service_s_castelo_w.webp";
static const char *const kMobileContentPicture = PICTURE_FOLDER "r_icon_service_s_pct_w.webp";
static const char *const kSoundPicture = PICTURE_FOLDER "r_icon_service_s_sound_w.webp";

constexpr int32_t kTypePhone = 1;
constexpr int32_t kTypeTablet = 2;

/* Bytes of a service's text; longer ones are cut. */
constexpr size_t kTextSize = 300;

/* Service bits that the text getter and the picture getter have not shown yet; 0 asks for the device's again. */
static unsigned int text_cursor;
static unsigned int picture_cursor;

void reset_service_cursors()
{
    text_cursor = picture_cursor = 0;
}

static const DeviceEntry *selected_device()
{
    const DeviceEntry *table = app_data && app_data->table ? app_data->table : gVeskTable;
    if (selected_item_index >= 0 && selected_item_index < kTableCapacity)
        return &table[selected_item_index];
    LOG_W("no device is selected");
    return nullptr;
}

static unsigned int services_of(const DeviceEntry *device)
{
    return device ? vesk_get_service(device) : 0;
}

static bool plays_sound(const DeviceEntry *device)
{
    return device && (device->type == kTypePhone || device->type == kTypeTablet);
}

/* What service texts say of this television. */
struct Television {
    std::string product; /* the word for it */
    bool chinese;        /* sold in China */
};

static Television ask_television()
{
    char *product = get_product_name();
    Television television{product ? product : "", is_sold_in_china()};
    free(product);
    return television;
}

static const char *home_connect_text(const Television &television)
{
    return translated(television.chinese ? "COM_SID_CORVANE_CONNECT" : "TV_SID_DOMOVO");
}

/* The sentence of a string id with the word for the television in it, written to `text`; `lead` (null for none) and a
 * slash stand before it. */
static void write_sentence(char *text, size_t size, const char *id, const Television &television, const char *lead)
{
    const std::string sentence = text_with(id, television.product);
    if (lead)
        snprintf(text, size, "%s / %s", lead, sentence.c_str());
    else
        snprintf(text, size, "%s", sentence.c_str());
}

static void write_mobile_content(char *text, size_t size, const Television &television)
{
    write_sentence(text, size, "PJT_SID_PLAY_MOBILE_CONTENT_TV", television, nullptr);
}

static void write_sound(char *text, size_t size, const DeviceEntry *device, const Television &television)
{
    write_sentence(text, size,
                   device->type == kTypePhone ? "PJT_SID_REGISTER_DEVICE_PLAY_TV_SOUND_ON_PHONE"
                                              : "PJT_SID_REGISTER_DEVICE_PLAY_TV_SOUND_ON_TABLET",
                   television, b_sound_mirroring ? translated("TV_SID_SOUND_MIRRORING") : nullptr);
}

int get_service_count()
{
    static char ex_buf[kTextSize];
    static char buf[kTextSize];

    const DeviceEntry *device = selected_device();
    const unsigned int mask = services_of(device);
    const Television television = ask_television();
    int count = 0;
    if (mask == kServiceAll) {
        services[count++] = home_connect_text(television);
    } else {
        if (mask & kServiceP2p) {
            services[count++] = translated("COM_SID_NON_CASTELO");
        } else if (mask & kServiceWifi) {
            write_mobile_content(ex_buf, sizeof ex_buf, television);
            services[count++] = ex_buf;
        }
        if ((mask & kServiceBluetooth) && plays_sound(device)) {
            write_sound(buf, sizeof buf, device, television);
            services[count++] = buf;
        }
    }
    LOG_I("service count:[%d]", count);
    return count;
}

char *_service_item_label_get(void *data, Evas_Object * /*obj*/, const char *part)
{
    char text[256] = "";
    const Television television = ask_television();
    if (text_cursor == 0)
        text_cursor = services_of(selected_device());
    if (text_cursor != 0)
        LOG_I("[VESKAUTOTC][VIEWDETAIL]");
    if (!data || strcmp(part, "elm.text") != 0)
        return new_text(text);

    const DeviceEntry *device = selected_device();
    if (text_cursor == kServiceAll) {
        snprintf(text, sizeof text, "%s", home_connect_text(television));
        text_cursor = 0;
    } else if (text_cursor & kServiceP2p) {
        snprintf(text, sizeof text, "%s", translated("COM_SID_NON_CASTELO"));
        /* The mirroring app stands for playing mobile content as well. */
        text_cursor &= ~(kServiceP2p | kServiceWifi);
    } else if (text_cursor & kServiceWifi) {
        write_mobile_content(text, sizeof text, television);
        text_cursor &= ~kServiceWifi;
    } else if ((text_cursor & kServiceBluetooth) && plays_sound(device)) {
        write_sound(text, sizeof text, device, television);
        text_cursor &= ~kServiceBluetooth;
    } else {
        LOG_E("Invalid service type = [%d]", static_cast<int>(text_cursor));
        snprintf(text, sizeof text, "UNKNOWN");
        text_cursor = 0;
    }
    return new_text(text);
}

static const char *next_picture()
{
    if (picture_cursor == kServiceAll) {
        picture_cursor = 0;
        return kHomeConnectPicture;
    }
    if (picture_cursor & kServiceP2p) {
        picture_cursor &= ~(kServiceP2p | kServiceWifi);
        return kMirroringPicture;
    }
    if (picture_cursor & kServiceWifi) {
        picture_cursor &= ~kServiceWifi;
        return kMobileContentPicture;
    }
    if (picture_cursor & kServiceBluetooth) {
        picture_cursor &= ~kServiceBluetooth;
        return kSoundPicture;
    }
    LOG_E("Invalid service type = [%d]", static_cast<int>(picture_cursor));
    picture_cursor = 0;
    return kMirroringPicture;
}

Evas_Object *_service_item_content_get(void * /*data*/, Evas_Object *obj, const char *part)
{
    Evas_Object *icon = elm_icon_add(obj);
    if (picture_cursor == 0)
        picture_cursor = services_of(selected_device());
    if (strcmp(part, "elm.swallow.icon") == 0)
        elm_image_file_set(icon, next_picture(), nullptr);
    evas_object_show(icon);
    return icon;
}

void _service_genlist_cb(void *data, Evas_Object *obj, void * /*event_info*/)
{
    AppData *app = static_cast<AppData *>(data);
    LOG_I("Enter");
    Elm_Object_Item *selected = elm_genlist_selected_item_get(obj);
    Elm_Object_Item *focused = elm_object_focused_item_get(app->service_genlist);
    for (Elm_Object_Item *item : {selected, focused}) {
        if (item)
            elm_object_item_signal_emit(item, "elm,state,unselected", "elm");
    }
}

void genlistRealizedCbDetail(void * /*data*/, Evas_Object * /*obj*/, void *event_info)
{
    Elm_Object_Item *item = static_cast<Elm_Object_Item *>(event_info);
    if (!item)
        return;
    LOG_I("Enter");
    elm_object_item_signal_emit(item, "theme,singleline,icon,2text", "");
    set_row_reader(item, _list_reader);
    LOG_I("Exit");
}

static Evas_Object *picture_of(const Elm_Object_Item *item)
{
    return elm_object_item_part_content_get(item, "elm.swallow.icon");
}

void _service_item_focus_cb(void * /*data*/, Evas_Object * /*obj*/, void *event_info)
{
    Elm_Object_Item *item = static_cast<Elm_Object_Item *>(event_info);
    Evas_Object *icon = picture_of(item);
    LOG_I("Item  [%p] has focus, change icon [%p] color", static_cast<void *>(item), static_cast<void *>(icon));
    if (icon)
        evas_object_color_set(icon, 0, 0, 0, 255);
    LOG_I("genlist item focused: %s\n", row_text(item, "elm.text").c_str());
}

void _service_item_unfocus_cb(void * /*data*/, Evas_Object * /*obj*/, void *event_info)
{
    Elm_Object_Item *item = static_cast<Elm_Object_Item *>(event_info);
    Evas_Object *icon = picture_of(item);
    LOG_I("Item\t[%p] has focus, change icon [%p] color", static_cast<void *>(item), static_cast<void *>(icon));
    if (icon)
        evas_object_color_set(icon, 255, 255, 255, 255);
    LOG_I("genlist item unfocused: %s\n", row_text(item, "elm.text").c_str());
}

/* The toolkit asks for a row's text and picture once more than it shows them: at once when the row is appended, to
 * measure it. What measuring has used up is put back, so that the rows on the screen begin where the cursors stood. */
static void append_services(AppData *app, Evas_Object *list, const Elm_Genlist_Item_Class *row_class)
{
    const unsigned int text_before = text_cursor;
    const unsigned int picture_before = picture_cursor;
    const int count = get_service_count();
    for (int i = 0; i < count; ++i) {
        elm_genlist_item_append(list, row_class, &app->table[i], nullptr, ELM_GENLIST_ITEM_NONE, _service_genlist_cb,
                                app);
    }
    text_cursor = text_before;
    picture_cursor = picture_before;
}

Evas_Object *service_genlist(AppData *app, Evas_Object *table)
{
    Evas_Object *list = elm_genlist_add(table);
    app->service_genlist = list;
    Elm_Genlist_Item_Class *row_class = elm_genlist_item_class_new();
    if (!row_class) {
        LOG_E("Cannot create genlist item class");
        return list;
    }
    row_class->item_style = "C_TextItem_WhiteSingleline02";
    row_class->func.text_get = _service_item_label_get;
    row_class->func.content_get = _service_item_content_get;
    row_class->func.state_get = nullptr;
    row_class->func.del = nullptr;
    append_services(app, list, row_class);
    elm_genlist_item_class_free(row_class);
    evas_object_show(list);
    elm_genlist_select_mode_set(list, ELM_OBJECT_SELECT_MODE_ALWAYS);
    elm_object_focus_allow_set(list, EINA_TRUE);
    return list;
}
