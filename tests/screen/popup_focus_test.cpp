/* Who has the focus, and who may be touched, while popups lie over each other. */

#include <gmock/gmock.h>

#include "edit_fixture.h"
#include "ug/action_popup.h"
#include "ug/detail_popup.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char kMainGroup[] = "elm/popup/base/C_PopupBasic_WhiteRight";
constexpr char kRowGroup[] = "elm/genlist/item/C_TextItem_WhiteSingleline05/default";

struct PopupFocusTest : EditTest {
    /* The toast of a deletion is up. */
    void delete_first(int devices)
    {
        open_edit(devices);
        turn_over({0});
        ask_for_deletion();
        answer_yes();
        ASSERT_TRUE(b_disable_focus);
    }

    bool toast_ends()
    {
        const bool ended = panel().run_until([] { return !b_disable_focus; }, 7000);
        panel().settle();
        return ended;
    }

    /* A change of the status by another process. */
    void refresh_by_change(const std::string &name)
    {
        forget();
        change_elsewhere(name, status_of(name) != 0);
        ASSERT_TRUE(panel().run_until([this] { return !lines_of("vesk_refresh_list").empty(); }, 3000));
        panel().settle();
    }

    /* A confirmation that was opened while the toast of the deletion before is up. */
    void ask_again_under_the_toast()
    {
        delete_first(5);
        ASSERT_NO_FATAL_FAILURE(refresh_by_change("Phone 3"));
        press({"Right", "Return"});
        ASSERT_TRUE(b_edit_status);
        turn_over({1});
        ask_for_deletion();
        ASSERT_TRUE(b_disable_focus) << "the toast has gone too early for this test";
    }

    bool is_dimmed(Evas_Object *popup)
    {
        const auto found = drawings(popup, kMainGroup);
        return found.size() == 1 && state_of(found[0], "dim").starts_with("percent");
    }

    /* The names of the rows that have the mark of the chosen one. */
    std::vector<std::string> marked_as_chosen()
    {
        std::vector<std::string> names;
        for (const Evas_Object *drawing : drawings(app()->genlist, kRowGroup)) {
            if (state_of(drawing, "mark") == "chosen")
                names.emplace_back(edje_object_part_text_get(drawing, "elm.text"));
        }
        return names;
    }

    void touch_row(int index)
    {
        const Eina_Rectangle place = row_area(row(app()->genlist, index));
        panel().tap(place.x + place.w / 2, place.y + place.h / 2);
    }
};

TEST_F(PopupFocusTest, TheEndOfAToastLeavesTheConfirmationsDefaultAlone)
{
    ASSERT_NO_FATAL_FAILURE(ask_again_under_the_toast());
    EXPECT_EQ(focused(), no());
    EXPECT_TRUE(is_dimmed(app()->base));
    ASSERT_TRUE(toast_ends());
    ASSERT_NE(app()->delete_popup, nullptr);
    EXPECT_EQ(focused(), no()) << "No is the default";
    EXPECT_TRUE(is_dimmed(app()->base));
    press("Return");
    EXPECT_EQ(app()->delete_popup, nullptr);
    EXPECT_EQ(registered().size(), 4U) << "nothing more is deleted";
    EXPECT_FALSE(is_dimmed(app()->base));
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(PopupFocusTest, AChangeElsewhereLeavesTheFocusInTheDetails)
{
    register_devices(phones(4));
    open();
    press({"Return", "Down", "Down", "Return"});
    ASSERT_NE(app()->detail_popup, nullptr);
    ASSERT_EQ(focused(), app()->detail_close_button);
    ASSERT_NO_FATAL_FAILURE(refresh_by_change("Phone 3"));
    EXPECT_EQ(focused(), app()->detail_close_button);
    EXPECT_FALSE(is_dimmed(app()->base));
    press("Return");
    EXPECT_EQ(app()->detail_popup, nullptr);
    EXPECT_EQ(focused(), app()->genlist);
    press("Down");
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(PopupFocusTest, AChangeElsewhereLeavesTheChosenChoice)
{
    register_devices(phones(4));
    open();
    press({"Return", "Down"});
    ASSERT_EQ(focused(), app()->action_genlist);
    ASSERT_NO_FATAL_FAILURE(refresh_by_change("Phone 3"));
    EXPECT_EQ(focused(), app()->action_genlist);
    EXPECT_EQ(focused_row(), 1);
    EXPECT_TRUE(is_dimmed(app()->base));
}

TEST_F(PopupFocusTest, AToastKeepsTouchesFromButtonsAndRows)
{
    delete_first(5);
    tap(app()->edit_button);
    EXPECT_FALSE(b_edit_status);
    touch_row(1);
    EXPECT_EQ(app()->action_popup, nullptr);
    tap(app()->close_button);
    EXPECT_TRUE(running());
    ASSERT_TRUE(toast_ends());
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_THAT(marked(), ElementsAre(0)) << "of the deletion; nobody has marked anything since";
    tap(app()->edit_button);
    EXPECT_TRUE(b_edit_status);
    touch_row(1);
    EXPECT_THAT(marked(), ElementsAre(1));
}

TEST_F(PopupFocusTest, ATouchOutsideABoardClosesUnderAToastToo)
{
    use_product("board");
    delete_first(5);
    panel().tap(5, 5);
    EXPECT_TRUE(closed_itself());
}

TEST_F(PopupFocusTest, OneRowIsMarkedAtMostAndNotWhileAnotherHasTheFocus)
{
    register_devices(phones(4));
    open();
    press("Return");
    ASSERT_EQ(focused(), app()->action_genlist);
    EXPECT_THAT(marked_as_chosen(), ElementsAre(shown_name("Phone 1"))) << "the drop-down is this row's";
    press("Return"); /* allowed as it was: the row stays the chosen one */
    ASSERT_EQ(focused(), app()->genlist);
    press("Down");
    EXPECT_EQ(focused_row(), 1);
    EXPECT_THAT(marked_as_chosen(), IsEmpty());
    press({"Up", "Return"});
    ASSERT_EQ(focused(), app()->action_genlist);
    EXPECT_THAT(marked_as_chosen(), ElementsAre(shown_name("Phone 1")));
}

} // namespace
