/* The platform log: one line a call, to the terminal or a file, from a level on. */

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <glib.h>
#include <sys/wait.h>
#include <unistd.h>

#include "desktop/log.h"
#include "desktop/port_error.h"
#include "dlog.h"
#include "port_fixture.h"

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::MatchesRegex;
using vesk_port::PortError;

namespace {

class PortLog : public PortTest {
protected:
    PortLog()
    {
        vesk_port::set_log_file(file_);
        vesk_port::set_log_level(DLOG_INFO);
    }
    ~PortLog() override { vesk_port::set_log_file(""); }

    const std::filesystem::path file_ = folder_ / "log";
};

} // namespace

TEST_F(PortLog, ALineHasTimeLevelTagAndText)
{
    const int written = __dlog_print(LOG_ID_MAIN, DLOG_WARN, "VESK_LOG", "count is %d", 12);
    EXPECT_THAT(contents_of(file_),
                MatchesRegex("[0-9][0-9]:[0-9][0-9]:[0-9][0-9]\\.[0-9][0-9][0-9] W VESK_LOG  count is 12\n"));
    EXPECT_EQ(written, static_cast<int>(contents_of(file_).size()));
}

TEST_F(PortLog, ACallIsOneLineWhateverItsText)
{
    __dlog_print(LOG_ID_MAIN, DLOG_INFO, "T", "ends\n");
    __dlog_print(LOG_ID_MAIN, DLOG_INFO, "T", "\ttwo\nlines \033[31mred");
    const std::string lines = contents_of(file_);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 2);
    EXPECT_THAT(lines, HasSubstr("I T  ends\n"));
    EXPECT_THAT(lines, HasSubstr("I T  \ttwo\\nlines \\x1b[31mred\n"));
}

TEST_F(PortLog, ANameCannotSteerTheTerminal)
{
    __dlog_print(LOG_ID_MAIN, DLOG_INFO, "T", "NAME[%s]", "\u009b31m \u202egpj \xff");
    EXPECT_THAT(contents_of(file_), HasSubstr("NAME[\\u009b31m \\u202egpj \\xff]\n"));
}

TEST_F(PortLog, TheFileIsTheUsersAlone)
{
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(file_).permissions(), perms::owner_read | perms::owner_write);
}

TEST_F(PortLog, LinesBelowTheLevelAreDropped)
{
    vesk_port::set_log_level(vesk_port::log_level_of("error"));
    __dlog_print(LOG_ID_MAIN, DLOG_INFO, "T", "info");
    EXPECT_EQ(__dlog_print(LOG_ID_MAIN, DLOG_WARN, "T", "warning"), 0);
    __dlog_print(LOG_ID_MAIN, DLOG_ERROR, "T", "error");
    vesk_port::set_log_level(vesk_port::log_level_of("off"));
    __dlog_print(LOG_ID_MAIN, DLOG_ERROR, "T", "nothing");
    EXPECT_THAT(contents_of(file_), ContainsRegex("^[0-9:.]+ E T  error\n$"));
}

TEST_F(PortLog, LongTextsStayWhole)
{
    const std::string text(100000, 'x');
    __dlog_print(LOG_ID_MAIN, DLOG_INFO, "T", "%s", text.c_str());
    EXPECT_THAT(contents_of(file_), HasSubstr(text + "\n"));
}

TEST_F(PortLog, AnUnknownLogOrAMissingTagFails)
{
    EXPECT_LT(__dlog_print(9, DLOG_INFO, "T", "text"), 0);
    EXPECT_LT(__dlog_print(LOG_ID_MAIN, DLOG_INFO, nullptr, "text"), 0);
}

