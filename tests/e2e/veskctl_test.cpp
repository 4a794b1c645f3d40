/* veskctl: the command line, the settings and the products. */

#include <csignal>
#include <glib.h>
#include <sys/wait.h>
#include <unistd.h>

#include "full_output.h"
#include "veskctl_fixture.h"

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

TEST_F(Veskctl, HelpAndVersionAreTold)
{
    const ProcessResult help = veskctl({"--help"});
    EXPECT_EQ(help.exit_code, 0);
    EXPECT_THAT(help.out, AllOf(HasSubstr("devices"), HasSubstr("settings"), HasSubstr("product")));
    EXPECT_THAT(veskctl({"devices", "add", "--help"}).out, HasSubstr("--wifi"));
    EXPECT_THAT(veskctl({"--version"}).out, StartsWith("veskctl "));
}

TEST_F(Veskctl, AMisusedCommandLineIsNamedWithWhatThereIs)
{
    expect_misused({}, "a command is missing; use devices, settings, product");
    expect_misused({"paint"}, "unknown command \"paint\"; use devices, settings, product");
    expect_misused({"devices"}, "a command is missing; use list, add, set");
    expect_misused({"devices", "paint"}, "unknown command \"paint\"; use list, add, set");
    expect_misused({"devices", "set", "x"}, "status is required; see veskctl devices set --help");
    expect_misused({"devices", "set", "x", "deny", "y"}, "unexpected argument \"y\"");
    expect_misused({"devices", "set", "--loud"}, "unknown option \"--loud\"; see veskctl devices set --help");
    expect_misused({"--loud"}, "unknown option \"--loud\"; see veskctl --help");
}

TEST_F(Veskctl, MessagesAreShortWhateverTheInput)
{
    const std::string endless(100'000, 'x');
    expect_misused({endless}, "unknown command \"xxx");
    expect_misused({"devices", "set", "Nora's phone", endless}, "use allow or deny");
    expect_misused({"settings", "set", "orientation", endless}, "use landscape or portrait");
    expect_misused({"devices", "make", endless}, "use 0 to 1000000");
    expect_refused({"devices", "remove", endless}, "veskctl devices list");
    expect_refused({"devices", "import", endless}, "cannot be read");
}

TEST_F(Veskctl, OutputThatIsLostIsAFailure)
{
    for (const std::vector<std::string> &arguments :
         std::vector<std::vector<std::string>>{{"devices", "list"},
                                               {"devices", "list", "--json"},
                                               {"devices", "export", "-"},
                                               {"devices", "make", "5000"},
                                               {"devices", "set", "Nora's phone", "deny"},
                                               {"settings", "get"},
                                               {"product", "list"},
                                               {"--help"},
                                               {"--version"}})
        expect_loss_is_told(veskctl_program(), arguments);
}

TEST_F(Veskctl, SettingsAreSetAndRead)
{
    EXPECT_EQ(veskctl({"settings", "get", "orientation"}).out, "landscape\n");
    ASSERT_EQ(veskctl({"settings", "set", "orientation", "portrait"}).exit_code, 0);
    ASSERT_EQ(veskctl({"settings", "set", "db/menu_widget/language", "ar_AE.UTF-8"}).exit_code, 0);
    ASSERT_EQ(veskctl({"settings", "set", "high-contrast", "on"}).exit_code, 0);
    EXPECT_EQ(json::parse(veskctl({"settings", "get", "--json"}).out),
              json({{"orientation", "portrait"}, {"language", "ar_AE.UTF-8"}, {"high-contrast", true}}));
    EXPECT_THAT(veskctl({"settings", "get"}).out, HasSubstr("language       ar_AE.UTF-8"));
    expect_misused({"settings", "set", "orientation", "sideways"}, "\"sideways\"");
    expect_misused({"settings", "set", "colour", "red"}, "\"colour\"");
    expect_refused({"settings", "get", "db/nothing"}, "db/nothing");
    write_file(settings_, "broken");
    expect_refused({"settings", "set", "orientation", "portrait"}, settings_);
    EXPECT_EQ(contents_of(settings_), "broken");
}

TEST_F(Veskctl, ASettingIsTakenAway)
{
    ASSERT_EQ(veskctl({"settings", "set", "orientation", "portrait"}).exit_code, 0);
    ASSERT_EQ(veskctl({"settings", "set", "db/own/key", "value"}).exit_code, 0);
    ASSERT_EQ(veskctl({"settings", "unset", "orientation"}).exit_code, 0);
    ASSERT_EQ(veskctl({"settings", "unset", "db/own/key"}).exit_code, 0);
    EXPECT_EQ(veskctl({"settings", "get", "orientation"}).out, "landscape\n");
    expect_refused({"settings", "get", "db/own/key"}, "db/own/key is unset");
    EXPECT_EQ(contents_of(settings_).find("orientation"), std::string::npos);
    EXPECT_EQ(veskctl({"settings", "unset", "orientation"}).exit_code, 0) << "there is nothing left to do";
    expect_misused({"settings", "unset", "colour"}, "\"colour\"");
}

TEST_F(Veskctl, ASwitchIsATruthValueInJson)
{
    EXPECT_EQ(veskctl({"settings", "get", "high-contrast", "--json"}).out, "false\n");
    ASSERT_EQ(veskctl({"settings", "set", "high-contrast", "on"}).exit_code, 0);
    EXPECT_EQ(veskctl({"settings", "get", "high-contrast", "--json"}).out, "true\n");
    EXPECT_EQ(veskctl({"settings", "get", "orientation", "--json"}).out, "\"landscape\"\n");
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
    EXPECT_EQ(board["facts"]["custom-bool"]["com.corvane/featureconf/quince_support"], true);
    EXPECT_THAT(veskctl({"product", "show", "projector"}).out, HasSubstr("REP.DEVICE.BIRCH"));
    expect_misused({"product", "use", "toaster"}, "\"toaster\"");
    expect_misused({"product", "show", folder_ / "none.ini"}, "none.ini");
    setenv("VESK_PRODUCT", "monitor", 1);
    EXPECT_THAT(veskctl({"product", "use", "projector"}).err, HasSubstr("VESK_PRODUCT=monitor"));
}
