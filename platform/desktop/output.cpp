#include "output.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace vesk_port {

namespace {

const char *name_of_program = "";

void check_output()
{
    errno = 0;
    const bool lost_before = std::ferror(stdout) != 0;
    if (std::fflush(stdout) == 0 && !lost_before)
        return;
    std::fprintf(stderr, "%s: the output cannot be written%s%s; make room or write it to another place\n",
                 name_of_program, errno ? ": " : "", errno ? std::strerror(errno) : "");
    _exit(EXIT_FAILURE); /* exit() is under way, and its code can no longer be changed */
}

} // namespace

void check_output_at_exit(const char *program)
{
    name_of_program = program;
    if (std::atexit(check_output) != 0)
        std::abort();
}

} // namespace vesk_port
