#include "ug/detail_popup.h"

#include <cstdio>

#include "log.h"
#include "translate.h"
#include "ug/app_data.h"
#include "ug/buttons.h"
#include "ug/focus.h"
#include "ug/keys.h"
#include "ug/layout.h"
#include "ug/markup.h"
#include "ug/orientation.h"
#include "ug/platform_facts.h"
#include "ug/rows.h"
#include "ug/service_list.h"
#include "vesk/device_services.h"

namespace {

/* Design sizes of the popup's content, in pixels at the application base scale. */
struct ContentSize {
    int width;
    int heading_height;
};

constexpr int kHeadingMaxHeight = 132;
constexpr int kCaptionHeight = 44;
constexpr int kListBackHeight = 460;
constexpr int kMarginWidth = 30;
constexpr int kMarginHeight = 504;

} // namespace

/* Both texts are formatted into buffers of this size, in bytes; longer ones are cut. */
constexpr size_t kMarkupSize = 300;

static bool is_compact()
{
    return b_is_tablo && is_portrait_mode();
}

static double layout_factor()
{
    return is_compact() ? kCompactFactor : 1.0;
}

static void set_min_size(Evas_Object *object, int width, int height)
{
    const double factor = layout_factor();
    evas_object_size_hint_min_set(object, scaled(width * factor), scaled(height * factor));
}

static void set_max_size(Evas_Object *object, int width, int height)
{
    const double factor = layout_factor();
    evas_object_size_hint_max_set(object, scaled(width * factor), scaled(height * factor));
}

/* A rectangle of a fixed design size on the table's canvas. */
static Evas_Object *add_rectangle(Evas_Object *table, int width, int height)
{
    Evas_Object *rectangle = evas_object_rectangle_add(evas_object_evas_get(table));
    expand_and_fill(rectangle);
    set_min_size(rectangle, width, height);
    set_max_size(rectangle, width, height);
    return rectangle;
}

static Evas_Object *add_shade(Evas_Object *table, int width, int height, int alpha)
{
    Evas_Object *shade = add_rectangle(table, width, height);
    evas_object_color_set(shade, 0, 0, 0, alpha);
    return shade;
}

static void set_heading(Evas_Object *label, int font_size, const char *align)
{
    char text[kMarkupSize];
    snprintf(text, sizeof text, "<align=%s><font=CorvaneSans_400:style=Regular font_size=%d>%s</font></align>", align,
             font_size, translated("COM_SID_HERE_LIST_OF_SERVICES_FOR_SELECTED_DEVICE"));
    elm_object_text_set(label, text);
}

static bool is_too_wide(int text_width, int width)
{
    return is_compact() ? text_width > kCompactFactor * width : text_width > width;
}

static void add_heading(Evas_Object *table, const ContentSize &size)
{
    Evas_Object *spacer = add_rectangle(table, size.width, size.heading_height);
    elm_table_pack(table, spacer, 0, 0, 1, 1);

    Evas_Object *label = elm_label_add(spacer);
    expand_and_fill(label);
    if (is_compact())
        set_heading(label, 17, align_word());
    else
        set_heading(label, 30, "center");
    int text_width = 0;
    edje_object_part_geometry_get(elm_layout_edje_get(label), "elm.text", nullptr, nullptr, &text_width, nullptr);
    LOG_I("Text width[%d]", text_width);
    /* Size 30 in the compact layout too: a heading that needs several lines is set larger there, deliberately. */
    if (is_too_wide(text_width, size.width))
        set_heading(label, 30, align_word());
    set_min_size(label, size.width, size.heading_height);
    set_max_size(label, size.width, kHeadingMaxHeight);
    elm_label_line_wrap_set(label, ELM_WRAP_WORD);
    elm_table_pack(table, label, 0, 0, 1, 1);
    evas_object_show(label);
}

static void add_caption(Evas_Object *table, int width)
{
    Evas_Object *band = add_shade(table, width, kCaptionHeight, 30);
    elm_table_pack(table, band, 0, 3, 1, 1);
    evas_object_show(band);

    char text[kMarkupSize];
    snprintf(text, sizeof text,
             "<align=%s><font=CorvaneSans_400:style=Regular font_size=%d color=#25a3ba>    %s</font></align>",
             align_word(), is_compact() ? 14 : 24, translated("TV_SID_ALLOWED_SERVICES"));
    Evas_Object *label = elm_label_add(band);
    expand_and_fill(label);
    elm_object_text_set(label, text);
    elm_table_pack(table, label, 0, 3, 1, 1);
    evas_object_show(label);
}

static void add_services(AppData *app, Evas_Object *table, int width)
{
    Evas_Object *list = service_genlist(app, table);
    LOG_I("widthrect[%d]", width);
    Evas_Object *back = add_shade(table, width, kListBackHeight, 10);
    elm_table_pack(table, back, 0, 4, 1, 5);
    expand_and_fill(list);
    elm_table_pack(table, list, 0, 4, 1, 5);
    evas_object_show(back);

    Evas_Object *margin = add_rectangle(table, kMarginWidth, kMarginHeight);
    elm_table_pack(table, margin, 1, 3, 1, 6);
}

