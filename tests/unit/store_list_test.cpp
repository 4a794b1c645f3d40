#include <cstring>
#include <random>

#include "store_fixture.h"
#include "vesk/device_list.h"

using fake::device;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {

constexpr const char *kMac = "AA:BB:CC:DD:EE:FF";

/* Reads the devices and returns how many rows are in use. */
int read(std::vector<RdmDeviceInfo> devices)
{
    fake::platform().devices = std::move(devices);
    vesk_read_all();
    EXPECT_EQ(fake::platform().lists_out, 0) << "the service's list is given back";
    return vesk_count_rows();
}

std::vector<RdmDeviceInfo> household(size_t count)
{
    std::vector<RdmDeviceInfo> devices;
    for (size_t i = 0; i < count; ++i)
        devices.push_back(device("device " + std::to_string(i), "aa-bb-cc-dd-ee-ff"));
    return devices;
}

bool is_blank(const DeviceEntry &entry)
{
    return strcmp(entry.name, "") == 0 && strcmp(entry.bt_mac, "") == 0 && strcmp(entry.wifi_mac, "") == 0 &&
           strcmp(entry.p2p_mac, "") == 0 && entry.type == 0 && entry.icon == 0 && entry.state == 0;
}

std::vector<std::string> names_in_use()
{
    std::vector<std::string> names;
    for (int i = 0; i < vesk_count_rows(); ++i)
        names.emplace_back(gVeskTable[i].name);
    return names;
}

} // namespace

using ReadTest = StoreTest;

TEST_F(ReadTest, EmptyListIsNotGivenBack)
{
    EXPECT_EQ(read({}), 0);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("rdm_get_list()", "W \tRDM Count is 0", "W \tRDM List is empty",
                                                        "I Sorting is not needed.", "I [VESK] Table is empty"));
}

TEST_F(ReadTest, MissingListWithACountIsTakenForEmpty)
{
    fake::platform().null_count = 3;
    EXPECT_EQ(read({}), 0);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("rdm_get_list()", "W \tRDM Count is 3", "W \tRDM List is empty",
                                                        "I Sorting is not needed.", "I [VESK] Table is empty"));
}

TEST_F(ReadTest, FailureLeavesAnEmptyTable)
{
    std::fill(std::begin(gVeskTable), std::end(gVeskTable), row("old", 0x1));
    fake::platform().results["rdm_get_list"] = {-5};
    EXPECT_EQ(read(household(2)), 0);
    EXPECT_TRUE(std::all_of(std::begin(gVeskTable), std::end(gVeskTable), is_blank));
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("rdm_get_list()", "E [VESK] RDM List read fail",
                                                        "I Sorting is not needed.", "I [VESK] Table is empty"));
}

TEST_F(ReadTest, PositiveResultIsAFailureToo)
{
    fake::platform().results["rdm_get_list"] = {1};
    EXPECT_EQ(read(household(2)), 0);
    EXPECT_EQ(fake::lines()[0], "E [VESK] RDM List read fail");
}

TEST_F(ReadTest, WritesEveryStepToTheLog)
{
    auto phone = device("Phone", "aa-bb-cc-dd-ee-ff", "", "11:22:33:44:55:66");
    phone.type = 1;
    phone.icon = 4;
    EXPECT_EQ(read({phone}), 1);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("rdm_get_list()", "W \tRDM Count is 1",
                            "I \tRDM >> Index[0] NAME[Phone] BT[aa-bb-cc-dd-ee-ff] WIFI[] P2P[11:22:33:44:55:66] "
                            "TYPE[1] ICON[4] Status[Allow]",
                            "rdm_free_list()", "I Sorting is not needed.",
                            "I \t" + std::string(102, '=') + " VESK Table [  1/ 50]",
                            "I \tNAME[               Phone] BT[AA:BB:CC:DD:EE:FF] WIFI[" + std::string(17, ' ') +
                                "] P2P[11:22:33:44:55:66] TYPE[1] ICON[4] STATE[13]",
                            "I \t" + std::string(118, '=') + " END"));
}

