#pragma once
/* The list of devices in JSON, as export writes it. */

#include <string>
#include <vector>

#include "desktop/device.h"

namespace veskctl {

/* Reads the whole of `text`; type and status may be words or numbers. Throws PortError for what is not such a list,
 * with a message that names `source` and the device. Takes time in proportion to the text, whatever is in it. */
std::vector<vesk_port::Device> read_devices(const std::string &source, std::string text);

} // namespace veskctl
