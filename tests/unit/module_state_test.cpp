/* The record's layout, and the module's globals as they are after loading and after a reset. */

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "lifecycle_fixture.h"
#include "ug/action_popup.h"
#include "ug/app_keys.h"
#include "ug/delete_popup.h"
#include "ug/direction.h"
#include "ug/edit_state.h"
#include "ug/rows.h"
#include "ug/screen_reader.h"
#include "vesk/device_services.h"
#include "vesk/device_table.h"

static bool all_zero(const void *bytes, size_t size)
{
    const char *begin = static_cast<const char *>(bytes);
    return std::all_of(begin, begin + size, [](char byte) { return byte == 0; });
}

/* The module's globals as they stand when the record is made. */
struct Globals {
    const AppData *record = app_data;
    bool sound_mirroring = b_sound_mirroring;
    bool board = b_is_tablo;
    int handle = gVeskHandler;
    bool blank_table = all_zero(gVeskTable, sizeof gVeskTable);
    int32_t devices = device_count;
    bool no_services = all_zero(services, sizeof services);
    bool reversed = gbReverse;
    int32_t position = current_position;
    bool dropdown_armed = b_popup_expanded;
    bool dropdown_introduced = b_subpopup_entered;
    int32_t choice = g_subpopup_index;
    int32_t device = selected_item_index;
    int32_t spoken_choice = subpopup_position;
    const Elm_Object_Item *preselected = pItem;
    bool editing = b_edit_status;
    bool no_marks = all_zero(b_remove_status, sizeof b_remove_status);
    int32_t marks = g_selected_count;
    int32_t next_check = g_checkbox_index;
    int32_t checks_since_turn = g_orientation_checkbox_count;
    bool confirmation_introduced = b_delete_popup_entered;
    bool toast_up = b_disable_focus;
    guint toast_timer = toastTimerTag;
    bool introduction_due = b_check_tts;

    bool operator==(const Globals &) const = default;
};

/* Read before any test has run. */
static const Globals after_loading;

/* The record is exact in names, order and types. */
#define FOLLOWS(field, before)                                                                                         \
    static_assert(offsetof(AppData, field) == offsetof(AppData, before) + sizeof(AppData::before))
static_assert(offsetof(AppData, base) == 0);
FOLLOWS(win, base);
FOLLOWS(genlist, win);
FOLLOWS(action_popup, genlist);
FOLLOWS(action_rect, action_popup);
FOLLOWS(list_rect, action_rect);
FOLLOWS(action_aux, list_rect);
FOLLOWS(edit_button, action_aux);
FOLLOWS(action_genlist, edit_button);
FOLLOWS(noitem_label, action_genlist);
FOLLOWS(ug, noitem_label);
FOLLOWS(aux_object, ug);
FOLLOWS(table, aux_object);
FOLLOWS(close_button, table);
FOLLOWS(exit_button, close_button);
FOLLOWS(detail_close_button, exit_button);
FOLLOWS(detail_popup, detail_close_button);
FOLLOWS(delete_popup, detail_popup);
FOLLOWS(service_genlist, delete_popup);
FOLLOWS(checks, service_genlist);
FOLLOWS(edit_icon, checks);
FOLLOWS(close_icon, edit_icon);
static_assert(sizeof(AppData) == offsetof(AppData, close_icon) + sizeof(AppData::close_icon));
static_assert(std::is_same_v<decltype(AppData::ug), ui_gadget_h>);
static_assert(std::is_same_v<decltype(AppData::table), DeviceEntry *>);
static_assert(std::is_same_v<decltype(AppData::checks), Evas_Object *[100]>);
static_assert(std::is_trivial_v<AppData>);

TEST_F(LifecycleTest, StateAfterLoading)
{
    EXPECT_EQ(after_loading.record, nullptr);
    EXPECT_FALSE(after_loading.sound_mirroring);
    EXPECT_FALSE(after_loading.board);
    EXPECT_EQ(after_loading.handle, -1);
    EXPECT_TRUE(after_loading.blank_table);
    EXPECT_EQ(after_loading.devices, -1);
    EXPECT_TRUE(after_loading.no_services);
    EXPECT_FALSE(after_loading.reversed);
    EXPECT_EQ(after_loading.position, 0);
    EXPECT_FALSE(after_loading.dropdown_armed);
    EXPECT_FALSE(after_loading.dropdown_introduced);
    EXPECT_EQ(after_loading.choice, 0);
    EXPECT_EQ(after_loading.device, 0);
    EXPECT_EQ(after_loading.spoken_choice, 0);
    EXPECT_EQ(after_loading.preselected, nullptr);
    EXPECT_FALSE(after_loading.editing);
    EXPECT_TRUE(after_loading.no_marks);
    EXPECT_EQ(after_loading.marks, 0);
    EXPECT_EQ(after_loading.next_check, 0);
    EXPECT_EQ(after_loading.checks_since_turn, 0);
    EXPECT_FALSE(after_loading.confirmation_introduced);
    EXPECT_FALSE(after_loading.toast_up);
    EXPECT_EQ(after_loading.toast_timer, 0U);
    EXPECT_TRUE(after_loading.introduction_due) << "the screen's introduction is still to be read";
}

TEST_F(LifecycleTest, AResetBringsBackTheStateAfterLoading)
{
    AppData record{};
    app_data = &record;
    b_sound_mirroring = b_is_tablo = gbReverse = b_popup_expanded = b_subpopup_entered = b_edit_status = true;
    b_delete_popup_entered = b_disable_focus = true;
    b_check_tts = false;
    memset(gVeskTable, 1, sizeof gVeskTable);
    memset(services, 1, sizeof services);
    memset(b_remove_status, 1, sizeof b_remove_status);
    gVeskHandler = device_count = current_position = g_subpopup_index = selected_item_index = subpopup_position = 5;
    g_selected_count = g_checkbox_index = g_orientation_checkbox_count = 5;
    pItem = reinterpret_cast<Elm_Object_Item *>(&record);
    toastTimerTag = 5;
    reset_module_state();
    EXPECT_TRUE(Globals{} == after_loading);
}
