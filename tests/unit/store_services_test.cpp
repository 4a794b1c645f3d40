#include <type_traits>

#include "store_fixture.h"
#include "vesk/device_services.h"

static_assert(std::is_same_v<decltype(services), const char *[5]>);

using ServiceTest = StoreTest;

TEST_F(ServiceTest, AreToldByTheLinksAlone)
{
    const struct {
        uint32_t state;
        unsigned int mask;
    } cases[] = {{0x0, 0}, {0x1, 0}, {0x2, 1}, {0x3, 1}, {0x4, 2}, {0x5, 2}, {0x6, 3}, {0x7, 3}, {0x8, 4},
                 {0x9, 4}, {0xA, 5}, {0xB, 5}, {0xC, 6}, {0xD, 6}, {0xE, 7}, {0xF, 7}, {0xF0, 0}};
    for (const auto &sample : cases) {
        const DeviceEntry entry = row("x", sample.state);
        EXPECT_EQ(vesk_get_service(&entry), sample.mask) << sample.state;
    }
}

TEST_F(ServiceTest, AreWrittenToTheLog)
{
    const DeviceEntry entry = row("x", 0xF);
    vesk_get_service(&entry);
    EXPECT_THAT(fake::platform().chronicle, testing::ElementsAre("I Returned 0x7"));
    EXPECT_EQ(fake::platform().log[0].file, "device_services.cpp");
    EXPECT_EQ(fake::platform().log[0].function, "vesk_get_service");
}
