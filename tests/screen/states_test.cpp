/* Every way out of every state leads where docs/states.md says. */

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "edit_fixture.h"

namespace {

/* One cell of the document. */
struct Way {
    std::string state;
    std::string event;
    std::string product;
    std::string result;
    bool touch; /* chosen by a touch, not by Return */
};

void PrintTo(const Way &way, std::ostream *out)
{
    *out << way.state << ", " << way.event << (way.touch ? " by touch" : "") << " on a " << way.product << ": "
         << way.result;
}

std::string trimmed(const std::string &text)
{
    const size_t begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

/* The rows of the table under a heading, its own heading first. */
std::vector<std::vector<std::string>> table_under(const std::string &heading)
{
    std::ifstream document(STATES_DOCUMENT);
    std::vector<std::vector<std::string>> rows;
    bool under = false;
    for (std::string line; std::getline(document, line);) {
        if (line.starts_with("## "))
            under = line == "## " + heading;
        if (!under || !line.starts_with("|") || line.starts_with("|--"))
            continue;
        std::istringstream cells(line.substr(1));
        rows.emplace_back();
        for (std::string cell; std::getline(cells, cell, '|');)
            rows.back().push_back(trimmed(cell));
    }
    return rows;
}

std::vector<Way> ways_of_leaving()
{
    std::vector<Way> ways;
    const auto rows = table_under("Leaving");
    for (size_t i = 1; i < rows.size(); ++i) {
        for (const char *product : {"television", "board"}) {
            ways.push_back({rows[i].at(0), "Back", product, rows[i].at(1), false});
            ways.push_back({rows[i].at(0), "Close", product, rows[i].at(2), false});
        }
        ways.push_back({rows[i].at(0), "touch outside", "television", rows[i].at(3), true});
        ways.push_back({rows[i].at(0), "touch outside", "board", rows[i].at(4), true});
    }
    return ways;
}

std::vector<Way> ways_of_choosing()
{
    std::vector<Way> ways;
    const auto rows = table_under("Choosing");
    for (size_t i = 1; i < rows.size(); ++i) {
        const std::string &chosen = rows[i].at(1);
        for (size_t product : {2u, 3u}) {
            if (rows[i].at(product) == "-")
                continue;
            const Way way{rows[i].at(0), chosen, rows[0].at(product), rows[i].at(product), false};
            if (chosen != "second button, nothing checked")
                ways.push_back(way);
            if (chosen != "three seconds") {
                ways.push_back(way);
                ways.back().touch = true;
                if (way.state == "drop-down" && way.product == "television")
                    ways.back().result = "drop-down"; /* see below the document's table */
            }
        }
    }
    return ways;
}

std::string test_name(const testing::TestParamInfo<Way> &info)
{
    std::string name =
        info.param.state + "_" + info.param.event + (info.param.touch ? "_touch_" : "_key_") + info.param.product;
    std::erase_if(name, [](char c) { return c == ','; });
    std::ranges::replace_if(
        name, [](char c) { return !isalnum(c); }, '_');
    return name;
}

struct StatesTest : EditTest, testing::WithParamInterface<Way> {
    /* Brings the screen into a state; three devices, the first row has the focus. */
    void enter(const std::string &state)
    {
        static const std::map<std::string, std::vector<std::string>> keys{
            {"list", {}},
            {"empty list", {}},
            {"drop-down", {"Return"}},
            {"details", {"Return", "Down", "Down", "Return"}},
            {"edit mode", {"Right", "Return"}},
            {"confirmation", {"Right", "Return", "Return", "Right", "Return"}},
            {"toast", {"Right", "Return", "Return", "Right", "Return", "Left", "Return"}},
        };
        ASSERT_TRUE(keys.contains(state)) << "the document names a state that this test does not know";
        use_product(GetParam().product);
        register_devices(state == "empty list" ? phones(0) : phones(3));
        open();
        for (const std::string &key : keys.at(state))
            press(key.c_str());
        ASSERT_EQ(state_now(), state);
    }

    void tap_row(Evas_Object *list, int index)
    {
        const Eina_Rectangle place = row_area(row(list, index));
        panel().tap(place.x + place.w / 2, place.y + place.h / 2);
        panel().settle();
    }

    void check_every_row()
    {
        press("XF86Back");
        turn_over({1, 2});
        press({"Right", "Return"});
        ASSERT_NE(app()->delete_popup, nullptr);
    }

    void choose_by_key(const std::string &chosen)
    {
        static const std::map<std::string, std::vector<std::string>> keys{
            {"a row", {"Return"}},
            {"first button", {"Right", "Return"}},
            {"the present state", {"Return"}},
            {"the other state", {"Down", "Return"}},
            {"details", {"Down", "Down", "Return"}},
            {"close button", {"Return"}},
            {"second button, a row checked", {"Return", "Right", "Return"}},
            {"third button", {"Right", "Down", "Return"}},
            {"No", {"Return"}},
            {"Yes", {"Left", "Return"}},
            {"Yes, every row checked", {"Left", "Return"}},
        };
        if (chosen == "second button") {
            GetParam().state == "list" ? press({"Right", "Down", "Return"}) : press("Return");
            return;
        }
        if (chosen == "Yes, every row checked") {
            ASSERT_NO_FATAL_FAILURE(check_every_row());
        }
        ASSERT_TRUE(keys.contains(chosen)) << "the document names something that this test does not know";
        for (const std::string &key : keys.at(chosen))
            press(key.c_str());
    }

    void choose_by_touch(const std::string &chosen)
    {
        if (chosen == "a row")
            tap_row(app()->genlist, 1);
        else if (chosen == "first button")
            tap(app()->edit_button);
        else if (chosen == "second button" || chosen == "second button, nothing checked")
            tap(app()->close_button);
        else if (chosen == "second button, a row checked") {
            tap_row(app()->genlist, 2);
            tap(app()->close_button);
        } else if (chosen == "third button")
            tap(app()->exit_button);
        else if (chosen == "the present state")
            tap_row(app()->action_genlist, 0);
        else if (chosen == "the other state")
            tap_row(app()->action_genlist, 1);
        else if (chosen == "details")
            tap_row(app()->action_genlist, 2);
        else if (chosen == "close button")
            tap(app()->detail_close_button);
        else if (chosen == "No")
            tap(no());
        else if (chosen == "Yes")
            tap(yes());
        else if (chosen == "Yes, every row checked") {
            ASSERT_NO_FATAL_FAILURE(check_every_row());
            tap(yes());
        } else
            FAIL() << "the document names something that this test does not know";
    }

    void choose(const Way &way)
    {
        if (way.event == "three seconds")
            panel().run_until([] { return !b_disable_focus; }, 3500);
        else if (way.touch)
            choose_by_touch(way.event);
        else
            choose_by_key(way.event);
        panel().settle();
    }

    /* A screen that goes on has the focus somewhere and hears the next key. */
    void expect_alive()
    {
        if (state_now() == "closed")
            return;
        forget();
        press("F1");
        EXPECT_GE(logged("key[F1]") + logged("Key[F1]"), 1);
        if (state_now() == "toast")
            return;
        EXPECT_NE(focused(), nullptr);
        if (focused() == app()->genlist) {
            EXPECT_GE(focused_row(), 0);
        }
    }
};

struct LeavingStateTest : StatesTest {};
struct ChoosingInStateTest : StatesTest {};

TEST_P(LeavingStateTest, LeadsWhereTheDocumentSays)
{
    const Way &way = GetParam();
    ASSERT_NO_FATAL_FAILURE(enter(way.state));
    if (way.event == "touch outside") {
        panel().tap(4, 4);
        panel().settle();
    } else {
        press(("XF86" + way.event).c_str());
    }
    EXPECT_EQ(state_now(), way.result);
    expect_alive();
}

TEST_P(ChoosingInStateTest, LeadsWhereTheDocumentSays)
{
    const Way &way = GetParam();
    ASSERT_NO_FATAL_FAILURE(enter(way.state));
    ASSERT_NO_FATAL_FAILURE(choose(way));
    EXPECT_EQ(state_now(), way.result);
    if (way.event == "the other state") {
        EXPECT_EQ(registered()[0].status, way.result == "list" ? 1 : 0);
    }
    expect_alive();
}

INSTANTIATE_TEST_SUITE_P(States, LeavingStateTest, testing::ValuesIn(ways_of_leaving()), test_name);
INSTANTIATE_TEST_SUITE_P(States, ChoosingInStateTest, testing::ValuesIn(ways_of_choosing()), test_name);

} // namespace
