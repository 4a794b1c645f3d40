#pragma once
/* The devices that a new device database is filled with. */

#include <vector>

#include "device.h"

namespace vesk_port {

/* A dozen devices that show what the panel can show: the families, both access states, each combination of links, and
 * names that are hard to display. */
std::vector<Device> sample_household();

} // namespace vesk_port
