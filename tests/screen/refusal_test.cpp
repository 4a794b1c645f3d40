/* Decisions that the registered-device service refuses: the screen shows the truth and goes on. */

#include <gmock/gmock.h>

#include "desktop/port_failures.h"
#include "dropdown_fixture.h"
#include "ug/edit_mode.h"

using testing::ElementsAre;
using testing::Pair;

namespace {

struct RefusalTest : DropdownFixture {
    void open_on(const std::string &product)
    {
        use_product(product);
        register_devices({phone("First"), phone("Second")});
        open();
        vesk_port::set_failures("rdm_set_status=-16");
        forget();
    }

    ~RefusalTest() override { vesk_port::clear_failures(); }

    /* The second row's other state is chosen, and refused. */
    void deny_second()
    {
        open_dropdown(1);
        press({"Down", "Return"});
        ASSERT_FALSE(dropdown_open());
        ASSERT_TRUE(wait_for("ListRefreshed [2]"));
        panel().settle();
    }

    void expect_the_user_goes_on()
    {
        EXPECT_EQ(logged("[VESKAUTOTC][DENY]"), 0);
        EXPECT_THAT(listed(), ElementsAre(Pair("\u200eFirst\u200e", true), Pair("\u200eSecond\u200e", true)));
        EXPECT_EQ(focused(), app()->genlist);
        const std::vector<Evas_Object *> base = drawings(app()->base, "elm/popup/base/C_PopupBasic_WhiteRight");
        ASSERT_EQ(base.size(), 1U);
        EXPECT_EQ(state_of(base[0], "dim"), "default");
        press("Right");
        EXPECT_EQ(focused(), app()->edit_button);
        press("Return");
        EXPECT_TRUE(b_edit_status);
    }
};

TEST_F(RefusalTest, OnATelevisionEditWorksAfterwards)
{
    open_on("television");
    deny_second();
    expect_the_user_goes_on();
}

TEST_F(RefusalTest, OnABoardEditWorksAfterwards)
{
    open_on("board");
    deny_second();
    expect_the_user_goes_on();
}

TEST_F(RefusalTest, OnABoardATouchOnEditWorksAfterwards)
{
    open_on("board");
    deny_second();
    tap(app()->edit_button);
    EXPECT_TRUE(b_edit_status);
}

} // namespace