TEST_F(PortLog, AnUnknownLevelOrAFileThatCannotBeOpenedIsRefused)
{
    EXPECT_THROW(vesk_port::log_level_of("loud"), PortError);
    try {
        vesk_port::set_log_file(folder_ / "none" / "log");
        ADD_FAILURE();
    } catch (const PortError &error) {
        EXPECT_THAT(error.what(), HasSubstr((folder_ / "none" / "log").string()));
    }
    __dlog_print(LOG_ID_MAIN, DLOG_INFO, "T", "still here");
    EXPECT_THAT(contents_of(file_), HasSubstr("still here"));
}

/* What the environment chooses shows in another program: `settings watch` writes to the log when it is made to fail. */
class PortLogVariables : public PortTest {
protected:
    PortLogVariables() { setenv("VESK_FAIL", "vconf_notify_key_changed=-7", 1); }
};

TEST_F(PortLogVariables, AFileTakesTheLinesOffTheTerminal)
{
    setenv("VESK_LOG", (folder_ / "log").c_str(), 1);
    const ProcessResult result = veskctl({"settings", "watch"});
    EXPECT_THAT(contents_of(folder_ / "log"), HasSubstr(" E VESK_PORT  vconf_notify_key_changed failed (-7)"));
    EXPECT_THAT(result.err, testing::Not(HasSubstr("VESK_PORT")));
}

TEST_F(PortLogVariables, ALineToAPipeHasNoColour)
{
    EXPECT_THAT(veskctl({"settings", "watch"}).err, testing::Not(HasSubstr("\033")));
}

/* What a program writes to a terminal as its log. */
std::string log_on_a_terminal()
{
    const int screen = posix_openpt(O_RDWR | O_NOCTTY);
    EXPECT_TRUE(grantpt(screen) == 0 && unlockpt(screen) == 0);
    const int terminal = open(ptsname(screen), O_RDWR | O_NOCTTY);
    std::string program = veskctl_program();
    std::string words[] = {"settings", "watch"};
    char *argv[] = {program.data(), words[0].data(), words[1].data(), nullptr};
    GPid pid = 0;
    EXPECT_TRUE(g_spawn_async_with_fds(nullptr, argv, nullptr, G_SPAWN_DO_NOT_REAP_CHILD, nullptr, nullptr, &pid, -1,
                                       -1, terminal, nullptr));
    close(terminal);
    waitpid(pid, nullptr, 0);
    char text[4096];
    const ssize_t length = read(screen, text, sizeof text);
    close(screen);
    return {text, length > 0 ? static_cast<size_t>(length) : 0};
}

TEST_F(PortLogVariables, ATerminalGetsColourUnlessItIsUnwanted)
{
    unsetenv("NO_COLOR");
    setenv("TERM", "xterm", 1);
    EXPECT_THAT(log_on_a_terminal(), AllOf(HasSubstr("\033[31m"), HasSubstr("E VESK_PORT")));
    setenv("TERM", "dumb", 1);
    EXPECT_THAT(log_on_a_terminal(), AllOf(testing::Not(HasSubstr("\033")), HasSubstr("E VESK_PORT")));
    setenv("TERM", "xterm", 1);
    setenv("NO_COLOR", "1", 1);
    EXPECT_THAT(log_on_a_terminal(), AllOf(testing::Not(HasSubstr("\033")), HasSubstr("E VESK_PORT")));
}

TEST_F(PortLogVariables, TheLevelOffIsSilent)
{
    setenv("VESK_LOG_LEVEL", "off", 1);
    EXPECT_THAT(veskctl({"settings", "watch"}).err, testing::Not(HasSubstr("VESK_PORT")));
}

TEST_F(PortLogVariables, WrongValuesAreToldOnTheTerminal)
{
    setenv("VESK_LOG_LEVEL", "loud", 1);
    EXPECT_THAT(veskctl({"settings", "watch"}).err, HasSubstr("\"loud\" is no log level"));
    setenv("VESK_LOG_LEVEL", "info", 1);
    setenv("VESK_LOG", "/dev/null/log", 1);
    EXPECT_THAT(veskctl({"settings", "watch"}).err, HasSubstr("/dev/null/log cannot be opened"));
}
