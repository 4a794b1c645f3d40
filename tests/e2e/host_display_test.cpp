/* vesk-host in a window, on an X server of the test's own. */

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host_fixture.h"

using testing::HasSubstr;

namespace {

class HostDisplay : public HostTest {
protected:
    /* The server takes the first free number and tells it on a descriptor. */
    void SetUp() override
    {
        int number[2];
        ASSERT_EQ(pipe(number), 0);
        server_ = fork();
        ASSERT_GE(server_, 0);
        if (server_ == 0) {
            const int null = open("/dev/null", O_WRONLY);
            dup2(null, STDERR_FILENO);
            const std::string descriptor = std::to_string(number[1]);
            execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "1600x1200x24", "-noreset",
                   "-nolisten", "tcp", nullptr);
            _exit(127);
        }
        close(number[1]);
        /* The number and its line end come in two writes. */
        std::string display = ":";
        char letter = 0;
        while (read(number[0], &letter, 1) == 1 && letter != '\n')
            display += letter;
        close(number[0]);
        ASSERT_EQ(letter, '\n') << "Xvfb does not start";
        setenv("DISPLAY", display.c_str(), 1);
    }

    void TearDown() override
    {
        unsetenv("DISPLAY");
        kill(server_, SIGTERM);
        waitpid(server_, nullptr, 0);
    }

    pid_t server_ = -1;
};

} // namespace

TEST_F(HostDisplay, TheWindowShowsThePanelUntilItIsEnded)
{
    start_in_window({});
    ASSERT_TRUE(printed("Keys: arrows"));
    ASSERT_EQ(kill(pid(), SIGINT), 0);
    const ProcessResult result = finish();
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(host_log(), HasSubstr("VESK EXIT"));
}

TEST_F(HostDisplay, ThePictureIsThePanelsWhateverTheWindowsSize)
{
    start_in_window({"--screenshot", picture_, "--keys", "Down"});
    EXPECT_EQ(finish().exit_code, 0);
    EXPECT_EQ(size_of_png(picture_), std::make_pair(1920U, 1080U));
}
