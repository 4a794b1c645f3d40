/* The focus that an object gets a little later, and objects that are deleted before then. */

#include <gmock/gmock.h>

#include "dropdown_fixture.h"
#include "toolkit_complaints.h"
#include "ug/pending_focus.h"

using testing::IsEmpty;

namespace {

constexpr int kLongEnough = 100; /* ms: past the timer's ten */

struct PendingFocusTest : DropdownFixture {
    void SetUp() override
    {
        register_devices(phones(2));
        open();
        forget();
    }

    /* The objects that the timer gave the focus. */
    std::vector<std::string> focused_later()
    {
        panel().run_until([] { return false; }, kLongEnough);
        return lines_of("_timer_cb");
    }
};

TEST_F(PendingFocusTest, TheObjectGetsTheFocus)
{
    focus_soon(app()->close_button);
    EXPECT_EQ(focused_later().size(), 1u);
    EXPECT_EQ(focused(), app()->close_button);
}

TEST_F(PendingFocusTest, ALaterCallTakesThePlaceOfAnEarlierOne)
{
    focus_soon(app()->edit_button);
    focus_soon(app()->close_button);
    EXPECT_EQ(focused_later().size(), 1u);
    EXPECT_EQ(focused(), app()->close_button);
}

TEST_F(PendingFocusTest, ADeletedObjectIsForgotten)
{
    const ToolkitComplaints complaints;
    Evas_Object *button = elm_button_add(panel().window());
    focus_soon(button);
    evas_object_del(button);
    EXPECT_THAT(focused_later(), IsEmpty());
    EXPECT_THAT(complaints.texts(), IsEmpty());
}

TEST_F(PendingFocusTest, AnObjectThatNoLongerWaitsMayBeDeleted)
{
    Evas_Object *button = elm_button_add(panel().window());
    focus_soon(button);
    focus_soon(app()->close_button);
    evas_object_del(button);
    EXPECT_EQ(focused_later().size(), 1u);
    EXPECT_EQ(focused(), app()->close_button);
}

TEST_F(PendingFocusTest, AnObjectThatHasTheFocusMayBeDeletedWhileAnotherWaits)
{
    Evas_Object *button = elm_button_add(panel().window());
    evas_object_show(button);
    focus_soon(button);
    EXPECT_EQ(focused_later().size(), 1u);
    focus_soon(app()->close_button);
    evas_object_del(button);
    EXPECT_EQ(focused_later().size(), 2u);
    EXPECT_EQ(focused(), app()->close_button);
}

TEST_F(PendingFocusTest, AChoiceBeforeTheFocusClosesTheDropDownForGood)
{
    panel().key_down("Return");
    panel().key_up("Return");
    ASSERT_TRUE(dropdown_open());
    _item_selected(app());
    EXPECT_THAT(focused_later(), IsEmpty()) << "nothing is left that could get the focus";
    EXPECT_FALSE(dropdown_open());
    EXPECT_EQ(focused(), app()->genlist);
}

} // namespace
