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

bool has_address(const Device &device, std::string_view mac, MacKind kind)
{
    const std::string *own = nullptr;
    switch (kind) {
    case MacKind::bluetooth:
        own = &device.bt_mac;
        break;
    case MacKind::wifi:
        own = &device.wifi_mac;
        break;
    case MacKind::p2p:
        own = &device.p2p_mac;
        break;
    }
    return own && !own->empty() && normal_mac(*own) == normal_mac(mac);
}

} // namespace vesk_port
