#include <cstdlib>
#include <memory>

#include "store_fixture.h"
#include "vesk/product_name.h"

using testing::ElementsAre;

namespace {

constexpr const char *kIdentifier = "com.corvane/featureconf/product.device_sid";
constexpr const char *kFirVersion = "com.corvane/featureconf/the_fir_version";
constexpr const char *kProjector = "com.corvane/featureconf/projector_feature_support";
constexpr const char *kDaphne = "com.corvane/featureconf/product.daphne_feature_support";

constexpr const char *kReadIdentifier = "system_info_get_custom_string(\"com.corvane/featureconf/product.device_sid\")";
constexpr const char *kReadFir = "system_info_get_custom_int(\"com.corvane/featureconf/the_fir_version\")";
constexpr const char *kReadProjector =
    "system_info_get_custom_bool(\"com.corvane/featureconf/projector_feature_support\")";
constexpr const char *kReadDaphne =
    "system_info_get_custom_bool(\"com.corvane/featureconf/product.daphne_feature_support\")";
constexpr const char *kNotReady = "I com.corvane/featureconf/product.device_sid = [NOT_READY]";
constexpr const char *kNoIdentifier =
    "E system_info_get_custom_string() fails for 'com.corvane/featureconf/product.device_sid'";

class ProductNameTest : public StoreTest {
protected:
    ProductNameTest()
    {
        fake::platform().custom_texts[kIdentifier] = {"NOT_READY"};
        fake::platform().custom_ints[kFirVersion] = {0};
        fake::platform().custom_bools[kProjector] = {false};
        fake::platform().custom_bools[kDaphne] = {false};
    }

    /* The name, or "null". */
    static std::string name()
    {
        const std::unique_ptr<char, decltype(&free)> text(get_product_name(), free);
        return text ? text.get() : "null";
    }
};

} // namespace

TEST_F(ProductNameTest, IsTheTranslationOfTheIdentifiersKey)
{
    for (const char *key : {"REP.DEVICE.ALDER", "REP.DEVICE.BIRCH", "REP.DEVICE.CEDAR", "REP.DEVICE.DAPHNE",
                            "REP.DEVICE.ELDER", "REP.DEVICE.FIR", "REP.DEVICE.GORSE", "REP.DEVICE.HAZEL"}) {
        fake::platform().chronicle.clear();
        fake::platform().custom_texts[kIdentifier] = {key};
        EXPECT_EQ(name(), std::string("<") + key + ">");
        EXPECT_THAT(fake::platform().chronicle,
                    ElementsAre(kReadIdentifier,
                                std::string("I com.corvane/featureconf/product.device_sid = [") + key + "]",
                                std::string("I Product: [<") + key + ">]",
                                std::string("I Return product type = [<") + key + ">]"));
    }
}

TEST_F(ProductNameTest, OfAnUnknownIdentifierIsTheFirstKeys)
{
    for (const char *identifier : {"XYZ", "", "REP.DEVICE", "REP.DEVICE.GORSE2", "rep.device.gorse", "not_ready"}) {
        fake::platform().custom_texts[kIdentifier] = {identifier};
        EXPECT_EQ(name(), "<REP.DEVICE.ALDER>") << identifier;
    }
    EXPECT_THAT(fake::lines(), testing::Contains("I com.corvane/featureconf/product.device_sid = [XYZ]"));
}

TEST_F(ProductNameTest, WithoutAnIdentifierIsTheTelevision)
{
    fake::platform().custom_texts[kIdentifier] = {"REP.DEVICE.GORSE", -2};
    EXPECT_EQ(name(), "<SID_TV>");
    fake::platform().custom_texts[kIdentifier] = {nullptr};
    EXPECT_EQ(name(), "<SID_TV>");
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre(kReadIdentifier, kNoIdentifier, kReadIdentifier, kNoIdentifier));
    EXPECT_EQ(fake::platform().log[0].function, "get_product_name");
}

TEST_F(ProductNameTest, OfAModularDisplayFollowsItsVersion)
{
    const struct {
        int version;
        const char *name;
    } cases[] = {{1, "COM_SID_FIR"}, {2, "TV_SID_CDR_CAOCT_NON_CEDAR"}};
    for (const auto &sample : cases) {
        fake::platform().chronicle.clear();
        fake::platform().custom_ints[kFirVersion] = {sample.version};
        EXPECT_EQ(name(), std::string("<") + sample.name + ">");
        EXPECT_THAT(fake::platform().chronicle,
                    ElementsAre(kReadIdentifier, kNotReady, kReadFir,
                                "I fir_version: [" + std::to_string(sample.version) + "]",
                                std::string("I Return product type = [<") + sample.name + ">]"));
    }
}

TEST_F(ProductNameTest, OfAProjector)
{
    fake::platform().custom_bools[kProjector] = {true};
    EXPECT_EQ(name(), "<PJT_SID_TV>");
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre(kReadIdentifier, kNotReady, kReadFir, "I fir_version: [0]", kReadProjector,
                            "I projector_support: [1]", "I Return product type = [<PJT_SID_TV>]"));
}

TEST_F(ProductNameTest, OfAMonitor)
{
    fake::platform().custom_bools[kDaphne] = {true};
    EXPECT_EQ(name(), "<COM_SID_DPHN_CAAUG_MNT>");
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre(kReadIdentifier, kNotReady, kReadFir, "I fir_version: [0]", kReadProjector,
                            "I projector_support: [0]", kReadDaphne, "I daphne_support: [1]",
                            "I Return product type = [<COM_SID_DPHN_CAAUG_MNT>]"));
}

TEST_F(ProductNameTest, OfAPlainProductIsTheTelevision)
{
    for (const int version : {-1, 0, 3}) {
        fake::platform().custom_ints[kFirVersion] = {version};
        EXPECT_EQ(name(), "<SID_TV>") << version;
    }
    EXPECT_THAT(fake::lines(), testing::Contains("I daphne_support: [0]").Times(3));
}

TEST_F(ProductNameTest, TakesFactsThatCannotBeReadForAbsent)
{
    fake::platform().custom_ints[kFirVersion] = {1, -11};
    fake::platform().custom_bools[kProjector] = {true, -12};
    fake::platform().custom_bools[kDaphne] = {true, -13};
    EXPECT_EQ(name(), "<SID_TV>");
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre(kReadIdentifier, kNotReady, kReadFir, "E system_info_get_custom_int() returned error[-11]",
                            kReadProjector, "E system_info_get_custom_bool() returned error[-12]", kReadDaphne,
                            "E system_info_get_custom_bool() returned error[-13]",
                            "I Return product type = [<SID_TV>]"));
}

TEST_F(ProductNameTest, LogNamesTheStepThatAsked)
{
    const auto functions = [] {
        std::vector<std::string> names;
        for (const auto &line : fake::platform().log)
            names.push_back(line.function);
        return names;
    };
    name();
    EXPECT_THAT(functions(),
                ElementsAre("get_product_name", "fir_tv_version", "is_projector_tv", "is_daphne", "get_product_name"));

    fake::reset();
    fake::platform().custom_texts[kIdentifier] = {"NOT_READY"};
    name();
    EXPECT_THAT(functions(),
                ElementsAre("get_product_name", "fir_tv_version", "is_projector_tv", "is_daphne", "get_product_name"));

    fake::reset();
    fake::platform().custom_texts[kIdentifier] = {"REP.DEVICE.FIR"};
    name();
    EXPECT_THAT(functions(), ElementsAre("get_product_name", "get_product_name", "get_product_name"));
    EXPECT_EQ(fake::platform().log[0].file, "product_name.cpp");
}
