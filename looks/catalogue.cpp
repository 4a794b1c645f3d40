#include "catalogue.h"

#include <array>
#include <cstdint>
#include <fstream>

namespace vesk::looks {

namespace {

/* The compiled form of a catalogue: a table of the ids' places, one of the texts', and the strings. The first entry,
   with an empty id, says how the texts are encoded. */
void write_catalogue(const std::filesystem::path &file, const std::string &id, const std::string &text)
{
    const std::array<std::string, 4> strings{"", id, "Content-Type: text/plain; charset=UTF-8\n", text};
    constexpr uint32_t header_words = 7;
    constexpr uint32_t count = 2;
    constexpr uint32_t entry_bytes = 8;
    const auto ids = static_cast<uint32_t>(header_words * sizeof(uint32_t));
    const uint32_t texts = ids + count * entry_bytes;
    std::array<uint32_t, header_words + 2 * strings.size()> words{0x950412de, 0, count, ids, texts, 0, 0};
    uint32_t place = texts + count * entry_bytes;
    for (size_t i = 0; i < strings.size(); ++i) {
        words[header_words + 2 * i] = static_cast<uint32_t>(strings[i].size());
        words[header_words + 2 * i + 1] = place;
        place += static_cast<uint32_t>(strings[i].size()) + 1;
    }
    std::ofstream out(file, std::ios::binary);
    out.exceptions(std::ios::failbit | std::ios::badbit);
    out.write(reinterpret_cast<const char *>(words.data()), sizeof words);
    for (const auto &string : strings)
        out.write(string.c_str(), static_cast<std::streamsize>(string.size()) + 1);
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
