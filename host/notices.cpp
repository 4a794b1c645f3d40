#include "notices.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "desktop/rdm_service.h"

namespace vesk {

namespace {

constexpr char kDevices[] = "devices";
constexpr char kChange[] = "change of a device";

struct Subject {
    std::string_view call; /* the beginning of the port's line */
    const char *about;
};

constexpr std::array<Subject, 6> kSubjects{{
    {"rdm_init failed", kDevices},
    {"rdm_get_list failed", kDevices},
    {"reading the changed devices failed", kDevices},
    {"rdm_set_status failed", kChange},
    {"rdm_remove_device failed", kChange},
    {"rdm_remove_all failed", kChange},
}};

/* Without the call's name and code, which tell a user nothing. */
std::string sentence_in(const std::string &text)
{
    constexpr std::string_view end_of_call = "): ";
    const auto end = text.find(end_of_call);
    return end == text.npos ? text : text.substr(end + end_of_call.size());
}

} // namespace

bool Notices::put_up(const std::string &about, const std::string &sentence)
{
    const std::pair notice(about, sentence);
    if (std::ranges::find(sentences_, notice) != sentences_.end())
        return false;
    std::erase_if(sentences_, [&](const auto &present) { return present.first == about; });
    sentences_.push_back(notice);
    changed();
    return true;
}

void Notices::take_back(const std::string &about)
{
    if (std::erase_if(sentences_, [&](const auto &present) { return present.first == about; }) > 0)
        changed();
}

bool Notices::has(const std::string &about) const
{
    return std::ranges::any_of(sentences_, [&](const auto &present) { return present.first == about; });
}

std::string Notices::line() const
{
    if (sentences_.empty())
        return {};
    const auto more = sentences_.size() - 1;
    auto sentence = sentences_.back().second;
    sentence[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence[0])));
    return sentence + (more > 0 ? " (and " + std::to_string(more) + " more)" : "");
}

void Notices::changed() const
{
    if (handler_)
        handler_();
}

void StoreNotices::log_line(const std::string &text)
{
    if (text == vesk_port::kReadableAgain)
        notices_.take_back(kDevices);
    const auto subject =
        std::ranges::find_if(kSubjects, [&](const auto &entry) { return text.starts_with(entry.call); });
    if (subject == kSubjects.end())
        return;
    if (subject->about == kDevices)
        failed_since_input_ = true;
    if (!closed_)
        notices_.put_up(subject->about, sentence_in(text));
    closed_ = closed_ || subject == kSubjects.begin();
}

void StoreNotices::input_came()
{
    failed_since_input_ = false;
    notices_.take_back(kChange);
}

bool StoreNotices::failed_since_input() const
{
    return failed_since_input_ && notices_.has(kDevices);
}

} // namespace vesk
