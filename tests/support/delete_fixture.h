#pragma once
/* What the tests of the confirmation and of the deletion share: what the service is asked, and what it has left. */

#include <initializer_list>
#include <string>
#include <vector>

#include "edit_fixture.h"
#include "spy.h"

struct DeleteTest : EditTest {
    /* What the service was asked to remove, in order: addresses, and "all". */
    static std::vector<std::string> removals()
    {
        std::vector<std::string> asked;
        for (const spy::Call &call : spy::journal()) {
            if (call.function.starts_with("rdm_remove_"))
                asked.push_back(call.text);
        }
        return asked;
    }

    static std::vector<std::string> service_names(const std::vector<vesk_port::Device> &devices)
    {
        std::vector<std::string> result;
        for (const auto &device : devices)
            result.push_back(device.name);
        return result;
    }
    std::vector<std::string> service_names() const { return service_names(registered()); }

    /* Keys one after the other, without the main loop in between. */
    void press_at_once(std::initializer_list<const char *> keys)
    {
        for (const char *key : keys) {
            panel().key_down(key);
            panel().key_up(key);
        }
    }

    size_t confirmations() { return shown_popups(panel().canvas(), "P_PopupBasicBottom_02").size(); }

    std::string toast_marker(const std::string &number) const
    {
        std::string text = translated("COM_SID_MIX_DEVICES_DELETED");
        return text.replace(text.find("%1"), 2, number);
    }
};
