#pragma once
/* veskctl: the other side of the television. It registers devices and changes settings while panels run. */

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "desktop/device.h"
#include "desktop/port_error.h"

namespace veskctl {

/* Each adds its commands to the program. A command does its work while the command line is parsed. It throws
 * vesk_port::PortError where it fails, and CLI::ParseError where the command line makes no sense. */
void add_device_commands(CLI::App &program);
void add_setting_commands(CLI::App &program);
void add_product_commands(CLI::App &program);

/* The commands below `devices` that read or write a list of devices. */
void add_file_commands(CLI::App &devices);

/* Prints devices as the JSON that import reads. */
void print_devices(const std::vector<vesk_port::Device> &devices);

/* "1 device", "2 devices". */
std::string counted(size_t count);

/* Runs what reads a word of the command line; its PortError becomes an error of usage. */
template <class Read> auto as_usage(Read read)
{
    try {
        return read();
    } catch (const vesk_port::PortError &error) {
        throw CLI::ValidationError(error.what());
    }
}

} // namespace veskctl
