/* The deletion: what the service is asked to remove, and what is left of the list. */

#include <algorithm>
#include <gmock/gmock.h>

#include "delete_fixture.h"
#include "desktop/port_failures.h"
#include "dlog.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST_F(DeleteTest, OneOfFive)
{
    open_edit(5);
    const auto before = registered();
    turn_over({2});
    ask_for_deletion();
    forget();
    answer_yes();
    EXPECT_THAT(removals(), ElementsAre(before[2].bt_mac));
    EXPECT_THAT(service_names(), ElementsAre("Phone 1", "Phone 2", "Phone 4", "Phone 5"));
    EXPECT_EQ(logged("[VESKAUTOTC][DELETE]"), 1);
    EXPECT_FALSE(b_edit_status);
    EXPECT_EQ(app()->delete_popup, nullptr);
    EXPECT_THAT(names(), ElementsAre(shown_name("Phone 1"), shown_name("Phone 2"), shown_name("Phone 4"),
                                     shown_name("Phone 5")));
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_EDIT"));
    EXPECT_EQ(text_of(app()->close_button), translated("COM_SID_CLOSE"));
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("1")));
}

TEST_F(DeleteTest, TwoOfFiveTheHighestRowFirst)
{
    open_edit(5);
    const auto before = registered();
    turn_over({3, 1});
    ask_for_deletion();
    forget();
    answer_yes();
    EXPECT_THAT(removals(), ElementsAre(before[3].bt_mac, before[1].bt_mac));
    EXPECT_THAT(service_names(), ElementsAre("Phone 1", "Phone 3", "Phone 5"));
    EXPECT_EQ(logged("[VESKAUTOTC][DELETE]"), 2);
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("2")));
}

TEST_F(DeleteTest, AllOfFiveInOneCall)
{
    open_edit(5);
    press({"Right", "Return", "Down", "Return"});
    ASSERT_NE(app()->delete_popup, nullptr);
    forget();
    answer_yes();
    EXPECT_TRUE(closed_itself());
    EXPECT_THAT(removals(), ElementsAre("all"));
    EXPECT_THAT(registered(), IsEmpty());
    EXPECT_EQ(logged("Removing all [5] devices and list is empty"), 1);
    const auto line = std::ranges::find(log(), "Removing all [5] devices and list is empty", &LogLine::message);
    EXPECT_EQ(line->priority, DLOG_WARN);
    EXPECT_EQ(logged("[VESKAUTOTC][DELETE]"), 0);
    EXPECT_THAT(spoken(), ElementsAre(translated("COM_SID_ALL_DEVICES_DELTED")));
}

TEST_F(DeleteTest, AllOfFiveMarkedByHandIsOneCallToo)
{
    open_edit(5);
    turn_over({0, 1, 2, 3, 4});
    ask_for_deletion();
    answer_yes();
    EXPECT_TRUE(closed_itself());
    EXPECT_THAT(removals(), ElementsAre("all"));
}

TEST_F(DeleteTest, AllOfFifty)
{
    open_edit(50);
    press({"Right", "Return", "Down", "Return"});
    answer_yes();
    EXPECT_TRUE(closed_itself());
    EXPECT_THAT(removals(), ElementsAre("all"));
    EXPECT_THAT(registered(), IsEmpty());
    EXPECT_EQ(logged("Removing all [50] devices and list is empty"), 1);
}

TEST_F(DeleteTest, FortyNineOfFifty)
{
    open_edit(50);
    press({"Right", "Return", "Left"});
    turn_over({20});
    ask_for_deletion();
    forget();
    answer_yes();
    EXPECT_EQ(removals().size(), 49u);
    EXPECT_THAT(service_names(), ElementsAre("Phone 21"));
    EXPECT_TRUE(running());
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("49")));
}

TEST_F(DeleteTest, AnEmptyTableIsRemovedInOneCallToo)
{
    open_edit(3);
    turn_over({1});
    ask_for_deletion();
    forget();
    device_count = 0;
    _deletebutton_cb(app(), yes(), nullptr);
    EXPECT_THAT(removals(), ElementsAre("all"));
    EXPECT_EQ(logged("Removing all [0] devices and list is empty"), 1);
    EXPECT_TRUE(closed_itself());
}

TEST_F(DeleteTest, NothingMarkedDeletesNothing)
{
    open_edit(3);
    click(app()->close_button);
    panel().settle();
    answer_yes();
    EXPECT_THAT(removals(), IsEmpty());
    EXPECT_EQ(registered().size(), 3u);
    EXPECT_THAT(spoken().back(), toast_marker("0"));
}

