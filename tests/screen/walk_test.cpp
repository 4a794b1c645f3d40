/* A random walk of keys, touches, turns and service events over the running screen. After each step everything that has
 * to hold at any time is looked at; the walk goes on in a new run of the module when the screen has closed.
 *
 *     screen_walk_test [--steps N] [--seed S]      S a number or "random"
 *
 * Without --steps the walk comes in slices, each a test of its own, from seed 1 on. The seed is printed; the same seed
 * and number of steps take the same way. */

#include <charconv>
#include <cstdio>
#include <cstring>
#include <deque>
#include <glib.h>
#include <random>
#include <stdexcept>

#include "desktop/port_failures.h"
#include "edit_fixture.h"
#include "ug/settings_watch.h"

namespace {

/* 20,000 steps where the sanitizers watch, a look at the way elsewhere. */
#ifdef __SANITIZE_ADDRESS__
constexpr unsigned int kSlices = 50;
#else
constexpr unsigned int kSlices = 5;
#endif
constexpr long kSliceSteps = 400;

/* From the command line. */
long steps_wanted = 0;
unsigned int seed = 0;

const char *const kArrows[] = {"Up", "Down", "Left", "Right"};
const char *const kOtherKeys[] = {"XF86Back", "XF86Close", "F1", "XF86BackForward"};
const char *const kNames[] = {"", "Phone", "<b>bold</b> &amp; more",
                              "\u0647\u0627\u062a\u0641 \u0633\u0627\u0631\u0629",
                              "A name that is much too long for the row that it stands in, and goes on and on and on"};

struct WalkTest : EditTest, testing::WithParamInterface<unsigned int> {
    std::minstd_rand random;
    std::deque<std::string> history;
    size_t objects_when_closed = 0;
    bool opened_empty = false;
    int devices_made = 0;

    /* Below `limit`, which is positive. */
    int below(size_t limit) { return static_cast<int>(random() % limit); }
    bool chance(int percent) { return below(100) < percent; }
    template <class T, size_t size> T any(T const (&all)[size]) { return all[below(size)]; }

    vesk_port::Device any_device()
    {
        ++devices_made;
        static const char *const links[] = {"b", "w", "p", "bw", "bwp"};
        return device(any(kNames) + std::to_string(devices_made), below(16), chance(70), any(links));
    }

    std::vector<vesk_port::Device> any_household()
    {
        static const int sizes[] = {0, 1, 2, 3, 5, 5, 8, 8, 12, 55};
        std::vector<vesk_port::Device> devices(static_cast<size_t>(any(sizes)));
        std::ranges::generate(devices, [this] { return any_device(); });
        return devices;
    }

    size_t objects() { return objects_on(panel().canvas()).size(); }

    size_t widgets(const char *type)
    {
        const auto all = objects_on(panel().canvas());
        return static_cast<size_t>(
            std::ranges::count_if(all, [type](const Evas_Object *object) { return is_of_type(object, type); }));
    }

    /* --- Steps. Each tells what it did. --- */

    std::string step_key()
    {
        const std::string key = chance(70) ? any(kArrows) : chance(70) ? "Return" : any(kOtherKeys);
        const std::string state = state_now();
        const Evas_Object *before = focused();
        const int row_before = focused_row();
        forget();
        press(key.c_str());
        if (running()) {
            /* A button that Return presses may take its popup away before the popup hears the key. */
            if (key != "Return") {
                EXPECT_GE(logged("key[" + key + "]") + logged("Key[" + key + "]"), 1) << "nobody has heard the key";
            }
            if (before == app()->genlist && state == state_now() && (state == "list" || state == "edit mode"))
                expect_arrow_moved(key, row_before);
        }
        return key + " in " + state;
    }

