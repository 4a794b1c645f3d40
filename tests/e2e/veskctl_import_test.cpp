/* veskctl devices: lists of devices in files. */

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "veskctl_fixture.h"

using nlohmann::json;
using testing::HasSubstr;

TEST_F(Veskctl, FiftyFiftyOneAndNoDeviceAreImported)
{
    for (const int count : {50, 51, 0, 1}) {
        ASSERT_EQ(veskctl({"devices", "import", "--replace", file_of(count)}).exit_code, 0);
        EXPECT_EQ(devices().size(), static_cast<size_t>(count));
    }
    ASSERT_EQ(veskctl({"devices", "clear"}).exit_code, 0);
    ASSERT_EQ(veskctl({"devices", "import", file_of(2)}).exit_code, 0);
    EXPECT_EQ(devices()[1]["name"], "Phone 1");
}

TEST_F(Veskctl, ImportAddsWhereItIsNotToReplace)
{
    ASSERT_EQ(veskctl({"devices", "import", file_of(2)}).exit_code, 0);
    EXPECT_EQ(devices().size(), 14U);
    expect_refused({"devices", "import", file_of(3)}, "registered already");
    EXPECT_EQ(devices().size(), 14U) << "all or none";
}

TEST_F(Veskctl, WhatIsExportedCanBeImportedAgain)
{
    const std::string exported = veskctl({"devices", "export"}).out;
    EXPECT_EQ(veskctl({"devices", "export", folder_ / "out.json"}).exit_code, 0);
    EXPECT_EQ(contents_of(folder_ / "out.json"), exported);
    ASSERT_EQ(veskctl({"devices", "clear"}).exit_code, 0);
    ASSERT_EQ(veskctl({"devices", "import", "-"}, exported).exit_code, 0);
    EXPECT_EQ(veskctl({"devices", "export", "-"}).out, exported);
}

TEST_F(Veskctl, ABadFileLosesNothing)
{
    const std::vector<std::pair<std::string, std::string>> inputs{
        {"", "the standard input is not JSON"},
        {"[{]", "the standard input is not JSON"},
        {"[\"\xff\"]", "the standard input is not JSON"},
        {"{}", "has to hold a list"},
        {"[1]", "device 1"},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01"}, {"name": "b", "bt": "02"}])", "device 2"},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01", "colour": 1}])", "\"colour\""},
        {R"([{"name": 1, "bt": "02:00:00:00:00:01"}])", "\"name\""},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01", "type": 99999999999}])", "99999999999"},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01", "icon": "one"}])", "\"icon\""},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01", "status": 2}])", "unknown status \"2\""},
        {R"([{"name": "a", "bt": "02:00:00:00:00:01"}, {"name": "b", "bt": "02:00:00:00:00:01"}])", "already"},
    };
    for (const auto &[input, named] : inputs)
        expect_refused({"devices", "import", "--replace", "-"}, named, input);
    expect_refused({"devices", "import", folder_ / "none.json"}, "none.json");
    expect_refused({"devices", "import", folder_}, folder_);
    expect_refused({"devices", "export", folder_ / "none" / "out.json"}, "out.json");
    EXPECT_EQ(devices().size(), 12U);
}

TEST_F(Veskctl, AnEntryThatIsRefusedIsNamed)
{
    const auto entry = [](const std::string &member) {
        return R"([{"name": "a", "bt": "02:00:00:00:00:01"}, {)" + member + R"(, "name": "Hall phone"}])";
    };
    const std::string mac = R"("wifi": "02:00:00:00:00:02", )";
    for (const std::string &member : std::vector<std::string>{
             R"("bt": "02:00:00:00:00:02\u0000")", R"("bt": "02:00:00:00:00:\u00002")", mac + R"("type": 1e400)",
             mac + R"("type": 1e3)", mac + R"("type": 2147483648)", mac + R"("icon": -1e400)", mac + R"("icon": 1e3)",
             mac + R"("icon": 0.5)", mac + R"("icon": 18446744073709551616)", mac + R"("status": 1e400)",
             mac + R"("status": 1e0)", mac + R"("status": true)", mac + R"("bt": 1e400)", mac + R"("p2p": null)",
             mac + R"("p2p": [[1], {"name": "inner"}])", mac + R"("p2p": {})", mac + R"("type": 1, "type": 2)",
             mac + R"("a": 1, "b": 1, "c": 1, "d": 1, "e": 1, "f": 1, "g": 1)"})
        expect_refused({"devices", "import", "-"}, "device 2 (\"Hall phone\")", entry(member));
    expect_refused({"devices", "import", "-"}, "(\"Hall\\x00phone\"): the name \"Hall\\x00phone\" contains a NUL",
                   R"([{"name": "Hall\u0000phone", "bt": "02:00:00:00:00:02"}])");
    EXPECT_EQ(devices().size(), 12U);
}

