#include "ug/action_popup.h"

#include <cstdio>
#include <cstring>
#include <iterator>

#include "log.h"
#include "translate.h"
#include "ug/app_data.h"
#include "ug/detail_popup.h"
#include "ug/direction.h"
#include "ug/focus.h"
#include "ug/keys.h"
#include "ug/layout.h"
#include "ug/markup.h"
#include "ug/orientation.h"
#include "ug/pending_focus.h"
#include "ug/rows.h"
#include "ug/screen_reader.h"
#include "ug/sizing.h"
#include "vesk/device_actions.h"
#include "vesk/device_table.h"

bool b_popup_expanded;
int32_t g_subpopup_index;
Elm_Object_Item *pItem;

enum Choice { kChoiceAllow, kChoiceDeny, kChoiceDetails };

static const char *const kChoiceIds[] = {"COM_SID_ALLOW", "COM_SID_DENY_KR__SHARING", "COM_VIEW_DETAILS"};
constexpr int kChoices = static_cast<int>(std::size(kChoiceIds));

static const char *const kStyle = "C_ListDropdown_White";

/* The drop-down that is on the screen. The record's handle stays behind when one has been closed by a choice. */
static Evas_Object *shown_popup;

/* The class of its rows lives as long as they do, and a little longer. */
static Elm_Genlist_Item_Class *choice_class;

void release_choice_class()
{
    if (choice_class)
        elm_genlist_item_class_free(choice_class);
    choice_class = nullptr;
}

void forget_dropdown()
{
    shown_popup = nullptr;
    release_choice_class();
}

static void forget_popup(void * /*data*/, Evas * /*canvas*/, Evas_Object *obj, void * /*event_info*/)
{
    if (shown_popup == obj)
        shown_popup = nullptr;
}

/* Height of the drop-down: only the window's own scale applies to it, and the result is cut to whole pixels. */
static int dropdown_height(const AppData *app)
{
    return static_cast<int>(elm_object_scale_get(app->win) * 279);
}

static Evas_Object *add_choice_list(AppData *app, Evas_Object *popup)
{
    Evas_Object *list = elm_genlist_add(popup);
    app->action_genlist = list;
    expand_and_fill(list);
    evas_object_show(list);
    elm_object_scroll_item_loop_enabled_set(list, EINA_TRUE);
    elm_object_style_set(list, kStyle);
    elm_genlist_select_mode_set(list, ELM_OBJECT_SELECT_MODE_ALWAYS);
    return list;
}

static void size_dropdown(AppData *app, Evas_Object *popup, Evas_Object *list)
{
    if (b_is_tablo) {
        evas_object_resize(list, scaled(300), 279);
        /* The list is no popup, so this aligns nothing; boards are laid out by the theme alone, and it stays so. */
        elm_popup_align_set(list, -1.0, -1.0);
    } else {
        evas_object_resize(popup, scaled(300), dropdown_height(app));
        elm_popup_align_set(popup, -1.0, -1.0);
    }
}

static bool append_choices(AppData *app, Evas_Object *list)
{
    release_choice_class();
    choice_class = elm_genlist_item_class_new();
    if (!choice_class) {
        LOG_W("elm_genlist_item_class_new failed");
        return false;
    }
    choice_class->item_style = kStyle;
    choice_class->func.text_get = _item_labell_get;
    for (intptr_t i = 0; i < kChoices; ++i) {
        elm_genlist_item_append(list, choice_class, reinterpret_cast<void *>(i), nullptr, ELM_GENLIST_ITEM_NONE,
                                b_is_tablo ? _item_selected_cb_tablo : nullptr, app);
    }
    return true;
}

/* Marks the device's current state as the choice to begin with; a denied device has no details. */
static void preselect(const AppData *app, Evas_Object *list, int row)
{
    if (app->table[row].state & kStateAllowed) {
        g_subpopup_index = kChoiceAllow;
        return;
    }
    g_subpopup_index = kChoiceDeny;
    Elm_Object_Item *details = elm_genlist_nth_item_get(list, kChoiceDetails);
    if (details)
        elm_object_item_disabled_set(details, EINA_TRUE);
    else
        LOG_E("View Details item is NULL in list");
}

