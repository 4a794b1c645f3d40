#pragma once
/* What the tests of edit mode and of the deletion share: ways into edit mode, and what its rows show. */

#include <string>
#include <vector>

#include "canvas_parts.h"
#include "screen_test.h"
#include "translate.h"
#include "ug/app_keys.h"
#include "ug/delete_popup.h"
#include "ug/edit_mode.h"
#include "vesk/device_table.h"

class EditTest : public ScreenTest {
protected:
    /* The state of the screen, by its name in docs/states.md. */
    std::string state_now()
    {
        if (!running())
            return "closed";
        if (b_disable_focus)
            return "toast";
        if (app()->delete_popup)
            return "confirmation";
        if (app()->detail_popup)
            return "details";
        if (!shown_popups(panel().canvas(), "C_ListDropdown_White").empty())
            return "drop-down";
        if (b_edit_status)
            return "edit mode";
        return device_count > 0 ? "list" : "empty list";
    }

    /* From the list, with the focus on a row. */
    void begin_edit()
    {
        press({"Right", "Return"});
        ASSERT_TRUE(b_edit_status);
    }

    void open_edit(int devices)
    {
        register_devices(phones(devices));
        open();
        begin_edit();
    }

    /* With the focus on a row: moves to each of the rows, in this order, and turns its mark over. */
    void turn_over(const std::vector<int> &rows)
    {
        for (int wanted : rows) {
            walk_to(wanted);
            press("Return");
        }
    }

    /* From a row, with at least one marked: the second button is beside the list then. */
    void ask_for_deletion()
    {
        press({"Right", "Return"});
        ASSERT_NE(app()->delete_popup, nullptr);
    }

    /* The answers of the confirmation. */
    Evas_Object *yes() { return elm_object_part_content_get(app()->delete_popup, "button1"); }
    Evas_Object *no() { return elm_object_part_content_get(app()->delete_popup, "button2"); }

    /* With the confirmation open, whose default is the second answer. */
    void answer_yes() { press({"Left", "Return"}); }

    Evas_Object *check(int index)
    {
        return elm_object_item_part_content_get(row(app()->genlist, index), "elm.swallow.checkbox");
    }

    std::vector<int> marked() const
    {
        std::vector<int> result;
        for (int i = 0; i < device_count; ++i) {
            if (b_remove_status[i])
                result.push_back(i);
        }
        return result;
    }

    /* Every check box that the list has at present shows its row's mark. Returns how many there are. */
    int expect_checks_agree()
    {
        int checks = 0;
        for (int i = 0; i < device_count; ++i) {
            const Evas_Object *box = check(i);
            if (!box)
                continue;
            ++checks;
            EXPECT_EQ(elm_check_state_get(box) == EINA_TRUE, b_remove_status[i]) << "row " << i;
        }
        return checks;
    }

    static std::string text_of(const Evas_Object *object)
    {
        const char *text = elm_object_text_get(object);
        return text ? text : "";
    }

    static bool focusable(const Evas_Object *object) { return elm_object_focus_allow_get(object) == EINA_TRUE; }

    /* What a touch or Return on the button calls, whatever the button looks like. */
    static void click(Evas_Object *button) { evas_object_smart_callback_call(button, "clicked", nullptr); }

    /* The toasts on the panel. */
    std::vector<Evas_Object *> toasts()
    {
        std::vector<Evas_Object *> found = objects_on(panel().canvas());
        std::erase_if(found, [this](Evas_Object *object) {
            return !is_of_type(object, "elm_notify") || !evas_object_visible_get(object) ||
                   elm_object_parent_widget_get(object) != panel().window();
        });
        return found;
    }

    std::vector<std::string> names() { return texts(app()->genlist); }
};

/* A name as the list shows it: between marks that keep its own direction. */
inline std::string shown_name(const std::string &name)
{
    return "\u200e" + name + "\u200e";
}
