/* veskctl as its users run it: separate processes, their output and their exit codes. */

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <glib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "port_fixture.h"

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class Veskctl : public PortTest {
protected:
    json devices()
    {
        const ProcessResult result = veskctl({"devices", "list", "--json"});
        EXPECT_EQ(result.exit_code, 0) << result.err;
        return json::parse(result.out);
    }

    /* A file with that many phones, at most 90. */
    std::string file_of(int count)
    {
        json list = json::array();
        for (int i = 0; i < count; ++i) {
            const std::string mac = "02:00:00:00:00:" + std::to_string(10 + i);
            list.push_back({{"name", "Phone " + std::to_string(i)}, {"wifi", mac}, {"type", "phone"}});
        }
        write_file(folder_ / "devices.json", list.dump());
        return folder_ / "devices.json";
    }

    /* The command fails with one line, which names the input. */
    void expect_refused(const std::vector<std::string> &arguments, const std::string &named,
                        const std::string &input = "")
    {
        const ProcessResult result = veskctl(arguments, input);
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, AllOf(StartsWith("veskctl: "), HasSubstr(named)));
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
    }
};

} // namespace

TEST_F(Veskctl, HelpAndVersionAreTold)
{
    const ProcessResult help = veskctl({"--help"});
    EXPECT_EQ(help.exit_code, 0);
    EXPECT_THAT(help.out, AllOf(HasSubstr("devices"), HasSubstr("settings"), HasSubstr("product")));
    EXPECT_THAT(veskctl({"devices", "add", "--help"}).out, HasSubstr("--wifi"));
    EXPECT_THAT(veskctl({"--version"}).out, StartsWith("veskctl "));
}

TEST_F(Veskctl, AMisusedCommandLineIsRefused)
{
    for (const std::vector<std::string> &arguments :
         {std::vector<std::string>{}, {"devices"}, {"devices", "paint"}, {"devices", "set", "x"}, {"--loud"}}) {
        const ProcessResult result = veskctl(arguments);
        EXPECT_EQ(result.exit_code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err, "");
    }
}

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
    expect_refused({"devices", "add", "--name", "x"}, "has no address");
    expect_refused({"devices", "add", "--name", "x", "--bt", "02:00:00:00:00"}, "\"02:00:00:00:00\" (bt)");
    expect_refused({"devices", "add", "--name", "x", "--wifi", "00-00-00-00-00-00"}, "00-00-00-00-00-00");
    expect_refused({"devices", "add", "--name", "x", "--bt", mac, "--type", "toaster"}, "\"toaster\"");
    expect_refused({"devices", "add", "--name", "x", "--bt", mac, "--status", "maybe"}, "\"maybe\"");
    expect_refused({"devices", "add", "--name", std::string(129, 'x'), "--bt", mac}, "129 bytes");
    expect_refused({"devices", "add", "--name", "\xff", "--bt", mac}, "UTF-8");
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
    expect_refused({"devices", "set", "Nora's phone", "perhaps"}, "\"perhaps\"");
    EXPECT_EQ(devices().size(), 13U);
}

TEST_F(Veskctl, FiftyFiftyOneAndNoDeviceAreImported)
{
    for (const int count : {50, 51, 0, 1}) {
        ASSERT_EQ(veskctl({"devices", "import", "--replace", file_of(count)}).exit_code, 0);
        EXPECT_EQ(devices().size(), static_cast<size_t>(count));
    }
    ASSERT_EQ(veskctl({"devices", "clear"}).exit_code, 0);
    ASSERT_EQ(veskctl({"devices", "import", file_of(2)}).exit_code, 0);
    EXPECT_EQ(devices()[1]["name"], "Phone 1");
}

TEST_F(Veskctl, ImportAddsWhereItIsNotToReplace)
{
    ASSERT_EQ(veskctl({"devices", "import", file_of(2)}).exit_code, 0);
    EXPECT_EQ(devices().size(), 14U);
    expect_refused({"devices", "import", file_of(3)}, "registered already");
    EXPECT_EQ(devices().size(), 14U) << "all or none";
}

TEST_F(Veskctl, WhatIsExportedCanBeImportedAgain)
{
    const std::string exported = veskctl({"devices", "export"}).out;
    EXPECT_EQ(veskctl({"devices", "export", folder_ / "out.json"}).exit_code, 0);
    EXPECT_EQ(contents_of(folder_ / "out.json"), exported);
    ASSERT_EQ(veskctl({"devices", "clear"}).exit_code, 0);
    ASSERT_EQ(veskctl({"devices", "import", "-"}, exported).exit_code, 0);
    EXPECT_EQ(veskctl({"devices", "export", "-"}).out, exported);
}