TEST_F(ReadTest, LogNamesItsSourcesAndFunctions)
{
    read({device("a", "", kMac, "", 1), device("b", kMac)});
    std::vector<std::string> places;
    for (const auto &line : fake::platform().log)
        places.push_back(line.file + ' ' + line.function);
    EXPECT_THAT(places, ElementsAre("device_list.cpp vesk_get_RDMList", "device_list.cpp vesk_get_RDMList",
                                    "device_list.cpp vesk_get_RDMList", "device_list.cpp vesk_sort_table",
                                    "device_list.cpp vesk_sort_table", "device_table.cpp vesk_print_table",
                                    "device_table.cpp vesk_print_item", "device_table.cpp vesk_print_item",
                                    "device_table.cpp vesk_print_table"));
}

TEST_F(ReadTest, EncodesValidAddressesAndPermission)
{
    const struct {
        const char *bluetooth, *wifi, *p2p;
        int status;
        uint32_t state;
    } cases[] = {
        {"aa-bb-cc-dd-ee-ff", "", "", 0, 0x9},
        {"aa-bb-cc-dd-ee-ff", "", "", 1, 0x8},
        {"", kMac, "", 0, 0x3},
        {"", kMac, "", 1, 0x2},
        {"", "", kMac, 0, 0x5},
        {"", "", kMac, 1, 0x4},
        {kMac, kMac, kMac, 0, 0xF},
        {kMac, kMac, kMac, 1, 0xE},
        {"", "", "", 0, 0x1},
        {"", "", "", 1, 0x0},
        {kMac, "00-00-00-00-00-00", "", 1, 0x8},
        {"short", kMac, "", 1, 0x2},
    };
    for (const auto &sample : cases) {
        read({device("x", sample.bluetooth, sample.wifi, sample.p2p, sample.status)});
        EXPECT_EQ(gVeskTable[0].state, sample.state)
            << sample.bluetooth << '|' << sample.wifi << '|' << sample.p2p << '|' << sample.status;
    }
}

TEST_F(ReadTest, CopiesWhatIsValidAndNothingElse)
{
    auto info = device("Kitchen", "aa-bb-cc-dd-ee-ff", "00:00:00:00:00:00", "not an address");
    info.type = -3;
    info.icon = 2000000000;
    EXPECT_EQ(read({info}), 1);
    EXPECT_STREQ(gVeskTable[0].name, "Kitchen");
    EXPECT_STREQ(gVeskTable[0].bt_mac, "AA:BB:CC:DD:EE:FF");
    EXPECT_STREQ(gVeskTable[0].wifi_mac, "");
    EXPECT_STREQ(gVeskTable[0].p2p_mac, "");
    EXPECT_EQ(gVeskTable[0].type, -3);
    EXPECT_EQ(gVeskTable[0].icon, 2000000000);
    EXPECT_EQ(gVeskTable[0].state, 0x9U);
}

TEST_F(ReadTest, EveryStatusButOneIsAllowedAndEveryStatusButZeroReadsDeny)
{
    const struct {
        int status;
        const char *in_the_log;
        bool allowed;
    } cases[] = {{0, "Status[Allow]", true}, {1, "Status[Deny]", false}, {2, "Status[Deny]", true},
                 {3, "Status[Deny]", true},  {4, "Status[Deny]", true},  {-1, "Status[Deny]", true}};
    for (const auto &sample : cases) {
        fake::reset();
        read({device("x", kMac, "", "", sample.status)});
        EXPECT_EQ((gVeskTable[0].state & 0x1) != 0, sample.allowed) << sample.status;
        EXPECT_THAT(fake::lines(), Contains(testing::EndsWith(sample.in_the_log))) << sample.status;
    }
}

TEST_F(ReadTest, NormalisesTheServicesArrayInPlace)
{
    read({device("x", "aa-bb-cc-dd-ee-ff", "short", "0a:0b:0c:0d:0e:0f")});
    ASSERT_EQ(fake::platform().given_back.size(), 1U);
    const RdmDeviceInfo &info = fake::platform().given_back[0];
    EXPECT_STREQ(info.bt_mac, "AA:BB:CC:DD:EE:FF");
    EXPECT_STREQ(info.wifi_mac, "");
    EXPECT_STREQ(info.p2p_mac, "0A:0B:0C:0D:0E:0F");
    EXPECT_STREQ(info.name, "x");
}

