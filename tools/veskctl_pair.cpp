#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <glib.h>
#include <string>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <glib-unix.h>

#include "desktop/bluez_pairing.h"
#include "desktop/glib_owner.h"
#include "desktop/port_error.h"
#include "desktop/text.h"
#include "veskctl_service.h"

namespace veskctl {

using vesk_port::BluezAdapter;
using vesk_port::BluezPairing;
using vesk_port::GlibSource;
using vesk_port::PortError;

namespace {

/* Reads a line whenever the user has typed one; the answer may also come while no question is open. */
struct Terminal {
    BluezPairing *pairing = nullptr;
    std::string typed;
    bool over = false;

    bool read_more()
    {
        char buffer[256];
        const ssize_t length = read(STDIN_FILENO, buffer, sizeof buffer);
        if (length <= 0) {
            pairing->answer(false); /* nobody is there to agree */
            return false;
        }
        typed.append(buffer, static_cast<size_t>(length));
        for (size_t end = 0; (end = typed.find('\n')) != std::string::npos; typed.erase(0, end + 1)) {
            const std::string line = typed.substr(0, end);
            pairing->answer(line == "y" || line == "Y" || line == "yes");
        }
        return true;
    }
};

BluezAdapter adapter_for_pairing(const vesk_port::BluezService &service)
{
    if (const auto trouble = service.trouble())
        throw PortError(*trouble);
    const auto adapters = service.adapters();
    const auto usable = std::ranges::find_if(
        adapters, [&](const BluezAdapter &adapter) { return service.uses(adapter) && adapter.powered; });
    return *usable; /* there is one, or that were the trouble */
}

void say(const std::string &line)
{
    std::puts(line.c_str());
    std::fflush(stdout);
}

void pair()
{
    if (vesk_port::chosen_service() != vesk_port::ServiceKind::bluez)
        throw PortError(-ENOTSUP, "only BlueZ pairs devices. Use: veskctl --service bluez pair");
    const auto service = open_bluez();
    const BluezAdapter adapter = adapter_for_pairing(*service);
    const std::string daemon = service->bus().daemon();
    Terminal terminal;
    const auto name = [&](const std::string &device) { return vesk_port::in_quotes(service->name_at(device)); };
    const BluezPairing::Screen screen{
        .ask =
            [&](const std::string &device, const std::string &digits) {
                say(digits.empty() ? "May " + name(device) + " connect? [y/n]"
                                   : "Does " + name(device) + " show " + digits + "? [y/n]");
            },
        .show = [&](const std::string &device,
                    const std::string &digits) { say("Type " + digits + " on " + name(device) + "."); },
        .withdraw = [&] { say("The device has given up."); },
        .paired = [&](const std::string &device) { say("Paired " + name(device) + "."); }};
    BluezPairing pairing(service->bus(), adapter.path, screen);
    terminal.pairing = &pairing;
    say(vesk_port::in_quotes(adapter.alias) + " can be found and paired with for two minutes. Ctrl+C ends it.");

    const auto end = [](gpointer over) -> gboolean {
        *static_cast<bool *>(over) = true;
        return G_SOURCE_CONTINUE;
    };
    const auto typed = [](gint, GIOCondition, gpointer data) -> gboolean {
        return static_cast<Terminal *>(data)->read_more() ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
    };
    const GlibSource limit(g_timeout_add_seconds(BluezPairing::kDuration.count(), end, &terminal.over));
    const GlibSource interrupt(g_unix_signal_add(SIGINT, end, &terminal.over));
    const GlibSource terminate(g_unix_signal_add(SIGTERM, end, &terminal.over));
    g_unix_fd_add(STDIN_FILENO, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP), typed, &terminal);
    while (!terminal.over) {
        g_main_context_iteration(nullptr, TRUE);
        if (service->bus().daemon() != daemon)
            throw PortError(-EHOSTDOWN, "bluetoothd has ended meanwhile. Once it runs, pair anew.");
    }
}

} // namespace

void add_pair_command(CLI::App &program)
{
    program.add_subcommand("pair", "Lets new devices pair with BlueZ for two minutes, and asks about each")
        ->callback(pair);
}

} // namespace veskctl
