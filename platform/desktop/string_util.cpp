#include "string_util.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "port_call.h"

int CStringUtil::CombinateStrings(char *buffer, size_t size, const char *format, const char *first, const char *second,
                                  const char *third, const char *fourth)
{
    size_t written = 0;
    const int failure = vesk_port::port_call("CStringUtil::CombinateStrings", [&] {
        if (!buffer || size == 0)
            throw vesk_port::PortError(-EINVAL, "there is no room for the text.");
        *buffer = '\0';
        const std::array arguments{first, second, third, fourth};
        std::string text;
        for (const char *c = format ? format : ""; *c; ++c) {
            if (*c == '%' && c[1] >= '1' && c[1] <= '4') {
                const char *argument = arguments[static_cast<size_t>(*++c - '1')];
                text += argument ? argument : "";
            } else {
                text += *c;
            }
        }
        written = std::min(text.size(), size - 1);
        std::memcpy(buffer, text.data(), written);
        buffer[written] = '\0';
    });
    return failure ? failure : static_cast<int>(written);
}