/* Places the drop-down beside the row's area; 2340 and 93 are pixels of the screen whatever its scale. */
static void place(Evas_Object *popup, const Eina_Rectangle &row)
{
    IsReveseOSD();
    int x = row.x + row.w;
    int y = row.y + row.h - 93;
    if (gbReverse) {
        x = 2340 - x;
        y += scaled(15);
    } else if (b_is_tablo && is_portrait_mode()) {
        x -= scaled(671);
        y -= scaled(837);
    } else if (b_is_tablo) {
        x -= scaled(1190);
        y -= scaled(385);
    } else {
        x -= scaled(380);
        y += scaled(15);
    }
    evas_object_move(popup, x, y);
}

static Eina_Rectangle area_of(Elm_Object_Item *item)
{
    Eina_Rectangle area{};
    Evas_Object *track = elm_object_item_track(item);
    evas_object_geometry_get(track, &area.x, &area.y, &area.w, &area.h);
    elm_object_item_untrack(item);
    return area;
}

void _create_popup(void *data, Evas_Object * /*obj*/, void * /*event_info*/)
{
    AppData *app = static_cast<AppData *>(data);
    /* The flag outlives a drop-down whose decision the service has refused, and that one has no choice left. */
    if (b_is_tablo && b_popup_expanded && shown_popup)
        _item_selected(app);
    b_popup_expanded = false;
    LOG_I("Enter");
    Elm_Object_Item *selected = elm_genlist_selected_item_get(app->genlist);
    const int row = row_of_item(selected);
    if (row < 0) {
        LOG_W("no row is selected");
        return;
    }
    /* A live refresh gives the list its keys back while a drop-down is open. */
    if (shown_popup)
        evas_object_del(shown_popup);
    elm_object_focus_set(app->genlist, EINA_FALSE);
    dim_behind(app->base, 20);
    dim_behind(app->win, 20);

    Evas_Object *popup = elm_popup_add(app->win);
    shown_popup = popup;
    evas_object_event_callback_add(popup, EVAS_CALLBACK_DEL, forget_popup, nullptr);
    expand_and_fill(popup);
    if (b_is_tablo)
        evas_object_smart_callback_add(popup, "block,clicked", _item_selected_cb_tablo, app);
    const Eina_Rectangle row_area = area_of(selected);
    elm_object_style_set(popup, kStyle);
    elm_object_signal_emit(popup, "elm,change,image", "elm");

    Evas_Object *list = add_choice_list(app, popup);
    size_dropdown(app, popup, list);
    if (!append_choices(app, list))
        return;
    preselect(app, list, row);
    elm_object_focus_set(list, EINA_TRUE);
    pItem = elm_genlist_nth_item_get(list, static_cast<unsigned int>(g_subpopup_index));
    elm_genlist_item_selected_set(pItem, EINA_TRUE);

    if (!b_is_tablo)
        evas_object_event_callback_add(list, EVAS_CALLBACK_KEY_DOWN, _item_selected_cb, app);
    evas_object_smart_callback_add(list, "realized", subpopupRealizedCb, app);
    Evas_Object *wrapper = widget_min_set(list, popup, scaled(250), dropdown_height(app), false);
    evas_object_show(list);
    expand_down_and_fill(wrapper);
    evas_object_show(wrapper);
    elm_object_content_set(popup, wrapper);
    elm_object_item_focus_set(pItem, EINA_TRUE);

    place(popup, row_area);
    evas_object_event_callback_add(popup, EVAS_CALLBACK_KEY_DOWN, Close_popup_On_returnKey, app);
    evas_object_show(popup);
    app->action_popup = popup;
    LOG_I("Exit");
    focus_soon(wrapper);
}

char *_item_labell_get(void *data, Evas_Object * /*obj*/, const char *part)
{
    char text[256] = "";
    const intptr_t position = reinterpret_cast<intptr_t>(data);
    if (strcmp(part, "elm.text") == 0 && position >= 0 && position < kChoices)
        snprintf(text, sizeof text, "%s", translated(kChoiceIds[position]));
    return new_text(text);
}

static int focused_choice(const AppData *app)
{
    Elm_Object_Item *item = app->action_genlist ? elm_genlist_first_item_get(app->action_genlist) : nullptr;
    for (; item; item = elm_genlist_item_next_get(item)) {
        if (elm_object_item_focus_get(item))
            return elm_genlist_item_index_get(item) - 1;
    }
    return g_subpopup_index;
}

