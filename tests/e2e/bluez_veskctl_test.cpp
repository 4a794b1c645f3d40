/* veskctl --service bluez with a mock of bluetoothd on a private bus. */

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "bluez_mock.h"
#include "port_fixture.h"

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

namespace {

struct BluezVeskctl : PortTest {
    void SetUp() override
    {
        mock.start_bus();
        mock.start_daemon();
        mock.add_adapter();
        mock.add_paired(1, "First");
        mock.add_paired(2, "Second");
    }

    static ProcessResult bluez(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"--service", "bluez"});
        return veskctl(arguments);
    }

    static void expect_failure(const ProcessResult &result, const std::string &sentence)
    {
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_THAT(result.err, HasSubstr(sentence));
        EXPECT_THAT(result.err, testing::StartsWith("veskctl: "));
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
    }

    BluezMock mock{folder_};
};

/* veskctl pair in its own process, whose answers are typed into a pipe. */
struct Pairing {
    explicit Pairing(const std::filesystem::path &folder) : out(folder / "pair.out")
    {
        std::string program = veskctl_program();
        std::string words[] = {"--service", "bluez", "pair"};
        char *argv[] = {program.data(), words[0].data(), words[1].data(), words[2].data(), nullptr};
        FILE *stream = std::fopen(out.c_str(), "w");
        EXPECT_TRUE(g_spawn_async_with_pipes_and_fds(nullptr, argv, nullptr, G_SPAWN_DO_NOT_REAP_CHILD, nullptr,
                                                     nullptr, -1, fileno(stream), fileno(stream), nullptr, nullptr, 0,
                                                     &pid, &input, nullptr, nullptr, nullptr));
        std::fclose(stream);
    }

    ~Pairing()
    {
        close(input);
        if (pid) {
            kill(pid, SIGKILL);
            waitpid(pid, nullptr, 0);
        }
    }

    bool says(const std::string &text) const { return contents_of(out).find(text) != std::string::npos; }

    void type(const std::string &line) const
    {
        ASSERT_EQ(write(input, line.data(), line.size()), static_cast<ssize_t>(line.size()));
    }

