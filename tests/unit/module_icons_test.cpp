#include <limits>
#include <optional>
#include <vector>

#include "module_fixture.h"
#include "ug/device_icons.h"

namespace {

struct Loaded {
    Evas_Object *image;
    std::string file;
    bool has_group;
};

std::vector<Loaded> loaded;

} // namespace

/* Stands before the toolkit's own, so that no picture file and no canvas are needed. */
Eina_Bool elm_image_file_set(Evas_Object *image, const char *file, const char *group)
{
    loaded.push_back({image, file, group != nullptr});
    return EINA_FALSE;
}

namespace {

const std::string kFolder = "/usr/share/resources/image/icon/r_icon_convergence/";

/* What _load_device_icon loads, which has to be what it writes to the log. */
std::string path(int32_t type, int32_t icon)
{
    /* Never looked at: the object is only handed on. */
    Evas_Object *const image = reinterpret_cast<Evas_Object *>(&loaded);
    fake::reset();
    loaded.clear();
    _load_device_icon(image, type, icon);
    if (loaded.size() != 1)
        return "not one picture";
    EXPECT_EQ(loaded[0].image, image);
    EXPECT_FALSE(loaded[0].has_group);
    EXPECT_THAT(fake::platform().chronicle, testing::ElementsAre("I  icon path [" + loaded[0].file + "]"));
    return loaded[0].file;
}

constexpr int32_t kMin = std::numeric_limits<int32_t>::min();
constexpr int32_t kMax = std::numeric_limits<int32_t>::max();

/* Codes that no family names. */
const std::vector<int32_t> kOtherCodes = {kMin, -1, 0, 5, 100, kMax};

} // namespace

using IconTest = ModuleTest;

TEST_F(IconTest, FollowsTypeAndCode)
{
    const struct {
        int32_t type;
        std::vector<int32_t> icons; /* besides kOtherCodes, where `other` is set */
        bool other;
        const char *name;
    } cases[] = {
        {0, {1, 2, 3, 4}, true, "accessorydefault"},
        {1, {1, 2, 3, 4}, true, "phone"},
        {2, {1, 2, 3, 4}, true, "tablet"},
        {3, {1}, false, "wearablevolt"},
        {3, {2, 3, 4}, true, "wearable"},
        {4, {2}, false, "notebookpc"},
        {4, {1, 3, 4}, true, "desktoppc"},
        {5, {1}, false, "mouse"},
        {5, {2}, false, "gamepad"},
        {5, {3}, false, "keyboard"},
        {6, {1, 2, 3, 4}, true, "tv"},
        {7, {1}, false, "soundbar"},
        {7, {2, 3}, false, "av360"},
        {7, {4}, false, "avbluray"},
        {7, {}, true, "av"},
        {8, {1, 2, 3, 4}, true, "signage"},
        {9, {1, 2, 3, 4}, true, "refrigerator"},
        {10, {1}, false, "dishwasher"},
        {10, {2, 3, 4}, true, "washer"},
        {11, {1, 2, 3, 4}, true, "dryer"},
        {12, {1, 2, 3, 4}, true, "floorac"},
        {13, {1, 2, 3, 4}, true, "roomac"},
        {14, {1, 2, 3, 4}, true, "systemac"},
        {15, {1, 2, 3, 4}, true, "airpurifier"},
        {16, {1, 2, 3, 4}, true, "oven"},
        {17, {1, 2, 3, 4}, true, "range"},
        {18, {1, 2, 3, 4}, true, "rebotvacuum"},
        {19, {1, 2, 3, 4}, true, "smarthome"},
        {20, {1, 2, 3, 4}, true, "printer"},
        {21, {1}, false, "headphonehollo"},
        {21, {2}, false, "headphonemono"},
        {21, {3, 4}, true, "headphone"},
        {22, {1}, false, "speackertallbox"},
        {22, {2, 3, 4}, true, "speakerdefault"},
        {23, {1, 2, 3, 4}, true, "monitor"},
        {24, {1, 2, 3, 4}, true, "eboard"},
        {25, {1}, false, "iotconnectauto"},
        {25, {2, 3, 4}, true, "iotconnect"},
        {26, {1, 2, 3, 4}, true, "camera"},
        {27, {1, 2, 3, 4}, true, "camcorder"},
        {28, {1, 2, 3, 4}, true, "cooktop"},
        {29, {1, 2, 3, 4}, true, "dishwasher"},
        {30, {1, 2, 3, 4}, true, "microwaveoven"},
        {31, {1, 2, 3, 4}, true, "hood"},
        {32, {1, 2, 3, 4}, true, "accessorydefault"},
        {33, {1, 2, 3, 4}, true, "wearable"},
        {34, {1, 2, 3, 4}, true, "wearablevolt"},
        {35, {1, 2, 3, 4}, true, "accessorydefault"},
        {36, {1, 2, 3, 4}, true, "avbluray"},
        {-1, {1, 2, 3, 4}, true, "accessorydefault"},
        {37, {1, 2, 3, 4}, true, "accessorydefault"},
        {kMin, {1, 2, 3, 4}, true, "accessorydefault"},
        {kMax, {1, 2, 3, 4}, true, "accessorydefault"},
    };
    for (const auto &sample : cases) {
        std::vector<int32_t> icons = sample.icons;
        if (sample.other)
            icons.insert(icons.end(), kOtherCodes.begin(), kOtherCodes.end());
        for (const int32_t icon : icons)
            EXPECT_EQ(path(sample.type, icon), kFolder + "r_icon_convergence_" + sample.name + ".webp")
                << "type " << sample.type << ", code " << icon;
    }
}

TEST_F(IconTest, InputDeviceOfUnknownCodeHasNoPicture)
{
    for (const int32_t icon : {kMin, -1, 0, 4, 5, kMax})
        EXPECT_EQ(path(5, icon), kFolder + "(null)") << icon;
}

TEST_F(IconTest, LogNamesItsSourceAndFunction)
{
    path(1, 0);
    EXPECT_EQ(fake::platform().log[0].file, "device_icons.cpp");
    EXPECT_EQ(fake::platform().log[0].function, "_load_device_icon");
}
