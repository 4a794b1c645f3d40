#pragma once
/* A module that is begun and ended through its entry points. */

#include "module_fixture.h"
#include "ug/module.h"

class LifecycleTest : public ModuleTest {
protected:
    ~LifecycleTest() override
    {
        if (ops.priv)
            UG_MODULE_EXIT(&ops);
    }

    /* Runs UG_MODULE_INIT and begins the chronicle anew. */
    AppData *init()
    {
        EXPECT_EQ(UG_MODULE_INIT(&ops), 0);
        fake::platform().chronicle.clear();
        fake::platform().log.clear();
        AppData *app = static_cast<AppData *>(ops.priv);
        app->ug = gadget;
        return app;
    }

    ug_module_ops ops{};
};
