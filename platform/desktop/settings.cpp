#include "settings.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <glib.h>
#include <memory>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "paths.h"
#include "port_error.h"

namespace vesk_port {

namespace {

constexpr const char *kGroup = "settings";

struct FreeKeyFile {
    void operator()(GKeyFile *file) const { g_key_file_free(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, FreeKeyFile>;

struct FreeError {
    void operator()(GError *error) const { g_error_free(error); }
};
using Error = std::unique_ptr<GError, FreeError>;

struct Word {
    const char *key;
    const char *word;
    const char *value;
};

constexpr std::array kWords{
    Word{kOrientationSetting.key, "landscape", "0"},
    Word{kOrientationSetting.key, "portrait", "1"},
    Word{kHighContrastSetting.key, "off", "0"},
    Word{kHighContrastSetting.key, "on", "1"},
};

/* Reads the key file; one that does not exist is empty. */
KeyFile load(const std::string &path)
{
    KeyFile file(g_key_file_new());
    GError *raw = nullptr;
    if (g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_KEEP_COMMENTS, &raw))
        return file;
    const Error error(raw);
    if (g_error_matches(raw, G_FILE_ERROR, G_FILE_ERROR_NOENT))
        return file;
    throw PortError(-EIO, "the settings file " + path + " cannot be read: " + raw->message +
                              ". Mend it, move it away, or name another file in VESK_SETTINGS.");
}

/* The file's contents, read again when the file on the disk is another or has changed: the module asks for the
 * orientation at each decision. */
GKeyFile *current()
{
    static std::string cached_path;
    static struct stat cached {
    };
    static KeyFile file;
    const std::string path = settings_file();
    struct stat now {};
    if (stat(path.c_str(), &now) != 0)
        now = {};
    const bool same = file && path == cached_path && now.st_ino == cached.st_ino && now.st_dev == cached.st_dev &&
                      now.st_size == cached.st_size && now.st_mtim.tv_sec == cached.st_mtim.tv_sec &&
                      now.st_mtim.tv_nsec == cached.st_mtim.tv_nsec;
    if (!same) {
        file.reset();
        file = load(path);
        cached_path = path;
        cached = now;
    }
    return file.get();
}

/* Keeps two writers from losing each other's change. It is the folder that is locked, since the file itself is
 * replaced by each writer. */
class FolderLock {
public:
    explicit FolderLock(const std::filesystem::path &folder)
        : fd_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        if (fd_ >= 0)
            flock(fd_, LOCK_EX);
    }
    ~FolderLock()
    {
        if (fd_ >= 0)
            close(fd_);
    }
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

private:
    int fd_;
};

} // namespace

std::string setting_key(const std::string &name)
{
    const auto known = std::ranges::find(kSettings, std::string_view(name), &Setting::alias);
    if (known != kSettings.end())
        return known->key;
    /* What a key file cannot hold as a key would damage the file. */
    if (name.find('/') != std::string::npos && name.find_first_of("=[]\n\r") == std::string::npos &&
        !name.starts_with(' ') && !name.ends_with(' ') && !name.starts_with('#'))
        return name;
    std::string aliases;
    for (const Setting &setting : kSettings)
        aliases.append(aliases.empty() ? "" : ", ").append(setting.alias);
    throw PortError(-EINVAL, "\"" + name + "\" is no setting; use " + aliases + " or a full key such as " +
                                 kLanguageSetting.key + ".");
}

std::string setting_value(const std::string &key, const std::string &word)
{
    std::string choice;
    for (const Word &known : kWords) {
        if (known.key != key)
            continue;
        if (word == known.word || word == known.value)
            return known.value;
        choice.append(choice.empty() ? "" : " or ").append(known.word);
    }
    if (!choice.empty())
        throw PortError(-EINVAL, "\"" + word + "\" is no value of " + key + "; use " + choice + ".");
    constexpr const char *locale_name = "^[a-z]{2,3}(_[A-Z]{2})?(\\.[A-Za-z0-9-]+)?(@[A-Za-z0-9]+)?\\z";
    if (key == kLanguageSetting.key &&
        !g_regex_match_simple(locale_name, word.c_str(), GRegexCompileFlags{}, GRegexMatchFlags{}))
        throw PortError(-EINVAL, "\"" + word + "\" is no language; write it like en_GB or ar_AE.UTF-8.");
    return word;
}

std::string setting_word(const std::string &key, const std::string &value)
{
    for (const Word &known : kWords) {
        if (known.key == key && known.value == value)
            return known.word;
    }
    return value;
}

std::optional<std::string> read_setting(const std::string &key)
{
    gchar *raw = g_key_file_get_string(current(), kGroup, key.c_str(), nullptr);
    if (raw) {
        const std::string value = raw;
        g_free(raw);
        return value;
    }
    const auto known = std::ranges::find(kSettings, std::string_view(key), &Setting::key);
    if (known != kSettings.end())
        return known->default_value;
    return std::nullopt;
}

void write_setting(const std::string &key, const std::optional<std::string> &value)
{
    const std::filesystem::path path = settings_file();
    make_folder_of(path);
    const FolderLock lock(path.parent_path());
    const KeyFile file = load(path);
    if (value)
        g_key_file_set_string(file.get(), kGroup, key.c_str(), value->c_str());
    else
        g_key_file_remove_key(file.get(), kGroup, key.c_str(), nullptr);
    GError *raw = nullptr;
    if (!g_key_file_save_to_file(file.get(), path.c_str(), &raw)) {
        const Error error(raw);
        throw PortError(-EACCES, "the settings file " + path.string() + " cannot be written: " + raw->message +
                                     ". Allow writing to its folder or name another file in VESK_SETTINGS.");
    }
}

} // namespace vesk_port