static void restore_list(AppData *app)
{
    focus_list(app);
    b_popup_expanded = false;
}

static void open_details(AppData *app)
{
    take_focus(app->genlist);
    elm_object_focus_allow_set(app->genlist, EINA_FALSE);
    take_focus(app->close_button);
    take_focus(app->edit_button);
    elm_object_focus_allow_set(app->close_button, EINA_FALSE);
    show_detail_popup(app);
    b_popup_expanded = false;
}

/* The list is not touched after a decision: the service reports the change, and that refreshes it. */
static void run_choice(AppData *app, const DeviceEntry *entry)
{
    const bool allowed = entry->state & kStateAllowed;
    switch (g_subpopup_index) {
    case kChoiceAllow:
        if (allowed)
            restore_list(app);
        else
            vesk_set_device(entry, kActionAllow);
        break;
    case kChoiceDeny:
        if (allowed)
            vesk_set_device(entry, kActionDeny);
        else
            restore_list(app);
        break;
    case kChoiceDetails:
        open_details(app);
        break;
    default:
        LOG_W("Wrong index [%d]", g_subpopup_index);
        break;
    }
}

void _item_selected(AppData *app)
{
    LOG_I("Enter");
    b_subpopup_entered = false;
    selected_item_index = row_of_item(elm_genlist_selected_item_get(app->genlist));
    undim_base(app);
    g_subpopup_index = focused_choice(app);
    /* Both handles stay in the record; the next drop-down overwrites them. */
    elm_object_focus_allow_set(app->action_popup, EINA_FALSE);
    evas_object_del(app->action_popup);
    evas_object_del(app->action_genlist);

    if (selected_item_index >= 0) {
        run_choice(app, &app->table[selected_item_index]);
    } else {
        /* A live refresh has put a new list behind the drop-down. */
        LOG_W("no row is selected");
        restore_list(app);
    }
    LOG_I("Exit");
}

void _item_selected_cb(void *data, Evas * /*canvas*/, Evas_Object * /*obj*/, void *event_info)
{
    const char *key = key_name(event_info);
    if (!key) {
        LOG_E("event null");
        return;
    }
    LOG_I("Key[%s]", key);
    if (strcmp(key, "Return") == 0)
        _item_selected(static_cast<AppData *>(data));
    else
        LOG_I("another button pressed");
}

void _item_selected_cb_tablo(void *data, Evas_Object * /*obj*/, void * /*event_info*/)
{
    if (b_popup_expanded) {
        _item_selected(static_cast<AppData *>(data));
        return;
    }
    LOG_I("Item is not selected.");
    b_popup_expanded = true;
}

void subpopupRealizedCb(void * /*data*/, Evas_Object * /*obj*/, void *event_info)
{
    if (event_info)
        set_row_reader(static_cast<Elm_Object_Item *>(event_info), _subpopup_screen_reader);
}

static void dismiss(AppData *app)
{
    focus_soon(app->genlist);
    evas_object_del(app->action_popup);
    app->action_popup = nullptr;
    evas_object_del(app->action_genlist);
    b_popup_expanded = false;
    b_subpopup_entered = false;
    app->action_genlist = nullptr;
    evas_object_focus_set(app->genlist, EINA_TRUE);
    undim_base(app);
    unselect_row(app->genlist);
}

static void track_choice(const char *key)
{
    if (is_up_key(key))
        subpopup_position = subpopup_position > 0 ? subpopup_position - 1 : kChoices - 1;
    else if (is_down_key(key))
        subpopup_position = subpopup_position >= kChoices - 1 ? 0 : subpopup_position + 1;
}

void Close_popup_On_returnKey(void *data, Evas * /*canvas*/, Evas_Object * /*obj*/, void *event_info)
{
    AppData *app = static_cast<AppData *>(data);
    const char *key = key_name(event_info);
    if (!key) {
        LOG_W("event null");
        return;
    }
    LOG_I("Key[%s]", key);
    /* The event and its texts may go with the popup. */
    const std::string name = key;
    if (is_close_key(key) || is_back_key(key))
        dismiss(app);
    track_choice(name.c_str());
    const bool known = subpopup_position == kChoiceAllow || subpopup_position == kChoiceDeny;
    elm_access_say(translated(kChoiceIds[known ? subpopup_position : kChoiceDetails]));
    LOG_I("Exit");
}
