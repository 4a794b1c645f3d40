/* The command line of vesk-host: what it takes, and how it refuses the rest. */

#include <algorithm>

#include "full_output.h"
#include "host_fixture.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

class HostOptions : public HostTest {
protected:
    /* The host ends at once, says something that names the input, and shows no screen. */
    void expect_refused(const std::vector<std::string> &arguments, int exit_code, const std::string &named)
    {
        const ProcessResult result = run(arguments);
        EXPECT_EQ(result.exit_code, exit_code) << result.err;
        EXPECT_THAT(result.err, HasSubstr(named));
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_FALSE(std::filesystem::exists(picture_));
    }
};

} // namespace

TEST_F(HostOptions, HelpFitsOneScreen)
{
    const ProcessResult help = run({"--help"});
    EXPECT_EQ(help.exit_code, 0);
    EXPECT_LE(std::ranges::count(help.out, '\n'), 24);
    std::istringstream lines(help.out);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.size(), 80U) << line;
    for (const char *option : {"--product", "--orientation", "--language", "--high-contrast", "--screen-reader",
                               "--scale", "--devices", "--log-level", "--keys", "--screenshot", "--no-display", "Esc"})
        EXPECT_THAT(help.out, HasSubstr(option));
}

TEST_F(HostOptions, TheVersionIsTold)
{
    EXPECT_THAT(run({"--version"}).out, StartsWith("vesk-host "));
}

TEST_F(HostOptions, WrongValuesAreNamedWithWhatIsAllowed)
{
    expect_refused({"--product", "radio"}, 2, "\"radio\"");
    expect_refused({"--product", "radio"}, 2, "television");
    expect_refused({"--orientation", "sideways"}, 2, "landscape or portrait");
    expect_refused({"--scale", "nine"}, 2, "from 0.5 to 1.5");
    for (const char *scale : {"nan", "inf", "-inf", "0.49", "1.51", "1e400", "-1"})
        expect_refused({"--scale", scale}, 2,
                       std::string("unknown scale \"") + scale + "\"; use a number from 0.5 to 1.5");
    expect_refused({"--log-level", "loud"}, 2, "info, warning, error or off");
    expect_refused({"--keys", "Down Jump"}, 2, "unknown key \"Jump\"");
    expect_refused({"--keys", "wait:soon"}, 2, "wait:MILLISECONDS");
    expect_refused({"--what"}, 2, "unknown option \"--what\"; see vesk-host --help");
}

