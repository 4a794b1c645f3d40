#pragma once

#include <functional>
#include <string>

namespace vesk {

/* Hears of every picture file that is asked for on a panel, and whether it can be shown; null ends that. */
void set_picture_listener(std::function<void(const std::string &file, bool shown)> listener);

/* A picture has been asked for. */
void picture_asked(const std::string &file, bool shown);

} // namespace vesk
