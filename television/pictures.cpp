#include "television/pictures.h"

#include <utility>

namespace vesk {

namespace {

std::function<void(const std::string &file, bool shown)> listener;

} // namespace

void set_picture_listener(std::function<void(const std::string &file, bool shown)> new_listener)
{
    listener = std::move(new_listener);
}

void picture_asked(const std::string &file, bool shown)
{
    if (listener)
        listener(file, shown);
}

} // namespace vesk
