#include <cstddef>
#include <cstring>
#include <type_traits>

#include "store_fixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

/* Read before any test has run. */
static const int32_t kCountAfterLoading = device_count;

static_assert(std::is_same_v<decltype(gVeskTable), DeviceEntry[50]>);
static_assert(offsetof(DeviceEntry, name) == 0 && sizeof(DeviceEntry::name) == 129);
static_assert(offsetof(DeviceEntry, bt_mac) == 129 && sizeof(DeviceEntry::bt_mac) == 18);
static_assert(offsetof(DeviceEntry, wifi_mac) == 147 && sizeof(DeviceEntry::wifi_mac) == 18);
static_assert(offsetof(DeviceEntry, p2p_mac) == 165 && sizeof(DeviceEntry::p2p_mac) == 18);
static_assert(offsetof(DeviceEntry, type) == 184 && std::is_same_v<decltype(DeviceEntry::type), int32_t>);
static_assert(offsetof(DeviceEntry, icon) == 188 && std::is_same_v<decltype(DeviceEntry::icon), int32_t>);
static_assert(offsetof(DeviceEntry, state) == 192 && std::is_same_v<decltype(DeviceEntry::state), uint32_t>);

namespace {

/* A MAC field and what stands behind it in memory, which nobody may read or write. */
struct MacField {
    char mac[18];
    char behind[8];

    explicit MacField(const std::string &text) : mac{}, behind{"BEHIND!"}
    {
        memcpy(mac, text.data(), std::min(text.size(), sizeof mac));
    }
};

std::string converted(const std::string &text)
{
    MacField field(text);
    vesk_convert_capital_mac(field.mac);
    EXPECT_STREQ(field.behind, "BEHIND!");
    EXPECT_EQ(strnlen(field.mac, sizeof field.mac), field.mac[0] ? 17U : 0U);
    return {field.mac, strnlen(field.mac, sizeof field.mac)};
}

} // namespace

using TableTest = StoreTest;

TEST_F(TableTest, IsNotCountedBeforeTheFirstQuestion)
{
    EXPECT_EQ(kCountAfterLoading, -1);
}

TEST_F(TableTest, IsHandedOutWithTheCountOfRowsInUse)
{
    gVeskTable[0] = row("a", 0x1);
    gVeskTable[1] = row("b", 0x8);
    DeviceEntry *table = nullptr;
    EXPECT_EQ(vesk_get_table(&table), 2);
    EXPECT_EQ(table, gVeskTable);
    EXPECT_EQ(device_count, 2);
    EXPECT_THAT(fake::platform().chronicle, IsEmpty());
}

TEST_F(TableTest, CountStaysUntilItIsAskedForAgain)
{
    DeviceEntry *table = nullptr;
    vesk_get_table(&table);
    gVeskTable[0] = row("new", 0x1);
    EXPECT_EQ(device_count, 0);
    EXPECT_EQ(vesk_get_table(&table), 1);
    EXPECT_EQ(device_count, 1);
}

TEST_F(TableTest, EndsAtTheFirstRowWithoutState)
{
    gVeskTable[0] = row("shown", 0x9);
    gVeskTable[1] = row("denied, no address", 0);
    gVeskTable[2] = row("hidden", 0xF);
    DeviceEntry *table = nullptr;
    EXPECT_EQ(vesk_get_table(&table), 1);

    gVeskTable[0] = row("denied, no address", 0);
    EXPECT_EQ(vesk_get_table(&table), 0);
    EXPECT_EQ(device_count, 0);
}

TEST_F(TableTest, HoldsFiftyRows)
{
    std::fill(std::begin(gVeskTable), std::end(gVeskTable), row("full", 0x1));
    DeviceEntry *table = nullptr;
    EXPECT_EQ(vesk_get_table(&table), 50);
}

TEST_F(TableTest, DumpOfAnEmptyTableIsOneLine)
{
    vesk_print_table();
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("I [VESK] Table is empty"));
}

TEST_F(TableTest, DumpShowsEveryRowInUseBetweenRules)
{
    gVeskTable[0] = row("Phone", 0x9);
    strcpy(gVeskTable[0].bt_mac, "AA:BB:CC:DD:EE:FF");
    gVeskTable[0].type = 1;
    gVeskTable[0].icon = -2;
    gVeskTable[1] = row("A name that is longer than its column", 0xF);
    gVeskTable[2] = row("hidden", 0);
    gVeskTable[3] = row("behind", 0x1);
    vesk_print_table();
    const std::string no_mac(17, ' ');
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("I \t" + std::string(102, '=') + " VESK Table [  2/ 50]",
                            "I \tNAME[               Phone] BT[AA:BB:CC:DD:EE:FF] WIFI[" + no_mac + "] P2P[" + no_mac +
                                "] TYPE[1] ICON[-2] STATE[ 9]",
                            "I \tNAME[A name that is longer than its column] BT[" + no_mac + "] WIFI[" + no_mac +
                                "] P2P[" + no_mac + "] TYPE[0] ICON[0] STATE[15]",
                            "I \t" + std::string(118, '=') + " END"));
    EXPECT_EQ(device_count, -1) << "the dump is no count";
}

