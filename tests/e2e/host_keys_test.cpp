/* Key sequences, and what they have done in the device file. */

#include "host_fixture.h"

using testing::HasSubstr;
using testing::Not;

namespace {

/* The first rows of the sample household, in the list's order. */
constexpr const char *kFirstRow = "Nora's phone";
constexpr const char *kSecondRow = "Kitchen tablet";

/* What a sequence of keys does. */
struct Journey {
    const char *name;
    const char *keys;
    const char *first = "allow"; /* status of the first row's device afterwards */
    const char *second = "allow";
    const char *logged = "";
    const char *not_logged = nullptr;
};

void PrintTo(const Journey &journey, std::ostream *stream)
{
    *stream << journey.keys;
}

struct HostKeys : HostTest, testing::WithParamInterface<Journey> {};

const Journey journeys[] = {
    {.name = "AChoiceDeniesADevice",
     .keys = "Down Return Down Return wait:300",
     .second = "deny",
     .logged = "[VESKAUTOTC][DENY]"},
    {.name = "ADeniedDeviceIsAllowedAgain",
     .keys = "Down Return Down Return wait:300 Up Return Up Return wait:300",
     .logged = "[VESKAUTOTC][ALLOW]"},
    {.name = "BackInTheDropDownChangesNothing", .keys = "Return Down XF86Back wait:100", .not_logged = "VESKAUTOTC"},
    /* Up from the first row and Down again: the first row. */
    {.name = "TheListGoesRoundAtBothEnds", .keys = "Up Down Return Down Return wait:300", .first = "deny"},
    {.name = "ReturnTwiceInTheConfirmationNeverDeletes", .keys = "Right Return Return Right Return Return Return"},
    {.name = "ADeviceIsDeletedWithYes",
     .keys = "Down Right Return Return Right Return Left Return wait:100",
     .second = "",
     .logged = "[VESKAUTOTC][DELETE]"},
    {.name = "KeysDuringTheToastAreOnlyHeard",
     .keys = "Right Return Return Right Return Left Return Return Right Return XF86Back",
     .first = "",
     .logged = "b_disable_focus",
     .not_logged = "[VESKAUTOTC][DENY]"},
    {.name = "BackClosesTheList", .keys = "Down XF86Back wait:60000", .logged = "VESK EXIT"},
    {.name = "CloseClosesTheList", .keys = "Close wait:60000", .logged = "VESK EXIT"},
    {.name = "TheSecondButtonClosesTheList", .keys = "Right Down Return wait:60000", .logged = "VESK EXIT"},
    /* The middle of the second row, then of the drop-down's second choice. */
    {.name = "ATouchIsAChoice", .keys = "tap:1130,414 tap:1310,530 Return wait:300", .second = "deny"},
};

} // namespace

TEST_P(HostKeys, HaveTheirEffect)
{
    const Journey &journey = GetParam();
    ASSERT_EQ(play(journey.keys).exit_code, 0);
    EXPECT_EQ(status_of(kFirstRow), journey.first);
    EXPECT_EQ(status_of(kSecondRow), journey.second);
    EXPECT_THAT(host_log(), HasSubstr(journey.logged));
    if (journey.not_logged) {
        EXPECT_THAT(host_log(), Not(HasSubstr(journey.not_logged)));
    }
}

INSTANTIATE_TEST_SUITE_P(, HostKeys, testing::ValuesIn(journeys), [](const auto &sample) { return sample.param.name; });
