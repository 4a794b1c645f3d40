#include "television/main_loops.h"

#include <algorithm>
#include <glib.h>
#include <sys/time.h>
#include <vector>

namespace vesk {

namespace {

struct Conditions {
    fd_set *set;
    int asked;
    int answered;
};

std::vector<GPollFD> query(GMainContext *context, int priority, int &timeout_ms)
{
    std::vector<GPollFD> descriptors(8);
    for (;;) {
        const auto room = static_cast<int>(descriptors.size());
        const int count = g_main_context_query(context, priority, &timeout_ms, descriptors.data(), room);
        descriptors.resize(static_cast<size_t>(count));
        if (count <= room)
            return descriptors;
    }
}

timeval *sooner(timeval *timeout, timeval &glib_timeout, int timeout_ms)
{
    if (timeout_ms < 0)
        return timeout;
    glib_timeout = {.tv_sec = timeout_ms / 1000, .tv_usec = timeout_ms % 1000 * 1000L};
    return timeout && timercmp(timeout, &glib_timeout, <) ? timeout : &glib_timeout;
}

} // namespace

int select_with_glib(int (*wait)(int, fd_set *, fd_set *, fd_set *, timeval *), int count, fd_set *reads,
                     fd_set *writes, fd_set *errors, timeval *timeout)
{
    GMainContext *context = g_main_context_default();
    const Conditions conditions[] = {{reads, G_IO_IN, G_IO_IN | G_IO_HUP},
                                     {writes, G_IO_OUT, G_IO_OUT},
                                     {errors, G_IO_ERR | G_IO_PRI, G_IO_ERR | G_IO_PRI}};
    int priority = 0;
    int timeout_ms = -1;
    /* Another thread that attaches a source wakes the owner of the context, and nobody else. To see it: answers of
       the system bus that come seconds late. */
    if (!g_main_context_acquire(context))
        return wait(count, reads, writes, errors, timeout);
    g_main_context_prepare(context, &priority);
    auto descriptors = query(context, priority, timeout_ms);
    for (const auto &descriptor : descriptors) {
        for (const auto &condition : conditions) {
            if (descriptor.events & condition.asked)
                FD_SET(descriptor.fd, condition.set);
        }
        count = std::max(count, descriptor.fd + 1);
    }
    timeval glib_timeout{};
    int ready = wait(count, reads, writes, errors, sooner(timeout, glib_timeout, timeout_ms));
    for (auto &descriptor : descriptors) {
        for (const auto &condition : conditions) {
            if (ready <= 0 || !(descriptor.events & condition.asked) || !FD_ISSET(descriptor.fd, condition.set))
                continue;
            descriptor.revents = static_cast<gushort>(descriptor.revents | (descriptor.events & condition.answered));
            FD_CLR(descriptor.fd, condition.set);
            --ready;
        }
    }
    if (g_main_context_check(context, priority, descriptors.data(), static_cast<int>(descriptors.size())))
        g_main_context_dispatch(context);
    g_main_context_release(context);
    return ready;
}

} // namespace vesk
