/* Texts with arguments, and texts on one line. */

#include <cstring>

#include "desktop/text.h"
#include "port_fixture.h"
#include "string_util.h"

using vesk_port::escaped;

namespace {

std::string combined(const char *format, const char *first = nullptr, const char *second = nullptr,
                     const char *third = nullptr, const char *fourth = nullptr)
{
    char buffer[64];
    std::memset(buffer, 'x', sizeof buffer);
    const int length = CStringUtil::CombinateStrings(buffer, sizeof buffer, format, first, second, third, fourth);
    EXPECT_EQ(static_cast<size_t>(length), std::strlen(buffer));
    return buffer;
}

} // namespace

TEST_F(PortTest, MarkersAreReplacedInAnyOrderAndNumber)
{
    EXPECT_EQ(combined("%2 before %1, %1 again, %4%3", "a", "b", "c", "d"), "b before a, a again, dc");
    EXPECT_EQ(combined("no marker", "a"), "no marker");
}

TEST_F(PortTest, AMissingArgumentIsAnEmptyText)
{
    EXPECT_EQ(combined("[%1][%2]", "a"), "[a][]");
}

TEST_F(PortTest, OnlyTheFourMarkersAreSpecial)
{
    EXPECT_EQ(combined("100%% %0 %5 %s %", "a"), "100%% %0 %5 %s %");
    EXPECT_EQ(combined("%%1", "a"), "%a");
    EXPECT_EQ(combined("%12", "a"), "a2");
}

TEST_F(PortTest, ArgumentsAreNotSearchedForMarkers)
{
    EXPECT_EQ(combined("%1 %2", "%2", "b"), "%2 b");
}

TEST_F(PortTest, TheTextIsCutAtTheSizeAndAlwaysTerminated)
{
    char buffer[8] = "zzzzzzz";
    EXPECT_EQ(CStringUtil::CombinateStrings(buffer, 5, "ab%1", "cdefg", nullptr, nullptr, nullptr), 4);
    EXPECT_STREQ(buffer, "abcd");
    EXPECT_EQ(buffer[5], 'z');
    EXPECT_EQ(CStringUtil::CombinateStrings(buffer, 1, "ab", nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(CStringUtil::CombinateStrings(buffer, sizeof buffer, nullptr, "a", nullptr, nullptr, nullptr), 0);
    EXPECT_STREQ(buffer, "");
}

TEST_F(PortTest, NoRoomAtAllFails)
{
    char buffer[4] = "abc";
    EXPECT_LT(CStringUtil::CombinateStrings(buffer, 0, "x", nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_LT(CStringUtil::CombinateStrings(nullptr, 4, "x", nullptr, nullptr, nullptr, nullptr), 0);
}

TEST_F(PortTest, OrdinaryTextIsShownAsItIs)
{
    EXPECT_EQ(escaped(""), "");
    EXPECT_EQ(escaped("Nora's \\ phone <&> 100 %"), "Nora's \\ phone <&> 100 %");
    EXPECT_EQ(escaped("Küche · هاتف · 휴대폰 · 👩‍👧"),
              "Küche · هاتف · 휴대폰 · 👩‍👧");
}

TEST_F(PortTest, ControlCharactersAreSpeltOut)
{
    EXPECT_EQ(escaped("a\nb\tc\r\033[2J\x7f"), "a\\nb\\tc\\x0d\\x1b[2J\\x7f");
    EXPECT_EQ(escaped(std::string_view("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(escaped("\u009b31m \u0085"), "\\u009b31m \\u0085") << "what a terminal takes for an escape sequence";
}

TEST_F(PortTest, CharactersThatTurnTheLineAreSpeltOut)
{
    EXPECT_EQ(escaped("\u202egpj.\u202c"), "\\u202egpj.\\u202c");
    EXPECT_EQ(escaped("\u061c\u200e\u200f\u2066\u2069\u2028\u2029"),
              "\\u061c\\u200e\\u200f\\u2066\\u2069\\u2028\\u2029");
}

TEST_F(PortTest, BytesThatAreNoTextAreSpeltOut)
{
    EXPECT_EQ(escaped("a\xffz"), "a\\xffz");
    EXPECT_EQ(escaped("cut \xe2\x82"), "cut \\xe2\\x82");
    EXPECT_EQ(escaped("\xed\xa0\x80"), "\\xed\\xa0\\x80") << "half of a pair of UTF-16";
}
