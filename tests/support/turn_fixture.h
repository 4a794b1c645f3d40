#pragma once
/* What the tests of a turned panel share: a household, pictures of the panel, and whether all of it is seen. */

#include <fstream>
#include <iterator>
#include <string>

#include "canvas_parts.h"
#include "details.h"

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
