#pragma once
/* veskctl: the other side of the television. It registers devices and changes settings while panels run. */

namespace CLI {
class App;
}

namespace veskctl {

/* Each adds its commands to the program. A command does its work while the command line is parsed, and throws
 * vesk_port::PortError where it fails. */
void add_device_commands(CLI::App &program);
void add_setting_commands(CLI::App &program);
void add_product_commands(CLI::App &program);

} // namespace veskctl