TEST_F(Veskctl, ABadFileLosesNothing)
{
    const std::vector<std::pair<std::string, std::string>> inputs{
        {"", "the standard input is no JSON"},
        {"[{]", "the standard input is no JSON"},
        {"[\"\xff\"]", "the standard input is no JSON"},
        {"{}", "has to hold a list"},
        {"[1]", "device 1"},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01"}, {"name": "b", "bt": "02"}])", "device 2"},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01", "colour": 1}])", "\"colour\""},
        {R"([{"name": 1, "bt": "02:00:00:00:00:01"}])", "\"name\""},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01", "type": 99999999999}])", "99999999999"},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01", "icon": "one"}])", "\"icon\""},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01", "status": 2}])", "2 is no status"},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01"}, {"name": "b", "bt": "02:00:00:00:00:01"}])", "already"},
    };
    for (const auto &[input, named] : inputs)
        expect_refused({"devices", "import", "--replace", "-"}, named, input);
    expect_refused({"devices", "import", folder_ / "none.json"}, "none.json");
    expect_refused({"devices", "import", folder_}, folder_);
    expect_refused({"devices", "export", folder_ / "none" / "out.json"}, "out.json");
    EXPECT_EQ(devices().size(), 12U);
}

TEST_F(Veskctl, NamesCannotSteerTheTerminal)
{
    ASSERT_EQ(veskctl({"devices", "add", "--name", "a\033[2J\nb", "--bt", "02:00:00:00:00:01"}).exit_code, 0);
    const std::string table = veskctl({"devices", "list"}).out;
    EXPECT_THAT(table, HasSubstr("a\\u001b[2J\\u000ab"));
    EXPECT_EQ(table.find('\033'), std::string::npos);
}

TEST_F(Veskctl, SettingsAreSetAndRead)
{
    EXPECT_EQ(veskctl({"settings", "get", "orientation"}).out, "landscape\n");
    ASSERT_EQ(veskctl({"settings", "set", "orientation", "portrait"}).exit_code, 0);
    ASSERT_EQ(veskctl({"settings", "set", "db/menu_widget/language", "ar_AE.UTF-8"}).exit_code, 0);
    ASSERT_EQ(veskctl({"settings", "set", "high-contrast", "on"}).exit_code, 0);
    EXPECT_EQ(json::parse(veskctl({"settings", "get", "--json"}).out),
              json({{"orientation", "portrait"}, {"language", "ar_AE.UTF-8"}, {"high-contrast", "on"}}));
    EXPECT_THAT(veskctl({"settings", "get"}).out, HasSubstr("language       ar_AE.UTF-8"));
    expect_refused({"settings", "set", "orientation", "sideways"}, "\"sideways\"");
    expect_refused({"settings", "set", "colour", "red"}, "\"colour\"");
    expect_refused({"settings", "get", "db/nothing"}, "db/nothing");
    write_file(settings_, "broken");
    expect_refused({"settings", "set", "orientation", "portrait"}, settings_);
    EXPECT_EQ(contents_of(settings_), "broken");
}

TEST_F(Veskctl, WatchPrintsEachChangeUntilItIsInterrupted)
{
    std::string program = veskctl_program();
    std::string words[] = {"settings", "watch", "orientation"};
    char *argv[] = {program.data(), words[0].data(), words[1].data(), words[2].data(), nullptr};
    GPid pid = 0;
    int out = -1;
    ASSERT_TRUE(g_spawn_async_with_pipes(nullptr, argv, nullptr, G_SPAWN_DO_NOT_REAP_CHILD, nullptr, nullptr, &pid,
                                         nullptr, &out, nullptr, nullptr));
    const auto line = [out] {
        std::string text;
        char c = 0;
        while (read(out, &c, 1) == 1 && c != '\n')
            text += c;
        return text;
    };
    EXPECT_EQ(line(), "orientation landscape");
    ASSERT_EQ(veskctl({"settings", "set", "language", "ko_KR.UTF-8"}).exit_code, 0);
    ASSERT_EQ(veskctl({"settings", "set", "orientation", "portrait"}).exit_code, 0);
    EXPECT_EQ(line(), "orientation portrait");
    kill(pid, SIGINT);
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    close(out);
}

TEST_F(Veskctl, ProductsAreListedShownAndChosen)
{
    const json list = json::parse(veskctl({"product", "list", "--json"}).out);
    const auto in_use = [](const json &products) {
        for (const json &product : products)
            if (product["in_use"])
                return product["name"].get<std::string>();
        return std::string();
    };
    EXPECT_GE(list.size(), 12U);
    EXPECT_EQ(in_use(list), "television");
    ASSERT_EQ(veskctl({"product", "use", "board"}).exit_code, 0);
    EXPECT_EQ(in_use(json::parse(veskctl({"product", "list", "--json"}).out)), "board");
    const json board = json::parse(veskctl({"product", "show", "--json"}).out);
    EXPECT_EQ(board["facts"]["custom-bool"]["com.corvane/featureconf/quince_support"], "true");
    EXPECT_THAT(veskctl({"product", "show", "projector"}).out, HasSubstr("REP.DEVICE.BIRCH"));
    expect_refused({"product", "use", "toaster"}, "\"toaster\"");
    expect_refused({"product", "show", folder_ / "none.ini"}, "none.ini");
    setenv("VESK_PRODUCT", "monitor", 1);
    EXPECT_THAT(veskctl({"product", "use", "projector"}).err, HasSubstr("VESK_PRODUCT=monitor"));
}