TEST_F(ReadTest, ChecksTheAddressesInTheOrderOfTheRecord)
{
    read({device("x", "bluetooth", "wifi", "p2p")});
    const auto lines = fake::lines();
    EXPECT_EQ(std::vector<std::string>(lines.begin() + 1, lines.begin() + 5),
              (std::vector<std::string>{
                  "I \tRDM >> Index[0] NAME[x] BT[bluetooth] WIFI[wifi] P2P[p2p] TYPE[0] ICON[0] Status[Allow]",
                  "W Incorrect mac address form >> [        bluetooth]",
                  "W Incorrect mac address form >> [             wifi]",
                  "W Incorrect mac address form >> [              p2p]"}));
}

TEST_F(ReadTest, NeverReadsPastAField)
{
    auto info = device(std::string(128, 'n'), std::string(18, 'b'), std::string(18, 'w'), std::string(18, 'p'));
    read({info});
    EXPECT_THAT(fake::lines(), AllOf(Contains("I \tRDM >> Index[0] NAME[" + std::string(128, 'n') + "] BT[" +
                                              std::string(18, 'b') + "] WIFI[" + std::string(18, 'w') + "] P2P[" +
                                              std::string(18, 'p') + "] TYPE[0] ICON[0] Status[Allow]"),
                                     Contains("W Incorrect mac address form >> [" + std::string(18, 'b') + "]"),
                                     Contains("W Incorrect mac address form >> [" + std::string(18, 'w') + "]"),
                                     Contains("W Incorrect mac address form >> [" + std::string(18, 'p') + "]")));
    EXPECT_EQ(gVeskTable[0].name, std::string(128, 'n')) << "whole, and terminated by the row's last byte";
    EXPECT_EQ(gVeskTable[0].state, 0x1U);
}

TEST_F(ReadTest, KeepsTheFirstFifty)
{
    for (const size_t count : {49U, 50U, 51U, 1000U}) {
        SCOPED_TRACE(count);
        fake::reset();
        const int kept = static_cast<int>(std::min<size_t>(count, 50));
        EXPECT_EQ(read(household(count)), kept);
        EXPECT_STREQ(gVeskTable[kept - 1].name, ("device " + std::to_string(kept - 1)).c_str());
        EXPECT_EQ(fake::lines()[0], "W \tRDM Count is " + std::to_string(count));
        EXPECT_EQ(testing::Matches(Contains("E \tTABLE FULL"))(fake::lines()), count >= 50);
        EXPECT_THAT(fake::calls(), ElementsAre("rdm_get_list()", "rdm_free_list()"));
    }
}

TEST_F(ReadTest, LeavesDevicesBeyondTheTableAlone)
{
    read(household(51));
    EXPECT_STREQ(fake::platform().given_back[49].bt_mac, "AA:BB:CC:DD:EE:FF");
    EXPECT_STREQ(fake::platform().given_back[50].bt_mac, "aa-bb-cc-dd-ee-ff");
    EXPECT_THAT(fake::lines(), Not(Contains(testing::HasSubstr("Index[50]"))));
}

TEST_F(ReadTest, ReplacesWhatWasThere)
{
    read(household(50));
    EXPECT_EQ(read({device("only", kMac)}), 1);
    EXPECT_TRUE(std::all_of(std::begin(gVeskTable) + 1, std::end(gVeskTable), is_blank));
}

TEST_F(ReadTest, DeniedDeviceWithoutAddressHidesWhatFollows)
{
    EXPECT_EQ(read({device("first", kMac), device("denied", "", "", "", 1), device("behind", kMac)}), 1);
    EXPECT_STREQ(gVeskTable[2].name, "behind") << "stored all the same";
    EXPECT_THAT(fake::lines(), Contains("I Sorting is not needed."));
}

TEST_F(ReadTest, DoesNotCount)
{
    read(household(3));
    EXPECT_EQ(device_count, -1);
}

