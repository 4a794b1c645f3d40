/* A database's log never comes to another database: stores that are replaced, removed or moved away while their
 * changes stand in a log beside them. */

#include "device_fixture.h"
#include "other_program.h"

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;
using vesk_port::DeviceStore;

namespace {

/* What the service tells, or the code of its refusal. */
std::vector<std::string> names()
{
    std::vector<std::string> all;
    for (const RdmDeviceInfo &info : devices())
        all.push_back(name_of(info));
    return all;
}

class PortDeviceLogs : public PortTest {
protected:
    ~PortDeviceLogs() override { rdm_deinit(); }

    fs::path log_file() const { return devices_.string() + "-wal"; }

    /* A store with "old" in it, and another one elsewhere that was made before. */
    void make_stores()
    {
        DeviceStore(backup_).replace({phone("backup", "02:00:00:00:00:01")});
        DeviceStore(devices_).replace({phone("old", "02:00:00:00:00:02")});
    }

    /* A program changes the store, with the change in a write-ahead log, and is killed: the files stay as they are. */
    void leave_a_log()
    {
        const fs::path kept = folder_ / "kept.db";
        {
            OtherProgram other(devices_);
            other.run("PRAGMA journal_mode = WAL; UPDATE devices SET name = 'changed'");
            fs::copy_file(devices_, kept);
            fs::copy_file(log_file(), kept.string() + "-wal");
        }
        fs::remove(devices_);
        fs::rename(kept, devices_);
        fs::rename(kept.string() + "-wal", log_file());
        ASSERT_GT(fs::file_size(log_file()), 0U);
    }

    /* The same while the program lives and the service is open. */
    void change_in_a_log(OtherProgram &other)
    {
        other.run("PRAGMA journal_mode = WAL; UPDATE devices SET name = 'changed'");
        ASSERT_THAT(names(), ElementsAre("changed"));
        ASSERT_GT(fs::file_size(log_file()), 0U);
    }

    void expect_only_the_backup()
    {
        EXPECT_THAT(names(), ElementsAre("backup"));
        rdm_deinit();
        EXPECT_FALSE(fs::exists(log_file()));
        ASSERT_EQ(rdm_init(), 0);
        EXPECT_THAT(names(), ElementsAre("backup"));
    }

    void expect_a_new_household()
    {
        EXPECT_EQ(names().size(), 12U);
        rdm_deinit();
        EXPECT_FALSE(fs::exists(log_file()));
        ASSERT_EQ(rdm_init(), 0);
        EXPECT_EQ(names().size(), 12U);
    }

    const fs::path backup_ = folder_ / "backup.db";
};

} // namespace

TEST_F(PortDeviceLogs, AChangeLeavesNoLogWhileTheStoreIsOpen)
{
    ASSERT_EQ(rdm_init(), 0);
    ASSERT_EQ(rdm_set_status("0A:5E:20:77:1B:10", 1, 1), 0);
    std::vector<std::string> files;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder_))
        files.push_back(entry.path().filename());
    EXPECT_THAT(files, ElementsAre("devices.db"));
}

TEST_F(PortDeviceLogs, AStoreIsReplacedAfterAKill)
{
    make_stores();
    leave_a_log();
    fs::rename(backup_, devices_);
    ASSERT_EQ(rdm_init(), 0);
    expect_only_the_backup();
}

TEST_F(PortDeviceLogs, AStoreIsReplacedByOneInWriteAheadModeAfterAKill)
{
    make_stores();
    OtherProgram(backup_).run("PRAGMA journal_mode = WAL");
    leave_a_log();
    fs::rename(backup_, devices_);
    ASSERT_EQ(rdm_init(), 0);
    expect_only_the_backup();
}

TEST_F(PortDeviceLogs, AStoreIsRemovedAfterAKill)
{
    make_stores();
    leave_a_log();
    fs::remove(devices_);
    ASSERT_EQ(rdm_init(), 0);
    expect_a_new_household();
}

TEST_F(PortDeviceLogs, AStoreIsMovedAwayAfterAKillAndItsLogIsKept)
{
    make_stores();
    leave_a_log();
    const std::string log = contents_of(log_file());
    fs::rename(devices_, folder_ / "away.db");
    ASSERT_EQ(veskctl({"devices", "list"}).exit_code, 0);
    ASSERT_EQ(rdm_init(), 0);
    expect_a_new_household();
    EXPECT_TRUE(contents_of(log_file().string() + ".old") == log) << "it holds the newest of what was moved away";
}

TEST_F(PortDeviceLogs, AStoreIsReplacedWhileItIsOpen)
{
    make_stores();
    ASSERT_EQ(rdm_init(), 0);
    OtherProgram other(devices_);
    change_in_a_log(other);
    fs::rename(backup_, devices_);
    expect_only_the_backup();
}

TEST_F(PortDeviceLogs, AStoreIsRemovedWhileItIsOpen)
{
    make_stores();
    ASSERT_EQ(rdm_init(), 0);
    OtherProgram other(devices_);
    change_in_a_log(other);
    fs::remove(devices_);
    expect_a_new_household();
}

TEST_F(PortDeviceLogs, AStoreIsMovedAwayWhileItIsOpen)
{
    make_stores();
    ASSERT_EQ(rdm_init(), 0);
    OtherProgram other(devices_);
    change_in_a_log(other);
    fs::rename(devices_, folder_ / "away.db");
    expect_a_new_household();
}

TEST_F(PortDeviceLogs, ALogOfItsOwnIsTakenOver)
{
    make_stores();
    leave_a_log();
    fs::last_write_time(devices_, fs::last_write_time(log_file()));
    ASSERT_EQ(rdm_init(), 0);
    EXPECT_THAT(names(), ElementsAre("changed"));
    EXPECT_FALSE(fs::exists(log_file()));
}

TEST_F(PortDeviceLogs, ALogInUseIsShared)
{
    make_stores();
    OtherProgram other(devices_);
    other.run("PRAGMA journal_mode = WAL; UPDATE devices SET name = 'changed'");
    fs::last_write_time(devices_, fs::last_write_time(log_file()) - std::chrono::hours(1));
    ASSERT_EQ(rdm_init(), 0);
    EXPECT_THAT(names(), ElementsAre("changed"));
    EXPECT_EQ(rdm_set_status("02:00:00:00:00:02", 2, 1), 0);
    other.run("UPDATE devices SET name = 'again'");
    EXPECT_THAT(names(), ElementsAre("again"));
    EXPECT_EQ(devices().front().status, 1);
}

/* --- First starts --- */

TEST_F(PortDeviceLogs, TheDraftOfAKilledFirstStartGoes)
{
    write_file(devices_.string() + ".new", "half");
    write_file(devices_.string() + "-journal", "another's");
    ASSERT_EQ(rdm_init(), 0);
    EXPECT_EQ(names().size(), 12U);
    EXPECT_FALSE(fs::exists(devices_.string() + ".new"));
    EXPECT_FALSE(fs::exists(devices_.string() + "-journal"));
}
