/* Provoked failures: each call that can fail does, with the code that was asked for and a line in the log. */

#include <functional>
#include <map>

#include "desktop/port_error.h"
#include "desktop/port_failures.h"
#include "dlog.h"
#include "ea.h"
#include "port_fixture.h"
#include "rdm.h"
#include "string_util.h"
#include "system_info.h"
#include "ui_gadget.h"
#include "vconf.h"

using testing::HasSubstr;
using vesk_port::PortError;

namespace {

int listener(void *, RdmDeviceInfo *)
{
    return 0;
}

void watcher(keynode_t *, void *) {}

/* A call that would fail anyway gets the provoked code all the same, so the arguments do not matter. */
const std::map<std::string, std::function<int()>> calls{
    {"rdm_init", [] { return rdm_init(); }},
    {"rdm_deinit", [] { return rdm_deinit(); }},
    {"rdm_get_list",
     [] {
         RdmDeviceInfo *list = nullptr;
         size_t count = 0;
         return rdm_get_list(&list, &count);
     }},
    {"rdm_set_status", [] { return rdm_set_status("02:00:00:00:00:01", 1, 0); }},
    {"rdm_remove_device", [] { return rdm_remove_device("02:00:00:00:00:01", 1); }},
    {"rdm_remove_all", [] { return rdm_remove_all(); }},
    {"rdm_callback_register",
     [] {
         int handle = 0;
         return rdm_callback_register(listener, nullptr, &handle);
     }},
    {"rdm_callback_deregister", [] { return rdm_callback_deregister(1); }},
    {"vconf_get_int",
     [] {
         int value = 0;
         return vconf_get_int("db/menu/system/accessibility/highcontrast", &value);
     }},
    {"vconf_notify_key_changed", [] { return vconf_notify_key_changed("db/menu_widget/language", watcher, nullptr); }},
    {"vconf_ignore_key_changed", [] { return vconf_ignore_key_changed("db/menu_widget/language", watcher); }},
    {"system_info_get_custom_bool",
     [] {
         bool value = false;
         return system_info_get_custom_bool("com.corvane/featureconf/quince_support", &value);
     }},
    {"system_info_get_custom_int",
     [] {
         int value = 0;
         return system_info_get_custom_int("com.corvane/featureconf/the_fir_version", &value);
     }},
    {"system_info_get_custom_string",
     [] {
         char *value = nullptr;
         return system_info_get_custom_string("com.corvane/featureconf/product.device_sid", &value);
     }},
    {"system_info_get_platform_int",
     [] {
         int value = 0;
         return system_info_get_platform_int("com.corvane/feature/screen.width", &value);
     }},
    {"system_info_get_value_string",
     [] {
         char *value = nullptr;
         return system_info_get_value_string(90, &value);
     }},
    {"__dlog_print", [] { return __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text"); }},
    {"ug_destroy_me", [] { return ug_destroy_me(nullptr); }},
    {"ea_init", [] { return ea_init(0, 0); }},
    {"ea_shutdown", [] { return ea_shutdown(); }},
    {"CStringUtil::CombinateStrings",
     [] {
         char text[8] = "";
         return CStringUtil::CombinateStrings(text, sizeof text, "%1", "a", nullptr, nullptr, nullptr);
     }},
};

} // namespace

TEST_F(PortTest, EachCallFailsWithTheCodeAskedFor)
{
    for (const auto &[name, call] : calls) {
        vesk_port::set_failures(name + "=-4242");
        EXPECT_EQ(call(), -4242) << name;
        EXPECT_THAT(log(), HasSubstr("VESK_PORT: " + name + " failed (-4242)"));
    }
}

TEST_F(PortTest, CallsThatReturnAPointerGiveNull)
{
    vesk_port::set_failures("vconf_get_str=-1,ug_get_window=-2");
    EXPECT_EQ(vconf_get_str("db/menu_widget/language"), nullptr);
    EXPECT_EQ(ug_get_window(), nullptr);
    EXPECT_THAT(log(), HasSubstr("vconf_get_str failed (-1)"));
    EXPECT_THAT(log(), HasSubstr("ug_get_window failed (-2)"));
}

TEST_F(PortTest, AFailureMayBeginWithALaterCall)
{
    vesk_port::set_failures("vconf_get_int=-9@3");
    int value = 0;
    const char *key = "db/menu/system/accessibility/highcontrast";
    EXPECT_EQ(vconf_get_int(key, &value), 0);
    EXPECT_EQ(vconf_get_int(key, &value), 0);
    EXPECT_EQ(vconf_get_int(key, &value), -9);
    EXPECT_EQ(vconf_get_int(key, &value), -9);
    vesk_port::clear_failures();
    EXPECT_EQ(vconf_get_int(key, &value), 0);
}

TEST_F(PortTest, MalformedFailuresAreRefusedAndNamed)
{
    vesk_port::set_failures("rdm_init=-3");
    for (const char *text : {"rdm_init", "rdm_init=", "rdm_init=0", "rdm_init=x", "rdm_init=-1@0", "rdm_init=-1@",
                             "rdm_open=-1", "rdm_init=-1,,rdm_deinit=-1"}) {
        try {
            vesk_port::set_failures(text);
            ADD_FAILURE() << text;
        } catch (const PortError &error) {
            EXPECT_THAT(error.what(), testing::StartsWith("\"")) << text;
        }
    }
    EXPECT_EQ(rdm_init(), -3) << "what was in force stays";
}

TEST_F(PortTest, TheVariableReachesOtherPrograms)
{
    setenv("VESK_FAIL", "vconf_notify_key_changed=-7", 1);
    const ProcessResult result = veskctl({"settings", "watch"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("vconf_notify_key_changed failed (-7)"));
}

TEST_F(PortTest, AMalformedVariableIsToldAndIgnored)
{
    setenv("VESK_FAIL", "vconf_notify=-7", 1);
    setenv("VESK_SETTINGS", "/dev/null/none", 1);
    const ProcessResult result = veskctl({"settings", "watch"});
    EXPECT_THAT(result.err, HasSubstr("\"vconf_notify\" is no call"));
}
