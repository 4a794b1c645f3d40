#include "television/window_size.h"

#include <algorithm>

namespace vesk {

Size size_on_screen(Size wanted, Size screen)
{
    if (screen.width <= 0 || screen.height <= 0 || wanted.width <= 0 || wanted.height <= 0)
        return wanted;
    const double scale = std::min(
        {1.0, screen.width / static_cast<double>(wanted.width), screen.height / static_cast<double>(wanted.height)});
    return {static_cast<int>(wanted.width * scale), static_cast<int>(wanted.height * scale)};
}

} // namespace vesk
