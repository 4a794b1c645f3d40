/* The services in the detail popup: which rows a user sees, whatever was open before. */

#include <fstream>
#include <gmock/gmock.h>
#include <random>

#include "desktop/port_failures.h"
#include "services_fixture.h"

namespace {

/* The rows by the rule of one request of each getter per row, each getter with a memory of its own. */
class Model {
public:
    explicit Model(bool mirroring) : mirroring_(mirroring) {}

    static int count(unsigned int mask, int type)
    {
        if (mask == 7)
            return 1;
        return ((mask & 3) != 0 ? 1 : 0) + ((mask & 4) != 0 && type <= 2 ? 1 : 0);
    }

    std::vector<ServiceRow> opened(unsigned int mask, int type)
    {
        std::vector<ServiceRow> rows;
        for (int i = 0; i < count(mask, type); ++i)
            rows.push_back({text(mask, type), picture(mask)});
        return rows;
    }

private:
    std::string text(unsigned int mask, int type)
    {
        if (texts_ == 0)
            texts_ = mask;
        switch (step(texts_, type <= 2)) {
        case 7:
            return "Domovo";
        case 2:
            return "Castelo";
        case 1:
            return "Play mobile content on the TV";
        case 4:
            return sound_text(type, mirroring_);
        default:
            return "UNKNOWN";
        }
    }

    std::string picture(unsigned int mask)
    {
        if (pictures_ == 0)
            pictures_ = mask;
        switch (step(pictures_, true)) {
        case 7:
            return kConnect;
        case 1:
            return kContent;
        case 4:
            return kSound;
        default:
            return kMirroring;
        }
    }

    /* The service that is due, and 0 where there is none; takes it off. */
    static unsigned int step(unsigned int &left, bool sound_counts)
    {
        if (left == 7) {
            left = 0;
            return 7;
        }
        if (left & 2) {
            left &= 4;
            return 2;
        }
        if (left & 1) {
            left &= 4;
            return 1;
        }
        const bool sound = (left & 4) && sound_counts;
        left = 0;
        return sound ? 4 : 0;
    }

    bool mirroring_;
    unsigned int texts_ = 0;
    unsigned int pictures_ = 0;
};

/* ---- The household ---- */

TEST_F(ServicesTest, TheHouseholdsDevicesTwiceInARow)
{
    open();
    Model model(true);
    for (int row = 0; row < device_count; ++row) {
        if (!(gVeskTable[row].state & kStateAllowed))
            continue;
        for (int time : {1, 2}) {
            open_details(row);
            EXPECT_EQ(shown(), model.opened(mask_of(row), gVeskTable[row].type))
                << gVeskTable[row].name << ", time " << time;
            press("XF86Back");
        }
    }
}

TEST_F(ServicesTest, TheHouseholdByNameFirstTime)
{
    const struct {
        const char *name;
        std::vector<ServiceRow> rows;
    } cases[] = {
        {"Nora's phone", {{"Domovo", kConnect}}},
        {"Kitchen tablet", {{"Play mobile content on the TV", kContent}, {sound_text(2, true), kSound}}},
        {"هاتف ليلى", {{"Castelo", kMirroring}, {sound_text(1, true), kSound}}},
        {"거실 태블릿", {{"Castelo", kMirroring}}},
        {"Evening headphones", {}},
        {"<b>Study</b> & Play", {{"Play mobile content on the TV", kContent}}},
        {"Washing machine", {{"Play mobile content on the TV", kContent}}},
        {"Soundbar", {{"Domovo", kConnect}}},
    };
    open();
    for (const auto &sample : cases) {
        open_details(sample.name);
        EXPECT_EQ(shown(), sample.rows) << sample.name;
        press("XF86Back");
    }
}

TEST_F(ServicesTest, TheHouseholdAllowedOneAfterAnotherInAnyOrder)
{
    open();
    auto devices = registered();
    for (auto &device : devices) {
        device.id = 0;
        device.status = 0;
    }
    close();
    register_devices(devices);
    open();
    ASSERT_EQ(device_count, 12);
    Model model(true);
    std::minstd_rand random(1);
    int before = -1;
    for (int i = 0; i < 40; ++i) {
        const int row = static_cast<int>(random() % 12);
        EXPECT_EQ(look_at(row), model.opened(mask_of(row), gVeskTable[row].type))
            << gVeskTable[row].name << " after " << (before < 0 ? "none" : gVeskTable[before].name);
        before = row;
    }
}

TEST_F(ServicesTest, ADeniedDeviceHasNoDetails)
{
    open();
    open_dropdown(row_of("Blue gamepad"));
    press("Down");
    EXPECT_EQ(focused_row(), 0) << "the third choice cannot be reached";
}

/* ---- Every kind of device ---- */

struct EveryKindTest : ServicesTest, testing::WithParamInterface<std::tuple<bool, int>> {
    void open()
    {
        const bool mirrored = std::get<bool>(GetParam());
        if (mirrored)
            use_product("television");
        else
            use_silent_television();
        register_all_kinds();
        ServicesTest::open();
        ASSERT_EQ(device_count, 24);
        ASSERT_EQ(b_sound_mirroring, mirrored);
    }

