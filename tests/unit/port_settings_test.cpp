/* The settings store: values, defaults, words, and the news of changes. */

#include <cstdlib>
#include <glib.h>

#include "desktop/port_error.h"
#include "desktop/settings.h"
#include "port_fixture.h"
#include "vconf.h"

namespace fs = std::filesystem;

using testing::HasSubstr;
using vesk_port::PortError;

namespace {

const char *const kOrientation = "db/menu/onscreendisplay/display_orientation/onscreen_menu_orientation";
const char *const kLanguage = "db/menu_widget/language";
const char *const kHighContrast = "db/menu/system/accessibility/highcontrast";

int int_of(const char *key)
{
    int value = -77;
    return vconf_get_int(key, &value) == 0 ? value : -77;
}

std::string text_of(const char *key)
{
    char *text = vconf_get_str(key);
    const std::string copy = text ? text : "(none)";
    std::free(text);
    return copy;
}

void count(keynode_t *, void *calls)
{
    ++*static_cast<int *>(calls);
}

class PortSettings : public PortTest {
protected:
    ~PortSettings() override { vesk_port::forget_setting_watches(); }
};

} // namespace

TEST_F(PortSettings, WhatIsUnsetHasItsDefault)
{
    EXPECT_EQ(int_of(kOrientation), 0);
    EXPECT_EQ(int_of(kHighContrast), 0);
    EXPECT_EQ(text_of(kLanguage), "en_GB.UTF-8");
    EXPECT_FALSE(fs::exists(settings_)) << "reading writes nothing";
}

TEST_F(PortSettings, AKeyThatIsNowhereFails)
{
    int value = 5;
    EXPECT_LT(vconf_get_int("db/nowhere", &value), 0);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(vconf_get_str("db/nowhere"), nullptr);
    EXPECT_THAT(log(), HasSubstr("db/nowhere"));
}

TEST_F(PortSettings, ATextIsNoNumber)
{
    write_file(settings_, std::string("[settings]\n") + kOrientation + "=upright\n");
    int value = 5;
    EXPECT_LT(vconf_get_int(kOrientation, &value), 0);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(text_of(kOrientation), "upright");
    EXPECT_THAT(log(), HasSubstr(settings_.string()));
}

TEST_F(PortSettings, BadArgumentsAreRefused)
{
    int value = 5;
    EXPECT_LT(vconf_get_int(nullptr, &value), 0);
    EXPECT_LT(vconf_get_int(kOrientation, nullptr), 0);
    EXPECT_EQ(vconf_get_str(nullptr), nullptr);
    EXPECT_LT(vconf_notify_key_changed(nullptr, count, nullptr), 0);
    EXPECT_LT(vconf_notify_key_changed(kOrientation, nullptr, nullptr), 0);
    EXPECT_LT(vconf_ignore_key_changed(kOrientation, count), 0);
}

TEST_F(PortSettings, AWrittenValueIsReadAtOnceAndKeepsTheRestOfTheFile)
{
    write_file(settings_, "# mine\n[settings]\ndb/other=7\n");
    vesk_port::write_setting(kOrientation, "1");
    EXPECT_EQ(int_of(kOrientation), 1);
    EXPECT_EQ(int_of("db/other"), 7);
    EXPECT_THAT(contents_of(settings_), HasSubstr("# mine"));
}

TEST_F(PortSettings, AFileThatIsNoKeyFileIsNamedAndLeftAlone)
{
    write_file(settings_, "no key file\n");
    int value = 5;
    EXPECT_LT(vconf_get_int(kOrientation, &value), 0);
    EXPECT_THAT(log(), HasSubstr(settings_.string()));
    EXPECT_THROW(vesk_port::write_setting(kOrientation, "1"), PortError);
    EXPECT_EQ(contents_of(settings_), "no key file\n");
}

TEST_F(PortSettings, AnotherProcessIsHeardOnTheMainLoop)
{
    int calls = 0;
    ASSERT_EQ(vconf_notify_key_changed(kOrientation, count, &calls), 0);
    ASSERT_EQ(veskctl({"settings", "set", "orientation", "portrait"}).exit_code, 0);
    EXPECT_EQ(calls, 0);
    ASSERT_TRUE(run_until([&] { return calls == 1; }));
    EXPECT_EQ(int_of(kOrientation), 1);
}

TEST_F(PortSettings, OnlyARealChangeOfTheKeyIsReported)
{
    int orientation_calls = 0;
    int language_calls = 0;
    ASSERT_EQ(vconf_notify_key_changed(kOrientation, count, &orientation_calls), 0);
    ASSERT_EQ(vconf_notify_key_changed(kLanguage, count, &language_calls), 0);
    vesk_port::write_setting(kOrientation, "0"); /* its default */
    vesk_port::write_setting(kHighContrast, "1");
    vesk_port::write_setting(kLanguage, "ko_KR.UTF-8");
    ASSERT_TRUE(run_until([&] { return language_calls == 1; }));
    EXPECT_EQ(orientation_calls, 0);
}

TEST_F(PortSettings, OwnWritesAreReportedFromTheMainLoopToo)
{
    int calls = 0;
    ASSERT_EQ(vconf_notify_key_changed(kOrientation, count, &calls), 0);
    vesk_port::write_setting(kOrientation, "1");
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(run_until([&] { return calls == 1; }));
}

