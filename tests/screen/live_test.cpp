/* The list follows the registered-device service while the module is open. */

#include <array>
#include <cstring>
#include <dlog.h>
#include <gmock/gmock.h>
#include <set>

#include "desktop/port_failures.h"
#include "desktop/rdm_service.h"
#include "dropdown_fixture.h"
#include "spy.h"
#include "ug/edit_mode.h"
#include "ug/settings_watch.h"
#include "vesk/device_table.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

struct LiveTest : DropdownFixture {
    void SetUp() override
    {
        register_devices({phone("First"), phone("Second"), phone("Third")});
        open();
        forget();
    }

    /* What the service would report of the device at `place` with a status. */
    RdmDeviceInfo report(size_t place, int status) const
    {
        const vesk_port::Device device = registered().at(place);
        RdmDeviceInfo info{};
        memcpy(info.name, device.name.data(), device.name.size());
        memcpy(info.bt_mac, device.bt_mac.data(), device.bt_mac.size());
        memcpy(info.wifi_mac, device.wifi_mac.data(), device.wifi_mac.size());
        memcpy(info.p2p_mac, device.p2p_mac.data(), device.p2p_mac.size());
        info.status = status;
        return info;
    }

    std::string status_line(const RdmDeviceInfo &info) const
    {
        return std::string("Status changed >> BTMAC[") + info.bt_mac + "], WIFIMAC[" + info.wifi_mac + "], P2PMAC[" +
               info.p2p_mac + "], STATUS[" + std::to_string(info.status) + "]";
    }

    void expect_the_user_goes_on()
    {
        panel().settle();
        EXPECT_EQ(focused(), app()->genlist);
        EXPECT_EQ(focused_row(), 0);
        press("Down");
        EXPECT_EQ(focused_row(), device_count > 1 ? 1 : 0);
        press("Right");
        EXPECT_EQ(focused(), app()->edit_button);
        press("Left");
        EXPECT_EQ(focused(), app()->genlist);
    }
};

TEST_F(LiveTest, AChangeByAnotherProcessIsShown)
{
    change_elsewhere("First", false);
    ASSERT_TRUE(wait_for("ListRefreshed [3]"));
    expect_the_user_goes_on();
    EXPECT_THAT(listed(), ElementsAre(Pair("\u200eSecond\u200e", true), Pair("\u200eThird\u200e", true),
                                      Pair("\u200eFirst\u200e", false)));
}

TEST_F(LiveTest, ADeviceOfAnotherProcessAppearsAndGoes)
{
    vesk_port::DeviceStore store = service();
    store.add({phone("Fourth")});
    ASSERT_TRUE(wait_for("ListRefreshed [4]"));
    store.remove(registered().front().id);
    ASSERT_TRUE(wait_for("ListRefreshed [3]"));
    expect_the_user_goes_on();
    EXPECT_EQ(texts(app()->genlist).back(), "\u200eFourth\u200e");
}

TEST_F(LiveTest, WithTheFocusOnAButtonTheListTakesItBack)
{
    press({"Right", "Down"});
    change_elsewhere("First", false);
    ASSERT_TRUE(wait_for("ListRefreshed [3]"));
    expect_the_user_goes_on();
}

TEST_F(LiveTest, AnEmptyTableClosesTheModule)
{
    register_devices({});
    EXPECT_TRUE(closed_itself());
    EXPECT_GE(logged("ListRefreshed [0]"), 1);
    EXPECT_EQ(logged("VESK EXIT"), 1);
}

TEST_F(LiveTest, ATableWithoutARowInUseClosesTheModule)
{
    register_devices({device("Unreachable", 1, false, "")});
    EXPECT_TRUE(closed_itself());
}

TEST_F(LiveTest, AFailedReadIsAnEmptyTable)
{
    vesk_port::set_failures("rdm_get_list=-5");
    vesk_port::emit(report(0, 1));
    EXPECT_EQ(logged("[VESK] RDM List read fail"), 1);
    EXPECT_TRUE(closed_itself());
}

/* --- Statuses --- */

struct RefreshingStatusTest : LiveTest, testing::WithParamInterface<int> {};

TEST_P(RefreshingStatusTest, RefreshesTheList)
{
    const Evas_Object *before = app()->genlist;
    const RdmDeviceInfo info = report(0, GetParam());
    vesk_port::emit(info);
    EXPECT_EQ(log().front().message, status_line(info));
    EXPECT_EQ(logged("ListRefreshed [3]"), 1);
    EXPECT_NE(app()->genlist, before);
    expect_the_user_goes_on();
}

