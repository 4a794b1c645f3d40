#pragma once
/* The frame around each call of a platform interface: provoked failures, and errors turned into code and log line. */

#include <cerrno>

#include "port_error.h"
#include "port_failures.h"

namespace vesk_port {

/* Writes the port's log line of a failed call and returns `code`. */
int report_failure(const char *call, int code, const char *sentence);

/* Runs `body`, which throws where it fails, as the interface call `call`. No exception leaves it, since the callers
 * are C functions. Returns 0 or the negative code; the failure is in the log
 * by then. */
template <class Body> int port_call(const char *call, Body body)
{
    try {
        if (const int code = provoked_failure(call))
            throw PortError(code, "the failure was asked for with VESK_FAIL.");
        body();
        return 0;
    } catch (const RepeatedError &error) {
        return error.code();
    } catch (const PortError &error) {
        return report_failure(call, error.code(), error.what());
    } catch (const std::exception &error) {
        return report_failure(call, -EIO, error.what());
    }
}

} // namespace vesk_port
