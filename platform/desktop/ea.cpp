#include "ea.h"

#include "port_call.h"

namespace {

int users = 0;

} // namespace

int ea_init(int, int)
{
    const int failure = vesk_port::port_call(__func__, [] { ++users; });
    return failure ? failure : users;
}

int ea_shutdown(void)
{
    const int failure = vesk_port::port_call(__func__, [] {
        if (users == 0)
            throw vesk_port::PortError(-EINVAL, "the library is not in use; ea_init comes first.");
        --users;
    });
    return failure ? failure : users;
}
