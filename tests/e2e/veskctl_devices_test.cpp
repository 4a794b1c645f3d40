/* veskctl devices: single devices, and the table of them. */

#include <sqlite3.h>

#include "veskctl_fixture.h"

using nlohmann::json;
using testing::HasSubstr;

TEST_F(Veskctl, TheTableIsAligned)
{
    ASSERT_EQ(veskctl({"devices", "import", "--replace", file_of(3)}).exit_code, 0);
    EXPECT_EQ(veskctl({"devices", "list"}).out,
              "TYPE   ICON  STATUS  BLUETOOTH  WI-FI              PEER-TO-PEER  NAME\n"
              "phone  0     allow   -          02:00:00:00:00:10  -             Phone 0\n"
              "phone  0     allow   -          02:00:00:00:00:11  -             Phone 1\n"
              "phone  0     allow   -          02:00:00:00:00:12  -             Phone 2\n");
}

TEST_F(Veskctl, ADeviceIsAddedWithAllItsFacts)
{
    ASSERT_EQ(veskctl({"devices", "clear"}).exit_code, 0);
    ASSERT_EQ(
        veskctl({"devices", "add", "--name", "A & <b>", "--bt", "02-0a-00-00-00-01", "--wifi", "02:0A:00:00:00:02",
                 "--p2p", "02:0a:00:00:00:03", "--type", "headphone", "--icon", "2", "--status", "deny"})
            .exit_code,
        0);
    EXPECT_EQ(devices(), json::parse(R"([{"name": "A & <b>", "bt": "02-0a-00-00-00-01", "wifi": "02:0A:00:00:00:02",
                                          "p2p": "02:0a:00:00:00:03", "type": 21, "icon": 2, "status": "deny"}])"));
}

TEST_F(Veskctl, WrongFactsOfADeviceAreRefused)
{
    const std::string mac = "02:00:00:00:00:01";
    expect_misused({"devices", "add", "--name", "x"}, "has no address");
    expect_misused({"devices", "add", "--name", "x", "--bt", "02:00:00:00:00"}, "\"02:00:00:00:00\" (bt)");
    expect_misused({"devices", "add", "--name", "x", "--wifi", "00-00-00-00-00-00"}, "00-00-00-00-00-00");
    expect_misused({"devices", "add", "--name", "x", "--bt", mac, "--type", "toaster"}, "\"toaster\"");
    expect_misused({"devices", "add", "--name", "x", "--bt", mac, "--status", "maybe"}, "\"maybe\"");
    expect_misused({"devices", "add", "--name", std::string(129, 'x'), "--bt", mac}, "129 bytes");
    expect_misused({"devices", "add", "--name", "\xff", "--bt", mac}, "UTF-8");
    expect_refused({"devices", "add", "--name", "x", "--bt", "02:4b:11:a0:3c:01"}, "Nora's phone");
    EXPECT_EQ(devices().size(), 12U);
}

TEST_F(Veskctl, ADeviceIsNamedByAnyAddressOrItsName)
{
    for (const char *name : {"02-4b-11-a0-3c-01", "02:4B:11:A0:3C:02", "06:4b:11:a0:3c:02", "Nora's phone"}) {
        ASSERT_EQ(veskctl({"devices", "set", name, "deny"}).exit_code, 0) << name;
        EXPECT_EQ(devices()[0]["status"], "deny");
        ASSERT_EQ(veskctl({"devices", "set", name, "allow"}).exit_code, 0) << name;
        EXPECT_EQ(devices()[0]["status"], "allow");
    }
    ASSERT_EQ(veskctl({"devices", "remove", "Nora's phone"}).exit_code, 0);
    EXPECT_EQ(devices().size(), 11U);
    EXPECT_NE(devices()[0]["name"], "Nora's phone");
}

TEST_F(Veskctl, AnUnknownOrAmbiguousDeviceIsRefused)
{
    expect_refused({"devices", "set", "Nobody", "deny"}, "\"Nobody\"");
    ASSERT_EQ(veskctl({"devices", "add", "--name", "Soundbar", "--bt", "02:00:00:00:00:01"}).exit_code, 0);
    expect_refused({"devices", "remove", "Soundbar"}, "02:00:00:00:00:01");
    expect_misused({"devices", "set", "Nora's phone", "perhaps"}, "\"perhaps\"");
    EXPECT_EQ(devices().size(), 13U);
}

TEST_F(Veskctl, AnAddressOfTwoDevicesIsRefusedWithBothNames)
{
    const std::string mac = "02:00:00:00:00:01";
    ASSERT_EQ(veskctl({"devices", "add", "--name", "First", "--bluetooth", mac}).exit_code, 0);
    ASSERT_EQ(veskctl({"devices", "add", "--name", "Second", "--wi-fi", mac}).exit_code, 0);
    expect_refused({"devices", "set", mac, "deny"},
                   "2 devices have the address \"" + mac + "\": \"First\", \"Second\"");
    expect_refused({"devices", "remove", mac}, "\"First\", \"Second\"");
    EXPECT_EQ(devices().size(), 14U);
    EXPECT_EQ(veskctl({"devices", "remove", "Second"}).exit_code, 0);
    EXPECT_EQ(veskctl({"devices", "set", mac, "deny"}).exit_code, 0);
}

