/* The functions that give a service's row its text and its picture, by themselves. */

#include <cstdlib>
#include <dlog.h>
#include <gmock/gmock.h>

#include "services_fixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

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

} // namespace
