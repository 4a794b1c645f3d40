#include "signals.h"

#include <Ecore.h>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <stdexcept>
#include <string_view>
#include <sys/eventfd.h>
#include <unistd.h>

namespace vesk {

namespace {

constexpr timespec kPatience{.tv_sec = 2, .tv_nsec = 500'000'000};

/* For the handlers, which get no data. */
timer_t deadline;
int wish = -1; /* readable when the program is to end */
volatile std::sig_atomic_t received = 0;

void begin_to_end(int signal)
{
    received = signal;
    const itimerspec once{.it_interval = {}, .it_value = kPatience};
    timer_settime(deadline, 0, &once, nullptr);
    eventfd_write(wish, 1);
}

void end_at_once(int)
{
    constexpr std::string_view sentence = "vesk-host: the program did not come to its end and was ended\n";
    [[maybe_unused]] const auto written = write(STDERR_FILENO, sentence.data(), sentence.size());
    _exit(128 + received);
}

Eina_Bool end(void *ended, Ecore_Fd_Handler *)
{
    eventfd_t ignored = 0;
    eventfd_read(wish, &ignored);
    *static_cast<bool *>(ended) = true;
    return ECORE_CALLBACK_RENEW;
}

bool handle(int signal, void (*handler)(int))
{
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    return sigaction(signal, &action, nullptr) == 0;
}

} // namespace

void end_on_signals(bool &ended)
{
    wish = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    const bool heard = wish >= 0 && ecore_main_fd_handler_add(wish, ECORE_FD_READ, end, &ended, nullptr, nullptr) &&
                       timer_create(CLOCK_MONOTONIC, nullptr, &deadline) == 0 && handle(SIGALRM, end_at_once) &&
                       handle(SIGINT, begin_to_end) && handle(SIGTERM, begin_to_end) && handle(SIGHUP, begin_to_end);
    if (!heard)
        throw std::runtime_error("signals cannot be heard; end some programs and start again.");
}

} // namespace vesk
