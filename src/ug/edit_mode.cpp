#include "ug/edit_mode.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

#include "log.h"
#include "translate.h"
#include "ug/action_popup.h"
#include "ug/app_data.h"
#include "ug/buttons.h"
#include "ug/delete_popup.h"
#include "ug/edit_state.h"
#include "ug/focus.h"
#include "ug/main_list.h"
#include "ug/markup.h"
#include "ug/rows.h"
#include "ug/watches.h"
#include "vesk/device_table.h"

/* How often the television's list asks for the contents of one row after a rebuild. */
constexpr int kContentRequests = 3;

static int rows_in_use()
{
    return std::clamp(device_count, 0, kTableCapacity);
}

static bool all_marked()
{
    return std::all_of(b_remove_status, b_remove_status + rows_in_use(), [](bool marked) { return marked; });
}

bool check_selected_any()
{
    const bool any = std::any_of(b_remove_status, b_remove_status + rows_in_use(), [](bool marked) { return marked; });
    LOG_I("b_selected_any[%d]", any);
    return any;
}

/* Says what the first button does now. */
static void say_button(const char *id)
{
    const std::string spoken = std::string(translated(id)) + ", " + translated("TV_SID_BUTTON");
    elm_access_say(spoken.c_str());
}

static void set_edit_focus_chain(AppData *app)
{
    Evas_Object *list = app->genlist;
    Evas_Object *first = app->edit_button;
    Evas_Object *second = app->close_button;
    Evas_Object *third = app->exit_button;

    elm_object_focus_next_object_set(first, list, ELM_FOCUS_NEXT);
    elm_object_focus_next_object_set(first, list, towards_list());
    elm_object_focus_next_object_set(list, first, towards_buttons());
    elm_object_focus_next_object_set(list, list, ELM_FOCUS_DOWN);
    elm_object_focus_next_object_set(first, second, ELM_FOCUS_DOWN);
    if (third)
        elm_object_focus_next_object_set(second, third, ELM_FOCUS_DOWN);
    elm_object_focus_next_object_set(list, list, ELM_FOCUS_UP);
    if (third)
        elm_object_focus_next_object_set(third, second, ELM_FOCUS_UP);
    elm_object_focus_next_object_set(second, first, ELM_FOCUS_UP);
}

static void begin_edit(AppData *app)
{
    g_selected_count = 0;
    g_checkbox_index = 0;
    elm_genlist_clear(app->genlist);
    vesk_get_table(&app->table);
    Elm_Genlist_Item_Class *row_class = new_row_class(_checkbox_content_get);
    if (!row_class)
        return;
    std::fill(std::begin(b_remove_status), std::end(b_remove_status), false);
    append_device_rows(app, row_class, device_count, _checkbox_cb);
    elm_genlist_item_class_free(row_class);

    elm_object_text_set(app->edit_button, translated("COM_SID_SELECT_ALL"));
    elm_object_text_set(app->close_button, translated("COM_SID_DELETE"));
    b_edit_status = true;
    elm_win_focus_highlight_enabled_set(app->win, EINA_TRUE);
    elm_object_focus_set(app->edit_button, EINA_FALSE);
    elm_object_focus_set(app->genlist, EINA_TRUE);
    evas_object_show(app->genlist);
    dim_button(app->close_button);
    say_button("COM_SID_SELECT_ALL");
    if (b_is_tablo) {
        app->exit_button =
            add_popup_button(app->base, "button3", translated("COM_SID_CLOSE"), Clicked_outside_app_cb, app);
        evas_object_show(app->exit_button);
    }
    set_edit_focus_chain(app);
}

/* Marks all rows or none. The live check boxes are the later ones of the record's slots, since the list makes each
 * more than once; which of them are on the screen depends on how far the list has been scrolled, so the rows that have
 * a check box at present are brought in line as well. */
static void mark_all(AppData *app, bool marked)
{
    for (int i = 0; i < kTableCapacity; ++i) {
        const int slot = device_count + i;
        if (slot >= 0 && slot < kCheckSlots && app->checks[slot])
            elm_check_state_set(app->checks[slot], marked);
        b_remove_status[i] = marked;
    }
    for (Elm_Object_Item *item = elm_genlist_first_item_get(app->genlist); item;
         item = elm_genlist_item_next_get(item)) {
        if (Evas_Object *check = check_of_item(item))
            elm_check_state_set(check, marked);
    }
}

static void toggle_all(AppData *app)
{
    if (all_marked()) {
        mark_all(app, false);
        g_selected_count = 0;
        elm_object_text_set(app->edit_button, translated("COM_SID_SELECT_ALL"));
        dim_button(app->close_button);
        say_button("COM_SID_SELECT_ALL");
        elm_object_focus_next_object_set(app->genlist, app->edit_button, towards_buttons());
    } else {
        mark_all(app, true);
        g_selected_count = device_count;
        elm_object_text_set(app->edit_button, translated("COM_SID_DESELECT_ALL"));
        undim_button(app->close_button);
        say_button("COM_SID_DESELECT_ALL");
        elm_object_focus_next_object_set(app->genlist, app->close_button, towards_buttons());
    }
    /* Off and on again, so that the highlight is drawn anew. */
    take_focus(app->edit_button);
    give_focus(app->edit_button);
}