INSTANTIATE_TEST_SUITE_P(Status, RefreshingStatusTest, testing::Values(0, 1));

struct OtherStatusTest : LiveTest, testing::WithParamInterface<int> {};

TEST_P(OtherStatusTest, ChangesNothing)
{
    const Evas_Object *before = app()->genlist;
    const int status = GetParam();
    const RdmDeviceInfo info = report(0, status);
    vesk_port::emit(info);
    if (status == 3 || status == 4) {
        EXPECT_THAT(messages(), ElementsAre(status_line(info)));
    } else {
        EXPECT_THAT(messages(), ElementsAre(status_line(info), "Invalid status[" + std::to_string(status) + "]"));
        EXPECT_EQ(log().back().priority, DLOG_WARN);
    }
    EXPECT_EQ(app()->genlist, before);
    expect_the_user_goes_on();
}

INSTANTIATE_TEST_SUITE_P(Status, OtherStatusTest, testing::Values(2, 3, 4, 5, -1, INT32_MAX, INT32_MIN));

/* --- One refresh, step by step --- */

struct RefreshTest : LiveTest {
    /* What a report leaves in the log, of the steps that the refresh itself takes. */
    std::vector<std::string> steps_after(const RdmDeviceInfo &info)
    {
        forget();
        vesk_port::emit(info);
        std::vector<std::string> steps = spy::screen_steps();
        std::erase_if(steps, [](const std::string &step) {
            static const std::set<std::string> within{"create_genlist",   "_load_device_icon", "widget_min_set",
                                                      "vesk_sort_table",  "vesk_print_table",  "vesk_print_item",
                                                      "vesk_get_RDMList", "_item_label_get"};
            const size_t colon = step.find(": ");
            return colon != std::string::npos && within.contains(step.substr(2, colon - 2)) &&
                   !step.substr(colon + 2).starts_with("\tRDM Count");
        });
        return steps;
    }

    /* Size hints: weight and alignment across and down. */
    static std::array<double, 4> hints_of(const Evas_Object *object)
    {
        std::array<double, 4> hints{};
        evas_object_size_hint_weight_get(object, &hints[0], &hints[1]);
        evas_object_size_hint_align_get(object, &hints[2], &hints[3]);
        return hints;
    }
};

TEST_F(RefreshTest, IsLoggedFromTheReportToTheRefreshedList)
{
    for (const int status : {0, 1}) {
        const RdmDeviceInfo info = report(0, status);
        EXPECT_THAT(steps_after(info),
                    ElementsAre("I vesk_rdm_callback: " + status_line(info), "W vesk_get_RDMList: \tRDM Count is 3",
                                "I refresh_genlist: Enter", "I refresh_genlist: Exit",
                                "elm,state,focused from elm to list", "focus highlight 1 on list",
                                "elm,state,undimmed from elm to edit button",
                                "I vesk_refresh_list: ListRefreshed [3]"));
    }
}

TEST_F(RefreshTest, OfAnEmptyTableAsksForTheEndAndGoesOnToItsLastStep)
{
    const RdmDeviceInfo info = report(0, 1);
    const std::string handle = std::to_string(gVeskHandler);
    register_devices({});
    std::vector<std::string> steps = steps_after(info);
    /* The host's part: a button that may not have the focus looks so. */
    std::erase(steps, "elm,action,unfocus from elm to edit button");
    EXPECT_THAT(
        steps,
        ElementsAre("I vesk_rdm_callback: " + status_line(info), "W vesk_get_RDMList: \tRDM Count is 0",
                    "I refresh_genlist: Enter", "focus highlight 1 on window",
                    "I deregister_rdm_callback: RDM callback deregistered successfully - handler[" + handle + "]",
                    "I unwatch_orientation: Sucess to unset RDM callback[0]", "ug_destroy_me",
                    "I refresh_genlist: Exit", "elm,state,focused from elm to list", "focus highlight 1 on list",
                    "elm,state,dimmed from elm to edit button", "I vesk_refresh_list: ListRefreshed [0]"));
    EXPECT_FALSE(elm_object_focus_allow_get(app()->edit_button));
    EXPECT_TRUE(closed_itself());
}

