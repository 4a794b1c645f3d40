#pragma once
/* The devices that both subjects show: the module reads them from the service, the bare program has them in memory. */

#include <string>
#include <vector>

#include "desktop/device_store.h"

namespace bench {

/* The row of the list whose status the measurement of a change turns. */
constexpr int kChangingRow = 3;

/* `count` devices of several families in the order in which the list shows them; those before kChangingRow are
   allowed, so that the row stays in its place with either status. */
std::vector<vesk_port::Device> household(int count);

/* The file name of a device's picture. */
std::string picture_of(const vesk_port::Device &device);

} // namespace bench
