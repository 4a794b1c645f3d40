/* Settings that hold for this process only, and watches of a module that is unloaded. */

#include <cstdlib>
#include <dlfcn.h>

#include "desktop/settings.h"
#include "leaving_module.h"
#include "port_fixture.h"
#include "vconf.h"

namespace fs = std::filesystem;

using testing::HasSubstr;
using vesk_port::override_setting;

namespace {

const char *const kOrientation = vesk_port::kOrientationSetting.key;
const char *const kLanguage = vesk_port::kLanguageSetting.key;

std::string text_of(const char *key)
{
    char *text = vconf_get_str(key);
    const std::string copy = text ? text : "(none)";
    std::free(text);
    return copy;
}

void note_orientation(keynode_t *, void *values)
{
    static_cast<std::vector<std::string> *>(values)->push_back(text_of(kOrientation));
}

void count(keynode_t *, void *calls)
{
    ++*static_cast<int *>(calls);
}

class PortOverride : public PortTest {
protected:
    ~PortOverride() override { vesk_port::forget_setting_watches(); }
};

} // namespace

TEST_F(PortOverride, ReadsGiveItAndTheStoredValueStays)
{
    vesk_port::write_setting(kOrientation, "0");
    const std::string before = contents_of(settings_);
    override_setting(kOrientation, "1");
    int orientation = 0;
    EXPECT_EQ(vconf_get_int(kOrientation, &orientation), 0);
    EXPECT_EQ(orientation, 1);
    EXPECT_EQ(text_of(kOrientation), "1");
    EXPECT_EQ(contents_of(settings_), before);
    EXPECT_EQ(veskctl({"settings", "get", "orientation"}).out, "landscape\n");
}

TEST_F(PortOverride, ItHoldsForAnUnsetSettingToo)
{
    override_setting(kLanguage, "ko_KR");
    EXPECT_EQ(text_of(kLanguage), "ko_KR");
    EXPECT_FALSE(fs::exists(settings_));
}

TEST_F(PortOverride, TheLastOneHolds)
{
    override_setting(kLanguage, "ko_KR");
    override_setting(kLanguage, "ar_AE");
    EXPECT_EQ(text_of(kLanguage), "ar_AE");
}

TEST_F(PortOverride, ItEndsWhenTheStoredValueChangesAndTheWatchHears)
{
    vesk_port::write_setting(kOrientation, "1");
    override_setting(kOrientation, "0");
    std::vector<std::string> values;
    ASSERT_EQ(vconf_notify_key_changed(kOrientation, note_orientation, &values), 0);
    vesk_port::write_setting(kOrientation, "2");
    ASSERT_TRUE(run_until([&] { return !values.empty(); }));
    EXPECT_THAT(values, testing::ElementsAre("2"));
    vesk_port::write_setting(kOrientation, "1");
    ASSERT_TRUE(run_until([&] { return values.size() == 2; }));
    EXPECT_EQ(values.back(), "1") << "the override does not come back";
}

TEST_F(PortOverride, AnotherSettingsChangeLeavesItInForce)
{
    override_setting(kOrientation, "1");
    int calls = 0;
    ASSERT_EQ(vconf_notify_key_changed(kLanguage, count, &calls), 0);
    vesk_port::write_setting(kLanguage, "ko_KR");
    ASSERT_TRUE(run_until([&] { return calls == 1; }));
    EXPECT_EQ(text_of(kOrientation), "1");
}

TEST_F(PortOverride, AFileThatCannotBeReadLeavesItInForce)
{
    write_file(settings_, "no key file\n");
    override_setting(kOrientation, "1");
    EXPECT_EQ(text_of(kOrientation), "1");
    EXPECT_THAT(log(), HasSubstr(settings_.string())) << "and is told";
    write_file(settings_, std::string("[settings]\n") + kOrientation + "=0\n");
    EXPECT_EQ(text_of(kOrientation), "1") << "what is stored was not known before";
    write_file(settings_, std::string("[settings]\n") + kOrientation + "=22\n");
    EXPECT_EQ(text_of(kOrientation), "22");
}

TEST_F(PortOverride, AModulesWatchEndsBeforeItIsUnloadedAndTheOthersStay)
{
    int calls = 0;
    ASSERT_EQ(vconf_notify_key_changed(kOrientation, count, &calls), 0);
    void *module = dlopen(LEAVING_MODULE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    const auto leave_a_watch = reinterpret_cast<LeaveAWatch>(dlsym(module, "leave_a_watch"));
    ASSERT_NE(leave_a_watch, nullptr);
    int left_calls = 0;
    ASSERT_EQ(leave_a_watch(kOrientation, &left_calls), 0);
    vesk_port::write_setting(kOrientation, "1");
    ASSERT_TRUE(run_until([&] { return calls == 1 && left_calls == 1; }));

    vesk_port::forget_setting_watches_of(reinterpret_cast<const void *>(leave_a_watch));
    dlclose(module);
    ASSERT_EQ(dlopen(LEAVING_MODULE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "it is unloaded";
    vesk_port::write_setting(kOrientation, "0");
    ASSERT_TRUE(run_until([&] { return calls == 2; }));
    EXPECT_EQ(left_calls, 1);
}
