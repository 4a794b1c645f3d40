/* Device databases that cannot be used: an error code, a sentence with the file's name, and the file as it was. */

#include <cerrno>

#include "desktop/device_store.h"
#include "desktop/port_error.h"
#include "other_program.h"
#include "port_fixture.h"
#include "rdm.h"

namespace fs = std::filesystem;

using testing::HasSubstr;
using vesk_port::DeviceStore;
using vesk_port::PortError;

namespace {

class PortDeviceFiles : public PortTest {
protected:
    ~PortDeviceFiles() override { rdm_deinit(); }

    /* The file is refused by the service and by veskctl, whatever it is asked for, and does not change. */
    void expect_left_alone()
    {
        const std::string before = contents_of(devices_);
        EXPECT_EQ(rdm_init(), -EBADMSG);
        EXPECT_THAT(log(), HasSubstr(devices_.string()));
        write_file(folder_ / "none.json", "[]");
        const std::vector<std::vector<std::string>> commands{
            {"devices", "list"},
            {"devices", "clear"},
            {"devices", "add", "--name", "n", "--bt", "02:00:00:00:00:01"},
            {"devices", "import", "--replace", folder_ / "none.json"},
        };
        for (const std::vector<std::string> &command : commands) {
            const ProcessResult result = veskctl(command);
            EXPECT_EQ(result.exit_code, 1) << command[1];
            EXPECT_THAT(result.err, HasSubstr(devices_.string()));
            EXPECT_EQ(result.out, "");
        }
        EXPECT_TRUE(contents_of(devices_) == before);
    }

    /* What rdm_get_list returns, and how many devices it tells of. */
    static std::pair<int, size_t> list_result()
    {
        RdmDeviceInfo *list = nullptr;
        size_t count = 0;
        const int result = rdm_get_list(&list, &count);
        rdm_free_list(list);
        return {result, count};
    }
};

/* A way in which a file comes to be no device database. */
struct Unusable {
    const char *name;
    void (*make)(const fs::path &file);
};

void PrintTo(const Unusable &unusable, std::ostream *stream)
{
    *stream << unusable.name;
}

struct UnusableFile : PortDeviceFiles, testing::WithParamInterface<Unusable> {};

} // namespace

TEST_P(UnusableFile, IsLeftAlone)
{
    GetParam().make(devices_);
    expect_left_alone();
}

INSTANTIATE_TEST_SUITE_P(
    , UnusableFile,
    testing::Values(Unusable{"NoDatabase", [](const fs::path &file) { write_file(file, std::string(5000, 'x')); }},
                    Unusable{"Empty", [](const fs::path &file) { write_file(file, ""); }},
                    Unusable{
                        "OfAnotherProgram",
                        [](const fs::path &file) {
                            OtherProgram(file).run(
                                "CREATE TABLE devices (id INTEGER, name TEXT); INSERT INTO devices VALUES (1, 'own')");
                        }},
                    Unusable{"OfALaterVersion",
                             [](const fs::path &file) {
                                 DeviceStore{file};
                                 OtherProgram(file).run("PRAGMA user_version = 2");
                             }},
                    Unusable{"WithAnotherTable",
                             [](const fs::path &file) {
                                 DeviceStore{file};
                                 OtherProgram(file).run("ALTER TABLE devices DROP COLUMN icon");
                             }},
                    Unusable{"WithAViewInPlaceOfTheTable",
                             [](const fs::path &file) {
                                 DeviceStore{file};
                                 OtherProgram(file).run("ALTER TABLE devices RENAME TO kept;"
                                                        "CREATE VIEW devices AS SELECT * FROM kept");
                             }},
                    Unusable{"WithADamagedPage",
                             [](const fs::path &file) {
                                 DeviceStore{file};
                                 std::string contents = contents_of(file);
                                 contents.replace(4096, 2000, 2000, '\xaa');
                                 write_file(file, contents);
                             }},
                    Unusable{"ThatEndsTooEarly",
                             [](const fs::path &file) {
                                 DeviceStore{file};
                                 fs::resize_file(file, 6000);
                             }}),
    [](const auto &sample) { return sample.param.name; });

TEST_F(PortDeviceFiles, ADatabaseOfAnotherProgramWithAWriteAheadLog)
{
    OtherProgram other(devices_);
    other.run("PRAGMA journal_mode = WAL; CREATE TABLE notes (text TEXT); INSERT INTO notes VALUES ('own')");
    expect_left_alone();
}

