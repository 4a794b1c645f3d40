#include "veskctl_import.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "desktop/port_error.h"
#include "desktop/text.h"
#include "veskctl_device.h"

namespace veskctl {

using nlohmann::json;
using vesk_port::Device;
using vesk_port::in_quotes;
using vesk_port::PortError;

namespace {

constexpr int kNumberOutOfRange = 406; /* nlohmann's number of the error */

constexpr std::array<std::string_view, 7> kMembers{"name", "bt", "wifi", "p2p", "type", "icon", "status"};

struct Member {
    enum class Kind { text, number, other };
    std::string name;
    Kind kind = Kind::other;
    std::string value; /* a number's digits as they stand in the file */
};

/* A number that does not even fit a floating-point number ends the parser. */
struct HugeNumber {
    size_t device;
    size_t begin; /* in the file */
    std::string digits;
};

[[noreturn]] void refuse(const std::string &sentence)
{
    throw PortError(-EINVAL, sentence);
}

std::string text_of(const Member &member)
{
    if (member.kind != Member::Kind::text)
        refuse("the value " + in_quotes(member.value) + " of \"" + member.name + "\" is not a text; put it in quotes");
    return member.value;
}

std::string word_or_number_of(const Member &member)
{
    if (member.kind == Member::Kind::other)
        refuse("the value " + in_quotes(member.value) + " of \"" + member.name + "\" is neither a text nor a number");
    return member.value;
}

int32_t number_of(const Member &member)
{
    const auto number = member.kind == Member::Kind::number ? vesk_port::parse_int(member.value) : std::nullopt;
    if (!number)
        refuse("the value " + in_quotes(member.value) + " of \"" + member.name +
               "\" is not a whole number of 32 bits; use one such as 0");
    return *number;
}

Device device_of(const std::vector<Member> &members)
{
    Device device;
    for (const Member &member : members) {
        const auto address = std::ranges::find(kAddresses, member.name, &Address::member);
        if (address != kAddresses.end())
            device.*address->mac = text_of(member);
        else if (member.name == "name")
            device.name = text_of(member);
        else if (member.name == "type")
            device.type = type_of(word_or_number_of(member));
        else if (member.name == "icon")
            device.icon = number_of(member);
        else
            device.status = status_of(word_or_number_of(member));
    }
    check_device(device);
    return device;
}

/* Takes the file apart word by word: nothing is built for what is no device, however deep it is nested. */
class DeviceReader : public nlohmann::json_sax<json> {
public:
    DeviceReader(const std::string &source, std::optional<HugeNumber> refused)
        : source_(source), huge_number_(std::move(refused))
    {
    }

    std::vector<Device> take_devices() { return std::move(devices_); }

    /* What stopped the parser, when parsing returned false. */
    const std::optional<HugeNumber> &huge_number() const { return huge_number_; }

    bool null() override { return value(Member::Kind::other, "null"); }
    bool boolean(bool truth) override { return value(Member::Kind::other, truth ? "true" : "false"); }
    bool number_integer(number_integer_t number) override
    {
        return value(Member::Kind::number, std::to_string(number));
    }
    bool number_unsigned(number_unsigned_t number) override
    {
        return value(Member::Kind::number, std::to_string(number));
    }
    bool number_float(number_float_t, const string_t &digits) override { return value(Member::Kind::number, digits); }
    bool string(string_t &text) override { return value(Member::Kind::text, text); }
    bool binary(binary_t &) override { return value(Member::Kind::other, "binary"); }

    bool start_array(size_t) override
    {
        if (place_ == Place::outside) {
            place_ = Place::list;
            return true;
        }
        return begin_nested("a list");
    }

    bool end_array() override
    {
        if (nested_ > 0)
            --nested_;
        else
            place_ = Place::outside;
        return true;
    }

    bool start_object(size_t) override
    {
        if (place_ == Place::list) {
            place_ = Place::device;
            return true;
        }
        return begin_nested("an object");
    }

    bool key(string_t &name) override
    {
        if (nested_ == 0)
            next_member_ = name;
        return true;
    }

    bool end_object() override
    {
        if (nested_ > 0) {
            --nested_;
            return true;
        }
        place_ = Place::list;
        if (huge_number_ && huge_number_->device == devices_.size())
            refuse_huge_number();
        if (!problem_.empty())
            refuse_device(problem_);
        try {
            devices_.push_back(device_of(members_));
        } catch (const PortError &error) {
            refuse_device(error.what());
        }
        members_.clear();
        return true;
    }

    bool parse_error(size_t position, const std::string &last_token, const nlohmann::detail::exception &error) override
    {
        if (huge_number_)
            refuse_huge_number();
        if (error.id == kNumberOutOfRange) {
            huge_number_ = {devices_.size(), position - last_token.size(), last_token};
            return false;
        }
        /* The rest of the sentence repeats the input, of whatever length it is. */
        std::string what = error.what();
        what = what.substr(what.find("] ") + 2);
        refuse(source_ + " is not JSON: " + what.substr(0, what.find("; last read")));
    }

private:
    enum class Place { outside, list, device };

    bool value(Member::Kind kind, std::string written)
    {
        if (place_ == Place::outside)
            refuse(source_ + " has to hold a list of devices, [{\"name\": ...}, ...], as veskctl devices export writes "
                             "it");
        if (place_ == Place::list && huge_number_ && huge_number_->device == devices_.size())
            refuse_huge_number();
        if (place_ == Place::list)
            refuse_device("found " + in_quotes(written) +
                          "; use an object with name, bt, wifi, p2p, type, icon and status");
        if (nested_ > 0)
            return true;
        if (std::ranges::find(kMembers, next_member_) == kMembers.end())
            problem_ = "unknown member " + in_quotes(next_member_) + "; use name, bt, wifi, p2p, type, icon and status";
        else if (std::ranges::find(members_, next_member_, &Member::name) != members_.end())
            problem_ = "the member " + in_quotes(next_member_) + " stands twice; leave one out";
        else
            members_.push_back({next_member_, kind, std::move(written)});
        return true;
    }

    bool begin_nested(const char *what)
    {
        value(Member::Kind::other, what);
        ++nested_;
        return true;
    }

    /* The device that is being read, by its number and, where that is known, its name. */
    [[noreturn]] void refuse_device(const std::string &reason) const
    {
        const auto name = std::ranges::find(members_, "name", &Member::name);
        const bool named = name != members_.end() && name->kind == Member::Kind::text;
        refuse(source_ + ", device " + std::to_string(devices_.size() + 1) +
               (named ? " (" + in_quotes(name->value) + ")" : "") + ": " + reason);
    }

    [[noreturn]] void refuse_huge_number() const
    {
        refuse_device("the number " + in_quotes(huge_number_->digits) + " is out of range");
    }

    const std::string &source_;
    std::optional<HugeNumber> huge_number_;
    Place place_ = Place::outside;
    size_t nested_ = 0; /* lists and objects within a member of a device */
    std::string next_member_;
    std::vector<Member> members_;
    std::string problem_; /* of the device that is being read; told at its end, when its name is known */
    std::vector<Device> devices_;
};

} // namespace

std::vector<Device> read_devices(const std::string &source, std::string text)
{
    DeviceReader reader(source, {});
    if (json::sax_parse(text, &reader))
        return reader.take_devices();
    /* The name of the device may stand behind the number: read again without it, as far as the device's end. */
    const HugeNumber number = *reader.huge_number();
    text.replace(number.begin, number.digits.size(), "0");
    DeviceReader again(source, number);
    json::sax_parse(text, &again);
    return again.take_devices();
}

} // namespace veskctl