    /* From a row of the main list. */
    void expect_arrow_moved(const std::string &key, int row_before)
    {
        const bool across = key == "Left" || key == "Right";
        if (across && focused() != app()->genlist)
            return;
        EXPECT_EQ(focused(), app()->genlist) << "the arrow has left the list";
        const int rows = device_count;
        const int moved = key == "Down" ? (row_before + 1) % rows
                          : key == "Up" ? (row_before + rows - 1) % rows
                                        : row_before;
        EXPECT_EQ(focused_row(), moved);
        EXPECT_FALSE(!gbReverse && key == "Right") << "the arrow did not reach the buttons";
    }

    std::string step_burst()
    {
        std::string keys;
        for (int i = 2 + below(4); i > 0 && running(); --i) {
            const std::string key = chance(50) ? "Return" : chance(80) ? any(kArrows) : any(kOtherKeys);
            panel().key_down(key);
            panel().key_up(key);
            keys += key + " ";
        }
        panel().settle();
        return "at once " + keys;
    }

    std::string step_touch()
    {
        int x = below(static_cast<size_t>(panel().width()));
        int y = below(static_cast<size_t>(panel().height()));
        std::string what = "touch ";
        if (chance(70)) {
            auto targets = objects_on(panel().canvas());
            std::erase_if(targets, [](const Evas_Object *object) {
                return !evas_object_visible_get(object) ||
                       (!is_of_type(object, "elm_button") && !is_of_type(object, "elm_check"));
            });
            if (!targets.empty()) {
                Evas_Object *target = targets[static_cast<size_t>(below(targets.size()))];
                const Eina_Rectangle place = area(target);
                x = place.x + place.w / 2;
                y = place.y + place.h / 2;
                what += elm_object_text_get(target) ? elm_object_text_get(target) : "a check box";
            }
        } else if (chance(20)) {
            x = y = 4;
        }
        what += " " + std::to_string(x) + "," + std::to_string(y) + " in " + state_now();
        panel().tap(x, y);
        panel().settle();
        return what;
    }

    std::string step_service()
    {
        auto store = service();
        const auto devices = store.list();
        std::string what = "service: ";
        if (devices.empty() || chance(10)) {
            const auto household = any_household();
            store.replace(household);
            what += "replaced by " + std::to_string(household.size());
        } else if (chance(40)) {
            const auto &device = devices[static_cast<size_t>(below(devices.size()))];
            store.set_status(device.id, 1 - device.status);
            what += "status of one";
        } else if (chance(50)) {
            store.remove(devices[static_cast<size_t>(below(devices.size()))].id);
            what += "one removed";
        } else {
            store.add({any_device()});
            what += "one added";
        }
        panel().settle();
        return what + " in " + (running() ? state_now() : "closed");
    }

    std::string step_turn()
    {
        const bool portrait = chance(50);
        set("orientation", portrait ? "portrait" : "landscape");
        panel().settle();
        return portrait ? "portrait" : "landscape";
    }

    std::string step_failure()
    {
        static const char *const failures[] = {
            "", "", "rdm_remove_device=-5@2", "rdm_remove_all=-5", "rdm_set_status=-5", "rdm_get_list=-5@2"};
        const char *text = any(failures);
        vesk_port::set_failures(text);
        return std::string("failures: ") + text;
    }

    /* The toast's three seconds are over; nothing else is hurried. */
    std::string end_toast()
    {
        GSource *end = g_main_context_find_source_by_id(nullptr, toastTimerTag);
        EXPECT_NE(end, nullptr) << "a toast without an end";
        if (end)
            g_source_set_ready_time(end, 0);
        panel().run_until([] { return !b_disable_focus; }, 1000);
        panel().settle();
        return "end of the toast";
    }

    std::string step()
    {
        if (b_disable_focus && chance(20))
            return end_toast();
        const int kind = below(100);
        return kind < 60   ? step_key()
               : kind < 67 ? step_burst()
               : kind < 83 ? step_touch()
               : kind < 95 ? step_service()
               : kind < 98 ? step_turn()
                           : step_failure();
    }

    /* --- What holds after every step. --- */

