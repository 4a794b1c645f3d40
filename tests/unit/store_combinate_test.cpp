#include <cstdlib>
#include <memory>

#include "combinate.h"
#include "store_fixture.h"

namespace {

std::string combined(const char *format, const char *word)
{
    const std::unique_ptr<char, decltype(&free)> text(combinate_string(format, word), free);
    return text.get();
}

} // namespace

using CombinateTest = StoreTest;

TEST_F(CombinateTest, PutsTheWordAtTheMarker)
{
    EXPECT_EQ(combined("Play on %1 now", "the projector"), "Play on the projector now");
    EXPECT_THAT(fake::platform().chronicle,
                testing::ElementsAre(R"(CombinateStrings(512, "Play on %1 now", "the projector", null, null, null))"));
}

TEST_F(CombinateTest, TakesTextsAsTheyAre)
{
    EXPECT_EQ(combined("", "word"), "");
    EXPECT_EQ(combined("no marker", "word"), "no marker");
    EXPECT_EQ(combined("%1%%s", "%d %1"), "%d %1%%s");
    EXPECT_EQ(combined("[%1]", nullptr), "[]");
}

TEST_F(CombinateTest, CutsAt511Bytes)
{
    for (const size_t length : {510U, 511U, 512U, 513U, 5000U}) {
        const std::string word(length, 'w');
        EXPECT_EQ(combined("%1", word.c_str()), word.substr(0, 511)) << length;
        EXPECT_EQ(combined(word.c_str(), nullptr), word.substr(0, 511)) << length;
    }
}

TEST_F(CombinateTest, BufferIsBlankBehindTheText)
{
    const std::unique_ptr<char, decltype(&free)> text(combinate_string("a", nullptr), free);
    EXPECT_EQ(std::string(text.get(), 512), 'a' + std::string(511, '\0'));
}

TEST(StartsWithTest, ComparesTheLengthOfThePrefix)
{
    EXPECT_TRUE(StartsWith("ar_AE", "ar_AE.UTF-8"));
    EXPECT_FALSE(StartsWith("ar_AE.UTF-8", "ar_AE"));
    EXPECT_TRUE(StartsWith("ar_AE", "ar_AE"));
    EXPECT_FALSE(StartsWith("ar_AE", "ar_SA.UTF-8"));
    EXPECT_FALSE(StartsWith("ar_AE", "AR_AE"));
    EXPECT_FALSE(StartsWith("AE", "ar_AE"));
}

TEST(StartsWithTest, EmptyPrefixBeginsEveryText)
{
    EXPECT_TRUE(StartsWith("", "text"));
    EXPECT_TRUE(StartsWith("", ""));
    EXPECT_FALSE(StartsWith("a", ""));
}
