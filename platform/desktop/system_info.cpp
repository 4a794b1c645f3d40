#include "system_info.h"

#include <optional>
#include <string>

#include "port_call.h"
#include "product.h"
#include "text.h"

namespace vesk_port {

namespace {

/* The chosen product's profile. Facts do not change while a product runs, so it is read again only when another
 * product is chosen, as tests do. */
const ProductProfile &product()
{
    static std::optional<std::pair<std::string, ProductProfile>> read;
    const std::string choice = chosen_product();
    if (!read || read->first != choice)
        read.emplace(choice, load_product(choice));
    return read->second;
}

std::string fact(const char *section, const std::string &key)
{
    const ProductProfile &profile = product();
    const auto facts = profile.sections.find(section);
    if (facts != profile.sections.end()) {
        const auto value = facts->second.find(key);
        if (value != facts->second.end())
            return value->second;
    }
    throw PortError(-ENOENT, "the product profile " + profile.file.string() + " has no " + key + " in its section [" +
                                 section + "]; add it there.");
}

[[noreturn]] void throw_malformed(const char *section, const char *key, const std::string &value, const char *kind)
{
    throw PortError(-EINVAL, "the product profile " + product().file.string() + " says " + key + "=" + value + " in [" +
                                 section + "], which is not " + kind + "; mend it there.");
}

int number_fact(const char *section, const char *key)
{
    const std::string value = fact(section, key);
    const std::optional<int> number = parse_int(value);
    if (!number)
        throw_malformed(section, key, value, "a whole number");
    return *number;
}

void require(const void *key, const void *value)
{
    if (!key || !value)
        throw PortError(-EINVAL, "the key or the place for the value is missing.");
}

} // namespace

} // namespace vesk_port

using namespace vesk_port;

int system_info_get_custom_bool(const char *key, bool *value)
{
    return port_call(__func__, [&] {
        require(key, value);
        const std::string text = fact(kCustomBoolSection, key);
        if (text != "true" && text != "false")
            throw_malformed(kCustomBoolSection, key, text, "true or false");
        *value = text == "true";
    });
}

int system_info_get_custom_int(const char *key, int *value)
{
    return port_call(__func__, [&] {
        require(key, value);
        *value = number_fact(kCustomIntSection, key);
    });
}

int system_info_get_custom_string(const char *key, char **value)
{
    return port_call(__func__, [&] {
        require(key, value);
        *value = allocated_copy(fact(kCustomStringSection, key));
    });
}

int system_info_get_platform_int(const char *key, int *value)
{
    return port_call(__func__, [&] {
        require(key, value);
        *value = number_fact(kPlatformIntSection, key);
    });
}

int system_info_get_value_string(int key, char **value)
{
    return port_call(__func__, [&] {
        require(&key, value);
        *value = allocated_copy(fact(kValueStringSection, std::to_string(key)));
    });
}
