#pragma once
/* The module on the fake platform, in the state in which it is right after loading. */

#include <gmock/gmock.h>

#include "fake_platform.h"
#include "ug/app_data.h"
#include "ug/module_state.h"

class ModuleTest : public testing::Test {
protected:
    ModuleTest()
    {
        fake::reset();
        reset_module_state();
    }

    /* A gadget as its host knows it; the module only hands it on. */
    ui_gadget_h gadget = reinterpret_cast<ui_gadget_h>(&fake::platform());
};
