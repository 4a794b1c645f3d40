#include <cstring>

#include "store_fixture.h"
#include "vesk/device_actions.h"

using testing::ElementsAre;

namespace {

constexpr const char *kBluetooth = "BB:BB:BB:BB:BB:BB";
constexpr const char *kWifi = "11:11:11:11:11:11";
constexpr const char *kP2p = "22:22:22:22:22:22";

DeviceEntry addressed(const char *bluetooth, const char *wifi, const char *p2p)
{
    DeviceEntry entry = row("x", 0x1);
    strcpy(entry.bt_mac, bluetooth);
    strcpy(entry.wifi_mac, wifi);
    strcpy(entry.p2p_mac, p2p);
    return entry;
}

} // namespace

using ActionTest = StoreTest;

/* An action, what it asks of the service and what it leaves in the log when that went well. */
struct Action {
    const char *name;
    int code;
    const char *call;
    const char *marker;
};

void PrintTo(const Action &action, std::ostream *stream)
{
    *stream << action.code;
}

struct MarkedActionTest : StoreTest, testing::WithParamInterface<Action> {};

TEST_P(MarkedActionTest, AsksTheServiceAndLeavesItsMarker)
{
    const DeviceEntry all = addressed(kBluetooth, kWifi, kP2p);
    vesk_set_device(&all, GetParam().code);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("I bBTmac[BB:BB:BB:BB:BB:BB] bP2Pmac[22:22:22:22:22:22] bWIFImac[11:11:11:11:11:11]",
                            GetParam().call, GetParam().marker));
    EXPECT_EQ(fake::platform().log[0].function, "vesk_set_device");
    EXPECT_EQ(fake::platform().log[1].file, "device_actions.cpp");

    fake::reset();
    const DeviceEntry one = addressed(kBluetooth, "", "");
    vesk_set_device(&one, GetParam().code);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("I bBTmac[BB:BB:BB:BB:BB:BB] bP2Pmac[] bWIFImac[]", GetParam().call, GetParam().marker));
}

INSTANTIATE_TEST_SUITE_P(
    , MarkedActionTest,
    testing::Values(Action{"Allow", 0, "rdm_set_status(\"BB:BB:BB:BB:BB:BB\", 1, 0)", "I [VESKAUTOTC][ALLOW]"},
                    Action{"Deny", 1, "rdm_set_status(\"BB:BB:BB:BB:BB:BB\", 1, 1)", "I [VESKAUTOTC][DENY]"},
                    Action{"Delete", 3, "rdm_remove_device(\"BB:BB:BB:BB:BB:BB\", 1)", "I [VESKAUTOTC][DELETE]"}),
    [](const auto &sample) { return sample.param.name; });

TEST_F(ActionTest, FailureOfTheServiceLeavesNoMarker)
{
    const DeviceEntry entry = addressed("", kWifi, "");
    const char *addresses = "I bBTmac[] bP2Pmac[] bWIFImac[11:11:11:11:11:11]";
    for (const int result : {-3, 4}) {
        fake::reset();
        fake::platform().results = {{"rdm_set_status", {result}}, {"rdm_remove_device", {result}}};
        for (const int action : {0, 1, 3})
            vesk_set_device(&entry, action);
        EXPECT_THAT(fake::platform().chronicle, ElementsAre(addresses, "rdm_set_status(\"11:11:11:11:11:11\", 2, 0)",
                                                            addresses, "rdm_set_status(\"11:11:11:11:11:11\", 2, 1)",
                                                            addresses, "rdm_remove_device(\"11:11:11:11:11:11\", 2)"));
    }
}

TEST_F(ActionTest, AddressesADeviceByItsFirstValidAddress)
{
    const struct {
        DeviceEntry entry;
        const char *call;
    } cases[] = {
        {addressed(kBluetooth, kWifi, kP2p), "rdm_remove_device(\"BB:BB:BB:BB:BB:BB\", 1)"},
        {addressed(kBluetooth, "", kP2p), "rdm_remove_device(\"BB:BB:BB:BB:BB:BB\", 1)"},
        {addressed("", kWifi, kP2p), "rdm_remove_device(\"11:11:11:11:11:11\", 2)"},
        {addressed("00:00:00:00:00:00", kWifi, kP2p), "rdm_remove_device(\"11:11:11:11:11:11\", 2)"},
        {addressed("", "", kP2p), "rdm_remove_device(\"22:22:22:22:22:22\", 3)"},
        {addressed("short", "00:00:00:00:00:00", kP2p), "rdm_remove_device(\"22:22:22:22:22:22\", 3)"},
    };
    for (const auto &sample : cases) {
        fake::reset();
        vesk_set_device(&sample.entry, 3);
        EXPECT_THAT(fake::calls(), ElementsAre(sample.call));
    }
}

TEST_F(ActionTest, AddressOutlivesTheRowDuringTheCall)
{
    gVeskTable[0] = addressed("", kWifi, "");
    fake::platform().during["rdm_set_status"] = [] { gVeskTable[0] = DeviceEntry{}; };
    vesk_set_device(&gVeskTable[0], 0);
    EXPECT_THAT(fake::calls(), ElementsAre("rdm_set_status(\"11:11:11:11:11:11\", 2, 0)"));
}

TEST_F(ActionTest, MissingRowIsRefused)
{
    vesk_set_device(nullptr, 0);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("W [VESK] TargetDevice pointer is null"));
}

TEST_F(ActionTest, ImpossibleStateIsRefusedBeforeTheAddressesAreLookedAt)
{
    DeviceEntry entry = addressed("", "", "");
    for (const uint32_t state : {256U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        entry.state = state;
        vesk_set_device(&entry, 0);
    }
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("W [VESK] TargetDevice is invalid 256", "W [VESK] TargetDevice is invalid 2147483647",
                            "W [VESK] TargetDevice is invalid -1"));
}

TEST_F(ActionTest, StateUpTo255IsAccepted)
{
    DeviceEntry entry = addressed(kBluetooth, "", "");
    entry.state = 255;
    vesk_set_device(&entry, 0);
    EXPECT_THAT(fake::calls(), testing::SizeIs(1));
}

TEST_F(ActionTest, RowWithoutAValidAddressIsRefusedWhateverTheAction)
{
    const DeviceEntry entry = addressed("", "00:00:00:00:00:00", "short");
    for (const int action : {0, 1, 2, 3, -1})
        vesk_set_device(&entry, action);
    const char *refusal = "E [VESK] Not valid device";
    EXPECT_THAT(fake::platform().chronicle, ElementsAre(refusal, refusal, refusal, refusal, refusal));
}

TEST_F(ActionTest, UnknownActionIsRefusedAfterTheAddresses)
{
    const DeviceEntry entry = addressed("", "", kP2p);
    for (const int action : {2, 4, -1}) {
        fake::reset();
        vesk_set_device(&entry, action);
        EXPECT_THAT(fake::platform().chronicle, ElementsAre("I bBTmac[] bP2Pmac[22:22:22:22:22:22] bWIFImac[]",
                                                            "E [VESK] Invalid user input for set device"));
    }
}

TEST_F(ActionTest, TableStaysAsItIs)
{
    gVeskTable[0] = addressed(kBluetooth, "", "");
    const DeviceEntry before = gVeskTable[0];
    for (const int action : {0, 1, 3})
        vesk_set_device(&gVeskTable[0], action);
    EXPECT_EQ(memcmp(&gVeskTable[0], &before, sizeof before), 0);
}