    int end()
    {
        kill(pid, SIGINT);
        int status = -1;
        waitpid(pid, &status, 0);
        pid = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::filesystem::path out;
    int input = -1;
    GPid pid = 0;
};

struct BluezPair : BluezVeskctl {
    /* Another process makes the condition come true. */
    static bool wait_until(const std::function<bool()> &condition)
    {
        const unsigned poll = g_timeout_add(
            10, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
        const bool held = run_until(condition);
        g_source_remove(poll);
        return held;
    }

    /* The mock asks whoever has an agent, and writes the answer to its log. */
    void ask(int last)
    {
        mock.call("/", "org.freedesktop.DBus.Mock", "AddMethod",
                  g_variant_new("(sssss)", "org.bluez.Mock", "Ask", "o", "",
                                "bus = self.connection\n"
                                "for name in bus.list_names():\n"
                                "    if name.startswith(':') and name != bus.get_unique_name():\n"
                                "        bus.call_async(name, '/org/vesk/agent', 'org.bluez.Agent1',\n"
                                "            'RequestConfirmation', 'ou', (args[0], dbus.UInt32(1234)),\n"
                                "            lambda *a, s=self: s.log('the answer is yes'),\n"
                                "            lambda e, s=self: s.log('the answer is ' + e.get_dbus_name()))\n"));
        mock.call("/", "org.bluez.Mock", "Ask", g_variant_new("(o)", BluezMock::path(last).c_str()));
    }
};

} // namespace

TEST_F(BluezVeskctl, ListsSetsRenamesAndRemoves)
{
    EXPECT_EQ(json::parse(bluez({"devices", "list", "--json"}).out).size(), 2U);
    EXPECT_THAT(bluez({"devices", "list"}).out, HasSubstr("AA:BB:CC:DD:EE:01"));
    EXPECT_EQ(bluez({"devices", "set", "First", "deny"}).out, "\"First\": deny\n");
    EXPECT_TRUE(mock.is_blocked(1));
    EXPECT_EQ(bluez({"devices", "set", "aa:bb:cc:dd:ee:01", "allow"}).exit_code, 0);
    EXPECT_FALSE(mock.is_blocked(1));
    EXPECT_EQ(bluez({"devices", "rename", "First", "Hall"}).out, "\"First\" is now named \"Hall\".\n");
    EXPECT_THAT(bluez({"devices", "list"}).out, HasSubstr("Hall"));
    EXPECT_EQ(bluez({"devices", "remove", "Hall"}).out, "Removed \"Hall\".\n");
    EXPECT_FALSE(mock.is_there(1));
    EXPECT_FALSE(std::filesystem::exists(devices_)) << "the device file is no concern of this service";
}

TEST_F(BluezVeskctl, ListsMoreThanAPanelShows)
{
    for (int last = 3; last <= 53; ++last)
        mock.add_paired(last, "Phone " + std::to_string(last));
    EXPECT_EQ(json::parse(bluez({"devices", "list", "--json"}).out).size(), 53U);
}

TEST_F(BluezVeskctl, SaysWhyACommandDoesNotFit)
{
    expect_failure(bluez({"devices", "add", "--name", "x", "--bt", "02:00:00:00:00:01"}), "by pairing");
    expect_failure(bluez({"devices", "import", "none.json"}), "by pairing");
    expect_failure(bluez({"devices", "export"}), "stay with BlueZ");
    expect_failure(bluez({"devices", "clear"}), "keyboard");
    expect_failure(bluez({"devices", "reset"}), "sample household");
    expect_failure(veskctl({"pair"}), "veskctl --service bluez pair");
    EXPECT_TRUE(mock.is_there(1));
    EXPECT_TRUE(mock.is_there(2));
}

TEST_F(BluezVeskctl, ARefusalIsTold)
{
    mock.on_removal("raise dbus.exceptions.DBusException('off', name='org.bluez.Error.NotReady')");
    expect_failure(bluez({"devices", "remove", "First"}), "bluetoothctl power on");
    expect_failure(bluez({"devices", "remove", "Nobody"}), "no registered device has the address or name \"Nobody\"");
    mock.set(1, "Connected", g_variant_new_boolean(true));
    mock.set(1, "Icon", g_variant_new_string("input-keyboard"));
    expect_failure(bluez({"devices", "set", "First", "deny"}), "the last input device that is connected");
    EXPECT_FALSE(mock.is_blocked(1));
}

TEST_F(BluezVeskctl, AnUnknownServiceIsMisuse)
{
    const ProcessResult result = veskctl({"--service", "pigeon", "devices", "list"});
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_THAT(result.err, HasSubstr("unknown service \"pigeon\"; use sqlite or bluez"));
}

TEST_F(BluezVeskctl, TellsHowTheServiceIs)
{
    const ProcessResult result = bluez({"service", "status"});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.out, "service   bluez\n"
                          "bus       there\n"
                          "daemon    runs\n"
                          "adapter   hci0  00:01:02:03:04:05  on  computer\n"
                          "devices   2\n");
    const json status = json::parse(bluez({"service", "status", "--json"}).out);
    EXPECT_EQ(status["daemon"], true);
    EXPECT_EQ(status["devices"], 2);
    EXPECT_EQ(status["problem"], nullptr);
    EXPECT_EQ(status["adapters"][0]["name"], "hci0");
    EXPECT_EQ(status["adapters"][0]["powered"], true);
}

