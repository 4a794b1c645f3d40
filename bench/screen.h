#pragma once
/* What is measured: the device list on the panel, by the module or by plain calls of the toolkit. */

#include <cstdint>
#include <memory>

#include "television/panel.h"

namespace bench {

class Screen {
public:
    virtual ~Screen() = default;

    /* Builds the screen and gives it the keys; close takes it away. */
    virtual void open() = 0;
    virtual void close() = 0;

    /* When the last open began to build the screen: where the host calls the module's create callback. */
    virtual int64_t build_began() const = 0;

    /* Fills the list anew with the same devices, as after a change of one. */
    virtual void refresh() = 0;

    /* One press of Down on the remote, without its consequences in the main loop. */
    virtual void press_down() = 0;
};

std::unique_ptr<Screen> module_screen(vesk::Panel &panel);
std::unique_ptr<Screen> bare_screen(vesk::Panel &panel, int devices);

} // namespace bench