TEST_F(Veskctl, DeepOrLongNonsenseIsRefusedInOneShortLine)
{
    const std::string deep(60'000, '[');
    const std::string closed = deep + std::string(60'000, ']');
    std::string objects;
    for (int i = 0; i < 60'000; ++i)
        objects += R"({"a":)";
    for (const std::string &input :
         {deep, closed, objects, "[" + objects, R"([{"bt": )" + closed + "}]", R"([{"bt": )" + deep,
          std::string(3'000'000, 'x'), "[\"" + std::string(3'000'000, 'x') + "\"]",
          R"([{"icon": 1)" + std::string(3'000'000, '0') + "}]",
          R"([{")" + std::string(3'000'000, 'x') + R"(": 1, "name": "a"}])"})
        expect_refused({"devices", "import", "-"}, "the standard input", input);
    EXPECT_EQ(devices().size(), 12U);
}

TEST_F(Veskctl, MadeUpDevicesCanBeImported)
{
    const ProcessResult made = veskctl({"devices", "make", "50"});
    ASSERT_EQ(made.exit_code, 0);
    EXPECT_EQ(json::parse(made.out).size(), 50U);
    EXPECT_EQ(devices().size(), 12U) << "none is registered";
    ASSERT_EQ(veskctl({"devices", "import", "-"}, made.out).exit_code, 0);
    EXPECT_EQ(devices().size(), 62U);
    ASSERT_EQ(veskctl({"devices", "import", "--replace", "-"}, made.out).exit_code, 0);
    EXPECT_EQ(veskctl({"devices", "export"}).out, made.out);
    EXPECT_EQ(veskctl({"devices", "make", "0"}).out, "[]\n");
    for (const char *count : {"-1", "1000001", "many", "1e3"})
        expect_misused({"devices", "make", "--", count}, "use 0 to 1000000");
}

TEST_F(Veskctl, AnExportKeepsTheLinksAndTheModeOfTheFile)
{
    const auto file = folder_ / "out.json";
    write_file(file, std::string(100'000, 'x'));
    ASSERT_EQ(chmod(file.c_str(), 0640), 0);
    std::filesystem::create_hard_link(file, folder_ / "twin.json");
    std::filesystem::create_symlink("out.json", folder_ / "link.json");
    ASSERT_EQ(veskctl({"devices", "export", folder_ / "link.json"}).exit_code, 0);
    EXPECT_EQ(contents_of(folder_ / "twin.json"), veskctl({"devices", "export"}).out);
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "link.json"));
    struct stat now {};
    ASSERT_EQ(stat(file.c_str(), &now), 0);
    EXPECT_EQ(now.st_mode & 07777U, 0640U);
    EXPECT_EQ(now.st_nlink, 2U);
}

TEST_F(Veskctl, AnExportGoesThroughAPipe)
{
    const auto pipe = folder_ / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(veskctl({"devices", "export", pipe}).exit_code, 0);
    std::string text(65536, '\0');
    const ssize_t length = read(reader, text.data(), text.size());
    ASSERT_GT(length, 0);
    text.resize(static_cast<size_t>(length));
    EXPECT_EQ(json::parse(text).size(), 12U);
    close(reader);
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

/* Writing to the device does no harm, and the link to it is the test's own. */
TEST_F(Veskctl, AnExportToAFullDeviceFailsAndLeavesItThere)
{
    std::filesystem::create_symlink("/dev/full", folder_ / "full");
    expect_refused({"devices", "export", folder_ / "full"}, "No space left on device");
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "full"));
    EXPECT_TRUE(std::filesystem::is_character_file(folder_ / "full"));
}

TEST_F(Veskctl, AnExportThatDoesNotFitLeavesTheOldOne)
{
    ASSERT_EQ(veskctl({"devices", "import", "-"}, veskctl({"devices", "make", "1000"}).out).exit_code, 0);
    write_file(folder_ / "old.json", "old");
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit low{65536, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
    const ProcessResult over_old = veskctl({"devices", "export", folder_ / "old.json"});
    const ProcessResult as_new = veskctl({"devices", "export", folder_ / "new.json"});
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(over_old.exit_code, 1);
    EXPECT_THAT(over_old.err, HasSubstr("old.json\" cannot be written: File too large"));
    EXPECT_EQ(contents_of(folder_ / "old.json"), "old");
    EXPECT_EQ(as_new.exit_code, 1);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "new.json"));
}

TEST_F(Veskctl, TheDatabaseIsNotOverwrittenByItsExport)
{
    ASSERT_EQ(devices().size(), 12U);
    std::filesystem::create_symlink(devices_, folder_ / "link");
    expect_refused({"devices", "export", devices_}, "is the device database itself");
    expect_refused({"devices", "export", folder_ / "link"}, "is the device database itself");
    EXPECT_EQ(devices().size(), 12U);
}
