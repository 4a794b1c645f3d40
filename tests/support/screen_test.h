#pragma once
/* What the tests of the screens share: a television on a headless panel, with a household of its own.
 *
 *     struct ListTest : ScreenTest {};
 *
 *     TEST_F(ListTest, RightLeadsToTheFirstButton)
 *     {
 *         register_devices({phone("A"), phone("B")});
 *         open();
 *         press("Right");
 *         EXPECT_EQ(focused(), app()->edit_button);
 *     }
 *
 * Everything is made in a folder of the test's own. The module is linked in, so its functions and globals are at hand;
 * the service, the settings and the log are those of the desktop port. */

#include <filesystem>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "desktop/device_store.h"
#include "desktop/settings.h"
#include "television/gadget.h"
#include "television/panel.h"
#include "ug/app_data.h"
#include "ug/module_state.h"

struct LogLine {
    int priority;         /* DLOG_INFO, DLOG_WARN or DLOG_ERROR */
    std::string function; /* where the line comes from */
    std::string message;  /* the text behind the prefix */
};

class ScreenTest : public testing::Test {
protected:
    ScreenTest();
    ~ScreenTest() override;

    /* --- Before open --- */

    /* The product profile: "television" unless said otherwise. */
    void use_product(const std::string &profile);

    /* A setting by its short name, such as ("orientation", "portrait"); also while the screen is open. */
    void set(const std::string &setting, const std::string &word);

    /* What the service has registered, in its order, in place of what it had; also while the screen is open, where it
       is a change by another process. */
    void register_devices(const std::vector<vesk_port::Device> &devices);

    /* --- The screen --- */

    /* Starts the module and waits for its screen to be at rest. */
    void open();

    /* Ends the run from the host's side. */
    void close();

    /* The user's setting, while the module runs; waits until it has heard of the turn and everything is at rest. */
    void turn(const std::string &orientation);

    /* Whether the module runs. It ends by itself from the main loop. */
    bool running() const { return gadget_ && gadget_->running(); }
    bool closed_itself()
    {
        return panel().run_until([this] { return !running(); }, 2000);
    }

    vesk::Panel &panel() { return *panel_; }
    AppData *app() { return app_data; }

    /* Keys one after the other, each with its effect; then the screen at rest. */
    void press(std::initializer_list<std::string> keys);
    void press(const char *key) { press({std::string(key)}); }
    void tap(Evas_Object *object);

    /* The focused widget, and the focused row of a focused list (from 0; -1 for none). */
    Evas_Object *focused() { return panel().focused(); }
    int focused_row() { return panel().focused_row(); }

    /* By the arrows from any row of a list to another. */
    void walk_to(int row);

    /* Moves the focus to a row of the main list and selects it. */
    void open_dropdown(int row = 0);

    /* What the rows of a list show in a part, realized rows only. */
    static std::vector<std::string> texts(Evas_Object *list, const char *part = "elm.text");
    static Elm_Object_Item *row(Evas_Object *list, int index);
    static Eina_Rectangle area(Evas_Object *object);
    static Eina_Rectangle row_area(Elm_Object_Item *item);

    /* --- What happened --- */

    /* The module's lines since the start or the last forget(). */
    const std::vector<LogLine> &log() const { return log_; }
    int logged(const std::string &message) const;
    std::vector<std::string> messages() const;
    std::vector<std::string> lines_of(const std::string &function) const;

    /* The texts spoken since the start or the last forget(), oldest first. */
    static const std::vector<std::string> &spoken();

    void forget();

    /* --- The service --- */

    /* What it has now. */
    std::vector<vesk_port::Device> registered() const;

    /* -1 for a device that is not registered. */
    int status_of(const std::string &name) const;

    /* As another process has it: what is changed here comes from elsewhere. */
    vesk_port::DeviceStore service() const;
    void change_elsewhere(const std::string &name, bool allow);

    const std::filesystem::path &folder() const { return folder_; }

    /* Without the way there the rest of a test means nothing. */
    static void require(bool condition, const std::string &problem);

private:
    std::filesystem::path folder_;
    std::vector<LogLine> log_;
    std::unique_ptr<vesk::Panel> panel_;
    std::unique_ptr<vesk::Gadget> gadget_;
};

/* Devices with an address made from their place in the list, so that each is another one. */
vesk_port::Device phone(const std::string &name, bool allowed = true);
vesk_port::Device device(const std::string &name, int type, bool allowed, const std::string &links);

/* `count` phones "Phone 1" and so on, all allowed. */
std::vector<vesk_port::Device> phones(int count);
