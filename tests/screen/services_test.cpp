/* The services in the detail popup: which rows a user sees, whatever was open before. */

#include <cstdlib>
#include <dlog.h>
#include <fstream>
#include <gmock/gmock.h>
#include <random>
#include <system_info.h>

#include "desktop/port_failures.h"
#include "details.h"
#include "spy.h"
#include "ug/detail_popup.h"

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr const char *kConnect = "r_icon_service_s_corvaneconnect_w.webp";
constexpr const char *kMirroring = "r_icon_service_s_castelo_w.webp";
constexpr const char *kContent = "r_icon_service_s_pct_w.webp";
constexpr const char *kSound = "r_icon_service_s_sound_w.webp";

/* What the list has asked its getters, in order: "text" or "picture", and the part. */
std::vector<std::string> requests;

/* What the television was asked about itself, in order: "word" for the product's word, "region" for its region. */
std::vector<std::string> facts()
{
    std::vector<std::string> asked;
    for (const spy::Call &call : spy::journal()) {
        if (call.function == "system_info_get_custom_string" &&
            call.text == "com.corvane/featureconf/product.device_sid")
            asked.emplace_back("word");
        if (call.function == "system_info_get_value_string")
            asked.emplace_back(call.text == "90" ? "region" : "another value");
    }
    return asked;
}

char *noted_text(void *data, Evas_Object *list, const char *part)
{
    requests.push_back("text " + std::string(part));
    return _service_item_label_get(data, list, part);
}

Evas_Object *noted_picture(void *data, Evas_Object *list, const char *part)
{
    requests.push_back("picture " + std::string(part));
    return _service_item_content_get(data, list, part);
}

void note_requests(Elm_Genlist_Item_Class &row_class)
{
    if (row_class.func.text_get != _service_item_label_get)
        return;
    row_class.func.text_get = noted_text;
    row_class.func.content_get = noted_picture;
}

struct Row {
    std::string text;
    std::string picture;
    bool operator==(const Row &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Row &row)
{
    return out << '"' << row.text << "\" " << row.picture;
}

std::string sound_text(int type, bool mirroring)
{
    return std::string(mirroring ? "Sound mirroring / " : "") +
           (type == 1 ? "Play TV sound on the phone" : "Play TV sound on the tablet");
}

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