TEST_F(HostOptions, MessagesAreShortAndCannotSteerTheTerminal)
{
    for (const char *option : {"--scale", "--keys", "--orientation", "--product", "--what"}) {
        const ProcessResult result = run({option, "a\u009b\u202e\033[m" + std::string(100'000, 'x')});
        EXPECT_EQ(result.exit_code, 2);
        EXPECT_THAT(result.err, StartsWith("vesk-host: "));
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1);
        EXPECT_LT(result.err.size(), 1100U);
        for (const char *raw : {"\u009b", "\u202e", "\033"})
            EXPECT_EQ(result.err.find(raw), std::string::npos) << option;
    }
}

TEST_F(HostOptions, HelpTellsWhenALanguageShows)
{
    EXPECT_THAT(run({"--help"}).out, HasSubstr("a live change shows on the next screen"));
}

TEST_F(HostOptions, HelpTellsWhatAClickDoes)
{
    EXPECT_THAT(run({"--help"}).out, AllOf(HasSubstr("A click is a touch"), HasSubstr("only moves")));
}

TEST_F(HostOptions, OutputThatIsLostIsAFailure)
{
    for (const char *program : {VESK_HOST, VESK_GALLERY, VESK_BENCH})
        expect_loss_is_told(program, {"--help"});
    expect_loss_is_told(VESK_HOST, {"--no-display", "--no-animations", "--screenshot", picture_});
    EXPECT_EQ(size_of_png(picture_), std::make_pair(1920U, 1080U));
}

TEST_F(HostOptions, ThePictureWithoutADisplayIsAFreshFileOfTheUser)
{
    const auto victim = folder_ / "victim";
    write_file(victim, "untouched");
    std::filesystem::create_symlink(victim, folder_ / "vesk-host.png");
    std::vector<std::string> pictures;
    for (int i = 0; i < 2; ++i) {
        const ProcessResult result = run_as_given({"--no-display", "--no-animations"});
        ASSERT_EQ(result.exit_code, 0) << result.err;
        pictures.push_back(result.out.substr(0, result.out.find('\n')));
        EXPECT_EQ(size_of_png(pictures.back()), std::make_pair(1920U, 1080U));
        EXPECT_EQ(std::filesystem::status(pictures.back()).permissions(), std::filesystem::perms(0600));
        EXPECT_EQ(std::filesystem::path(pictures.back()).parent_path(), folder_);
    }
    EXPECT_NE(pictures[0], pictures[1]);
    EXPECT_EQ(contents_of(victim), "untouched");
    setenv("TMPDIR", (folder_ / "none").c_str(), 1);
    const ProcessResult result = run_as_given({"--no-display", "--no-animations"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, AllOf(HasSubstr("none"), HasSubstr("--screenshot")));
}

TEST_F(HostOptions, AModuleThatCannotBeRunIsNamed)
{
    write_file(folder_ / "text.so", "no library");
    expect_refused({"--module", folder_ / "none.so"}, 1, "none.so does not exist");
    expect_refused({"--module", folder_ / "text.so"}, 1, "text.so cannot be loaded");
    expect_refused({"--module", "/usr/lib/x86_64-linux-gnu/libz.so.1"}, 1, "is no module");
    expect_refused({"--module", REFUSING_INIT}, 1, "UG_MODULE_INIT failed");
    expect_refused({"--module", REFUSING_CREATE}, 1, "built no screen");
}

TEST_F(HostOptions, AFileThatCannotBeWrittenIsNamed)
{
    expect_refused({"--screenshot", folder_ / "none" / "a.png"}, 1, "none/a.png cannot be written");
    expect_refused({"--log", folder_ / "none" / "log"}, 1, "none/log");
    expect_refused({"--screen-reader", "--transcript", folder_ / "none" / "t"}, 1, "none/t cannot be written");
}

TEST_F(HostOptions, ALanguageWithoutTextsIsTold)
{
    const ProcessResult result = run({"--language", "xx_YY.UTF-8"});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, HasSubstr("\"xx_YY.UTF-8\""));
}

TEST_F(HostOptions, LanguagesAreTakenWithAndWithoutEncoding)
{
    ASSERT_EQ(run({"--language", "ko_KR"}).err, "");
    const std::string korean = contents_of(picture_);
    ASSERT_EQ(run({"--language", "ko_KR.UTF-8"}).err, "");
    EXPECT_EQ(contents_of(picture_), korean);
    ASSERT_EQ(run({"--language", "en_GB"}).err, "");
    EXPECT_NE(contents_of(picture_), korean);
}

TEST_F(HostOptions, AnOptionLeavesTheStoredSettingAlone)
{
    ASSERT_EQ(veskctl({"settings", "set", "orientation", "landscape"}).exit_code, 0);
    ASSERT_EQ(run({"--orientation", "portrait"}).exit_code, 0);
    EXPECT_EQ(size_of_png(picture_), std::make_pair(1080U, 1920U));
    EXPECT_THAT(veskctl({"settings", "get", "orientation"}).out, StartsWith("landscape"));
}

TEST_F(HostOptions, EveryLookIsAnotherPicture)
{
    std::vector<std::string> pictures;
    for (const std::vector<std::string> &look : std::vector<std::vector<std::string>>{{},
                                                                                      {"--high-contrast"},
                                                                                      {"--product", "board"},
                                                                                      {"--orientation", "portrait"},
                                                                                      {"--language", "ar_AE"},
                                                                                      {"--scale", "0.75"}}) {
        ASSERT_EQ(run(look).exit_code, 0);
        pictures.push_back(contents_of(picture_));
    }
    for (size_t i = 0; i < pictures.size(); ++i) {
        for (size_t j = 0; j < i; ++j)
            EXPECT_NE(pictures[i], pictures[j]) << i << " " << j;
    }
}

TEST_F(HostOptions, TheLogIsAFileOfItsOwn)
{
    const ProcessResult result = run({"--log", folder_ / "log"});
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(contents_of(folder_ / "log"), HasSubstr("VESK started."));
}

TEST_F(HostOptions, TheLogLevelHoldsForTheTerminal)
{
    EXPECT_THAT(run({"--log-level", "info"}).err, HasSubstr("VESK started."));
    EXPECT_EQ(run({"--log-level", "off"}).err, "");
}

TEST_F(HostOptions, AnotherDeviceFileIsRead)
{
    const auto other = folder_ / "other.db";
    ASSERT_EQ(run({"--devices", other}).exit_code, 0);
    EXPECT_TRUE(std::filesystem::exists(other));
    EXPECT_FALSE(std::filesystem::exists(devices_));
}