TEST_F(Veskctl, OptionsAreCalledAsTheColumns)
{
    ASSERT_EQ(veskctl({"devices", "add", "--name", "x", "--bluetooth", "02:00:00:00:00:01", "--wi-fi",
                       "02:00:00:00:00:02", "--peer-to-peer", "02:00:00:00:00:03"})
                  .exit_code,
              0);
    const json device = devices().back();
    EXPECT_EQ(device["bt"], "02:00:00:00:00:01");
    EXPECT_EQ(device["wifi"], "02:00:00:00:00:02");
    EXPECT_EQ(device["p2p"], "02:00:00:00:00:03");
}

TEST_F(Veskctl, ADeviceGetsAnotherName)
{
    ASSERT_EQ(veskctl({"devices", "rename", "Nora's phone", "Nora's new phone"}).exit_code, 0);
    EXPECT_EQ(devices()[0]["name"], "Nora's new phone");
    expect_refused({"devices", "rename", "Nora's phone", "x"}, "\"Nora's phone\"");
    expect_misused({"devices", "rename", "Nora's new phone", std::string(129, 'x')}, "129 bytes");
    EXPECT_EQ(devices()[0]["name"], "Nora's new phone");
}

TEST_F(Veskctl, TheSampleHouseholdComesBack)
{
    const json sample = devices();
    ASSERT_EQ(veskctl({"devices", "clear"}).exit_code, 0);
    ASSERT_EQ(veskctl({"devices", "import", file_of(3)}).exit_code, 0);
    ASSERT_EQ(veskctl({"devices", "reset"}).exit_code, 0);
    EXPECT_EQ(devices(), sample);
}

TEST_F(Veskctl, ADatabaseOfALaterVersionIsNamedAsOne)
{
    ASSERT_EQ(veskctl({"devices", "list"}).exit_code, 0);
    sqlite3 *database = nullptr;
    ASSERT_EQ(sqlite3_open(devices_.c_str(), &database), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(database, "PRAGMA user_version = 2", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
    expect_refused({"devices", "list"}, "is of a later version");
    expect_refused({"devices", "reset"}, devices_);
}

TEST_F(Veskctl, NamesCannotSteerTheTerminal)
{
    ASSERT_EQ(veskctl({"devices", "add", "--name", "a\033[2J\nb", "--bt", "02:00:00:00:00:01"}).exit_code, 0);
    const std::string table = veskctl({"devices", "list"}).out;
    EXPECT_THAT(table, HasSubstr("a\\x1b[2J\\nb"));
    EXPECT_EQ(table.find('\033'), std::string::npos);
}

TEST_F(Veskctl, NoTextThatIsEchoedSteersTheTerminal)
{
    const std::string nasty = "a\u009b2Jb\u202ec\u2066d\u200fe\033[mf\u061cg\u2028h";
    const std::vector<std::string> raw{"\u009b", "\u202e", "\u2066", "\u200f", "\033", "\u061c", "\u2028"};
    const auto expect_harmless = [&](const std::vector<std::string> &arguments) {
        const ProcessResult result = veskctl(arguments);
        for (const std::string &text : {result.out, result.err}) {
            for (const std::string &character : raw)
                EXPECT_EQ(text.find(character), std::string::npos) << arguments.front() << " " << arguments.back();
        }
        EXPECT_THAT(result.out + result.err, HasSubstr("202e"));
    };
    expect_harmless({"devices", "add", "--name", nasty, "--bt", "02:00:00:00:00:01"});
    expect_harmless({"devices", "list"});
    expect_harmless({"devices", "list", "--json"});
    expect_harmless({"devices", "export"});
    expect_harmless({"devices", "set", nasty, "deny"});
    expect_harmless({"devices", "remove", nasty});
    expect_harmless({"devices", "remove", nasty});
    expect_harmless({"devices", nasty});
    expect_harmless({"devices", "set", "x", nasty});
    expect_harmless({"devices", "list", nasty});
    expect_harmless({"settings", "get", nasty});
    expect_harmless({"settings", "set", "language", nasty});
    expect_harmless({"product", "use", nasty});
    expect_harmless({"devices", "import", folder_ / nasty});
    expect_harmless({"devices", "export", folder_ / nasty});
    ASSERT_EQ(veskctl({"settings", "set", "db/own/key", nasty}).exit_code, 0);
    expect_harmless({"settings", "get", "db/own/key"});
    expect_harmless({"settings", "get", "db/own/key", "--json"});
    write_file(folder_ / "own.ini", "[profile]\ntitle=" + nasty + "\n[custom-bool]\n");
    expect_harmless({"product", "show", folder_ / "own.ini"});
    expect_harmless({"product", "show", folder_ / "own.ini", "--json"});
}
