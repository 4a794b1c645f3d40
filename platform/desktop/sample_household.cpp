#include "sample_household.h"

#include <string_view>

namespace vesk_port {

namespace {

/* As long as the name field of a device record: there is no room for a terminator. */
constexpr std::string_view kLongestName =
    "The big shelf speaker between the two bookcases in the living room, the one with the loose cable which nobody has "
    "mended so far.";
static_assert(kLongestName.size() == 128);

enum Access { allowed = 0, denied = 1 };

} // namespace

/* Addresses are locally administered (second digit 2, 6, A or E), so they are nobody's. */
std::vector<Device> sample_household()
{
    return {
        {0, "Nora's phone", "02:4B:11:A0:3C:01", "02:4B:11:A0:3C:02", "06:4B:11:A0:3C:02", 1, 0, allowed},
        {0, "Kitchen tablet", "0a-5e-20-77-1b-10", "0a-5e-20-77-1b-11", "", 2, 0, allowed},
        {0, "Visitor's phone", "", "12:90:AF:3E:58:21", "16:90:AF:3E:58:21", 1, 0, denied},
        {0, "هاتف ليلى", "1e:07:c3:44:d9:30", "", "1a:07:c3:44:d9:31", 1, 0, allowed},
        {0, "거실 태블릿", "", "", "2A:61:08:BE:70:41", 2, 0, allowed},
        {0, "", "", "22-d8-35-9c-0f-52", "", 1, 0, denied},
        {0, "Evening headphones", "36:1C:EA:50:42:61", "", "", 21, 1, allowed},
        {0, "<b>Study</b> & Play", "", "3e:85:6f:12:ab:70", "", 4, 2, allowed},
        {0, std::string(kLongestName), "42:F3:29:D4:66:80", "42:F3:29:D4:66:81", "", 22, 1, denied},
        {0, "Washing machine", "", "4a-0b-97-e1-2d-90", "", 10, 0, allowed},
        {0, "Blue gamepad", "56:72:CC:08:19:A3", "", "", 5, 2, denied},
        {0, "Soundbar", "5e:a9:14:bb:83:b2", "5e:a9:14:bb:83:b3", "5a:a9:14:bb:83:b3", 7, 1, allowed},
    };
}

} // namespace vesk_port
