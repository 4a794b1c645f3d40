/* Key sequences, and what they have done in the device file. */

#include "host_fixture.h"

using testing::HasSubstr;
using testing::Not;

namespace {

/* The first rows of the sample household, in the list's order. */
constexpr const char *first_row = "Nora's phone";
constexpr const char *second_row = "Kitchen tablet";

class HostKeys : public HostTest {};

} // namespace

TEST_F(HostKeys, ADeviceIsDeniedAndAllowedAgain)
{
    ASSERT_EQ(play("Down Return Down Return wait:300").exit_code, 0);
    EXPECT_EQ(status_of(second_row), "deny");
    EXPECT_EQ(status_of(first_row), "allow");
    EXPECT_THAT(host_log(), HasSubstr("[VESKAUTOTC][DENY]"));
}

TEST_F(HostKeys, BackInTheDropDownChangesNothing)
{
    ASSERT_EQ(play("Return Down XF86Back wait:100").exit_code, 0);
    EXPECT_EQ(status_of(first_row), "allow");
    EXPECT_THAT(host_log(), Not(HasSubstr("VESKAUTOTC")));
}

TEST_F(HostKeys, TheListGoesRoundAtBothEnds)
{
    /* Up from the first row and Down again: the first row. */
    ASSERT_EQ(play("Up Down Return Down Return wait:300").exit_code, 0);
    EXPECT_EQ(status_of(first_row), "deny");
}

TEST_F(HostKeys, ReturnTwiceInTheConfirmationNeverDeletes)
{
    ASSERT_EQ(play("Right Return Return Right Return Return Return").exit_code, 0);
    EXPECT_EQ(status_of(first_row), "allow");
}

TEST_F(HostKeys, ADeviceIsDeletedWithYes)
{
    ASSERT_EQ(play("Down Right Return Return Right Return Left Return wait:100").exit_code, 0);
    EXPECT_EQ(status_of(second_row), "");
    EXPECT_EQ(status_of(first_row), "allow");
    EXPECT_THAT(host_log(), HasSubstr("[VESKAUTOTC][DELETE]"));
}

TEST_F(HostKeys, KeysDuringTheToastAreOnlyHeard)
{
    ASSERT_EQ(play("Right Return Return Right Return Left Return Return Right Return XF86Back").exit_code, 0);
    EXPECT_THAT(host_log(), HasSubstr("b_disable_focus"));
    EXPECT_THAT(host_log(), Not(HasSubstr("[VESKAUTOTC][DENY]")));
}

TEST_F(HostKeys, BackClosesTheList)
{
    ASSERT_EQ(play("Down XF86Back wait:60000").exit_code, 0);
    EXPECT_THAT(host_log(), HasSubstr("VESK EXIT"));
}

TEST_F(HostKeys, CloseAndTheSecondButtonCloseTheList)
{
    ASSERT_EQ(play("Close wait:60000").exit_code, 0);
    ASSERT_EQ(play("Right Down Return wait:60000").exit_code, 0);
}

TEST_F(HostKeys, ATouchIsAChoice)
{
    /* The middle of the second row, then of the drop-down's second choice. */
    ASSERT_EQ(play("tap:1130,414 tap:1310,530 Return wait:300").exit_code, 0);
    EXPECT_EQ(status_of(second_row), "deny");
}