TEST_F(PortDeviceFiles, AFolderInThePlaceOfTheFile)
{
    fs::create_directory(devices_);
    EXPECT_LT(rdm_init(), 0);
    EXPECT_THAT(log(), HasSubstr(devices_.string()));
    EXPECT_TRUE(fs::is_directory(devices_));
}

TEST_F(PortDeviceFiles, AFileInThePlaceOfTheFolder)
{
    write_file(folder_ / "file", "x");
    setenv("VESK_DEVICES", (folder_ / "file" / "devices.db").c_str(), 1);
    EXPECT_LT(rdm_init(), 0);
    EXPECT_THAT(log(), HasSubstr((folder_ / "file").string()));
}

TEST_F(PortDeviceFiles, TheFolderIsMadeWithTheFile)
{
    setenv("VESK_DEVICES", (folder_ / "a" / "b" / "devices.db").c_str(), 1);
    EXPECT_EQ(rdm_init(), 0);
    EXPECT_TRUE(fs::exists(folder_ / "a" / "b" / "devices.db"));
}

TEST_F(PortDeviceFiles, AFolderThatMayNotBeWritten)
{
    fs::permissions(folder_, fs::perms(0555));
    {
        const Unprivileged user;
        EXPECT_LT(rdm_init(), 0);
    }
    fs::permissions(folder_, fs::perms(0755));
    EXPECT_THAT(log(), HasSubstr(devices_.string()));
    EXPECT_FALSE(fs::exists(devices_));
}

TEST_F(PortDeviceFiles, AReadOnlyFileRefusesChanges)
{
    DeviceStore{devices_};
    fs::permissions(devices_, fs::perms(0444));
    fs::permissions(folder_, fs::perms(0777));
    const std::string before = contents_of(devices_);
    {
        const Unprivileged user;
        ASSERT_EQ(rdm_init(), 0);
        EXPECT_EQ(list_result(), std::pair(0, size_t{12}));
        EXPECT_EQ(rdm_set_status("0A:5E:20:77:1B:10", 1, 1), -EROFS);
        EXPECT_EQ(rdm_remove_device("0A:5E:20:77:1B:10", 1), -EROFS);
        EXPECT_EQ(rdm_remove_all(), -EROFS);
        EXPECT_EQ(rdm_deinit(), 0);
    }
    EXPECT_THAT(log(), HasSubstr(devices_.string() + " is read-only"));
    EXPECT_TRUE(contents_of(devices_) == before);
}

TEST_F(PortDeviceFiles, AReadOnlyFolderWithItsFile)
{
    DeviceStore{devices_};
    fs::permissions(devices_, fs::perms(0444));
    fs::permissions(folder_, fs::perms(0555));
    const std::string before = contents_of(devices_);
    {
        const Unprivileged user;
        EXPECT_EQ(rdm_init(), -EROFS);
    }
    fs::permissions(folder_, fs::perms(0755));
    EXPECT_THAT(log(), HasSubstr(devices_.string()));
    EXPECT_TRUE(contents_of(devices_) == before);
}

TEST_F(PortDeviceFiles, AWriterInTheWayLetsReadButNotChange)
{
    ASSERT_EQ(rdm_init(), 0);
    OtherProgram other(devices_);
    other.run("BEGIN EXCLUSIVE");
    EXPECT_EQ(list_result(), std::pair(0, size_t{12}));
    EXPECT_EQ(rdm_set_status("0A:5E:20:77:1B:10", 1, 1), -EBUSY);
    EXPECT_THAT(log(), HasSubstr(devices_.string() + " is locked"));
    other.run("ROLLBACK");
    EXPECT_EQ(rdm_set_status("0A:5E:20:77:1B:10", 1, 1), 0);
}

TEST_F(PortDeviceFiles, AProgramThatKeepsTheFileForItself)
{
    DeviceStore{devices_};
    OtherProgram other(devices_);
    other.run("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; UPDATE devices SET icon = 1; COMMIT");
    EXPECT_EQ(rdm_init(), -EBUSY);
    EXPECT_THAT(log(), HasSubstr(devices_.string() + " is locked"));
    const ProcessResult result = veskctl({"devices", "list"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr(devices_.string() + " is locked"));
}

TEST_F(PortDeviceFiles, AFileThatIsDamagedWhileItIsInUse)
{
    ASSERT_EQ(rdm_init(), 0);
    write_file(folder_ / "garbage", std::string(5000, 'x'));
    fs::rename(folder_ / "garbage", devices_);
    EXPECT_EQ(list_result().first, -EBADMSG);
    EXPECT_EQ(contents_of(devices_), std::string(5000, 'x'));
}
