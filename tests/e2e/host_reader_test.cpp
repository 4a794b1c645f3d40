/* The screen reader of vesk-host. */

#include <regex>
#include <sstream>

#include "host_fixture.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class HostReader : public HostTest {
protected:
    /* What is spoken from the start to the end of the keys, without the times. */
    std::vector<std::string> spoken(const std::string &keys)
    {
        const auto transcript = folder_ / "transcript";
        EXPECT_EQ(play(keys, {"--screen-reader", "--transcript", transcript}).exit_code, 0);
        std::vector<std::string> texts;
        std::istringstream lines(contents_of(transcript));
        const std::regex shape(R"(\[\+\d+\.\d{3}\] (.*))");
        std::smatch parts;
        for (std::string line; std::getline(lines, line);) {
            EXPECT_TRUE(std::regex_match(line, parts, shape)) << line;
            texts.push_back(parts[1]);
        }
        return texts;
    }
};

} // namespace

TEST_F(HostReader, EveryFocusMoveIsReadOnce)
{
    EXPECT_THAT(spoken("Down Down Up Right Down Left"),
                ElementsAre(HasSubstr(",Nora's phone,Allowed"), "Kitchen tablet,Allowed", HasSubstr(",Allowed"),
                            "Kitchen tablet,Allowed", "Edit, Button", "Close, Button", "Kitchen tablet,Allowed"));
}

TEST_F(HostReader, AKeyThatMovesNothingIsSilent)
{
    EXPECT_EQ(spoken("Left Left").size(), 1U);
}

TEST_F(HostReader, TheChoicesAreReadOnce)
{
    EXPECT_THAT(spoken("Return Down Down Up"),
                ElementsAre(HasSubstr("Nora's phone"), HasSubstr("Nora's phone"), "Deny", "View details", "Deny"));
}

TEST_F(HostReader, ACheckedRowAndTheConfirmationAreSpoken)
{
    const auto texts = spoken("Right Return Return Right Return");
    ASSERT_GE(texts.size(), 5U);
    EXPECT_THAT(texts[1], HasSubstr("Edit"));
    EXPECT_THAT(texts[2], HasSubstr("Select all"));
    EXPECT_THAT(texts[texts.size() - 1], HasSubstr("Delete the selected devices?"));
}

TEST_F(HostReader, TheKeysMoveAsWithoutTheReader)
{
    ASSERT_EQ(play("Down Right Down Left Down Return Down").exit_code, 0);
    const std::string without = contents_of(picture_);
    ASSERT_EQ(
        play("Down Right Down Left Down Return Down", {"--screen-reader", "--transcript", folder_ / "t"}).exit_code, 0);
    EXPECT_EQ(contents_of(picture_), without);
}