TEST_F(TableTest, DumpOfAFullTableNamesFiftyOfFifty)
{
    std::fill(std::begin(gVeskTable), std::end(gVeskTable), row("full", 0x1));
    vesk_print_table();
    ASSERT_EQ(fake::lines().size(), 52U);
    EXPECT_EQ(fake::lines().front(), "I \t" + std::string(102, '=') + " VESK Table [ 50/ 50]");
}

TEST_F(TableTest, LogNamesItsSourceAndFunction)
{
    gVeskTable[0] = row("Phone", 0x1);
    vesk_print_table();
    const auto &log = fake::platform().log;
    ASSERT_EQ(log.size(), 3U);
    EXPECT_EQ(log[0].file, "device_table.cpp");
    EXPECT_EQ(log[0].function, "vesk_print_table");
    EXPECT_EQ(log[1].function, "vesk_print_item");
    EXPECT_GT(log[0].line, 0);
    EXPECT_LT(log[0].line, log[2].line);
}

using MacTest = StoreTest;

TEST_F(MacTest, IsValidBySeventeenCharactersThatAreNotAllZero)
{
    for (const char *mac : {"AA:BB:CC:DD:EE:FF", "aa-bb-cc-dd-ee-ff", "ZZ:ZZ:ZZ:ZZ:ZZ:ZZ", "00-00-00-00-00-00",
                            "                 ", "00:00:00:00:00:01"})
        EXPECT_TRUE(vesk_check_valid_mac(mac)) << mac;
    for (const char *mac :
         {"", "A", "AA:BB:CC:DD:EE:F", "AA:BB:CC:DD:EE:FF0", "00:00:00:00:00:00", "a text far longer than any address"})
        EXPECT_FALSE(vesk_check_valid_mac(mac)) << mac;
}

TEST_F(MacTest, OfEighteenCharactersWithoutATerminatorIsNotValid)
{
    EXPECT_FALSE(vesk_check_valid_mac(MacField("AA:BB:CC:DD:EE:FFF").mac));
}

TEST_F(MacTest, BecomesUpperCaseWithColons)
{
    EXPECT_EQ(converted("aa-bb-cc-dd-ee-ff"), "AA:BB:CC:DD:EE:FF");
    EXPECT_EQ(converted("AA:BB:CC:DD:EE:FF"), "AA:BB:CC:DD:EE:FF");
    EXPECT_EQ(converted("00-00-00-00-00-00"), "00:00:00:00:00:00");
    EXPECT_THAT(fake::platform().chronicle, IsEmpty());
}

TEST_F(MacTest, ConversionTouchesLettersAndDashesOnly)
{
    EXPECT_EQ(converted("zz:zz:zz:zz:zz:zz"), "ZZ:ZZ:ZZ:ZZ:ZZ:ZZ");
    EXPECT_EQ(converted("az-`{@[_ 09.,\xE4\xFF"
                        "gQ"),
              "AZ:`{@[_ 09.,\xE4\xFF"
              "GQ");
}

TEST_F(MacTest, OfAllZeroWithDashesIsValidOnlyUntilItIsConverted)
{
    MacField field("00-00-00-00-00-00");
    EXPECT_TRUE(vesk_check_valid_mac(field.mac));
    vesk_convert_capital_mac(field.mac);
    EXPECT_FALSE(vesk_check_valid_mac(field.mac));
}

TEST_F(MacTest, OfAnotherLengthIsLoggedAndCleared)
{
    EXPECT_EQ(converted("AA:BB:CC:DD:EE:F"), "");
    EXPECT_EQ(converted("x"), "");
    EXPECT_EQ(converted("AA:BB:CC:DD:EE:FFF"), "") << "fills the field, without a terminator";
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("W Incorrect mac address form >> [ AA:BB:CC:DD:EE:F]",
                                                        "W Incorrect mac address form >> [                x]",
                                                        "W Incorrect mac address form >> [AA:BB:CC:DD:EE:FFF]"));
    EXPECT_EQ(fake::platform().log[0].function, "vesk_convert_capital_mac");
}

TEST_F(MacTest, ThatIsClearedLeavesNoByteBehind)
{
    for (const char *text : {"short", "AA:BB:CC:DD:EE:FFF"}) {
        MacField field(text);
        vesk_convert_capital_mac(field.mac);
        EXPECT_TRUE(std::all_of(std::begin(field.mac), std::end(field.mac), [](char c) { return c == '\0'; })) << text;
    }
}

TEST_F(MacTest, ThatIsEmptyIsClearedSilently)
{
    MacField field("");
    memcpy(field.mac + 1, "rubbish", 7);
    vesk_convert_capital_mac(field.mac);
    EXPECT_TRUE(std::all_of(std::begin(field.mac), std::end(field.mac), [](char c) { return c == '\0'; }));
    EXPECT_THAT(fake::platform().chronicle, IsEmpty());
}
