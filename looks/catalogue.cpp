#include "catalogue.h"

#include <gio/gio.h>
#include <stdexcept>

namespace vesk::looks {

namespace {

std::string quoted(const std::string &text)
{
    std::string result = "\"";
    for (const char letter : text) {
        if (letter == '"' || letter == '\\')
            result += '\\';
        result += letter;
    }
    return result + "\"";
}

void write_catalogue(const std::filesystem::path &file, const std::string &id, const std::string &text)
{
    const auto source = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\nmsgid " + quoted(id) +
                        "\nmsgstr " + quoted(text) + "\n";
    g_autoptr(GError) error = nullptr;
    g_autoptr(GSubprocess) msgfmt =
        g_subprocess_new(G_SUBPROCESS_FLAGS_STDIN_PIPE, &error, "msgfmt", "--output-file", file.c_str(), "-", nullptr);
    if (!msgfmt || !g_subprocess_communicate_utf8(msgfmt, source.c_str(), nullptr, nullptr, nullptr, &error) ||
        !g_subprocess_wait_check(msgfmt, nullptr, &error))
        throw std::runtime_error("msgfmt cannot write " + file.string() + ": " + error->message +
                                 "; the package gettext has it.");
}

} // namespace

void replace_text(const std::filesystem::path &share, const std::filesystem::path &folder, const std::string &language,
                  const std::string &id, const std::string &text)
{
    namespace fs = std::filesystem;
    fs::create_directories(folder / "locale");
    for (const auto &entry : fs::directory_iterator(share)) {
        if (entry.path().filename() != "locale")
            fs::create_directory_symlink(entry.path(), folder / entry.path().filename());
    }
    for (const auto &entry : fs::directory_iterator(share / "locale"))
        fs::create_directory_symlink(entry.path(), folder / "locale" / entry.path().filename());
    const auto own = folder / "locale" / language;
    fs::remove(own);
    fs::create_directories(own / "LC_MESSAGES");
    write_catalogue(own / "LC_MESSAGES" / "ug-VeskUG-efl.mo", id, text);
}

} // namespace vesk::looks
