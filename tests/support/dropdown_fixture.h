#pragma once
/* What the tests around the action drop-down share. */

#include "canvas_parts.h"
#include "screen_test.h"
#include "ug/action_popup.h"

class DropdownFixture : public ScreenTest {
protected:
    /* Moves the focus to a row of the main list and selects it. */
    void open_dropdown(int row = 0)
    {
        for (int pressed = 0; pressed < 50 && focused_row() < row; ++pressed)
            press("Down");
        ASSERT_EQ(focused_row(), row);
        press("Return");
    }

    /* The drop-downs on the panel. */
    std::vector<Evas_Object *> dropdowns() { return shown_popups(panel().canvas(), "C_ListDropdown_White"); }
    bool dropdown_open() { return !dropdowns().empty(); }

    Elm_Object_Item *choice(int position) { return row(app()->action_genlist, position); }

    /* Position of the choice with the focus, -1 when the focus is elsewhere. */
    int focused_choice() { return dropdown_open() && focused() == app()->action_genlist ? focused_row() : -1; }

    int status_of(const std::string &name) const
    {
        for (const vesk_port::Device &device : registered()) {
            if (device.name == name)
                return device.status;
        }
        return -1;
    }

    /* The table's rows as the list should show them: names and whether they are allowed, in the service's order,
       allowed ones first. Denied ones may stand in any order. */
    std::vector<std::pair<std::string, bool>> listed()
    {
        std::vector<std::pair<std::string, bool>> rows;
        const std::vector<std::string> names = texts(app()->genlist);
        const std::vector<std::string> statuses = texts(app()->genlist, "elm.text.1");
        for (size_t i = 0; i < names.size(); ++i)
            rows.emplace_back(names[i], statuses[i] == "Allowed");
        return rows;
    }

    bool wait_for(const std::string &message, int count = 1)
    {
        return panel().run_until([&] { return logged(message) >= count; }, 3000);
    }

    /* A change by another process. */
    void change_elsewhere(const std::string &name, bool allow)
    {
        vesk_port::DeviceStore store(folder() / "devices.db");
        for (const vesk_port::Device &device : store.list()) {
            if (device.name == name)
                store.set_status(device.id, allow ? 0 : 1);
        }
    }
};
