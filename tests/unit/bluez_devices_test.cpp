/* Which devices BlueZ's objects become, and what may be done with them. */

#include <algorithm>
#include <functional>

#include "bluez_messages.h"
#include "desktop/port_error.h"

using testing::ElementsAre;
using testing::IsEmpty;
using vesk_port::BluezChoice;
using vesk_port::Device;
using vesk_port::PortError;

namespace {

struct BluezDevices : BluezCacheTest {
    BluezDevices() { objects({0, 1}); }

    static int code_of(const std::function<void()> &action)
    {
        try {
            action();
        } catch (const PortError &error) {
            return error.code();
        }
        return 0;
    }

    int code_of_change(int last)
    {
        return code_of([&] { cache.targets_to_change(address_of(last)); });
    }

    int code_of_loss(int last)
    {
        return code_of([&] { cache.targets_to_lose(address_of(last)); });
    }

    std::vector<std::string> targets(int last)
    {
        std::vector<std::string> paths;
        for (const auto &target : cache.targets_to_change(address_of(last)))
            paths.push_back(target.adapter + " " + target.path);
        return paths;
    }
};

struct OneAdapter : BluezDevices {};

} // namespace

TEST_F(BluezDevices, HaveWhatTheRecordOfADeviceNeeds)
{
    add(1, "'Paired': <true>, 'Alias': <'Phone'>, 'Class': <uint32 0x5a020c>");
    const Device phone = device(1);
    EXPECT_EQ(phone.name, "Phone");
    EXPECT_EQ(phone.bt_mac, "AA:BB:CC:DD:EE:01");
    EXPECT_EQ(phone.wifi_mac, "");
    EXPECT_EQ(phone.p2p_mac, "");
    EXPECT_EQ(phone.type, 1);
    EXPECT_EQ(phone.icon, 0);
    EXPECT_EQ(phone.status, 0);
}

