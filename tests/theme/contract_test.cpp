/* theme/CONTRACT.md says what the built theme has, all of it, and everything that the module asks for. */

#include <Ecore_Evas.h>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>
#define EDJE_EDIT_IS_UNSTABLE_AND_I_KNOW_ABOUT_IT
#include <Edje_Edit.h>

#include "television/toolkit.h"

namespace {

using Strings = std::vector<std::string>;
using testing::Contains;
using testing::IsEmpty;

std::string read(const std::filesystem::path &file)
{
    std::ifstream in(file);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string read_all(const std::filesystem::path &folder)
{
    std::string text;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        text += read(entry.path()) + "\n";
    return text;
}

Strings split(const std::string &text, char at)
{
    Strings parts;
    std::stringstream stream(text);
    for (std::string part; std::getline(stream, part, at);)
        parts.push_back(part);
    return parts;
}

Strings matches(const std::string &text, const std::string &pattern, size_t group = 1)
{
    Strings found;
    const std::regex wanted(pattern);
    for (std::sregex_iterator match(text.begin(), text.end(), wanted), end; match != end; ++match)
        found.push_back((*match)[group]);
    return found;
}

size_t shared_beginning(const std::string &a, const std::string &b)
{
    return static_cast<size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
}

/* A name in the contract that repeats only what differs from the one before it: "buttons2" after
   "elm/popup/buttons1/popup/S" stands for "elm/popup/buttons2/popup/S". */
std::string written_out(const std::string &name, const std::string &before, char separator)
{
    if (before.empty() || name.find(separator) != name.npos)
        return name;
    Strings parts = split(before, separator);
    const auto closest =
        std::ranges::max_element(parts, {}, [&](const std::string &part) { return shared_beginning(part, name); });
    *closest = name;
    std::string whole;
    for (const std::string &part : parts)
        whole += (whole.empty() ? "" : std::string(1, separator)) + part;
    return whole;
}

Strings names_in(const std::string &cell, char separator)
{
    const std::string plain = std::regex_replace(cell, std::regex(R"(\([^)]*\))"), "");
    Strings names;
    for (const std::string &name : matches(plain, "`([^`]+)`"))
        names.push_back(written_out(name, names.empty() ? "" : names.front(), separator));
    return names;
}

struct Signal {
    std::string name;
    std::string source;
    auto operator<=>(const Signal &) const = default;
};

void PrintTo(const Signal &signal, std::ostream *out)
{
    *out << signal.name << " from \"" << signal.source << '"';
}

/* One row of the contract's tables of groups. */
struct Row {
    Strings groups;
    Strings parts;
    std::vector<Signal> taken;
    Strings given;
};

std::vector<Signal> signals_in(const std::string &cell)
{
    std::vector<Signal> signals;
    const std::regex one("`([^`]+)`( `([^`]+)`)?");
    for (std::sregex_iterator match(cell.begin(), cell.end(), one), end; match != end; ++match) {
        std::string source = (*match)[2].matched ? (*match)[3].str() : "elm";
        signals.push_back({(*match)[1], source == "\"\"" ? "" : source});
    }
    return signals;
}

std::vector<Row> rows_of(const std::string &contract)
{
    std::vector<Row> rows;
    for (const std::string &line : split(contract, '\n')) {
        if (!line.starts_with("| `elm/"))
            continue;
        Strings cells = split(line, '|');
        cells.resize(5);
        rows.push_back(
            {names_in(cells[1], '/'), names_in(cells[2], '.'), signals_in(cells[3]), names_in(cells[4], ',')});
    }
    return rows;
}

struct ContractTest : testing::Test {
    ContractTest() : contract(read(THEME_CONTRACT)), rows(rows_of(contract))
    {
        static const vesk::Toolkit toolkit{vesk::ToolkitOptions{}};
        canvas_ = ecore_evas_buffer_new(16, 16);
    }
    ~ContractTest() override { ecore_evas_free(canvas_); }

    static const char *theme() { return vesk::theme_file().c_str(); }

    /* A group of the built theme, to look into; deleted with the canvas. */
    Evas_Object *open(const std::string &group)
    {
        auto *object = edje_edit_object_add(ecore_evas_get(canvas_));
        EXPECT_TRUE(edje_object_file_set(object, theme(), group.c_str())) << group;
        return object;
    }

    std::set<Signal> signals_taken(const std::string &group)
    {
        std::set<Signal> signals;
        auto *object = open(group);
        Eina_List *programs = edje_edit_programs_list_get(object);
        for (const Eina_List *link = programs; link; link = eina_list_next(link)) {
            const auto *program = static_cast<const char *>(eina_list_data_get(link));
            const char *name = edje_edit_program_signal_get(object, program);
            const char *source = edje_edit_program_source_get(object, program);
            signals.insert({name ? name : "", source ? source : ""});
            edje_edit_string_free(name);
            edje_edit_string_free(source);
        }
        edje_edit_string_list_free(programs);
        evas_object_del(object);
        return signals;
    }

    const std::string contract;
    const std::vector<Row> rows;

private:
    Ecore_Evas *canvas_;
};

TEST_F(ContractTest, HasGroupsPartsAndSignals)
{
    size_t groups = 0;
    size_t parts = 0;
    size_t signals = 0;
    for (const Row &row : rows) {
        groups += row.groups.size();
        parts += row.parts.size();
        signals += row.taken.size() + row.given.size();
    }
    EXPECT_GT(groups, 30U);
    EXPECT_GT(parts, 40U);
    EXPECT_GT(signals, 30U);
}

TEST_F(ContractTest, EveryGroupIsInTheTheme)
{
    for (const Row &row : rows) {
        for (const std::string &group : row.groups)
            EXPECT_TRUE(edje_file_group_exists(theme(), group.c_str())) << group;
    }
}

TEST_F(ContractTest, EveryGroupOfTheThemeIsThere)
{
    std::set<std::string> promised;
    for (const Row &row : rows)
        promised.insert(row.groups.begin(), row.groups.end());
    Eina_List *groups = edje_file_collection_list(theme());
    Strings unknown;
    for (const Eina_List *link = groups; link; link = eina_list_next(link)) {
        std::string group = static_cast<const char *>(eina_list_data_get(link));
        if (group.starts_with("vesk/"))
            continue; /* what others are made from */
        /* The toolkit asks for a popup's look by either of two names. */
        constexpr std::string_view second_name = "elm/popup/base/popup/";
        if (group.starts_with(second_name))
            group.replace(0, second_name.size(), "elm/popup/base/");
        if (!promised.contains(group))
            unknown.push_back(group);
    }
    edje_file_collection_list_free(groups);
    EXPECT_THAT(unknown, IsEmpty());
}

TEST_F(ContractTest, EveryPartIsInItsGroups)
{
    for (const Row &row : rows) {
        /* A row of numbered groups lists the parts of all: each group has at least the first. */
        for (const std::string &part : row.parts) {
            const bool found = std::ranges::any_of(row.groups, [&](const std::string &group) {
                auto *object = open(group);
                const bool exists = edje_object_part_exists(object, part.c_str());
                evas_object_del(object);
                return exists;
            });
            EXPECT_TRUE(found) << part << " in " << row.groups.front();
        }
    }
}

TEST_F(ContractTest, EverySignalIsTaken)
{
    for (const Row &row : rows) {
        for (const std::string &group : row.groups) {
            const auto taken = signals_taken(group);
            for (const Signal &signal : row.taken)
                EXPECT_THAT(taken, Contains(signal)) << group;
        }
    }
}

TEST_F(ContractTest, EveryRowTakesWhatRowsTake)
{
    const Strings sentence = matches(contract, R"(Every row takes ([^.]*)\.)");
    ASSERT_EQ(sentence.size(), 1U);
    const Strings signals = names_in(sentence[0], ',');
    ASSERT_GE(signals.size(), 8U);
    for (const Row &row : rows) {
        for (const std::string &group : row.groups) {
            if (!group.starts_with("elm/genlist/item/"))
                continue;
            const auto taken = signals_taken(group);
            for (const std::string &signal : signals)
                EXPECT_THAT(taken, Contains(Signal{signal, "elm"})) << group;
        }
    }
}

TEST_F(ContractTest, EverySignalGivenIsInTheSources)
{
    const std::string sources = read_all(THEME_SOURCES);
    for (const Row &row : rows) {
        for (const std::string &signal : row.given)
            EXPECT_NE(sources.find('"' + signal + '"'), sources.npos) << signal;
    }
}

TEST_F(ContractTest, EveryClassOfTheSourcesIsThere)
{
    const std::string sources = read_all(THEME_SOURCES);
    Strings classes = matches(sources, R"re((?:ROLE|FORM)\("([a-z0-9-]+)")re");
    ASSERT_GT(classes.size(), 25U);
    for (const std::string &name : classes)
        EXPECT_NE(contract.find("`" + name + "`"), contract.npos) << name;
}

TEST_F(ContractTest, EverythingTheModuleAsksForIsThere)
{
    const auto sources =
        std::regex_replace(read_all(MODULE_SOURCES), std::regex("sizeof \"[^\"]*\""), ""); /* only a length */
    const Strings asked =
        matches(sources, R"re("((?:elm[.,]|theme,|highcontrast_|[CP]_[A-Z]|i_[a-z]|(?:Single|Multi)Line)[^"]*)")re");
    const std::set<std::string> names(asked.begin(), asked.end());
    ASSERT_GT(names.size(), 25U);
    for (const std::string &name : names) {
        if (name.ends_with("%d")) { /* the contract has the numbers */
            const std::string stem = name.substr(0, name.size() - 2);
            EXPECT_FALSE(matches(contract, "(`" + stem + "[0-9]+`)").empty()) << name;
            continue;
        }
        EXPECT_FALSE(
            matches(contract, "(`[^`]*" + std::regex_replace(name, std::regex("\\."), "\\.") + "[^`]*`)").empty())
            << name;
    }
}

} // namespace