    std::vector<Row> opened(unsigned int mask, int type)
    {
        std::vector<Row> rows;
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

struct ServicesTest : DetailsTest {
    ServicesTest()
    {
        requests.clear();
        spy::overrides().on_append = note_requests;
    }

    std::vector<Row> shown()
    {
        const auto texts = service_texts();
        const auto pictures = service_pictures();
        std::vector<Row> rows;
        for (size_t i = 0; i < texts.size(); ++i)
            rows.push_back({texts[i], pictures[i]});
        return rows;
    }

    /* Without the way through the drop-down. */
    std::vector<Row> look_at(int index)
    {
        selected_item_index = index;
        show_detail_popup(app());
        panel().settle();
        const auto rows = shown();
        _close_button_cb(app(), nullptr, nullptr);
        panel().settle();
        return rows;
    }

    static unsigned int mask_of(int index) { return vesk_get_service(&gVeskTable[index]); }

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
        std::vector<Row> rows;
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
    EXPECT_EQ(look_at(row_of("Washer")), (std::vector<Row>{{"Play mobile content on the TV", kContent}}));
    EXPECT_EQ(look_at(row_of("Phone")), (std::vector<Row>{{sound_text(1, true), kSound}}));
    EXPECT_EQ(look_at(row_of("Phone")), (std::vector<Row>{{"Castelo", kMirroring}}));

    EXPECT_EQ(look_at(row_of("Washer")), (std::vector<Row>{{"Play mobile content on the TV", kContent}}));
    forget();
    EXPECT_EQ(look_at(row_of("Dryer")), (std::vector<Row>{{"UNKNOWN", kSound}}));
    EXPECT_EQ(look_at(row_of("Dryer")), (std::vector<Row>{{"Play mobile content on the TV", kContent}}));
    EXPECT_GE(logged("Invalid service type = [4]"), 1);
}

TEST_F(ServicesTest, ATurnWhileTheDetailsAreOpenBeginsWithWhatIsLeft)
{
    register_devices({with_services("Washer", 5, 3), with_services("Phone", 5, 1)});
    open();
    open_details("Phone");
    turn("portrait");
    EXPECT_EQ(shown(), (std::vector<Row>{{"Play mobile content on the TV", kContent}, {sound_text(1, true), kSound}}));
    turn("landscape");
    press("XF86Back");
    open_details("Washer");
    turn("portrait");
    EXPECT_EQ(shown(), (std::vector<Row>{{"UNKNOWN", kSound}}));
}

/* ---- How often the toolkit asks ---- */

TEST_F(ServicesTest, EachRowIsMeasuredOnceAndShownOnce)
{
    register_devices({with_services("Two", 5, 1), with_services("None", 0, 1), with_services("One", 7, 1)});
    open();
    for (const char *name : {"Two", "None", "One"}) {
        SCOPED_TRACE(name);
        requests.clear();
        selected_item_index = row_of(name);
        show_detail_popup(app());
        const auto measured = requests;
        const int rows = get_service_count();
        EXPECT_EQ(std::ranges::count(measured, "text elm.text"), rows) << "while the rows are appended";
        EXPECT_EQ(std::ranges::count(measured, "picture elm.swallow.icon"), rows);
        EXPECT_EQ(measured.size(), 2U * static_cast<unsigned>(rows)) << "nothing else is asked for";
        panel().settle();
        const std::vector<std::string> shown(requests.begin() + static_cast<long>(measured.size()), requests.end());
        EXPECT_EQ(shown, measured) << "and once more to be shown";
        _close_button_cb(app(), nullptr, nullptr);
        panel().settle();
    }
}

TEST_F(ServicesTest, KeysAndFocusAskForNothingMore)
{
    register_devices({with_services("Two", 5, 1)});
    open();
    open_details(0);
    const auto asked = requests.size();
    press({"Left", "Down", "Up", "Return", "Right"});
    EXPECT_EQ(requests.size(), asked);
    EXPECT_EQ(shown(), (std::vector<Row>{{"Play mobile content on the TV", kContent}, {sound_text(1, true), kSound}}));
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
              (std::vector<Row>{{"Play mobile content on the TV", kContent}, {sound_text(1, true), kSound}}));
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
    EXPECT_EQ(look_at(0), (std::vector<Row>{{"Corvane Connect", kConnect}})) << "and the same picture";
    vesk_port::set_failures("system_info_get_value_string=-1");
    EXPECT_EQ(look_at(0), (std::vector<Row>{{"Domovo", kConnect}})) << "an unreadable region is not that one";
}

TEST_F(ServicesTest, TheTextsNameTheProduct)
{
    use_product("projector");
    register_devices({with_services("Two", 5, 2)});
    open();
    EXPECT_EQ(look_at(0), (std::vector<Row>{{"Play mobile content on the projector", kContent},
                                            {"Sound mirroring / Play projector sound on the tablet", kSound}}));
}

/* ---- The getters by themselves ---- */

struct GetterTest : ServicesTest {
    void select(unsigned int mask, int type)
    {
        gVeskTable[0].state = kStateAllowed | (mask << 1);
        gVeskTable[0].type = type;
        selected_item_index = 0;
    }

    std::string text(const char *part = "elm.text", bool data = true)
    {
        char *made = _service_item_label_get(data ? &gVeskTable[1] : nullptr, nullptr, part);
        std::string result = made;
        free(made);
        return result;
    }

