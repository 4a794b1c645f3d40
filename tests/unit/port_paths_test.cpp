/* Where the port keeps its files, whatever the environment says. */

#include <cstdlib>
#include <optional>
#include <sys/stat.h>

#include "desktop/paths.h"
#include "desktop/port_error.h"
#include "desktop/product.h"
#include "desktop/settings.h"
#include "port_fixture.h"

namespace fs = std::filesystem;

using testing::HasSubstr;
using vesk_port::PortError;

namespace {

/* Variables of the desktop for one test. */
class PortPaths : public PortTest {
protected:
    PortPaths()
    {
        for (const char *variable : kVariables) {
            const char *value = std::getenv(variable);
            before_.push_back(value ? std::optional<std::string>(value) : std::nullopt);
            unsetenv(variable);
        }
        unsetenv("VESK_DEVICES");
        unsetenv("VESK_SETTINGS");
        setenv("HOME", folder_.c_str(), 1);
    }

    ~PortPaths() override
    {
        umask(umask_);
        for (size_t i = 0; i < std::size(kVariables); ++i)
            before_[i] ? setenv(kVariables[i], before_[i]->c_str(), 1) : unsetenv(kVariables[i]);
    }

    static mode_t mode_of(const fs::path &file)
    {
        struct stat found {};
        return stat(file.c_str(), &found) == 0 ? found.st_mode & 07777U : 0;
    }

    /* `path` is asked for, and the sentence names the variable and its value. */
    template <class Path> static void expect_refused(Path path, const std::string &variable, const std::string &value)
    {
        try {
            ADD_FAILURE() << path().string();
        } catch (const PortError &error) {
            EXPECT_THAT(error.what(), HasSubstr(variable + " is \"" + value + "\""));
        }
    }

private:
    static constexpr const char *kVariables[] = {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"};
    std::vector<std::optional<std::string>> before_;
    const mode_t umask_ = umask(022);
};

} // namespace

TEST_F(PortPaths, FilesStandInTheHomeFolderWithoutOtherWishes)
{
    EXPECT_EQ(vesk_port::devices_file(), folder_ / ".local/share/vesk/devices.db");
    EXPECT_EQ(vesk_port::settings_file(), folder_ / ".config/vesk/settings.ini");
    EXPECT_EQ(vesk_port::product_choice_file(), folder_ / ".config/vesk/product");
}

TEST_F(PortPaths, AnEmptyHomeIsTheOneOfTheAccount)
{
    setenv("HOME", "", 1);
    for (const fs::path &file :
         {vesk_port::devices_file(), vesk_port::settings_file(), vesk_port::product_choice_file()}) {
        EXPECT_TRUE(file.is_absolute()) << file;
        EXPECT_FALSE(file.string().starts_with(fs::current_path().string() + "/.")) << file;
    }
}

TEST_F(PortPaths, RelativeFoldersAreRefusedByName)
{
    setenv("XDG_CONFIG_HOME", "config", 1);
    expect_refused(vesk_port::settings_file, "XDG_CONFIG_HOME", "config");
    expect_refused(vesk_port::product_choice_file, "XDG_CONFIG_HOME", "config");
    setenv("XDG_DATA_HOME", "./data", 1);
    expect_refused(vesk_port::devices_file, "XDG_DATA_HOME", "./data");
    unsetenv("XDG_DATA_HOME");
    setenv("HOME", "me", 1);
    expect_refused(vesk_port::devices_file, "HOME", "me");
    EXPECT_EQ(veskctl({"settings", "set", "orientation", "portrait"}).exit_code, 1);
    EXPECT_FALSE(fs::exists("config"));
}

TEST_F(PortPaths, AFileThatIsNamedNeedsNoHome)
{
    setenv("HOME", "me", 1);
    setenv("VESK_SETTINGS", (folder_ / "mine.ini").c_str(), 1);
    EXPECT_EQ(vesk_port::settings_file(), folder_ / "mine.ini");
}

TEST_F(PortPaths, FoldersAreTheUsersAloneWhateverTheUmask)
{
    for (const mode_t mask : {0000U, 0022U, 0277U}) {
        const fs::path top = folder_ / ("umask" + std::to_string(mask));
        setenv("XDG_CONFIG_HOME", (top / "config").c_str(), 1);
        umask(mask);
        vesk_port::make_folder_of(vesk_port::settings_file());
        umask(022);
        for (const fs::path &folder : {top, top / "config", top / "config/vesk"})
            EXPECT_EQ(mode_of(folder), 0700U) << folder << " with umask " << mask;
    }
}

TEST_F(PortPaths, AFolderThatIsThereKeepsItsRights)
{
    fs::create_directory(folder_ / "config");
    fs::permissions(folder_ / "config", fs::perms(0755));
    setenv("XDG_CONFIG_HOME", (folder_ / "config").c_str(), 1);
    vesk_port::write_setting(vesk_port::kOrientationSetting.key, "1");
    EXPECT_EQ(mode_of(folder_ / "config"), 0755U);
    EXPECT_EQ(mode_of(folder_ / "config/vesk"), 0700U);
}

TEST_F(PortPaths, AFileInAFoldersPlaceIsNamed)
{
    write_file(folder_ / "config", "");
    setenv("XDG_CONFIG_HOME", (folder_ / "config").c_str(), 1);
    try {
        vesk_port::write_setting(vesk_port::kOrientationSetting.key, "1");
        ADD_FAILURE();
    } catch (const PortError &error) {
        EXPECT_THAT(error.what(), HasSubstr((folder_ / "config").string()));
    }
}

TEST_F(PortPaths, APipeForTheChosenProductIsRefusedAtOnce)
{
    const fs::path choice = vesk_port::product_choice_file();
    vesk_port::make_folder_of(choice);
    ASSERT_EQ(mkfifo(choice.c_str(), 0600), 0);
    EXPECT_THROW(vesk_port::chosen_product(), PortError);
}
