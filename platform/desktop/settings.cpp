#include "settings.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "glib_owner.h"
#include "paths.h"
#include "port_call.h"
#include "regular_file.h"
#include "text.h"

namespace vesk_port {

namespace {

constexpr const char *kGroup = "settings";
constexpr const char *kAdvice = "Mend it, move it away, or name another file in VESK_SETTINGS.";

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
    const std::string text = read_regular_file(path, "settings file", kAdvice).value_or("");
    GlibError error;
    if (!text.empty() &&
        !g_key_file_load_from_data(file.get(), text.data(), text.size(), G_KEY_FILE_KEEP_COMMENTS, error.place()))
        throw PortError(-EIO,
                        "the settings file " + escaped(path) + " cannot be read: " + error.message() + ". " + kAdvice);
    return file;
}

/* Tells one state of a file from another. */
struct FileState {
    explicit FileState(const std::string &path)
    {
        if (stat(path.c_str(), &found) != 0)
            found = {};
    }

    bool operator==(const FileState &other) const
    {
        const auto same_time = [](const timespec &a, const timespec &b) {
            return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
        };
        return found.st_ino == other.found.st_ino && found.st_dev == other.found.st_dev &&
               found.st_size == other.found.st_size && same_time(found.st_mtim, other.found.st_mtim) &&
               same_time(found.st_ctim, other.found.st_ctim);
    }

    struct stat found {};
};

/* The file's contents, read again when the file on the disk is another or has changed: the module asks for the
 * orientation at each decision. */
GKeyFile *current()
{
    struct Read {
        std::string path;
        FileState state;
        KeyFile file;
    };
    static std::optional<Read> read;
    static std::string told; /* why the file could not be read the last time */
    const std::string path = settings_file();
    const FileState state(path);
    if (read && read->path == path && read->state == state)
        return read->file.get();
    read.reset();
    try {
        read.emplace(Read{path, state, load(path)});
    } catch (const PortError &error) {
        if (told == error.what())
            throw RepeatedError(error);
        told = error.what();
        throw;
    }
    told.clear();
    return read->file.get();
}

/* The value in the file, or the default. */
std::optional<std::string> stored_setting(const std::string &key)
{
    GlibError error;
    const GlibText value(g_key_file_get_string(current(), kGroup, key.c_str(), error.place()));
    if (value)
        return value.get();
    if (error.is(G_KEY_FILE_ERROR, G_KEY_FILE_ERROR_UNKNOWN_ENCODING) ||
        error.is(G_KEY_FILE_ERROR, G_KEY_FILE_ERROR_INVALID_VALUE))
        throw PortError(-EILSEQ, "the setting " + escaped(key) + " in " + escaped(settings_file().string()) +
                                     " is no text: " + error.message() +
                                     ". Give it a value with: veskctl settings set");
    return default_setting(key);
}

struct Override {
    std::string value;
    /* What was stored when the override began; nothing as long as the file cannot be read. */
    std::optional<std::optional<std::string>> stored;
};

std::map<std::string, Override> &overrides()
{
    static std::map<std::string, Override> all;
    return all;
}

/* Keeps two writers from losing each other's change. It is the folder that is locked, since the file itself is
 * replaced by each writer. */
class FolderLock {
public:
    explicit FolderLock(const std::filesystem::path &folder)
        : fd_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        while (fd_ >= 0 && flock(fd_, LOCK_EX) != 0 && errno == EINTR) {
        }
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

bool is_utf8(const std::string &text)
{
    return g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr);
}

/* What a key file cannot hold as a key would damage the file. */
bool can_be_a_key(const std::string &name)
{
    const auto is_control = [](unsigned char byte) { return byte < 0x20 || byte == 0x7f; };
    return !name.empty() && is_utf8(name) && name.find_first_of("=[]") == std::string::npos &&
           std::ranges::none_of(name, is_control) && !name.starts_with(' ') && !name.ends_with(' ') &&
           !name.starts_with('#');
}

} // namespace

std::string setting_key(const std::string &name)
{
    const auto known = std::ranges::find(kSettings, std::string_view(name), &Setting::alias);
    if (known != kSettings.end())
        return known->key;
    if (name.find('/') != std::string::npos && can_be_a_key(name))
        return name;
    std::string aliases;
    for (const Setting &setting : kSettings)
        aliases.append(aliases.empty() ? "" : ", ").append(setting.alias);
    throw PortError(-EINVAL, "\"" + escaped(name) + "\" is no setting; use " + aliases + " or a full key such as " +
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
        throw PortError(-EINVAL, "\"" + escaped(word) + "\" is no value of " + escaped(key) + "; use " + choice + ".");
    constexpr const char *locale_name = "^[a-z]{2,3}(_[A-Z]{2})?(\\.[A-Za-z0-9-]+)?(@[A-Za-z0-9]+)?\\z";
    if (key == kLanguageSetting.key &&
        !g_regex_match_simple(locale_name, word.c_str(), GRegexCompileFlags{}, GRegexMatchFlags{}))
        throw PortError(-EINVAL, "\"" + escaped(word) + "\" is no language; write it like en_GB or ar_AE.UTF-8.");
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

std::optional<std::string> default_setting(const std::string &key)
{
    const auto known = std::ranges::find(kSettings, std::string_view(key), &Setting::key);
    return known != kSettings.end() ? std::optional<std::string>(known->default_value) : std::nullopt;
}

std::optional<std::string> read_setting(const std::string &key)
{
    const auto found = overrides().find(key);
    if (found == overrides().end())
        return stored_setting(key);
    Override &override = found->second;
    std::optional<std::string> stored;
    if (port_call("reading the settings", [&] { stored = stored_setting(key); }) != 0)
        return override.value;
    if (!override.stored)
        override.stored = stored;
    if (*override.stored == stored)
        return override.value;
    overrides().erase(found);
    return stored;
}

void override_setting(const std::string &key, const std::string &value)
{
    overrides().insert_or_assign(key, Override{value, std::nullopt});
    read_setting(key); /* notes what is stored now */
}

void write_setting(const std::string &key, const std::optional<std::string> &value)
{
    if (!can_be_a_key(key))
        throw PortError(-EINVAL, "\"" + escaped(key) +
                                     "\" is no key of a setting; use UTF-8 without = [ ] and control "
                                     "characters.");
    if (value && (!is_utf8(*value) || value->find('\0') != std::string::npos))
        throw PortError(-EINVAL,
                        "the value \"" + escaped(*value) + "\" of " + escaped(key) + " is no text; use UTF-8.");
    const std::filesystem::path path = settings_file();
    make_folder_of(path);
    const FolderLock lock(path.parent_path());
    const KeyFile file = load(path);
    if (value)
        g_key_file_set_string(file.get(), kGroup, key.c_str(), value->c_str());
    else
        g_key_file_remove_key(file.get(), kGroup, key.c_str(), nullptr);
    GlibError error;
    if (!g_key_file_save_to_file(file.get(), path.c_str(), error.place()))
        throw PortError(error.file_code(), "the settings file " + escaped(path.string()) +
                                               " cannot be written: " + error.message() +
                                               ". Allow writing to its folder or name another file in VESK_SETTINGS.");
}

} // namespace vesk_port