    void expect_list_is_table()
    {
        const unsigned int rows = device_count > 0 ? static_cast<unsigned int>(device_count) : 0;
        ASSERT_EQ(elm_genlist_items_count(app()->genlist), rows);
        int index = 0;
        for (Elm_Object_Item *item = elm_genlist_first_item_get(app()->genlist); item;
             item = elm_genlist_item_next_get(item), ++index)
            ASSERT_EQ(elm_object_item_data_get(item), &gVeskTable[index]);
    }

    void expect_checks_are_marks()
    {
        const int checks = expect_checks_agree();
        if (b_edit_status) {
            EXPECT_GE(checks, device_count > 0 ? 1 : 0);
        } else {
            EXPECT_EQ(checks, 0) << "check boxes outside edit mode";
        }
    }

    bool takes_keys(const Evas_Object *widget)
    {
        for (const Evas_Object *object = evas_focus_get(panel().canvas()); object;
             object = evas_object_smart_parent_get(object)) {
            if (object == widget)
                return true;
        }
        return false;
    }

    bool belongs(const Evas_Object *widget, const std::string &state)
    {
        if (state == "confirmation")
            return widget == yes() || widget == no();
        if (state == "drop-down")
            return widget == app()->action_genlist;
        if (state == "details")
            return widget == app()->service_genlist || widget == app()->detail_close_button;
        return widget == app()->genlist || widget == app()->edit_button || widget == app()->close_button ||
               (app()->exit_button && widget == app()->exit_button);
    }

    void expect_one_focus(const std::string &state)
    {
        if (state == "toast") {
            EXPECT_NE(evas_focus_get(panel().canvas()), nullptr) << "nobody hears the keys of the toast";
            return;
        }
        /* The host looks after the focus when the main loop has run dry, which may take a while after many reports. */
        const auto has_row = [this](const Evas_Object *widget) {
            /* A device without services has an empty list in its details; arrows lead on from it. */
            return !is_of_type(widget, "elm_genlist") || elm_genlist_items_count(widget) == 0 || focused_row() >= 0;
        };
        panel().run_until(
            [&] { return focused() && belongs(focused(), state) && takes_keys(focused()) && has_row(focused()); },
            5000);
        const Evas_Object *focus = focused();
        ASSERT_NE(focus, nullptr) << "the focus is nowhere";
        EXPECT_TRUE(belongs(focus, state)) << "the focus is behind the screen";
        EXPECT_TRUE(takes_keys(focus)) << "the focused widget gets no keys";
        EXPECT_TRUE(elm_object_focus_allow_get(focus));
        EXPECT_FALSE(elm_object_disabled_get(focus));
        EXPECT_TRUE(has_row(focus)) << "the list has the focus and none of its rows";
        auto all = objects_on(panel().canvas());
        std::erase_if(all, [](const Evas_Object *object) {
            return (!is_of_type(object, "elm_genlist") && !is_of_type(object, "elm_button")) ||
                   !elm_object_focus_get(object);
        });
        EXPECT_EQ(all.size(), 1u) << "so many widgets say that they have the focus";
    }

    void expect_nothing_left(const std::string &state)
    {
        const bool second_popup = state == "drop-down" || state == "details" || state == "confirmation";
        /* A touch, or a key after a refresh, can open something under a toast. */
        const bool any_popup = state == "toast";
        if (any_popup) {
            EXPECT_LE(widgets("elm_popup"), 2u);
        } else {
            EXPECT_EQ(widgets("elm_popup"), second_popup ? 2u : 1u);
        }
        /* A screen that was opened empty keeps its first list behind the label. */
        const size_t lists =
            (state == "drop-down" || state == "details" || any_popup ? 2u : 1u) + (opened_empty ? 1u : 0u);
        EXPECT_LE(widgets("elm_genlist"), lists);
    }

    void expect_all()
    {
        const std::string state = state_now();
        SCOPED_TRACE(state);
        expect_list_is_table();
        expect_checks_are_marks();
        expect_one_focus(state);
        expect_nothing_left(state);
    }

    /* --- Runs of the module. --- */