void _editbutton_cb(void *data, Evas_Object * /*obj*/, void * /*event_info*/)
{
    AppData *app = static_cast<AppData *>(data);
    if (device_count <= 0) {
        LOG_I("Disabled Edit Button in case of Empty Device List");
        return;
    }
    if (b_is_tablo && b_popup_expanded)
        return;
    if (b_edit_status) {
        toggle_all(app);
    } else {
        begin_edit(app);
        if (!b_edit_status)
            return;
    }
    /* After genlistRealizedCb: the layout with a check box has to be the last that a row hears. Added with each press;
     * hearing it several times changes nothing. */
    evas_object_smart_callback_priority_add(app->genlist, "realized", EVAS_CALLBACK_PRIORITY_AFTER,
                                            _edit_item_realized_cb, app);
}

static Evas_Object *add_check(Evas_Object *list)
{
    Evas_Object *check = elm_check_add(list);
    elm_object_style_set(check, "C_Checkbox_White");
    /* The row is what is pressed and touched; a check box of its own mind would take its Return key and its taps. */
    elm_object_focus_allow_set(check, EINA_FALSE);
    evas_object_pass_events_set(check, EINA_TRUE);

    const int restored = g_orientation_checkbox_count - kContentRequests * device_count;
    if (restored >= 0 && restored < kTableCapacity)
        elm_check_state_set(check, b_remove_status[restored]);
    if (app_data && g_checkbox_index >= 0 && g_checkbox_index < kCheckSlots)
        app_data->checks[g_checkbox_index] = check;
    else
        LOG_W("no slot for check box %d", g_checkbox_index);
    ++g_orientation_checkbox_count;
    ++g_checkbox_index;
    return check;
}

Evas_Object *_checkbox_content_get(void *data, Evas_Object *obj, const char *part)
{
    refresh_table();
    if (strcmp(part, "elm.swallow.checkbox") == 0)
        return add_check(obj);
    if (strcmp(part, "elm.swallow.icon") == 0)
        return add_device_icon(obj, data);
    return nullptr;
}

void _edit_item_realized_cb(void * /*data*/, Evas_Object * /*obj*/, void *event_info)
{
    if (event_info)
        elm_object_item_signal_emit(static_cast<Elm_Object_Item *>(event_info), "theme,singleline,check,icon,2text",
                                    "");
}

static void turn_mark(Elm_Object_Item *item, int row)
{
    const bool marked = !b_remove_status[row];
    b_remove_status[row] = marked;
    g_selected_count += marked ? 1 : -1;
    if (Evas_Object *check = check_of_item(item)) {
        elm_check_state_set(check, marked);
        LOG_I("Item Index [%d] [%p]", row, static_cast<void *>(check));
    } else {
        LOG_I("Check box is null [%d]", row);
    }
    const std::string spoken = std::string(translated("TV_SID_CHECKBOX")) + "," +
                               translated(marked ? "TV_SID_CHECKED" : "TV_SID_UNCHECKED") + "," +
                               row_text(item, "elm.text") + "," + row_text(item, "elm.text.1");
    elm_access_say(spoken.c_str());
}

void _checkbox_cb(void *data, Evas_Object * /*obj*/, void * /*event_info*/)
{
    AppData *app = static_cast<AppData *>(data);
    LOG_I("Enter");
    Elm_Object_Item *item = elm_genlist_selected_item_get(app->genlist);
    if (!item) {
        LOG_W("elm_genlist_selected_item_get Failed");
        return;
    }
    const int row = row_of_item(item);
    if (row < 0) {
        LOG_W("elm_genlist_item_index_get Failed");
        return;
    }
    turn_mark(item, row);

    if (g_selected_count != 0)
        undim_button(app->close_button);
    else
        dim_button(app->close_button);
    elm_object_focus_next_object_set(app->genlist, g_selected_count != 0 ? app->close_button : app->edit_button,
                                     towards_buttons());
    if (device_count > 0 && !all_marked()) {
        elm_object_text_set(app->edit_button, translated("COM_SID_SELECT_ALL"));
        set_button_icon(app->edit_icon, "i_select_all");
    } else {
        elm_object_text_set(app->edit_button, translated("COM_SID_DESELECT_ALL"));
        set_button_icon(app->edit_icon, "i_deselect_all");
        g_selected_count = device_count;
    }
    LOG_I("Exit");
}

void _closebutton_cb(void *data, Evas_Object * /*obj*/, void * /*event_info*/)
{
    AppData *app = static_cast<AppData *>(data);
    if (!b_edit_status) {
        elm_win_focus_highlight_enabled_set(app->win, EINA_TRUE);
        destroy_ug(app);
    } else if (!b_is_tablo || check_selected_any()) {
        /* Off the board line the button's dimming is a look and a rule for the focus, no refusal. */
        _create_delete_popup(app);
    }
}

static void leave_edit_mode(AppData *app)
{
    refresh_genlist(app);
    show_normal_buttons(app);
    focus_list(app);
    undim_button(app->close_button);
    delete_object(app->exit_button);
    set_main_focus_chain(app);
    b_edit_status = false;
}

void Clicked_outside_app_cb(void *data, Evas_Object *obj, void *event_info)
{
    AppData *app = static_cast<AppData *>(data);
    g_orientation_checkbox_count = 0;
    g_checkbox_index = 0;
    if (!b_edit_status)
        _closebutton_cb(app, obj, event_info);
    else if (b_popup_expanded)
        _item_selected(app);
    else if (device_count >= 1)
        leave_edit_mode(app);
}