TEST_F(BluezDevices, EachFlagAloneRegisters)
{
    int last = 0;
    for (const std::string flag : {"Paired", "Bonded", "Trusted", "Blocked"}) {
        add(++last, "'Alias': <'" + flag + "'>, '" + flag + "': <true>");
        EXPECT_EQ(device(last).name, flag);
        EXPECT_EQ(device(last).status, flag == "Blocked" ? 1 : 0);
        change(last, "'" + flag + "': <false>");
        EXPECT_EQ(device(last).name, "") << flag;
    }
    add(++last, "'Alias': <'Stranger'>, 'Connected': <true>, 'LegacyPairing': <true>");
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(BluezDevices, TakeTheAddressForANameWhereNoneIs)
{
    add(1, "'Paired': <true>");
    add(2, "'Paired': <true>, 'Alias': <''>");
    add(3, "'Paired': <true>, 'Alias': <uint32 7>");
    EXPECT_THAT(names(), ElementsAre("AA-BB-CC-DD-EE-01", "AA-BB-CC-DD-EE-02", "AA-BB-CC-DD-EE-03"));
}

TEST_F(BluezDevices, CutALongNameBetweenCharacters)
{
    pair(1, std::string(128, 'x'));
    EXPECT_EQ(device(1).name, std::string(128, 'x'));
    pair(2, std::string(127, 'x') + "\xc3\xa4");
    EXPECT_EQ(device(2).name, std::string(127, 'x'));
    pair(3, std::string(126, 'x') + "\xc3\xa4" + "z");
    EXPECT_EQ(device(3).name, std::string(126, 'x') + "\xc3\xa4");
}

TEST_F(BluezDevices, PassOverPropertiesThatAreMissingOrOfAWrongType)
{
    add(1, "'Paired': <'yes'>, 'Trusted': <true>, 'Blocked': <uint32 1>, 'Class': <'phone'>, 'Appearance': <uint32 "
           "64>, 'Icon': <true>, 'UUIDs': <'0000111f'>, 'Connected': <[true]>");
    const Device odd = device(1);
    EXPECT_EQ(odd.name, "AA-BB-CC-DD-EE-01");
    EXPECT_EQ(odd.status, 0);
    EXPECT_EQ(odd.type, 0);
    add_raw(device_path(2), "'Paired': <true>");
    add_raw(device_path(3), "'Paired': <true>, 'Address': <'no address'>");
    add_raw(device_path(4), "'Paired': <true>, 'Address': <uint32 4>");
    EXPECT_EQ(cache.list().size(), 1U);
    /* Without the property, the adapter is the object above. */
    add_raw(device_path(5), "'Paired': <true>, 'Address': <'aa:bb:cc:dd:ee:05'>");
    EXPECT_THAT(targets(5), ElementsAre(adapter_path() + " " + device_path(5)));
}

TEST_F(BluezDevices, MessagesOfAnotherFormChangeNothing)
{
    pair(1, "Phone");
    GVariant *odd = g_variant_ref_sink(g_variant_new("(s)", "odd"));
    cache.managed_objects(odd, now);
    cache.interfaces_added(odd, now);
    cache.interfaces_removed(odd, now);
    cache.properties_changed(device_path(1), odd);
    cache.managed_objects(nullptr, now);
    g_variant_unref(odd);
    pass(Time(20000));
    EXPECT_THAT(names(), ElementsAre("Phone"));
}

TEST_F(BluezDevices, OfTwoAdaptersAreOneRow)
{
    pair(1, "Headset", 0);
    pair(1, "Headset", 1);
    EXPECT_THAT(names(), ElementsAre("Headset"));
    EXPECT_THAT(targets(1),
                ElementsAre(adapter_path(0) + " " + device_path(1, 0), adapter_path(1) + " " + device_path(1, 1)));
    change(1, "'Blocked': <true>", 0);
    EXPECT_EQ(device(1).status, 0) << "one adapter still lets it in";
    change(1, "'Blocked': <true>", 1);
    EXPECT_EQ(device(1).status, 1);
}

TEST_F(BluezDevices, AStrangerToOneAdapterIsTheOtherOnes)
{
    pair(1, "Headset", 0);
    add(1, "'Alias': <'Headset'>", 1);
    EXPECT_THAT(targets(1), ElementsAre(adapter_path(0) + " " + device_path(1, 0)));
}

TEST_F(BluezDevices, FoundTogetherStandByConnectionThenByNameAsPeopleCount)
{
    pair(1, "phone 10");
    pair(2, "Phone 9");
    add(3, "'Paired': <true>, 'Alias': <'Zebra'>, 'Connected': <true>");
    pair(4, "apple");
    EXPECT_THAT(names(), ElementsAre("Zebra", "apple", "Phone 9", "phone 10"));
    pair(5, "A late one");
    change(4, "'Connected': <true>, 'Alias': <'zz'>");
    EXPECT_THAT(names(), ElementsAre("Zebra", "zz", "Phone 9", "phone 10", "A late one"));
}

TEST_F(BluezDevices, KeepTheirIdByAddress)
{
    pair(1, "First");
    pair(2, "Second");
    const int64_t id = device(1).id;
    EXPECT_NE(id, device(2).id);
    remove(1);
    pass(Time(600));
    pair(3, "Third");
    EXPECT_NE(device(3).id, id);
    pair(1, "First again");
    EXPECT_EQ(device(1).id, id);
    EXPECT_THAT(names(), ElementsAre("Second", "Third", "First again"));
}

TEST_F(BluezDevices, AreListedUpToWhatAPanelShows)
{
    for (int last = 1; last <= 60; ++last)
        pair(last, "Phone " + std::to_string(last));
    ASSERT_EQ(cache.list().size(), 50U);
    EXPECT_EQ(cache.list().front().name, "Phone 1");
    EXPECT_EQ(cache.list().back().name, "Phone 50");
    for (int last = 1; last <= 50; ++last)
        cache.hide(device_path(last), true);
    ASSERT_EQ(cache.list().size(), 10U);
    EXPECT_EQ(cache.list().front().name, "Phone 51");
}

TEST_F(BluezDevices, AnUnknownAddressIsRefused)
{
    pair(1, "Phone");
    add(2, "'Alias': <'Stranger'>");
    EXPECT_EQ(code_of_change(1), 0);
    EXPECT_EQ(code_of_change(2), -ENODEV);
    EXPECT_EQ(code_of_change(3), -ENODEV);
    EXPECT_EQ(code_of([&] { cache.targets_to_change("nonsense"); }), -ENODEV);
    EXPECT_EQ(code_of([&] { cache.targets_to_change("aa-bb-cc-dd-ee-01"); }), 0);
}

TEST_F(BluezDevices, TheLastConnectedInputDeviceStays)
{
    add(1, "'Paired': <true>, 'Connected': <true>, 'Icon': <'input-keyboard'>");
    add(2, "'Paired': <true>, 'Connected': <true>, 'Class': <uint32 0x50c>"); /* a remote control */
    add(3, "'Paired': <true>, 'Connected': <true>, 'Icon': <'phone'>");
    EXPECT_EQ(code_of_loss(1), 0);
    EXPECT_EQ(code_of_loss(2), 0);
    EXPECT_EQ(code_of_loss(3), 0);
    change(1, "'Connected': <false>");
    EXPECT_EQ(code_of_loss(2), -EPERM);
    EXPECT_EQ(code_of_change(2), 0) << "it may be allowed";
    EXPECT_EQ(code_of_loss(1), 0);
    change(1, "'Connected': <true>");
    cache.blocked(device_path(1), true);
    EXPECT_EQ(code_of_loss(2), -EPERM) << "the other was denied";
    cache.blocked(device_path(1), false);
    cache.hide(device_path(1), true);
    EXPECT_EQ(code_of_loss(2), -EPERM) << "the other is being removed";
}

TEST_F(BluezDevices, AChosenAdapterShowsItsDevicesAlone)
{
    for (const std::string choice : {"hci1", "00:00:00:00:00:01", "00-00-00-00-00-01"}) {
        cache = vesk_port::BluezCache(BluezChoice{.adapter = choice, .keep = {}});
        objects({0, 1});
        pair(1, "Of the first", 0);
        pair(2, "Of the second", 1);
        pair(3, "Of both", 0);
        pair(3, "Of both", 1);
        EXPECT_THAT(names(), ElementsAre("Of both", "Of the second")) << choice;
        EXPECT_THAT(targets(3), ElementsAre(adapter_path(1) + " " + device_path(3, 1)));
    }
}

TEST_F(BluezDevices, KeptOnesAreNotListedButCountAsInput)
{
    cache = vesk_port::BluezCache(BluezChoice{.adapter = {}, .keep = {address_of(1)}});
    objects({0});
    add(1, "'Paired': <true>, 'Connected': <true>, 'Alias': <'Remote'>, 'Icon': <'input-keyboard'>");
    add(2, "'Paired': <true>, 'Connected': <true>, 'Alias': <'Keyboard'>, 'Icon': <'input-keyboard'>");
    EXPECT_THAT(names(), ElementsAre("Keyboard"));
    EXPECT_EQ(code_of_loss(1), -ENODEV);
    EXPECT_EQ(code_of_loss(2), 0);
}

TEST(BluezChoiceTest, ReadsTheEnvironment)
{
    setenv("VESK_BLUEZ_ADAPTER", "hci7", 1);
    setenv("VESK_BLUEZ_KEEP", "aa:bb:cc:dd:ee:01, AA-BB-CC-DD-EE-02,", 1);
    const BluezChoice choice = BluezChoice::from_environment();
    EXPECT_EQ(choice.adapter, "hci7");
    EXPECT_THAT(choice.keep, ElementsAre("AA:BB:CC:DD:EE:01", "AA:BB:CC:DD:EE:02"));
    setenv("VESK_BLUEZ_KEEP", "AA:BB:CC:DD:EE:01,my remote", 1);
    try {
        BluezChoice::from_environment();
        ADD_FAILURE() << "an address that is none was taken";
    } catch (const PortError &error) {
        EXPECT_EQ(error.code(), -EINVAL);
        EXPECT_THAT(error.what(), testing::HasSubstr("\"my\""));
    }
    unsetenv("VESK_BLUEZ_ADAPTER");
    unsetenv("VESK_BLUEZ_KEEP");
    EXPECT_THAT(BluezChoice::from_environment().keep, IsEmpty());
}
