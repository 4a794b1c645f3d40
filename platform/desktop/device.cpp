#include "device.h"

namespace vesk_port {

std::string normal_mac(std::string_view mac)
{
    std::string normal(mac);
    for (char &c : normal) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
        else if (c == '-')
            c = ':';
    }
    return normal;
}

} // namespace vesk_port
