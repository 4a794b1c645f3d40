#include "television/catalogue.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string_view>

#include "desktop/paths.h"

namespace vesk {

namespace {

constexpr uint32_t kMagic = 0x950412de;

/* The file's header, in the byte order of this machine. */
struct Header {
    uint32_t magic;
    uint32_t revision;
    uint32_t strings;
    uint32_t originals; /* offset of a table of Texts, like the next */
    uint32_t translations;
};

struct Text {
    uint32_t length;
    uint32_t offset;
};

/* Reads one record out of the file's bytes; false when they end before. */
template <class Record> bool read_at(std::string_view bytes, uint64_t offset, Record &record)
{
    if (offset + sizeof(Record) > bytes.size())
        return false;
    std::memcpy(&record, bytes.data() + offset, sizeof(Record));
    return true;
}

bool holds_texts(std::string_view bytes, uint64_t table, uint32_t count)
{
    for (uint64_t i = 0; i < count; ++i) {
        Text text{};
        if (!read_at(bytes, table + i * sizeof(Text), text))
            return false;
        const uint64_t end = uint64_t{text.offset} + text.length;
        if (end >= bytes.size() || bytes[end] != '\0')
            return false;
    }
    return true;
}

} // namespace

std::filesystem::path catalogue_file(const std::string &name)
{
    return vesk_port::share_folder() / "locale" / name / "LC_MESSAGES" / "ug-VeskUG-efl.mo";
}

Catalogue state_of_catalogue(const std::filesystem::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return Catalogue::missing;
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    Header header{};
    const bool good = read_at(bytes, 0, header) && header.magic == kMagic &&
                      holds_texts(bytes, header.originals, header.strings) &&
                      holds_texts(bytes, header.translations, header.strings);
    return good ? Catalogue::good : Catalogue::damaged;
}

} // namespace vesk