TEST_F(BluezVeskctl, TellsWhatIsMissing)
{
    setenv("VESK_BLUEZ_ADAPTER", "hci9", 1);
    expect_failure(bluez({"service", "status"}), "no adapter \"hci9\"");
    unsetenv("VESK_BLUEZ_ADAPTER");
    mock.call("/org/bluez/hci0", "org.freedesktop.DBus.Properties", "Set",
              g_variant_new("(ssv)", "org.bluez.Adapter1", "Powered", g_variant_new_boolean(false)));
    expect_failure(bluez({"service", "status"}), "bluetoothctl power on");
    mock.unplug();
    expect_failure(bluez({"service", "status"}), "no Bluetooth adapter");
    mock.kill_daemon();
    const ProcessResult result = bluez({"service", "status", "--json"});
    expect_failure(result, "systemctl start bluetooth");
    EXPECT_EQ(json::parse(result.out)["daemon"], false);
    expect_failure(bluez({"devices", "list"}), "systemctl start bluetooth");
    mock.stop_bus();
    expect_failure(bluez({"service", "status"}), "the system bus cannot be reached");
}

TEST_F(BluezVeskctl, TellsOfTheDeviceFile)
{
    const json status = json::parse(veskctl({"service", "status", "--json"}).out);
    EXPECT_EQ(status["service"], "sqlite");
    EXPECT_EQ(status["file"], devices_.string());
    EXPECT_GT(status["devices"], 0);
}

TEST_F(BluezPair, ADeviceThatShowsTheDigitsIsLetIn)
{
    mock.add_stranger(3, "Visitor");
    Pairing pairing(folder_);
    ASSERT_TRUE(wait_until([&] { return pairing.says("can be found"); }));
    EXPECT_THAT(mock.log(), HasSubstr("Set /org/bluez/hci0 org.bluez.Adapter1.DiscoverableTimeout 120"));
    EXPECT_THAT(mock.log(), HasSubstr("Set /org/bluez/hci0 org.bluez.Adapter1.Discoverable True"));
    ask(3);
    ASSERT_TRUE(wait_until([&] { return pairing.says("Does \"Visitor\" show 001234? [y/n]"); }));
    EXPECT_THAT(mock.log(), Not(HasSubstr("the answer is yes")));
    pairing.type("y\n");
    ASSERT_TRUE(wait_until([&] { return mock.log().find("the answer is yes") != std::string::npos; }));
    mock.pair(3);
    ASSERT_TRUE(wait_until([&] { return pairing.says("Paired \"Visitor\"."); }));
    ASSERT_TRUE(wait_until(
        [&] { return mock.log().find(BluezMock::path(3) + " org.bluez.Device1.Trusted True") != std::string::npos; }));
    EXPECT_EQ(pairing.end(), 0);
    EXPECT_THAT(mock.log(), HasSubstr("Set /org/bluez/hci0 org.bluez.Adapter1.DiscoverableTimeout 180"));
    EXPECT_THAT(mock.log(), HasSubstr("Set /org/bluez/hci0 org.bluez.Adapter1.Discoverable False"));
    EXPECT_THAT(mock.log(), HasSubstr("UnregisterAgent"));
}

TEST_F(BluezPair, AnyOtherAnswerIsNo)
{
    mock.add_stranger(3, "Visitor");
    Pairing pairing(folder_);
    ASSERT_TRUE(wait_until([&] { return pairing.says("can be found"); }));
    ask(3);
    ASSERT_TRUE(wait_until([&] { return pairing.says("001234"); }));
    pairing.type("maybe\n");
    ASSERT_TRUE(
        wait_until([&] { return mock.log().find("the answer is org.bluez.Error.Rejected") != std::string::npos; }));
}

TEST_F(BluezPair, StrangersOnTheBusAreNotHeard)
{
    Pairing pairing(folder_);
    ASSERT_TRUE(wait_until([&] { return pairing.says("can be found"); }));
    const vesk_port::GlibOwner<GVariant, g_variant_unref> names = mock.bus_names();
    GVariantIter iter;
    g_variant_iter_init(&iter, names.get());
    const char *name = nullptr;
    int refused = 0;
    while (g_variant_iter_next(&iter, "&s", &name))
        refused += mock.ask_agent(name) == "GDBus.Error:org.bluez.Error.Rejected: The user does not want it";
    EXPECT_EQ(refused, 1);
    EXPECT_FALSE(pairing.says("001234"));
}