    /* A row for every mask and each of the types 1, 2 and 3. */
    void register_all_kinds()
    {
        std::vector<vesk_port::Device> devices;
        for (int type : {1, 2, 3}) {
            for (unsigned int mask = 0; mask < 8; ++mask)
                devices.push_back(with_services(std::to_string(mask) + " " + std::to_string(type), mask, type));
        }
        register_devices(devices);
    }

    void use_silent_television()
    {
        const auto profile = folder() / "silent.ini";
        std::ofstream(profile) << "[profile]\ntitle=Television that plays no sound elsewhere\n"
                                  "[custom-bool]\ncom.corvane/featureconf/sound_mirroring_supported=false\n"
                                  "[custom-string]\ncom.corvane/featureconf/product.device_sid=REP.DEVICE.ALDER\n";
        use_product(profile);
    }

    /* The rows of the devices with this case's mask: types 1, 2 and 3. */
    std::vector<int> own_rows() const
    {
        const int mask = std::get<int>(GetParam());
        return {mask, 8 + mask, 16 + mask};
    }

    void expect_right(Model &model, int row, const std::string &when)
    {
        EXPECT_EQ(look_at(row), model.opened(mask_of(row), gVeskTable[row].type)) << gVeskTable[row].name << when;
    }
};

TEST_P(EveryKindTest, ShowsWhatOneRequestPerRowGives)
{
    open();
    Model model(std::get<bool>(GetParam()));
    for (const int row : own_rows()) {
        for (const char *when : {", first time", ", second time", ", third time"})
            expect_right(model, row, when);
    }
}

TEST_P(EveryKindTest, ShowsTheSameBeforeAnyOther)
{
    open();
    Model model(std::get<bool>(GetParam()));
    for (const int before : own_rows()) {
        for (int mask = 0; mask < 8; ++mask) {
            expect_right(model, before, "");
            expect_right(model, (before + mask * 9) % device_count, std::string(" after ") + gVeskTable[before].name);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Mask, EveryKindTest, testing::Combine(testing::Bool(), testing::Range(0, 8)),
                         [](const auto &kind) {
                             return std::string(std::get<0>(kind.param) ? "mirrored_" : "silent_") +
                                    std::to_string(std::get<1>(kind.param));
                         });

/* ---- What is left over ---- */

TEST_F(ServicesTest, WhatWasNotShownBeginsTheNextOpening)
{
    register_devices({with_services("Washer", 5, 3), with_services("Phone", 2, 1), with_services("Dryer", 1, 3)});
    open();
    EXPECT_EQ(look_at(row_of("Washer")), (std::vector<ServiceRow>{{"Play mobile content on the TV", kContent}}));
    EXPECT_EQ(look_at(row_of("Phone")), (std::vector<ServiceRow>{{sound_text(1, true), kSound}}));
    EXPECT_EQ(look_at(row_of("Phone")), (std::vector<ServiceRow>{{"Castelo", kMirroring}}));

    EXPECT_EQ(look_at(row_of("Washer")), (std::vector<ServiceRow>{{"Play mobile content on the TV", kContent}}));
    forget();
    EXPECT_EQ(look_at(row_of("Dryer")), (std::vector<ServiceRow>{{"UNKNOWN", kSound}}));
    EXPECT_EQ(look_at(row_of("Dryer")), (std::vector<ServiceRow>{{"Play mobile content on the TV", kContent}}));
    EXPECT_GE(logged("Invalid service type = [4]"), 1);
}

TEST_F(ServicesTest, ATurnWhileTheDetailsAreOpenBeginsWithWhatIsLeft)
{
    register_devices({with_services("Washer", 5, 3), with_services("Phone", 5, 1)});
    open();
    open_details("Phone");
    turn("portrait");
    EXPECT_EQ(shown(),
              (std::vector<ServiceRow>{{"Play mobile content on the TV", kContent}, {sound_text(1, true), kSound}}));
    turn("landscape");
    press("XF86Back");
    open_details("Washer");
    turn("portrait");
    EXPECT_EQ(shown(), (std::vector<ServiceRow>{{"UNKNOWN", kSound}}));
}

/* ---- Counting ---- */

TEST_F(ServicesTest, CountsAndNamesTheServices)
{
    const std::string sound = sound_text(1, true);
    const struct {
        unsigned int mask;
        int type;
        std::vector<std::string> texts;
    } cases[] = {
        {0, 1, {}},
        {1, 1, {"Play mobile content on the TV"}},
        {2, 1, {"Castelo"}},
        {3, 1, {"Castelo"}},
        {4, 1, {sound}},
        {4, 2, {sound_text(2, true)}},
        {4, 3, {}},
        {5, 1, {"Play mobile content on the TV", sound}},
        {5, 3, {"Play mobile content on the TV"}},
        {6, 1, {"Castelo", sound}},
        {6, 21, {"Castelo"}},
        {7, 1, {"Domovo"}},
        {7, 3, {"Domovo"}},
    };
    open();
    for (const auto &sample : cases) {
        DeviceEntry &entry = gVeskTable[0];
        entry.state = kStateAllowed | (sample.mask << 1);
        entry.type = sample.type;
        selected_item_index = 0;
        forget();
        const int count = get_service_count();
        EXPECT_EQ(logged("service count:[" + std::to_string(count) + "]"), 1);
        EXPECT_EQ(std::vector<std::string>(services, services + count), sample.texts)
            << "mask " << sample.mask << " type " << sample.type;
    }
}

TEST_F(ServicesTest, EntriesBehindTheCountStayAsTheyWere)
{
    register_devices({with_services("Two", 6, 1), with_services("One", 7, 1)});
    open();
    selected_item_index = row_of("Two");
    ASSERT_EQ(get_service_count(), 2);
    const char *second = services[1];
    selected_item_index = row_of("One");
    ASSERT_EQ(get_service_count(), 1);
    EXPECT_EQ(services[1], second);
    EXPECT_STREQ(services[0], "Domovo");
}

TEST_F(ServicesTest, CountingDoesNotMoveWhatIsShownNext)
{
    register_devices({with_services("Two", 5, 1)});
    open();
    selected_item_index = 0;
    for (int i = 0; i < 3; ++i)
        get_service_count();
    EXPECT_EQ(look_at(0),
              (std::vector<ServiceRow>{{"Play mobile content on the TV", kContent}, {sound_text(1, true), kSound}}));
}

TEST_F(ServicesTest, WithoutASelectedDeviceThereIsNoServiceAndAWarning)
{
    open();
    for (int index : {-1, kTableCapacity}) {
        forget();
        selected_item_index = index;
        EXPECT_EQ(get_service_count(), 0);
        EXPECT_GE(logged("no device is selected"), 1);
    }
}

TEST_F(ServicesTest, TheHomeConnectServiceHasAnotherNameInOneRegion)
{
    use_product("television-chi");
    register_devices({with_services("All", 7, 1)});
    open();
    EXPECT_EQ(look_at(0), (std::vector<ServiceRow>{{"Corvane Connect", kConnect}})) << "and the same picture";
    vesk_port::set_failures("system_info_get_value_string=-1");
    EXPECT_EQ(look_at(0), (std::vector<ServiceRow>{{"Domovo", kConnect}})) << "an unreadable region is not that one";
}

TEST_F(ServicesTest, TheTextsNameTheProduct)
{
    use_product("projector");
    register_devices({with_services("Two", 5, 2)});
    open();
    EXPECT_EQ(look_at(0), (std::vector<ServiceRow>{{"Play mobile content on the projector", kContent},
                                                   {"Sound mirroring / Play projector sound on the tablet", kSound}}));
}

} // namespace
