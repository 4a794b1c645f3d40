/* Disks that take no more. */

#include <cerrno>
#include <map>
#include <sqlite3.h>
#include <utility>

#include "device_fixture.h"

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::WithParamInterface;

namespace {

int refusal;

ssize_t refused_write(int, const void *, size_t)
{
    errno = refusal;
    return -1;
}

ssize_t refused_pwrite(int file, const void *bytes, size_t size, off_t)
{
    return refused_write(file, bytes, size);
}

/* Replaces SQLite's calls of the system as long as it lives. */
class RefusingDisk {
public:
    RefusingDisk(int error, std::map<const char *, sqlite3_syscall_ptr> calls) : calls_(std::move(calls))
    {
        refusal = error;
        for (const auto &[name, function] : calls_)
            vfs()->xSetSystemCall(vfs(), name, function);
    }
    ~RefusingDisk()
    {
        for (const auto &[name, function] : calls_)
            vfs()->xSetSystemCall(vfs(), name, nullptr);
    }
    RefusingDisk(const RefusingDisk &) = delete;
    RefusingDisk &operator=(const RefusingDisk &) = delete;

private:
    static sqlite3_vfs *vfs() { return sqlite3_vfs_find(nullptr); }

    std::map<const char *, sqlite3_syscall_ptr> calls_;
};

/* Which of them SQLite uses depends on how it was built. */
RefusingDisk full_disk(int error)
{
    const auto positioned = reinterpret_cast<sqlite3_syscall_ptr>(refused_pwrite);
    return {error,
            {{"write", reinterpret_cast<sqlite3_syscall_ptr>(refused_write)},
             {"pwrite", positioned},
             {"pwrite64", positioned}}};
}

struct FullDisk : PortTest, WithParamInterface<int> {
    ~FullDisk() override { rdm_deinit(); }
};

} // namespace

TEST_P(FullDisk, RefusesChangesAndShowsTheDevices)
{
    ASSERT_EQ(rdm_init(), 0);
    const std::string before = contents_of(devices_);
    {
        const RefusingDisk disk = full_disk(GetParam());
        EXPECT_EQ(rdm_set_status("0A:5E:20:77:1B:10", 1, 1), -ENOSPC);
        EXPECT_EQ(rdm_remove_all(), -ENOSPC);
        EXPECT_EQ(devices().size(), 12U);
    }
    EXPECT_THAT(log(), HasSubstr(devices_.string() + " cannot be written, the disk is full"));
    EXPECT_TRUE(contents_of(devices_) == before);
    EXPECT_EQ(rdm_set_status("0A:5E:20:77:1B:10", 1, 1), 0);
}

INSTANTIATE_TEST_SUITE_P(, FullDisk, testing::Values(ENOSPC, EDQUOT),
                         [](const auto &sample) { return sample.param == ENOSPC ? "Space" : "Quota"; });

TEST_F(PortTest, AFirstStartOnAFullDiskLeavesNoHalfMadeFile)
{
    {
        const RefusingDisk disk = full_disk(ENOSPC);
        EXPECT_EQ(rdm_init(), -ENOSPC);
    }
    EXPECT_THAT(log(), HasSubstr("the disk is full"));
    EXPECT_TRUE(fs::is_empty(folder_));
    EXPECT_EQ(rdm_init(), 0);
    EXPECT_EQ(rdm_deinit(), 0);
}