    std::string picture(const char *part = "elm.swallow.icon")
    {
        Evas_Object *icon = _service_item_content_get(nullptr, app()->base, part);
        EXPECT_TRUE(evas_object_visible_get(icon));
        const char *file = nullptr;
        elm_image_file_get(icon, &file, nullptr);
        const std::string name = file ? std::filesystem::path(file).filename().string() : "";
        evas_object_del(icon);
        return name;
    }
};

TEST_F(GetterTest, AnotherPartOrNoDataGivesNoTextAndMovesNothing)
{
    open();
    select(5, 1);
    EXPECT_EQ(text("elm.text.1"), "");
    EXPECT_EQ(text("elm.tex"), "");
    EXPECT_EQ(text("elm.text", false), "");
    EXPECT_EQ(logged("[VESKAUTOTC][VIEWDETAIL]"), 3) << "marked whatever the part";
    EXPECT_EQ(text(), "Play mobile content on the TV");
    EXPECT_EQ(text(), sound_text(1, true));
}

TEST_F(GetterTest, AnotherPartGivesAnEmptyPictureAndMovesNothing)
{
    open();
    select(5, 1);
    EXPECT_EQ(picture("elm.swallow.end"), "");
    EXPECT_EQ(picture(), kContent);
    EXPECT_EQ(picture(), kSound);
}

TEST_F(GetterTest, TheMarkerIsWrittenWhileThereIsAService)
{
    open();
    select(0, 1);
    EXPECT_EQ(text(), "UNKNOWN");
    EXPECT_EQ(logged("[VESKAUTOTC][VIEWDETAIL]"), 0);
    EXPECT_EQ(logged("Invalid service type = [0]"), 1);
    select(2, 1);
    EXPECT_EQ(text(), "Castelo");
    EXPECT_EQ(logged("[VESKAUTOTC][VIEWDETAIL]"), 1);
}

TEST_F(GetterTest, AnUnknownServiceIsLoggedAndEnds)
{
    open();
    select(4, 3);
    forget();
    EXPECT_EQ(text(), "UNKNOWN");
    EXPECT_EQ(logged("Invalid service type = [4]"), 1);
    select(2, 3);
    EXPECT_EQ(text(), "Castelo") << "begun anew";
    select(0, 1);
    EXPECT_EQ(picture(), kMirroring);
    EXPECT_EQ(logged("Invalid service type = [0]"), 1);
    for (const LogLine &line : log()) {
        if (line.message.starts_with("Invalid")) {
            EXPECT_EQ(line.priority, DLOG_ERROR);
        }
    }
}

TEST_F(GetterTest, PicturesDoNotAskForTheKindOfDevice)
{
    open();
    select(4, 3);
    EXPECT_EQ(picture(), kSound);
}

TEST_F(GetterTest, TheTwoGettersDoNotInfluenceEachOther)
{
    open();
    select(5, 1);
    EXPECT_EQ(text(), "Play mobile content on the TV");
    EXPECT_EQ(picture(), kContent);
    EXPECT_EQ(picture(), kSound);
    EXPECT_EQ(text(), sound_text(1, true));
    EXPECT_EQ(text(), "Play mobile content on the TV");
    EXPECT_EQ(picture(), kContent);
}

TEST_F(GetterTest, AWholeSetLeftOverIsTheHomeConnectServiceOfAnyDevice)
{
    open();
    select(7, 1);
    text("elm.text.1");
    select(1, 3);
    EXPECT_EQ(text(), "Domovo");
    EXPECT_EQ(text(), "Play mobile content on the TV");
}

/* ---- Long texts ---- */

struct LongTextTest : GetterTest {
    static void say_at_length(const char *id) { spy::overrides().texts[id].assign(400, 'x'); }
};

TEST_F(LongTextTest, OfMobileContentAreCut)
{
    open();
    say_at_length("PJT_SID_PLAY_MOBILE_CONTENT_TV");
    select(1, 3);
    ASSERT_EQ(get_service_count(), 1);
    EXPECT_EQ(services[0], std::string(299, 'x'));
    EXPECT_EQ(text(), std::string(255, 'x'));
}

TEST_F(LongTextTest, OfSoundAreCutWithWhatStandsBefore)
{
    open();
    const std::string lead = "Sound mirroring / ";
    for (const int type : {1, 2}) {
        say_at_length(type == 1 ? "PJT_SID_REGISTER_DEVICE_PLAY_TV_SOUND_ON_PHONE"
                                : "PJT_SID_REGISTER_DEVICE_PLAY_TV_SOUND_ON_TABLET");
        select(4, type);
        ASSERT_EQ(get_service_count(), 1);
        EXPECT_EQ(services[0], lead + std::string(299 - lead.size(), 'x'));
        EXPECT_EQ(text(), lead + std::string(255 - lead.size(), 'x'));
    }
}

TEST_F(LongTextTest, OfOtherServicesAreCutInARowOnly)
{
    open();
    const struct {
        unsigned int mask;
        const char *id;
    } cases[] = {{2, "COM_SID_NON_CASTELO"}, {7, "TV_SID_DOMOVO"}};
    for (const auto &sample : cases) {
        say_at_length(sample.id);
        select(sample.mask, 1);
        ASSERT_EQ(get_service_count(), 1);
        EXPECT_EQ(services[0], spy::overrides().texts[sample.id]) << "the catalogue's own text";
        EXPECT_EQ(text(), std::string(255, 'x'));
    }
}

/* ---- Facts of the television ---- */

TEST_F(GetterTest, EachTextAsksForTheWordAndThenTheRegionWhateverItNeeds)
{
    open();
    for (unsigned int mask = 0; mask < 8; ++mask) {
        for (const char *part : {"elm.text", "elm.text.1"}) {
            select(mask, 1);
            spy::forget();
            text(part);
            EXPECT_THAT(facts(), ElementsAre("word", "region")) << mask << " " << part;
        }
        select(0, 1);
        while (text() != "UNKNOWN") {
        }
    }
    spy::forget();
    text("elm.text", false);
    EXPECT_THAT(facts(), ElementsAre("word", "region")) << "without data too";
}

TEST_F(GetterTest, EachCountAsksForBothOnce)
{
    open();
    for (unsigned int mask = 0; mask < 8; ++mask) {
        select(mask, 1);
        spy::forget();
        get_service_count();
        EXPECT_THAT(facts(), testing::UnorderedElementsAre("word", "region")) << mask;
    }
}

TEST_F(GetterTest, PicturesAskForNeither)
{
    open();
    select(7, 1);
    spy::forget();
    picture();
    EXPECT_THAT(facts(), IsEmpty());
}

/* ---- Rows ---- */

TEST_F(ServicesTest, RowsHaveTheStyleAndTheLayoutOfTheTelevision)
{
    register_devices({with_services("Two", 5)});
    open();
    spy::forget();
    open_details(0);
    ASSERT_EQ(elm_genlist_items_count(app()->service_genlist), 2U);
    for (int i = 0; i < 2; ++i) {
        Elm_Object_Item *item = row(app()->service_genlist, i);
        EXPECT_STREQ(elm_genlist_item_item_class_get(item)->item_style, "C_TextItem_WhiteSingleline02");
        EXPECT_THAT(spy::layouts_of(item), AllOf(Not(IsEmpty()), Each("theme,singleline,icon,2text|"))) << i;
    }
}

TEST_F(ServicesTest, ChoosingTakesTheLookOffTheSelectedAndTheFocusedRow)
{
    register_devices({with_services("Two", 5)});
    open();
    open_details(0);
    press("Left");
    Evas_Object *list = app()->service_genlist;
    Elm_Object_Item *first = row(list, 0);
    Elm_Object_Item *second = row(list, 1);
    const std::string unselected = "elm,state,unselected|elm";
    spy::forget();
    press("Return");
    EXPECT_EQ(std::ranges::count(spy::signals_to(first), unselected), 2) << "selected and focused";
    EXPECT_EQ(std::ranges::count(spy::signals_to(second), unselected), 0);

    ASSERT_EQ(elm_genlist_selected_item_get(list), first);
    press("Down");
    ASSERT_EQ(elm_object_focused_item_get(list), second);
    spy::forget();
    _service_genlist_cb(app(), list, nullptr);
    EXPECT_EQ(std::ranges::count(spy::signals_to(first), unselected), 1) << "selected";
    EXPECT_EQ(std::ranges::count(spy::signals_to(second), unselected), 1) << "focused";
}

TEST_F(ServicesTest, PicturesExist)
{
    register_devices({with_services("All", 7), with_services("Sound", 6), with_services("Content", 1)});
    open();
    for (int row = 0; row < device_count; ++row) {
        open_details(row);
        for (Elm_Object_Item *item = elm_genlist_first_item_get(app()->service_genlist); item;
             item = elm_genlist_item_next_get(item)) {
            const char *file = nullptr;
            Evas_Object *icon = elm_object_item_part_content_get(item, "elm.swallow.icon");
            elm_image_file_get(icon, &file, nullptr);
            EXPECT_TRUE(std::filesystem::exists(file)) << file;
            const Eina_Rectangle place = area(icon);
            EXPECT_GE(place.w, 40);
            EXPECT_GE(place.h, 40);
        }
        press("XF86Back");
    }
}

TEST_F(ServicesTest, FocusTurnsThePictureBlackAndBackToWhite)
{
    register_devices({with_services("Two", 5)});
    open();
    open_details(0);
    EXPECT_EQ(focused(), app()->detail_close_button);
    Evas_Object *icon = elm_object_item_part_content_get(row(app()->service_genlist, 0), "elm.swallow.icon");
    const auto colour = [icon] {
        std::vector<int> rgba(4);
        evas_object_color_get(icon, &rgba[0], &rgba[1], &rgba[2], &rgba[3]);
        return rgba;
    };
    forget();
    press("Left");
    ASSERT_EQ(focused(), app()->service_genlist);
    EXPECT_EQ(focused_row(), 0);
    EXPECT_THAT(colour(), ElementsAre(0, 0, 0, 255));
    EXPECT_EQ(logged("genlist item focused: Play mobile content on the TV\n"), 1);
    EXPECT_THAT(messages(), testing::Contains(testing::MatchesRegex("Item  .0x.* has focus, change icon .0x.* color")));
    forget();
    press("Down");
    EXPECT_EQ(focused_row(), 1);
    EXPECT_THAT(colour(), ElementsAre(255, 255, 255, 255));
    EXPECT_EQ(logged("genlist item unfocused: Play mobile content on the TV\n"), 1);
    EXPECT_THAT(messages(), testing::Contains(testing::MatchesRegex("Item\t.0x.* has focus, change icon .0x.* color")));
    press("Right");
    EXPECT_EQ(focused(), app()->detail_close_button);
}

TEST_F(ServicesTest, ARowWithoutAPictureTakesTheFocusToo)
{
    register_devices({with_services("One", 1)});
    open();
    open_details(0);
    Elm_Object_Item *item = row(app()->service_genlist, 0);
    evas_object_del(elm_object_item_part_content_unset(item, "elm.swallow.icon"));
    forget();
    _service_item_focus_cb(nullptr, app()->service_genlist, item);
    _service_item_unfocus_cb(nullptr, app()->service_genlist, item);
    EXPECT_EQ(logged("genlist item focused: Play mobile content on the TV\n"), 1);
    EXPECT_EQ(logged("genlist item unfocused: Play mobile content on the TV\n"), 1);
}

TEST_F(ServicesTest, ChoosingARowKeepsItSelectedWithoutTheLook)
{
    register_devices({with_services("Two", 5)});
    open();
    open_details(0);
    press("Left");
    forget();
    press("Return");
    const auto entered = std::ranges::count_if(
        log(), [](const LogLine &line) { return line.function == "_service_genlist_cb" && line.message == "Enter"; });
    EXPECT_EQ(entered, 1);
    EXPECT_EQ(elm_genlist_selected_item_get(app()->service_genlist), row(app()->service_genlist, 0));
    EXPECT_NE(app()->detail_popup, nullptr);
    EXPECT_EQ(focused(), app()->service_genlist);
    forget();
    press("Return");
    EXPECT_GE(logged("Enter"), 1) << "a selected row answers again";
}

TEST_F(ServicesTest, RealizedRowsAreLogged)
{
    register_devices({with_services("Two", 5)});
    open();
    open_details(0);
    int entered = 0;
    for (const LogLine &line : log())
        entered += line.function == "genlistRealizedCbDetail" && line.message == "Enter";
    EXPECT_EQ(entered, 2);
    forget();
    genlistRealizedCbDetail(app(), app()->service_genlist, nullptr);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ServicesTest, WithoutARowClassThePopupIsThereWithoutRows)
{
    register_devices({with_services("Two", 5)});
    open();
    selected_item_index = 0;
    spy::overrides().no_row_classes = true;
    show_detail_popup(app());
    spy::overrides().no_row_classes = false;
    panel().settle();
    EXPECT_EQ(logged("Cannot create genlist item class"), 1);
    EXPECT_EQ(elm_genlist_items_count(app()->service_genlist), 0U);
    EXPECT_FALSE(evas_object_visible_get(app()->service_genlist));
    EXPECT_EQ(elm_genlist_select_mode_get(app()->service_genlist), ELM_OBJECT_SELECT_MODE_DEFAULT);
    EXPECT_TRUE(evas_object_visible_get(app()->detail_popup));
    EXPECT_EQ(focused(), app()->detail_close_button);
    press("Return");
    EXPECT_EQ(app()->detail_popup, nullptr);
    EXPECT_EQ(focused(), app()->genlist);
}

} // namespace
