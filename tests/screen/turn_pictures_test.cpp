/* What every screen has in common when the panel is turned: it is whole, keeps its focus and looks the same
 * after the way there and back. */

#include "turn_fixture.h"
#include "ug/delete_popup.h"
#include "ug/detail_popup.h"
#include "ug/edit_mode.h"

namespace {

/* By keys, as a user comes there. */
enum class Place { list, second_row, button, dropdown, edit, edit_marked, details, details_list, confirmation };

const char *name_of(Place place)
{
    switch (place) {
    case Place::list:
        return "list";
    case Place::second_row:
        return "second_row";
    case Place::button:
        return "button";
    case Place::dropdown:
        return "dropdown";
    case Place::edit:
        return "edit";
    case Place::edit_marked:
        return "edit_marked";
    case Place::details:
        return "details";
    case Place::details_list:
        return "details_list";
    case Place::confirmation:
        return "confirmation";
    }
    return "";
}

struct EveryScreenTest : TurnTest, testing::WithParamInterface<std::tuple<bool, Place>> {
    bool board() const { return std::get<bool>(GetParam()); }
    Place place() const { return std::get<Place>(GetParam()); }

    void go()
    {
        use_product(board() ? "board" : "television");
        open();
        switch (place()) {
        case Place::list:
            break;
        case Place::second_row:
            press("Down");
            break;
        case Place::button:
            press({"Right", "Down"});
            break;
        case Place::dropdown:
            press({"Down", "Return"});
            ASSERT_EQ(focused(), app()->action_genlist);
            break;
        case Place::details:
        case Place::details_list:
            go_to_details();
            break;
        case Place::edit:
        case Place::edit_marked:
        case Place::confirmation:
            go_to_edit_mode();
            break;
        }
    }

    void go_to_details()
    {
        if (board()) {
            /* On a board choices are tapped. */
            selected_item_index = 0;
            show_detail_popup(app());
            panel().settle();
        } else {
            open_details(0);
        }
        if (place() == Place::details_list)
            press({"Left", "Down"});
    }

    void go_to_edit_mode()
    {
        press({"Right", "Return"});
        ASSERT_TRUE(b_edit_status);
        if (place() == Place::edit)
            return;
        press("Return");
        ASSERT_EQ(g_selected_count, 1);
        if (place() == Place::edit_marked)
            return;
        _closebutton_cb(app(), nullptr, nullptr);
        panel().settle();
        ASSERT_NE(app()->delete_popup, nullptr);
    }
};

TEST_P(EveryScreenTest, StaysWholeAndKeepsItsFocus)
{
    go();
    Evas_Object *const widget = focused();
    const int index = focused_row();
    const bool rebuilt = place() == Place::details || place() == Place::details_list;
    turn("portrait");
    ASSERT_TRUE(panel().portrait());
    expect_all_on_the_panel();
    if (rebuilt) {
        EXPECT_EQ(focused(), app()->detail_close_button) << "where a new popup begins";
    } else {
        EXPECT_EQ(focused(), widget);
        EXPECT_EQ(focused_row(), index);
    }
    turn("landscape");
    ASSERT_FALSE(panel().portrait());
    expect_all_on_the_panel();
    if (rebuilt) {
        EXPECT_EQ(focused(), app()->detail_close_button);
    } else {
        EXPECT_EQ(focused(), widget);
        EXPECT_EQ(focused_row(), index);
    }
}

/* Without those that are elsewhere afterwards: new details begin with their button, and a board places its drop-down
 * anew. */
struct SamePictureTest : EveryScreenTest {};

TEST_P(SamePictureTest, ThereAndBackGivesTheFirstPictureAgain)
{
    go();
    const auto before = picture("before");
    turn("portrait");
    const auto turned = picture("turned");
    turn("landscape");
    EXPECT_NE(turned, before);
    EXPECT_TRUE(picture("after") == before) << "the pictures differ";
}

std::string name_of_screen(const testing::TestParamInfo<std::tuple<bool, Place>> &screen)
{
    return std::string(std::get<0>(screen.param) ? "board_" : "television_") + name_of(std::get<1>(screen.param));
}

INSTANTIATE_TEST_SUITE_P(Turned, EveryScreenTest,
                         testing::Combine(testing::Bool(),
                                          testing::Values(Place::list, Place::second_row, Place::button,
                                                          Place::dropdown, Place::edit, Place::edit_marked,
                                                          Place::details, Place::details_list, Place::confirmation)),
                         name_of_screen);

INSTANTIATE_TEST_SUITE_P(Turned, SamePictureTest,
                         testing::Combine(testing::Bool(),
                                          testing::Values(Place::list, Place::second_row, Place::button, Place::edit,
                                                          Place::edit_marked, Place::details, Place::confirmation)),
                         name_of_screen);

INSTANTIATE_TEST_SUITE_P(TurnedDropDown, SamePictureTest, testing::Values(std::tuple(false, Place::dropdown)),
                         name_of_screen);

} // namespace
