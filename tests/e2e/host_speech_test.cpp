/* What vesk-host speaks and writes, with a synthesiser of the tests in the place of espeak-ng. */

#include <csignal>
#include <gmock/gmock.h>

#include "host_fixture.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class HostSpeech : public HostTest {
protected:
    HostSpeech() : path_(std::getenv("PATH")) { setenv("PATH", ((folder_ / "bin").string() + ":" + path_).c_str(), 1); }
    ~HostSpeech() override { setenv("PATH", path_.c_str(), 1); }

    /* A program that writes each text behind its voice and then does `rest`. */
    void make_synthesiser(const std::string &rest)
    {
        const auto program = folder_ / "bin" / "espeak-ng";
        std::filesystem::create_directories(program.parent_path());
        write_file(program, "#!/bin/sh\necho \"$2: $4\" >>'" + spoken_.string() + "'\n" + rest + "\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }

    testing::AssertionResult spoken(const std::string &text)
    {
        if (wait_until([&] { return contents_of(spoken_).find(text) != std::string::npos; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "\"" << text << "\" is not in:\n" << contents_of(spoken_);
    }

    ProcessResult terminate()
    {
        EXPECT_EQ(kill(pid(), SIGTERM), 0);
        return finish();
    }

    const std::filesystem::path spoken_ = folder_ / "spoken";
    const std::filesystem::path transcript_ = folder_ / "transcript";

private:
    const std::string path_;
};

size_t times_in(const std::string &text, const std::string &part)
{
    size_t times = 0;
    for (size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1))
        ++times;
    return times;
}

} // namespace

TEST_F(HostSpeech, ATranscriptAloneIsWrittenAndNothingIsSpoken)
{
    make_synthesiser("");
    const ProcessResult result = play("Down", {"--transcript", transcript_});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(contents_of(transcript_), AllOf(HasSubstr("Nora's phone"), HasSubstr("Kitchen tablet,Allowed")));
    EXPECT_FALSE(std::filesystem::exists(spoken_));
}

TEST_F(HostSpeech, TheReaderAloneSpeaks)
{
    make_synthesiser("");
    start("Down", {"--screen-reader", "--language", "ko_KR"});
    EXPECT_TRUE(spoken("ko: Kitchen tablet"));
    const ProcessResult result = terminate();
    EXPECT_THAT(result.out, Not(HasSubstr("Kitchen tablet")));
    EXPECT_THAT(result.err, IsEmpty());
}

TEST_F(HostSpeech, TheReaderWithATranscriptSpeaksAndWrites)
{
    make_synthesiser("");
    start("Down", {"--screen-reader", "--transcript", transcript_});
    EXPECT_TRUE(spoken("en: Kitchen tablet,Allowed"));
    EXPECT_THAT(contents_of(transcript_), HasSubstr("Kitchen tablet,Allowed"));
    EXPECT_THAT(terminate().err, IsEmpty());
}

TEST_F(HostSpeech, ALanguageWithoutAVoiceIsToldOnceAndItsTextsAreWritten)
{
    make_synthesiser("exit 1");
    start("Down Up Down Up", {"--screen-reader", "--language", "gl_ES"});
    EXPECT_TRUE(printed("Kitchen tablet"));
    const ProcessResult result = terminate();
    EXPECT_EQ(times_in(result.err, "does not speak the language \"gl\""), 1U) << result.err;
    EXPECT_EQ(times_in(contents_of(spoken_), "gl: "), 1U) << "it is not asked again";
    EXPECT_THAT(result.out, AllOf(HasSubstr("Nora's phone"), HasSubstr("Kitchen tablet")));
}

TEST_F(HostSpeech, ASynthesiserThatDoesNotEndHoldsUpNeitherTheKeysNorTheEnd)
{
    make_synthesiser("trap '' TERM INT\nexec sleep 60");
    start("Down Return Down Return", {"--screen-reader"});
    EXPECT_TRUE(logged("[VESKAUTOTC][DENY]"));
    EXPECT_TRUE(spoken("Deny"));
    EXPECT_EQ(terminate().exit_code, 0);
}