TEST_F(RefreshTest, MakesAListLikeTheFirst)
{
    const Evas_Object *old_rect = app()->list_rect;
    const Evas_Object *old_list = app()->genlist;
    vesk_port::emit(report(0, 0));
    Evas_Object *list = app()->genlist;
    ASSERT_NE(list, old_list);
    EXPECT_TRUE(elm_object_scroll_item_loop_enabled_get(list));
    EXPECT_EQ(elm_genlist_select_mode_get(list), ELM_OBJECT_SELECT_MODE_ALWAYS);
    EXPECT_THAT(hints_of(list), ElementsAre(1.0, 1.0, -1.0, -1.0));
    EXPECT_EQ(app()->table, gVeskTable);

    EXPECT_NE(app()->list_rect, old_rect);
    EXPECT_EQ(min_of(app()->list_rect), (Size{820, 491}));
    const Evas_Object *wrapper = elm_object_content_get(app()->base);
    EXPECT_EQ(wrapper, elm_object_parent_widget_get(list));
    EXPECT_TRUE(evas_object_visible_get(wrapper));
    EXPECT_THAT(hints_of(wrapper), ElementsAre(0.0, 1.0, -1.0, -1.0));
}

TEST_F(RefreshTest, HearsOfTheNewListsRows)
{
    vesk_port::emit(report(0, 0));
    panel().settle();
    forget();
    evas_object_smart_callback_call(app()->genlist, "realized", row(app()->genlist, 1));
    EXPECT_THAT(spy::screen_steps(),
                ElementsAre("I genlistRealizedCb: Enter", "I show_mark: Item Index = [1], status = [0], count = [3]",
                            "I show_mark: Check box is null", "I genlistRealizedCb: Exit"));
}

TEST_F(RefreshTest, ClosesTheArmedStateOfTheDropDown)
{
    b_popup_expanded = true;
    vesk_port::emit(report(0, 0));
    EXPECT_FALSE(b_popup_expanded);
}

TEST_F(RefreshTest, GivesADimmedEditButtonItsFocusBack)
{
    elm_object_focus_allow_set(app()->edit_button, EINA_FALSE);
    vesk_port::emit(report(0, 0));
    EXPECT_TRUE(elm_object_focus_allow_get(app()->edit_button));
}

/* --- Records that the table could not hold --- */

TEST_F(LiveTest, ARecordOfAnotherDeviceReadsTheListAgain)
{
    RdmDeviceInfo stranger{};
    strcpy(stranger.bt_mac, "AA:AA:AA:AA:AA:AA");
    vesk_port::emit(stranger);
    EXPECT_EQ(logged("ListRefreshed [3]"), 1);
    expect_the_user_goes_on();
}

TEST_F(LiveTest, FieldsWithoutAnEndAndWithoutATextAreReadNoFurther)
{
    RdmDeviceInfo info;
    memset(&info, 0xff, sizeof info);
    info.status = 1;
    vesk_port::emit(info);
    const std::string field(18, '\xff');
    EXPECT_EQ(log().front().message,
              "Status changed >> BTMAC[" + field + "], WIFIMAC[" + field + "], P2PMAC[" + field + "], STATUS[1]");
    expect_the_user_goes_on();
}

/* --- Edit mode --- */

TEST_F(LiveTest, EditModeWaitsWithAChangeUntilTheNextRefresh)
{
    press({"Right", "Return"});
    ASSERT_TRUE(b_edit_status);
    const Evas_Object *before = app()->genlist;
    forget();
    change_elsewhere("First", false);
    ASSERT_TRUE(wait_for("Edit mode now. refresh canceled."));
    EXPECT_EQ(app()->genlist, before);
    EXPECT_TRUE(b_edit_status);
    EXPECT_EQ(listed()[0], (std::pair<std::string, bool>{"\u200eFirst\u200e", true}));

    press("XF86Back");
    vesk_port::emit(report(1, 0));
    panel().settle();
    EXPECT_FALSE(b_edit_status);
    EXPECT_EQ(listed().back(), (std::pair<std::string, bool>{"\u200eFirst\u200e", false}));
}

/* --- Both ways of reading --- */

TEST_F(LiveTest, InArabicTheButtonsAreToTheLeftOnceADropdownHasBeenOpen)
{
    close();
    set("language", "ar_AE");
    open();
    open_dropdown();
    press("XF86Back");
    ASSERT_TRUE(gbReverse);
    vesk_port::emit(report(0, 0));
    panel().settle();
    press("Left");
    EXPECT_EQ(focused(), app()->edit_button);
    press("Right");
    EXPECT_EQ(focused(), app()->genlist);
    press({"Left", "Down"});
    EXPECT_EQ(focused(), app()->close_button);
    press("Right");
    EXPECT_EQ(focused(), app()->genlist);
}

} // namespace
