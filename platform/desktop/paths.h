#pragma once
/* Where the desktop port keeps its files. Each can be moved with a variable of the environment; an empty variable
 * counts as unset. The functions throw PortError when HOME or a variable of the desktop (XDG_...) that they need is no
 * absolute path. */

#include <filesystem>

namespace vesk_port {

std::filesystem::path devices_file();        /* VESK_DEVICES, else vesk/devices.db in the user's data folder */
std::filesystem::path settings_file();       /* VESK_SETTINGS, else vesk/settings.ini in the user's config folder */
std::filesystem::path product_choice_file(); /* vesk/product in the user's config folder */

/* HOME, else what the system knows of the account. Throws PortError when HOME is no absolute path. */
std::filesystem::path home_folder();

/* What is installed with the programs: VESK_SHARE, else ../share/vesk seen from the running program. */
std::filesystem::path share_folder();

/* Makes the folder that `file` is to stand in, with those above it, each for the user alone. Throws PortError. */
void make_folder_of(const std::filesystem::path &file);

} // namespace vesk_port
