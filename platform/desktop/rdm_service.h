#pragma once
/* The registered-device service beside what rdm.h offers; for hosts and tests. */

#include "rdm.h"

namespace vesk_port {

/* The log line that follows one about a list that could not be read, when it can be read again. */
inline constexpr const char *kReadableAgain = "the registered devices can be read again.";

/* Calls every registered callback with a copy of `info`, which may be a record that the table could not hold: any
 * status, fields without a terminator. */
void emit(const RdmDeviceInfo &info);

} // namespace vesk_port
