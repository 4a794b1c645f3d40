#pragma once
/* What the tests of edit mode share: its spoken texts. */

#include <string>

#include "edit_fixture.h"

struct EditModeTest : EditTest {
    static std::string spoken_button(const char *id)
    {
        return std::string(translated(id)) + ", " + translated("TV_SID_BUTTON");
    }

    static std::string spoken_row(const char *state, const std::string &name)
    {
        return std::string(translated("TV_SID_CHECKBOX")) + "," + translated(state) + "," + shown_name(name) + "," +
               translated("COM_SID_ALLOWED");
    }
};
