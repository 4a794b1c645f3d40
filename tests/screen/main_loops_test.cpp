/* The bridge of the main loops: GLib's sources are served while the toolkit waits, whoever attaches them. */

#include <glib.h>
#include <gtest/gtest.h>
#include <thread>

#include "television/main_loops.h"

namespace {

bool dispatched;
int woken_descriptors;

gboolean dispatch(gpointer)
{
    dispatched = true;
    return G_SOURCE_REMOVE;
}

void attach_from_another_thread()
{
    std::thread([] { g_idle_add_full(G_PRIORITY_DEFAULT, dispatch, nullptr, nullptr); }).join();
}

/* The toolkit's wait, into which another thread's source comes. */
int wait_disturbed(int count, fd_set *reads, fd_set *writes, fd_set *errors, timeval *timeout)
{
    attach_from_another_thread();
    woken_descriptors = select(count, reads, writes, errors, timeout);
    return woken_descriptors;
}

int wait_in_peace(int count, fd_set *reads, fd_set *writes, fd_set *errors, timeval *timeout)
{
    return select(count, reads, writes, errors, timeout);
}

struct MainLoopsTest : testing::Test {
    MainLoopsTest()
    {
        dispatched = false;
        woken_descriptors = 0;
        for (fd_set *set : {&reads, &writes, &errors})
            FD_ZERO(set);
    }

    int wait(int (*with)(int, fd_set *, fd_set *, fd_set *, timeval *))
    {
        timeval limit{.tv_sec = 2, .tv_usec = 0};
        return vesk::select_with_glib(with, 0, &reads, &writes, &errors, &limit);
    }

    fd_set reads, writes, errors;
};

TEST_F(MainLoopsTest, ASourceOfAnotherThreadEndsTheWait)
{
    EXPECT_EQ(wait(wait_disturbed), 0) << "none of the toolkit's own descriptors";
    EXPECT_GE(woken_descriptors, 1) << "the wait ended by its limit";
    if (!dispatched)
        wait(wait_in_peace);
    EXPECT_TRUE(dispatched);
}

TEST_F(MainLoopsTest, BetweenTheWaitsTheContextIsAnybodys)
{
    wait(wait_disturbed);
    bool acquired = false;
    std::thread([&] {
        acquired = g_main_context_acquire(nullptr);
        if (acquired)
            g_main_context_release(nullptr);
    }).join();
    EXPECT_TRUE(acquired);
}

} // namespace
