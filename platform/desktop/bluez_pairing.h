#pragma once
/* Lets new devices pair for as long as the object lives: the adapter can be found, and an agent asks the user. */

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "bluez_bus.h"

typedef struct _GDBusMethodInvocation GDBusMethodInvocation;

namespace vesk_port {

class BluezPairing {
public:
    static constexpr std::chrono::seconds kDuration{120};

    /* How the user hears of it, from the main loop; `device` is the path of its object. */
    struct Screen {
        /* Does the device show these digits, or, where it has none to show, may it come in? answer() is to be called,
         * then or later. */
        std::function<void(const std::string &device, const std::string &digits)> ask;

        /* To be typed on the device. */
        std::function<void(const std::string &device, const std::string &digits)> show;

        /* The question is no longer open. */
        std::function<void()> withdraw;

        std::function<void(const std::string &device)> paired;
    };

    /* Throws PortError where bluetoothd does not let it. */
    BluezPairing(BluezBus &bus, std::string adapter, Screen screen);

    /* The adapter is again as it was before, and an open question is answered with no. */
    ~BluezPairing();
    BluezPairing(const BluezPairing &) = delete;
    BluezPairing &operator=(const BluezPairing &) = delete;

    void answer(bool yes);

private:
    void open_adapter();
    void restore_adapter();
    void set(const char *property, GVariant *value);
    void called(const std::string &method, GVariant *arguments, GDBusMethodInvocation *invocation);
    void ask(GDBusMethodInvocation *invocation, const std::string &device, const std::string &digits);
    void device_changed(const std::string &path, GVariant *signal);

    struct Property {
        const char *name;
        GlibOwner<GVariant, g_variant_unref> value;
    };

    BluezBus &bus_;
    std::string adapter_;
    Screen screen_;
    GDBusConnection *connection_;
    unsigned object_ = 0;
    unsigned subscription_ = 0;
    std::vector<Property> before_;
    GDBusMethodInvocation *open_question_ = nullptr;
    std::string asked_;                 /* the device that it is about */
    std::vector<std::string> welcomed_; /* devices that were let in and have not paired yet */
};

} // namespace vesk_port
