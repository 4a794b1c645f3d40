#pragma once
/* What the tests around the action drop-down share. */

#include "canvas_parts.h"
#include "screen_test.h"
#include "ug/action_popup.h"

class DropdownFixture : public ScreenTest {
protected:
    /* The drop-downs on the panel. */
    std::vector<Evas_Object *> dropdowns() { return shown_popups(panel().canvas(), "C_ListDropdown_White"); }
    bool dropdown_open() { return !dropdowns().empty(); }

    Elm_Object_Item *choice(int position) { return row(app()->action_genlist, position); }

    /* Position of the choice with the focus, -1 when the focus is elsewhere. */
    int focused_choice() { return dropdown_open() && focused() == app()->action_genlist ? focused_row() : -1; }

    /* Where the open one is drawn on the panel. */
    Eina_Rectangle drawn()
    {
        const auto found = drawings(dropdowns().at(0), "elm/popup/base/C_ListDropdown_White");
        EXPECT_EQ(found.size(), 1U);
        const Eina_Rectangle whole = area(found.at(0));
        Eina_Rectangle part{};
        edje_object_part_geometry_get(found[0], "panel", &part.x, &part.y, &part.w, &part.h);
        return {whole.x + part.x, whole.y + part.y, part.w, part.h};
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
};

struct DropdownTest : DropdownFixture {
    /* Two allowed phones and a denied one, at row 2. */
    void SetUp() override
    {
        register_devices({phone("First"), phone("Second"), phone("Barred", false)});
        open();
        forget();
    }

    std::string dimming()
    {
        const std::vector<Evas_Object *> base = drawings(app()->base, "elm/popup/base/C_PopupBasic_WhiteRight");
        return base.size() == 1 ? state_of(base[0], "dim") : "no drawing";
    }

    int priority_of(const std::string &message) const
    {
        for (const LogLine &line : log()) {
            if (line.message == message)
                return line.priority;
        }
        return -1;
    }

    void expect_closed_with_the_list_focused(int row)
    {
        EXPECT_FALSE(dropdown_open());
        EXPECT_EQ(focused(), app()->genlist);
        EXPECT_EQ(focused_row(), row);
        EXPECT_EQ(dimming(), "default");
    }
};