TEST_F(ReadTest, PutsAllowedDevicesFirst)
{
    read({device("Denied-1", kMac, "", "", 1), device("Allowed-1", kMac), device("Denied-2", kMac, "", "", 1),
          device("Allowed-2", kMac)});
    EXPECT_THAT(names_in_use(), ElementsAre("Allowed-1", "Allowed-2", "Denied-2", "Denied-1"));
}

using SortTest = StoreTest;

TEST_F(SortTest, IsNotNeededBelowTwoRows)
{
    vesk_sort_table();
    gVeskTable[0] = row("one", 0x8);
    gVeskTable[2] = row("not in use", 0x9);
    vesk_sort_table();
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("I Sorting is not needed.", "I Sorting is not needed."));
    EXPECT_STREQ(gVeskTable[0].name, "one");
}

TEST_F(SortTest, LogsEachExchange)
{
    gVeskTable[0] = row("Denied-1", 0x8);
    gVeskTable[1] = row("Allowed-1", 0x9);
    gVeskTable[2] = row("Denied-2", 0xE);
    gVeskTable[3] = row("Allowed-2", 0xF);
    vesk_sort_table();
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("I Sorting table...", "I Swapped [Denied-1:0x8] [Allowed-1:0x9]",
                            "I Swapped [Denied-1:0x8] [Allowed-2:0xf]"));
    EXPECT_THAT(names_in_use(), ElementsAre("Allowed-1", "Allowed-2", "Denied-2", "Denied-1"));
}

TEST_F(SortTest, LeavesASortedTableAlone)
{
    gVeskTable[0] = row("Allowed", 0x1);
    gVeskTable[1] = row("Denied", 0x2);
    vesk_sort_table();
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("I Sorting table..."));
}

TEST_F(SortTest, ExchangesWholeRows)
{
    gVeskTable[0] = row("Denied", 0x2);
    strcpy(gVeskTable[0].wifi_mac, "11:11:11:11:11:11");
    gVeskTable[0].type = 1;
    gVeskTable[1] = row("Allowed", 0x9);
    strcpy(gVeskTable[1].bt_mac, "22:22:22:22:22:22");
    gVeskTable[1].icon = 2;
    const DeviceEntry denied = gVeskTable[0];
    const DeviceEntry allowed = gVeskTable[1];
    vesk_sort_table();
    EXPECT_EQ(memcmp(&gVeskTable[0], &allowed, sizeof allowed), 0);
    EXPECT_EQ(memcmp(&gVeskTable[1], &denied, sizeof denied), 0);
}

TEST_F(SortTest, TakesTheFirstAllowedRowForEachDeniedOne)
{
    std::mt19937 random(20240229);
    for (int round = 0; round < 400; ++round) {
        fake::reset();
        const int count = std::uniform_int_distribution(2, 50)(random);
        std::vector<DeviceEntry> model;
        for (int i = 0; i < count; ++i) {
            const uint32_t state = std::uniform_int_distribution(1U, 0xFU)(random);
            model.push_back(row("row " + std::to_string(i), state));
        }
        std::copy(model.begin(), model.end(), std::begin(gVeskTable));
        std::fill(std::begin(gVeskTable) + count, std::end(gVeskTable), DeviceEntry{});

        const auto is_allowed = [](const DeviceEntry &entry) { return entry.state % 2 == 1; };
        std::vector<std::string> names;
        std::vector<std::string> lines = {"I Sorting table..."};
        for (auto denied = model.begin(); denied != model.end(); ++denied) {
            const auto allowed = is_allowed(*denied) ? model.end() : std::find_if(denied, model.end(), is_allowed);
            if (allowed != model.end()) {
                char line[300];
                snprintf(line, sizeof line, "I Swapped [%s:0x%x] [%s:0x%x]", denied->name, denied->state, allowed->name,
                         allowed->state);
                lines.emplace_back(line);
                std::iter_swap(denied, allowed);
            }
            names.emplace_back(denied->name);
        }
        vesk_sort_table();
        ASSERT_EQ(names_in_use(), names) << "round " << round;
        ASSERT_EQ(fake::platform().chronicle, lines) << "round " << round;
    }
}
