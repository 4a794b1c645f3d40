/* The panel is turned by the user's setting while each of the screens is open. */

#include <dlog.h>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

#include "canvas_parts.h"
#include "desktop/port_failures.h"
#include "details.h"
#include "ug/delete_popup.h"
#include "ug/detail_popup.h"
#include "ug/device_list_screen.h"
#include "ug/edit_mode.h"
#include "ug/settings_watch.h"

namespace {

struct TurnTest : DetailsTest {
    TurnTest()
    {
        register_devices({with_services("First", 5), with_services("Second", 7), with_services("Third", 2),
                          with_services("Fourth", 0)});
    }

    std::string picture(const std::string &name)
    {
        const auto file = folder() / (name + ".png");
        panel().save(file);
        std::ifstream in(file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

    /* Buttons, lists, labels and check boxes that are shown have to lie within the panel as a whole. */
    void expect_all_on_the_panel()
    {
        for (Evas_Object *object : objects_on(panel().canvas())) {
            const char *type = evas_object_type_get(object);
            if (!evas_object_visible_get(object) || !type)
                continue;
            const std::string kind = type;
            if (kind != "elm_button" && kind != "elm_genlist" && kind != "elm_label" && kind != "elm_table")
                continue;
            const Eina_Rectangle place = area(object);
            EXPECT_GE(place.x, 0) << kind;
            EXPECT_GE(place.y, 0) << kind;
            EXPECT_LE(place.x + place.w, panel().width()) << kind;
            EXPECT_LE(place.y + place.h, panel().height()) << kind;
            EXPECT_GT(place.w, 0) << kind;
            EXPECT_GT(place.h, 0) << kind;
        }
    }
};

/* ---- What every screen has in common ---- */

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

/* ---- The main list ---- */

TEST_F(TurnTest, TheListsSizeFollows)
{
    for (const char *product : {"television", "board"}) {
        use_product(product);
        open();
        EXPECT_EQ(min_of(app()->list_rect), (Size{820, 491}));
        turn("portrait");
        EXPECT_EQ(min_of(app()->list_rect), (Size{461, 276})) << product;
        EXPECT_GE(area(app()->genlist).w, 461);
        turn("landscape");
        EXPECT_EQ(min_of(app()->list_rect), (Size{820, 491})) << product;
        EXPECT_GE(area(app()->genlist).w, 820);
        close();
    }
}

TEST_F(TurnTest, TheSizesAreScaledTwice)
{
    open();
    elm_config_scale_set(4.0);
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_EQ(min_of(app()->list_rect), (Size{3280, 1964}));
    vesk_port::set_failures("vconf_get_int=-1");
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_EQ(min_of(app()->list_rect), (Size{3280, 1964})) << "landscape when it cannot be told";
    EXPECT_EQ(logged("error vconf_get_int : 0"), 1);
    elm_config_scale_set(2.0);
}

TEST_F(TurnTest, AnyOrientationButZeroIsPortrait)
{
    open();
    for (const char *value : {"2", "-1", "90"}) {
        vesk_port::write_setting(kOrientationKey, value);
        ASSERT_TRUE(panel().run_until([this] { return panel().portrait(); }, 2000)) << value;
        panel().settle();
        EXPECT_EQ(min_of(app()->list_rect), (Size{461, 276}));
        turn("landscape");
    }
}

TEST_F(TurnTest, KeysWorkAtOnceAfterATurn)
{
    open();
    press("Down");
    turn("portrait");
    press("Down");
    EXPECT_EQ(focused_row(), 2);
    press({"Up", "Up", "Up"});
    EXPECT_EQ(focused_row(), 3) << "and round";
    press("Return");
    EXPECT_EQ(focused(), app()->action_genlist);
    press("XF86Back");
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(TurnTest, EveryDeviceIsStillThere)
{
    open();
    const auto before = texts(app()->genlist);
    turn("portrait");
    EXPECT_EQ(texts(app()->genlist), before);
    EXPECT_EQ(before.size(), 4U);
}

TEST_F(TurnTest, TheCountersOfTheCheckBoxesBeginAnew)
{
    open();
    g_checkbox_index = 7;
    g_orientation_checkbox_count = 9;
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_EQ(g_checkbox_index, 0);
    EXPECT_EQ(g_orientation_checkbox_count, 0);
    EXPECT_EQ(logged("ROTATION callback"), 1);
}

/* ---- The drop-down ---- */

struct DropDownTurnTest : TurnTest {
    /* The setting is there before the drop-down hears of the turn, which it does only while the flag is set. */
    double vertical()
    {
        double x = 0;
        double y = 0;
        elm_popup_align_get(app()->action_popup, &x, &y);
        EXPECT_EQ(x, 0.5);
        return y;
    }

    void open_third()
    {
        use_product("board");
        open();
        open_dropdown(2);
        ASSERT_TRUE(b_popup_expanded) << "armed by its preselection";
    }
};

TEST_F(DropDownTurnTest, SizesAndPlaceFollowTheRow)
{
    open_third();
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_NEAR(vertical(), (4 * 80 + 268) / 1080.0 - 0.03, 1e-9);
    EXPECT_EQ(min_of(app()->action_rect), (Size{250, 279}));

    turn("portrait");
    EXPECT_NEAR(vertical(), (4 * 45 + 813) / 1920.0 - 0.013, 1e-9);
    EXPECT_EQ(min_of(app()->action_rect), (Size{140, 156}));
    EXPECT_TRUE(evas_object_visible_get(app()->action_popup));

    turn("landscape");
    EXPECT_NEAR(vertical(), (4 * 80 + 268) / 1080.0 - 0.03, 1e-9);
    EXPECT_EQ(min_of(app()->action_rect), (Size{250, 279}));
}

TEST_F(DropDownTurnTest, StaysAsItIsOnATelevision)
{
    open();
    open_dropdown(2);
    ASSERT_FALSE(b_popup_expanded);
    const auto size = min_of(app()->action_rect);
    turn("portrait");
    EXPECT_EQ(min_of(app()->action_rect), size);
    EXPECT_EQ(focused(), app()->action_genlist);
    press("Down");
    EXPECT_EQ(focused(), app()->action_genlist);
    press("XF86Back");
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(DropDownTurnTest, IsNotPlacedByAScreenOfUnknownSize)
{
    open_third();
    VconfNotifyCB(nullptr, nullptr);
    const double before = vertical();
    vesk_port::set_failures("system_info_get_platform_int=-1");
    forget();
    turn("portrait");
    EXPECT_EQ(logged("screen size is unknown"), 1);
    for (const LogLine &line : log()) {
        if (line.message == "screen size is unknown") {
            EXPECT_EQ(line.priority, DLOG_WARN);
        }
    }
    EXPECT_EQ(vertical(), before);
    EXPECT_EQ(min_of(app()->action_rect), (Size{140, 156})) << "its size follows all the same";
}

TEST_F(DropDownTurnTest, IsNotPlacedWithoutASelectedRow)
{
    open_third();
    VconfNotifyCB(nullptr, nullptr);
    const double before = vertical();
    elm_genlist_item_selected_set(row(app()->genlist, 2), EINA_FALSE);
    forget();
    turn("portrait");
    EXPECT_EQ(logged("no row is selected"), 1);
    EXPECT_EQ(vertical(), before);
}

TEST_F(DropDownTurnTest, ThatHasGoneIsNotAligned)
{
    open_third();
    press("XF86Back");
    ASSERT_EQ(app()->action_popup, nullptr);
    b_popup_expanded = true;
    turn("portrait");
    EXPECT_TRUE(running());
    EXPECT_EQ(focused(), app()->genlist);
}

/* ---- Edit mode ---- */

TEST_F(TurnTest, EditModeDisablesTheSecondButtonWhileNothingIsMarked)
{
    open();
    press({"Right", "Return"});
    ASSERT_TRUE(b_edit_status);
    turn("portrait");
    EXPECT_TRUE(elm_object_disabled_get(app()->close_button));
    EXPECT_FALSE(elm_object_focus_allow_get(app()->close_button));
    press("Return");
    ASSERT_EQ(g_selected_count, 1);
    EXPECT_FALSE(elm_object_disabled_get(app()->close_button)) << "a mark makes it work again";
    turn("landscape");
    EXPECT_FALSE(elm_object_disabled_get(app()->close_button));
    EXPECT_TRUE(elm_object_focus_allow_get(app()->close_button));
}

TEST_F(TurnTest, MarksStayOnTheirRows)
{
    open();
    press({"Right", "Return"});
    press({"Return", "Down", "Down", "Return"});
    const auto checks = [this] {
        std::vector<bool> on;
        for (int i = 0; i < device_count; ++i) {
            const Evas_Object *check = elm_object_item_part_content_get(row(app()->genlist, i), "elm.swallow.checkbox");
            on.push_back(check && elm_check_state_get(check));
        }
        return on;
    };
    const std::vector<bool> marked{true, false, true, false};
    ASSERT_EQ(checks(), marked);
    turn("portrait");
    EXPECT_EQ(checks(), marked);
    turn("landscape");
    EXPECT_EQ(checks(), marked);
    EXPECT_EQ(g_selected_count, 2);
}

/* ---- The details ---- */

TEST_F(TurnTest, TheDetailsAreBuiltAnew)
{
    open();
    open_details(0);
    Evas_Object *const before = app()->detail_popup;
    bool deleted = false;
    evas_object_event_callback_add(
        before, EVAS_CALLBACK_DEL, [](void *flag, Evas *, Evas_Object *, void *) { *static_cast<bool *>(flag) = true; },
        &deleted);
    turn("portrait");
    EXPECT_TRUE(deleted);
    ASSERT_NE(app()->detail_popup, nullptr);
    EXPECT_EQ(shown_popups(panel().canvas(), "C_PopupBasic_WhiteRight").size(), 2U) << "the list's and the details'";
    press("XF86Back");
    EXPECT_EQ(app()->detail_popup, nullptr);
    EXPECT_TRUE(running());
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_EQ(elm_genlist_selected_item_get(app()->genlist), nullptr);
    press("Down");
    EXPECT_EQ(focused_row(), 1);
}

TEST_F(TurnTest, TheDetailsOfABoardBecomeCompact)
{
    use_product("board");
    open();
    selected_item_index = 0;
    show_detail_popup(app());
    panel().settle();
    EXPECT_EQ(area(app()->service_genlist).w, 780);
    turn("portrait");
    EXPECT_EQ(area(app()->service_genlist).w, 439);
    turn("landscape");
    EXPECT_EQ(area(app()->service_genlist).w, 780);
}

/* ---- Turned from the beginning ---- */

TEST_F(TurnTest, AModuleThatOpensTurnedIsWhole)
{
    for (const char *product : {"television", "board"}) {
        use_product(product);
        set("orientation", "portrait");
        open();
        ASSERT_TRUE(panel().portrait());
        expect_all_on_the_panel();
        const bool compact = b_is_tablo;
        EXPECT_EQ(min_of(app()->list_rect), (compact ? Size{461, 276} : Size{820, 491}));
        turn("landscape");
        EXPECT_EQ(min_of(app()->list_rect), (Size{820, 491}));
        expect_all_on_the_panel();
        close();
    }
}

TEST_F(TurnTest, AnEmptyListTurnsToo)
{
    register_devices({});
    open();
    Evas_Object *const button = focused();
    EXPECT_EQ(button, app()->close_button);
    const auto before = picture("before");
    turn("portrait");
    expect_all_on_the_panel();
    EXPECT_EQ(focused(), button);
    turn("landscape");
    EXPECT_TRUE(picture("after") == before);
}

TEST_F(TurnTest, NothingTurnsWithoutAScreen)
{
    open();
    close();
    forget();
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_EQ(messages(), (std::vector<std::string>{"ROTATION callback", "no screen to turn"}));
    EXPECT_EQ(log()[1].priority, DLOG_WARN);
}

TEST_F(TurnTest, TheWatchEndsWithTheModule)
{
    open();
    press("XF86Back");
    ASSERT_TRUE(closed_itself());
    forget();
    set("orientation", "portrait");
    ASSERT_TRUE(panel().run_until([this] { return panel().portrait(); }, 2000));
    EXPECT_EQ(logged("ROTATION callback"), 0);
}

} // namespace