TEST_F(PortSettings, TheWatchLastsThroughRenamesRemovalsAndPlainWrites)
{
    int calls = 0;
    ASSERT_EQ(vconf_notify_key_changed(kOrientation, count, &calls), 0);
    const std::string portrait = std::string("[settings]\n") + kOrientation + "=1\n";
    write_file(settings_, portrait);
    EXPECT_TRUE(run_until([&] { return calls == 1; })) << "made";
    fs::remove(settings_);
    EXPECT_TRUE(run_until([&] { return calls == 2; })) << "removed";
    write_file(folder_ / "new", portrait);
    fs::rename(folder_ / "new", settings_);
    EXPECT_TRUE(run_until([&] { return calls == 3; })) << "renamed into place";
    fs::rename(settings_, folder_ / "away");
    EXPECT_TRUE(run_until([&] { return calls == 4; })) << "renamed away";
}

TEST_F(PortSettings, TheWatchWaitsForFoldersThatDoNotExistYet)
{
    const fs::path file = folder_ / "config" / "vesk" / "settings.ini";
    setenv("VESK_SETTINGS", file.c_str(), 1);
    int calls = 0;
    ASSERT_EQ(vconf_notify_key_changed(kOrientation, count, &calls), 0);
    ASSERT_EQ(veskctl({"settings", "set", "orientation", "portrait"}).exit_code, 0);
    EXPECT_TRUE(run_until([&] { return calls == 1; }));
    fs::remove_all(folder_ / "config");
    EXPECT_TRUE(run_until([&] { return calls == 2; }));
    fs::create_directory(folder_ / "config");
    g_main_context_iteration(nullptr, FALSE);
    ASSERT_EQ(veskctl({"settings", "set", "orientation", "portrait"}).exit_code, 0);
    EXPECT_TRUE(run_until([&] { return calls == 3; }));
}

TEST_F(PortSettings, AHalfWrittenFileIsNoChange)
{
    int calls = 0;
    ASSERT_EQ(vconf_notify_key_changed(kOrientation, count, &calls), 0);
    vesk_port::write_setting(kOrientation, "1");
    ASSERT_TRUE(run_until([&] { return calls == 1; }));
    write_file(settings_, "[sett");
    ASSERT_TRUE(run_until([&] { return log().find(settings_.string()) != std::string::npos; }));
    write_file(settings_, std::string("[settings]\n") + kOrientation + "=2\n");
    ASSERT_TRUE(run_until([&] { return calls == 2; }));
    EXPECT_EQ(int_of(kOrientation), 2);
}

TEST_F(PortSettings, AWatchEndsWhereItIsIgnored)
{
    int ended = 0;
    int lasting = 0;
    ASSERT_EQ(vconf_notify_key_changed(kOrientation, count, &ended), 0);
    EXPECT_LT(vconf_notify_key_changed(kOrientation, count, &lasting), 0) << "once for a key and callback";
    ASSERT_EQ(vconf_notify_key_changed(kLanguage, count, &lasting), 0);
    ASSERT_EQ(vconf_ignore_key_changed(kOrientation, count), 0);
    EXPECT_LT(vconf_ignore_key_changed(kOrientation, count), 0);
    vesk_port::write_setting(kOrientation, "1");
    vesk_port::write_setting(kLanguage, "ko_KR");
    ASSERT_TRUE(run_until([&] { return lasting == 1; }));
    EXPECT_EQ(ended, 0);
}

TEST_F(PortSettings, ACallbackMayEndWatchesItsOwnAsWell)
{
    static int calls;
    calls = 0;
    const auto end_all = [](keynode_t *, void *) {
        ++calls;
        vesk_port::forget_setting_watches();
    };
    ASSERT_EQ(vconf_notify_key_changed(kOrientation, end_all, nullptr), 0);
    ASSERT_EQ(vconf_notify_key_changed(kLanguage, end_all, nullptr), 0);
    write_file(settings_, std::string("[settings]\n") + kOrientation + "=1\n" + kLanguage + "=ko_KR\n");
    ASSERT_TRUE(run_until([&] { return calls > 0; }));
    EXPECT_EQ(calls, 1);
}

TEST_F(PortSettings, WordsStandForValues)
{
    EXPECT_EQ(vesk_port::setting_key("orientation"), kOrientation);
    EXPECT_EQ(vesk_port::setting_key("high-contrast"), kHighContrast);
    EXPECT_EQ(vesk_port::setting_key(kLanguage), kLanguage);
    EXPECT_EQ(vesk_port::setting_value(kOrientation, "portrait"), "1");
    EXPECT_EQ(vesk_port::setting_value(kOrientation, "0"), "0");
    EXPECT_EQ(vesk_port::setting_value(kHighContrast, "on"), "1");
    EXPECT_EQ(vesk_port::setting_value(kLanguage, "ckb_IQ.UTF-8"), "ckb_IQ.UTF-8");
    EXPECT_EQ(vesk_port::setting_value(kLanguage, "sr_RS@latin"), "sr_RS@latin");
    EXPECT_EQ(vesk_port::setting_value(kLanguage, "sr_RS.UTF-8@latin"), "sr_RS.UTF-8@latin");
    EXPECT_EQ(vesk_port::setting_word(kOrientation, "1"), "portrait");
    EXPECT_EQ(vesk_port::setting_word(kOrientation, "3"), "3");
}

TEST_F(PortSettings, UnknownWordsAreRefused)
{
    EXPECT_THROW(vesk_port::setting_key("colour"), PortError);
    EXPECT_THROW(vesk_port::setting_key("db/a=b"), PortError);
    EXPECT_THROW(vesk_port::setting_value(kOrientation, "upside-down"), PortError);
    EXPECT_THROW(vesk_port::setting_value(kHighContrast, "2"), PortError);
    EXPECT_THROW(vesk_port::setting_value(kLanguage, "English"), PortError);
}
