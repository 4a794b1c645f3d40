/* Product facts: the profiles and the calls that read them. */

#include <algorithm>
#include <cstdlib>
#include <ostream>

#include "desktop/port_error.h"
#include "desktop/product.h"
#include "port_fixture.h"
#include "system_info.h"

using testing::HasSubstr;
using vesk_port::PortError;

namespace {

void use(const std::string &product)
{
    setenv("VESK_PRODUCT", product.c_str(), 1);
}

bool flag(const char *key)
{
    bool value = false;
    EXPECT_EQ(system_info_get_custom_bool(key, &value), 0) << key;
    return value;
}

std::string device_sid()
{
    char *text = nullptr;
    EXPECT_EQ(system_info_get_custom_string("com.corvane/featureconf/product.device_sid", &text), 0);
    const std::string copy = text ? text : "";
    std::free(text);
    return copy;
}

int fir_version()
{
    int version = -1;
    EXPECT_EQ(system_info_get_custom_int("com.corvane/featureconf/the_fir_version", &version), 0);
    return version;
}

struct Kind {
    const char *product;
    const char *sid;
    bool board;
    bool projector;
    bool monitor;
    int fir;
};

void PrintTo(const Kind &kind, std::ostream *stream)
{
    *stream << kind.product;
}

class PortProduct : public PortTest, public testing::WithParamInterface<Kind> {};

} // namespace

TEST_P(PortProduct, StatesWhatKindOfDisplayItIs)
{
    use(GetParam().product);
    EXPECT_EQ(device_sid(), GetParam().sid);
    EXPECT_EQ(flag("com.corvane/featureconf/quince_support"), GetParam().board);
    EXPECT_EQ(flag("com.corvane/featureconf/projector_feature_support"), GetParam().projector);
    EXPECT_EQ(flag("com.corvane/featureconf/product.daphne_feature_support"), GetParam().monitor);
    EXPECT_EQ(fir_version(), GetParam().fir);
}

INSTANTIATE_TEST_SUITE_P(Profiles, PortProduct,
                         testing::Values(Kind{"television", "REP.DEVICE.ALDER", false, false, false, 0},
                                         Kind{"television-not-ready", "NOT_READY", false, false, false, 0},
                                         Kind{"television-chi", "REP.DEVICE.ALDER", false, false, false, 0},
                                         Kind{"board", "REP.DEVICE.HAZEL", true, false, false, 0},
                                         Kind{"board-not-ready", "NOT_READY", true, false, false, 0},
                                         Kind{"monitor", "REP.DEVICE.DAPHNE", false, false, true, 0},
                                         Kind{"monitor-not-ready", "NOT_READY", false, false, true, 0},
                                         Kind{"projector", "REP.DEVICE.BIRCH", false, true, false, 0},
                                         Kind{"projector-not-ready", "NOT_READY", false, true, false, 0},
                                         Kind{"modular-1", "REP.DEVICE.FIR", false, false, false, 1},
                                         Kind{"modular-1-not-ready", "NOT_READY", false, false, false, 1},
                                         Kind{"modular-2", "REP.DEVICE.CEDAR", false, false, false, 2},
                                         Kind{"modular-2-not-ready", "NOT_READY", false, false, false, 2}),
                         [](const testing::TestParamInfo<Kind> &kind) {
                             std::string name = kind.param.product;
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

TEST_F(PortTest, EveryProfileStatesTheOtherFactsToo)
{
    for (const vesk_port::ProductProfile &profile : vesk_port::product_profiles()) {
        SCOPED_TRACE(profile.name);
        use(profile.name);
        EXPECT_NE(profile.title, "");
        flag("com.corvane/featureconf/sound_mirroring_supported");
        flag("com.corvane/featureconf/product.juniper_support");
        int width = 0;
        int height = 0;
        EXPECT_EQ(system_info_get_platform_int("com.corvane/feature/screen.width", &width), 0);
        EXPECT_EQ(system_info_get_platform_int("com.corvane/feature/screen.height", &height), 0);
        EXPECT_EQ(width, 1920);
        EXPECT_EQ(height, 1080);
        char *region = nullptr;
        EXPECT_EQ(system_info_get_value_string(90, &region), 0);
        EXPECT_STRNE(region, "");
        std::free(region);
    }
}

TEST_F(PortTest, AFactThatTheProfileLacksFailsAndLeavesTheValue)
{
    bool truth = true;
    int number = 5;
    char *text = nullptr;
    EXPECT_LT(system_info_get_custom_bool("nothing", &truth), 0);
    EXPECT_LT(system_info_get_custom_int("nothing", &number), 0);
    EXPECT_LT(system_info_get_custom_string("nothing", &text), 0);
    EXPECT_LT(system_info_get_platform_int("nothing", &number), 0);
    EXPECT_LT(system_info_get_value_string(91, &text), 0);
    EXPECT_LT(system_info_get_custom_bool(nullptr, &truth), 0);
    EXPECT_LT(system_info_get_value_string(90, nullptr), 0);
    EXPECT_TRUE(truth);
    EXPECT_EQ(number, 5);
    EXPECT_EQ(text, nullptr);
    EXPECT_THAT(log(), HasSubstr("television.ini"));
}

TEST_F(PortTest, AProfileOfOnesOwnIsNamedByItsPath)
{
    const std::filesystem::path file = folder_ / "own.ini";
    write_file(file, "[custom-bool]\nyes=true\nodd=maybe\n[custom-int]\nmany=12\nodd=1x\n");
    use(file);
    EXPECT_TRUE(flag("yes"));
    int number = 5;
    bool truth = true;
    EXPECT_EQ(system_info_get_custom_int("many", &number), 0);
    EXPECT_EQ(number, 12);
    EXPECT_LT(system_info_get_custom_int("odd", &number), 0);
    EXPECT_LT(system_info_get_custom_bool("odd", &truth), 0);
    EXPECT_THAT(log(), HasSubstr(file.string()));
}

TEST_F(PortTest, AnUnknownProductIsNamed)
{
    use("toaster");
    int number = 5;
    EXPECT_LT(system_info_get_platform_int("com.corvane/feature/screen.width", &number), 0);
    EXPECT_THAT(log(), HasSubstr("\"toaster\" is no product profile"));
    EXPECT_THROW(vesk_port::choose_product("toaster"), PortError);
}

TEST_F(PortTest, AChoiceIsKeptAndTheVariableGoesBeforeIt)
{
    EXPECT_EQ(vesk_port::chosen_product(), "television");
    vesk_port::choose_product("board");
    EXPECT_EQ(vesk_port::chosen_product(), "board");
    EXPECT_TRUE(flag("com.corvane/featureconf/quince_support"));
    use("monitor");
    EXPECT_FALSE(flag("com.corvane/featureconf/quince_support"));
}
