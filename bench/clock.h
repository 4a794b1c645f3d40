#pragma once
/* The clock of all measurements: that of the machine, the same in every process. */

#include <chrono>
#include <cstdint>

namespace bench {

/* Nanoseconds since the machine started. */
inline int64_t now()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

inline double ms(int64_t nanoseconds)
{
    return static_cast<double>(nanoseconds) / 1e6;
}

} // namespace bench