TEST_F(DeleteTest, AServiceThatRefusesOneKeepsItInTheList)
{
    open_edit(5);
    turn_over({0, 2, 4});
    ask_for_deletion();
    forget();
    vesk_port::set_failures("rdm_remove_device=-5@3");
    answer_yes();
    EXPECT_EQ(removals().size(), 3u);
    EXPECT_EQ(logged("[VESKAUTOTC][DELETE]"), 2);
    EXPECT_THAT(names(), ElementsAre(shown_name("Phone 1"), shown_name("Phone 2"), shown_name("Phone 4")));
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("3"))) << "what was marked, whatever the service made of it";
}

TEST_F(DeleteTest, AServiceThatRefusesToRemoveAllKeepsTheList)
{
    open_edit(3);
    press({"Right", "Return", "Down", "Return"});
    forget();
    vesk_port::set_failures("rdm_remove_all=-5");
    answer_yes();
    EXPECT_TRUE(running());
    EXPECT_EQ(names().size(), 3u);
    EXPECT_FALSE(b_edit_status);
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_EDIT"));
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("3")));
}

TEST_F(DeleteTest, AMarkedDeviceThatIsGoneMeanwhileIsNoObstacle)
{
    open_edit(5);
    turn_over({1, 3});
    ask_for_deletion();
    forget();
    service().remove(registered()[3].id);
    panel().settle();
    EXPECT_EQ(logged("Edit mode now. refresh canceled."), 1);
    EXPECT_NE(app()->delete_popup, nullptr);
    EXPECT_EQ(focused(), no());
    answer_yes();
    EXPECT_THAT(service_names(), ElementsAre("Phone 1", "Phone 3", "Phone 5"));
    EXPECT_EQ(logged("[VESKAUTOTC][DELETE]"), 1);
    EXPECT_THAT(names(), ElementsAre(shown_name("Phone 1"), shown_name("Phone 3"), shown_name("Phone 5")));
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("2")));
}

TEST_F(DeleteTest, AnotherDeviceThatIsGoneMeanwhileIsGoneFromTheListToo)
{
    open_edit(5);
    turn_over({1, 3});
    ask_for_deletion();
    service().remove(registered()[0].id);
    panel().settle();
    answer_yes();
    EXPECT_THAT(names(), ElementsAre(shown_name("Phone 3"), shown_name("Phone 5")));
}

TEST_F(DeleteTest, WithAllOthersGoneMeanwhileTheModuleCloses)
{
    open_edit(3);
    turn_over({1});
    ask_for_deletion();
    const auto devices = registered();
    service().remove(devices[0].id);
    service().remove(devices[2].id);
    panel().settle();
    forget();
    answer_yes();
    EXPECT_TRUE(closed_itself());
    EXPECT_THAT(spoken(), ElementsAre(translated("COM_SID_ALL_DEVICES_DELTED")));
}

TEST_F(DeleteTest, WithAllGoneMeanwhileNoLeavesAListToGoBackFrom)
{
    open_edit(3);
    turn_over({1});
    ask_for_deletion();
    register_devices({});
    panel().settle();
    press("Return");
    EXPECT_EQ(app()->delete_popup, nullptr);
    EXPECT_TRUE(b_edit_status);
    EXPECT_EQ(names().size(), 3u) << "the list waits until edit mode ends";
    press("XF86Back");
    press("XF86Back");
    EXPECT_TRUE(closed_itself());
}

TEST_F(DeleteTest, ADeviceRegisteredMeanwhileStaysEvenWhenAllAreMarked)
{
    open_edit(3);
    turn_over({0, 1});
    ask_for_deletion();
    service().add({phone("New")});
    panel().settle();
    answer_yes();
    EXPECT_THAT(service_names(), testing::UnorderedElementsAre("Phone 3", "New"));
    EXPECT_THAT(names(), testing::UnorderedElementsAre(shown_name("Phone 3"), shown_name("New")));
}

TEST_F(DeleteTest, OnABoardTheButtonsAndIconsAreAsBefore)
{
    use_product("board");
    open_edit(5);
    turn_over({2});
    ask_for_deletion();
    answer_yes();
    EXPECT_EQ(app()->exit_button, nullptr);
    EXPECT_STREQ(elm_icon_standard_get(app()->edit_icon), "i_edit");
    EXPECT_STREQ(elm_icon_standard_get(app()->close_icon), "i_close_cancel");
}

} // namespace
