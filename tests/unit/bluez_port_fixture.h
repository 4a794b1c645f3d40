#pragma once
/* What the tests of the service over BlueZ share: a mock with two paired phones, the list, and a listener. */

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "bluez_mock.h"
#include "port_fixture.h"
#include "rdm.h"

inline constexpr int kBluetooth = 1; /* the kind of address */
inline constexpr int kAllow = 0;
inline constexpr int kDeny = 1;

inline std::vector<RdmDeviceInfo> devices()
{
    RdmDeviceInfo *list = nullptr;
    size_t count = 0;
    EXPECT_EQ(rdm_get_list(&list, &count), 0);
    std::vector<RdmDeviceInfo> copy(list, list + count);
    rdm_free_list(list);
    return copy;
}

inline std::vector<std::string> names()
{
    std::vector<std::string> names;
    for (const RdmDeviceInfo &device : devices())
        names.emplace_back(device.name, strnlen(device.name, sizeof device.name));
    return names;
}

/* Listens as the module does, which reads the list in its callback. */
struct Screen {
    std::vector<RdmDeviceInfo> heard;
    int handle = 0;

    Screen() { EXPECT_EQ(rdm_callback_register(hear, this, &handle), 0); }
    ~Screen() { rdm_callback_deregister(handle); }

    static int hear(void *self, RdmDeviceInfo *info)
    {
        static_cast<Screen *>(self)->heard.push_back(*info);
        names();
        return 0;
    }

    size_t count() const { return heard.size(); }
};

class BluezPort : public PortTest {
protected:
    explicit BluezPort(const std::string &policy = "") : mock(folder_, policy) { setenv("VESK_SERVICE", "bluez", 1); }

    ~BluezPort() override
    {
        while (rdm_deinit() == 0) {
        }
        unsetenv("VESK_SERVICE");
    }

    /* The mock with two paired phones, and the service. */
    void open()
    {
        start();
        ASSERT_EQ(rdm_init(), 0);
    }

    void start()
    {
        mock.start_bus();
        mock.start_daemon();
        add_both();
    }

    void add_both()
    {
        mock.add_adapter();
        mock.add_paired(1, "First");
        mock.add_paired(2, "Second");
    }

    /* What the mock has told by now is known afterwards: a change that shows comes behind it. */
    void catch_up(Screen &screen)
    {
        const size_t before = screen.count();
        mock.set(2, "Alias", g_variant_new_string(("Mark " + std::to_string(before)).c_str()));
        const std::string mark = "Mark " + std::to_string(before);
        ASSERT_TRUE(run_until([&] { return screen.count() > before && std::ranges::count(names(), mark) == 1; }));
    }

    /* Lets removals take the time after which they count. */
    static void settle()
    {
        bool over = false;
        const auto end = [](gpointer flag) -> gboolean {
            *static_cast<bool *>(flag) = true;
            return G_SOURCE_REMOVE;
        };
        g_timeout_add(700, end, &over);
        run_until([&over] { return over; });
    }

    static int deny(int last) { return rdm_set_status(BluezMock::address(last).c_str(), kBluetooth, kDeny); }
    static int allow(int last) { return rdm_set_status(BluezMock::address(last).c_str(), kBluetooth, kAllow); }
    static int remove(int last) { return rdm_remove_device(BluezMock::address(last).c_str(), kBluetooth); }

    static int status(int last)
    {
        for (const RdmDeviceInfo &device : devices()) {
            if (device.bt_mac == BluezMock::address(last))
                return device.status;
        }
        return -1;
    }

    /* The lines of the mock's log that hold the text, without their times. */
    std::vector<std::string> calls(const std::string &text)
    {
        std::vector<std::string> lines;
        std::istringstream stream(mock.log());
        for (std::string line; std::getline(stream, line);) {
            if (line.find(text) != line.npos)
                lines.push_back(line.substr(line.find(' ') + 1));
        }
        return lines;
    }

    BluezMock mock;
};

inline const std::vector<std::string> kBoth{"First", "Second"};
