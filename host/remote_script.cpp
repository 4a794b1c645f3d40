#include "remote_script.h"

#include <array>
#include <charconv>
#include <stdexcept>
#include <string_view>

#include "desktop/text.h"

namespace vesk {

namespace {

struct Name {
    std::string_view name;
    std::string_view key;
};

constexpr std::array<Name, 10> kScriptNames{{
    {"Up", "Up"},
    {"Down", "Down"},
    {"Left", "Left"},
    {"Right", "Right"},
    {"Return", "Return"},
    {"Enter", "Return"},
    {"XF86Back", "XF86Back"},
    {"Back", "XF86Back"},
    {"XF86Close", "XF86Close"},
    {"Close", "XF86Close"},
}};

constexpr std::array<Name, 11> kKeyboard{{
    {"Up", "Up"},
    {"Down", "Down"},
    {"Left", "Left"},
    {"Right", "Right"},
    {"Return", "Return"},
    {"KP_Enter", "Return"},
    {"Escape", "XF86Back"},
    {"BackSpace", "XF86Back"},
    {"XF86Back", "XF86Back"},
    {"F4", "XF86Close"},
    {"XF86Close", "XF86Close"},
}};

template <size_t Size> std::string look_up(const std::array<Name, Size> &names, std::string_view name)
{
    for (const auto &entry : names) {
        if (entry.name == name)
            return std::string(entry.key);
    }
    return {};
}

/* Reads the whole of `text` as a number that is not negative. */
bool read_number(std::string_view text, int &number)
{
    const auto *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end && number >= 0;
}

} // namespace

RemoteStep read_remote_word(const std::string &word)
{
    RemoteStep step{.kind = RemoteStep::Kind::key, .key = look_up(kScriptNames, word)};
    if (!step.key.empty())
        return step;
    constexpr std::string_view wait = "wait:";
    constexpr std::string_view tap = "tap:";
    const std::string_view text = word;
    if (text.starts_with(wait) && read_number(text.substr(wait.size()), step.milliseconds)) {
        step.kind = RemoteStep::Kind::wait;
        return step;
    }
    const auto comma = text.find(',');
    if (text.starts_with(tap) && comma != text.npos &&
        read_number(text.substr(tap.size(), comma - tap.size()), step.x) &&
        read_number(text.substr(comma + 1), step.y)) {
        step.kind = RemoteStep::Kind::tap;
        return step;
    }
    throw std::runtime_error("unknown key " + vesk_port::in_quotes(word) +
                             "; use Up, Down, Left, Right, Return, XF86Back, XF86Close, tap:X,Y or "
                             "wait:MILLISECONDS");
}

void play_remote(Panel &panel, const std::vector<std::string> &words, const std::function<bool()> &over)
{
    panel.settle();
    for (const auto &word : words) {
        if (over())
            return;
        const auto step = read_remote_word(word);
        switch (step.kind) {
        case RemoteStep::Kind::key:
            panel.press(step.key);
            break;
        case RemoteStep::Kind::tap:
            panel.tap(step.x, step.y);
            break;
        case RemoteStep::Kind::wait:
            panel.run_until(over, step.milliseconds);
            break;
        }
    }
}

std::string remote_key(const std::string &keyboard_key)
{
    return look_up(kKeyboard, keyboard_key);
}

} // namespace vesk
