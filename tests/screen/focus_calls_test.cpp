/* In which order the screens move the focus between list and buttons, and what else they show and forbid on the way. */

#include <algorithm>
#include <gmock/gmock.h>
#include <set>

#include "details.h"
#include "edit_fixture.h"
#include "spy.h"
#include "ug/detail_popup.h"

using testing::ElementsAre;
using testing::IsSupersetOf;

namespace {

/* The lines of the log, and the calls but for the other popups' own moves of the focus. */
std::vector<std::string> of_the_main_screen()
{
    std::vector<std::string> steps;
    for (const spy::Call &call : spy::journal()) {
        static const std::set<std::string> moves{"elm_object_focus_set", "elm_object_focus_allow_set",
                                                 "evas_object_focus_set", "evas_object_show"};
        static const std::set<std::string> others{"", "elm_config_focus_highlight_enabled_set",
                                                  "elm_object_signal_emit", "elm_popup_align_set",
                                                  "elm_win_focus_highlight_enabled_set"};
        if (others.contains(call.function) || (moves.contains(call.function) && !call.text.ends_with(" on object")))
            steps.push_back(call.text);
    }
    return steps;
}

template <class Fixture> struct Stepping : Fixture {
    /* What `action` does, without the canvas focus, which goes beside the widget's. */
    template <class Action> std::vector<std::string> steps_of(Action action)
    {
        this->forget();
        action();
        std::vector<std::string> steps = of_the_main_screen();
        /* The host's part: what may not have the focus looks so. */
        std::erase_if(steps, [](const std::string &step) { return step.starts_with("elm,action,unfocus"); });
        const auto canvas = std::stable_partition(steps.begin(), steps.end(),
                                                  [](const std::string &step) { return !step.starts_with("canvas"); });
        canvas_steps_.assign(canvas, steps.end());
        steps.erase(canvas, steps.end());
        return steps;
    }

    /* The canvas focus in the last steps. */
    const std::vector<std::string> &canvas_steps() const { return canvas_steps_; }

private:
    std::vector<std::string> canvas_steps_;
};

struct DetailFocusTest : Stepping<DetailsTest> {
    void SetUp() override
    {
        register_devices({with_services("First", 5), with_services("Second", 5)});
        open();
    }
};

TEST_F(DetailFocusTest, ViewDetailsTakesTheFocusFromAllAndForbidsItToListAndCloseButton)
{
    open_dropdown(0);
    elm_object_item_focus_set(row(app()->action_genlist, 2), EINA_TRUE);
    std::vector<std::string> steps = steps_of([this] { _item_selected(app()); });
    const auto details = std::ranges::find(steps, "I show_detail_popup: Enter");
    ASSERT_NE(details, steps.end());
    steps.erase(details, steps.end());
    EXPECT_THAT(steps, ElementsAre("I _item_selected: Enter", "theme,undim from  to base", "focus 0 on list",
                                   "allow 0 on list", "focus 0 on close button", "focus 0 on edit button",
                                   "allow 0 on close button"));
    EXPECT_THAT(canvas_steps(), IsSupersetOf({"canvas focus 0 on list", "canvas focus 0 on close button",
                                              "canvas focus 0 on edit button"}));
    EXPECT_TRUE(elm_object_focus_allow_get(app()->edit_button)) << "it only loses the focus";
    EXPECT_FALSE(elm_object_focus_get(app()->edit_button));
}

TEST_F(DetailFocusTest, TheDetailsButtonShowsTheScreenAgainAndThenMovesTheFocus)
{
    open_details(0);
    EXPECT_THAT(steps_of([this] { _close_button_cb(app(), nullptr, nullptr); }),
                ElementsAre("I _close_button_cb: Enter", "show 1 on base", "show 1 on list", "focus 1 on window",
                            "allow 1 on edit button", "allow 1 on close button", "allow 1 on list", "focus 1 on list",
                            "I _close_button_cb: Exit"));
    EXPECT_THAT(canvas_steps(), ElementsAre("canvas focus 1 on list"));
}

TEST_F(DetailFocusTest, ATouchOutsideTheDetailsTurnsToTheListFirstAndShowsNothing)
{
    open_details(0);
    EXPECT_THAT(steps_of([this] { Close_detail_popup_On_touch_outside(app(), nullptr, nullptr); }),
                ElementsAre("I Close_detail_popup_On_touch_outside: Enter", "focus 1 on list", "focus 1 on window",
                            "allow 1 on edit button", "allow 1 on close button", "allow 1 on list", "focus 1 on list",
                            "I Close_detail_popup_On_touch_outside: Exit"));
    EXPECT_THAT(canvas_steps(), ElementsAre("canvas focus 1 on list"));
}

TEST_F(DetailFocusTest, OpeningTheDetailsTakesTheFocusFromTheListAndForbidsIt)
{
    selected_item_index = 0;
    EXPECT_THAT(steps_of([this] { show_detail_popup(app()); }),
                IsSupersetOf({"focus highlight 1 on window", "theme,undim from  to base", "show 1 on window",
                              "focus 0 on list", "allow 0 on list"}));
    EXPECT_THAT(canvas_steps(), testing::Contains("canvas focus 0 on list"));
    EXPECT_TRUE(elm_object_focus_allow_get(app()->edit_button));
}

struct ToastFocusTest : Stepping<EditTest> {};

TEST_F(ToastFocusTest, TheButtonsLoseTheFocusBeforeTheListIsRebuiltAndAllMayNotHaveItAfterwards)
{
    open_edit(3);
    turn_over({0});
    ask_for_deletion();
    std::vector<std::string> steps = steps_of([this] { _deletebutton_cb(app(), nullptr, nullptr); });
    std::erase_if(steps, [](const std::string &step) {
        return !step.starts_with("focus ") && !step.starts_with("allow ") &&
               step.find("_remove_toast") == std::string::npos && step.find("refresh_genlist") == std::string::npos;
    });
    EXPECT_THAT(steps, ElementsAre("I _remove_toast: Enter", "focus 0 on close button", "focus 0 on edit button",
                                   "I refresh_genlist: Enter", "I refresh_genlist: Exit", "allow 0 on list",
                                   "allow 0 on edit button", "allow 0 on close button", "I _remove_toast: Exit"));
}

} // namespace