    void begin_run()
    {
        reset_module_state(); /* as unloading does */
        vesk_port::clear_failures();
        if (chance(30))
            register_devices(any_household());
        opened_empty = registered().empty();
        open();
    }

    void end_run()
    {
        close();
        panel().settle();
        if (objects_when_closed == 0)
            objects_when_closed = objects();
        EXPECT_LE(objects(), objects_when_closed) << "objects are left on the panel";
    }

    std::string last_steps() const
    {
        std::string text = "the last steps:";
        for (const std::string &line : history)
            text += "\n  " + line;
        return text;
    }

    void walk(unsigned int walk_seed, long steps)
    {
        random.seed(walk_seed);
        use_product(walk_seed % 2 ? "board" : "television");
        if (walk_seed % 5 == 0)
            set("language", "ar_AE");
        register_devices(phones(5));
        begin_run();
        end_run(); /* what the first run leaves is the toolkit's for good */
        begin_run();
        for (long i = 0; i < steps; ++i) {
            history.push_back(step());
            if (history.size() > 25)
                history.pop_front();
            if (running()) {
                expect_all();
            } else {
                end_run();
                history.emplace_back("-- a new run");
                begin_run();
            }
            ASSERT_FALSE(HasFailure()) << "at step " << i << " of seed " << walk_seed << "; " << last_steps();
        }
        end_run();
        RecordProperty("steps", static_cast<int>(steps));
    }
};

TEST_P(WalkTest, KeepsItsPromises)
{
    const bool asked = steps_wanted > 0;
    const unsigned int walk_seed = asked ? seed : seed + GetParam();
    const long steps = asked ? steps_wanted : kSliceSteps;
    printf("walk: --steps %ld --seed %u\n", steps, walk_seed);
    walk(walk_seed, steps);
}

/* The number of slices is asked for after main has read the command line. */
std::vector<unsigned int> slices()
{
    std::vector<unsigned int> result{0};
    while (steps_wanted == 0 && result.size() < kSlices)
        result.push_back(static_cast<unsigned int>(result.size()));
    return result;
}

INSTANTIATE_TEST_SUITE_P(Slices, WalkTest, testing::ValuesIn(slices()));

template <class Number> Number number(const char *option, const char *text)
{
    Number value{};
    const char *end = text + strlen(text);
    const auto [rest, error] = std::from_chars(text, end, value);
    if (error != std::errc() || rest != end || value < 1)
        throw std::invalid_argument(std::string(option) + " " + text + ": give a whole number from 1.");
    return value;
}

void read_options(int argc, char **argv)
{
    seed = 1; /* the slices of a test run take the same ways each time */
    for (int i = 1; i < argc; i += 2) {
        const std::string option = argv[i];
        if (option != "--steps" && option != "--seed")
            throw std::invalid_argument(option + " is no option; there are --steps N and --seed S.");
        if (i + 1 == argc)
            throw std::invalid_argument(option + " needs a number.");
        if (option == "--steps")
            steps_wanted = number<long>("--steps", argv[i + 1]);
        else if (strcmp(argv[i + 1], "random") == 0)
            seed = std::random_device{}() % 1'000'000 + 1;
        else
            seed = number<unsigned int>("--seed", argv[i + 1]);
    }
}

/* The framework's own options first, so that what is left over is ours. */
void take_framework_options(int *argc, char **argv)
{
    const auto is_framework = [](const char *text) { return strncmp(text, "--gtest_", 8) == 0; };
    std::stable_partition(argv + 1, argv + *argc, [&](const char *text) { return !is_framework(text); });
    *argc = static_cast<int>(std::find_if(argv + 1, argv + *argc, is_framework) - argv);
}

} // namespace

int main(int argc, char **argv)
{
    int own = argc;
    take_framework_options(&own, argv);
    try {
        read_options(own, argv);
    } catch (const std::invalid_argument &error) {
        fprintf(stderr, "screen_walk_test: %s\n", error.what());
        return 2;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
