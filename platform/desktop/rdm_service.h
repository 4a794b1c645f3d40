#pragma once
/* The registered-device service beside what rdm.h offers; for tests. */

#include "rdm.h"

namespace vesk_port {

/* Calls every registered callback with a copy of `info`, which may be a record that the table could not hold: any
 * status, fields without a terminator. */
void emit(const RdmDeviceInfo &info);

} // namespace vesk_port