static void delete_dropdown(AppData *app)
{
    if (!app->action_popup)
        return;
    delete_object(app->action_aux);
    delete_object(app->action_popup);
    delete_object(app->action_genlist);
}

static Evas_Object *add_popup(AppData *app)
{
    Evas_Object *popup = elm_popup_add(app->win);
    elm_object_style_set(popup, "C_PopupBasic_WhiteRight");
    expand_and_fill(popup);
    evas_object_event_callback_add(popup, EVAS_CALLBACK_KEY_DOWN, Close_detail_popup_On_returnKey, app);
    if (b_is_tablo)
        evas_object_smart_callback_add(popup, "block,clicked", Close_detail_popup_On_touch_outside, app);
    elm_object_part_text_set(popup, "title,text", translated("COM_VIEW_DETAILS"));
    return popup;
}

void show_detail_popup(AppData *app)
{
    LOG_I("Enter");
    elm_win_focus_highlight_enabled_set(app->win, EINA_TRUE);
    undim_base(app);
    delete_dropdown(app);
    evas_object_show(app->win);

    Evas_Object *popup = add_popup(app);
    Evas_Object *table = elm_table_add(popup);
    const ContentSize size = isJuniperLarchProduct() ? ContentSize{810, 80} : ContentSize{780, 44};
    add_heading(table, size);
    add_caption(table, size.width);
    app->detail_close_button = add_popup_button(popup, "button1", translated("COM_SID_CLOSE"), _close_button_cb, app);
    elm_object_focus_allow_set(app->detail_close_button, EINA_TRUE);
    add_services(app, table, size.width);
    evas_object_show(table);
    elm_object_content_set(popup, table);

    elm_access_info_cb_set(app->detail_close_button, ELM_ACCESS_INFO, _detail_screen_reader, nullptr);
    evas_object_smart_callback_add(app->service_genlist, "realized", genlistRealizedCbDetail, app);
    evas_object_smart_callback_add(app->service_genlist, "item,focused", _service_item_focus_cb, app);
    evas_object_smart_callback_add(app->service_genlist, "item,unfocused", _service_item_unfocus_cb, app);

    app->detail_popup = popup;
    elm_win_focus_highlight_enabled_set(popup, EINA_TRUE);
    take_focus(app->genlist);
    elm_object_focus_allow_set(app->genlist, EINA_FALSE);
    elm_object_focus_allow_set(app->detail_close_button, EINA_TRUE);
    give_focus(app->detail_close_button);
    evas_object_show(popup);
    LOG_I("Exit");
}

static void return_to_list(AppData *app)
{
    elm_object_focus_set(app->win, EINA_TRUE);
    elm_object_focus_allow_set(app->edit_button, EINA_TRUE);
    elm_object_focus_allow_set(app->close_button, EINA_TRUE);
    elm_object_focus_allow_set(app->genlist, EINA_TRUE);
    give_focus(app->genlist);
    unselect_row(app->genlist);
}

void _close_button_cb(void *data, Evas_Object * /*obj*/, void * /*event_info*/)
{
    AppData *app = static_cast<AppData *>(data);
    LOG_I("Enter");
    remove_popup(app->detail_popup);
    evas_object_show(app->base);
    evas_object_show(app->genlist);
    return_to_list(app);
    LOG_I("Exit");
}

void Close_detail_popup_On_touch_outside(void *data, Evas_Object * /*obj*/, void * /*event_info*/)
{
    AppData *app = static_cast<AppData *>(data);
    LOG_I("Enter");
    remove_popup(app->detail_popup);
    if (app_data)
        elm_object_focus_set(app_data->genlist, EINA_TRUE);
    return_to_list(app);
    LOG_I("Exit");
}

void Close_detail_popup_On_returnKey(void *data, Evas * /*canvas*/, Evas_Object *obj, void *event_info)
{
    const char *key = key_name(event_info);
    if (!key) {
        LOG_W("event null");
        return;
    }
    LOG_I("Key[%s]", key);
    if (is_close_key(key) || is_back_key(key))
        Close_detail_popup_On_touch_outside(data, obj, event_info);
}

char *_detail_screen_reader(void * /*data*/, Evas_Object * /*obj*/)
{
    Eina_Strbuf *text = eina_strbuf_new();
    /* The catalogue's texts are formats without arguments here; its checks keep conversions out of them. */
    eina_strbuf_append_printf(text, translated("COM_VIEW_DETAILS"));
    eina_strbuf_append(text, ",");
    eina_strbuf_append_printf(text, translated("COM_SID_HERE_LIST_OF_SERVICES_FOR_SELECTED_DEVICE"));
    eina_strbuf_append(text, ",");
    eina_strbuf_append_printf(text, translated("TV_SID_ALLOWED_SERVICES"));
    eina_strbuf_append(text, ":");
    /* Counted before every row: each count fills the texts anew. */
    for (int i = 0; i < get_service_count(); ++i) {
        eina_strbuf_append(text, services[i]);
        eina_strbuf_append(text, ",");
    }
    eina_strbuf_append_printf(text, translated("COM_SID_CLOSE"));
    char *spoken = eina_strbuf_string_steal(text);
    eina_strbuf_free(text);
    return spoken;
}
