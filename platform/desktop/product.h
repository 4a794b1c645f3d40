#pragma once
/* Product profiles: which kind of display the programs play, as readable files of facts. */

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vesk_port {

/* The sections of a profile, each for one call of system_info.h. */
inline constexpr const char *kCustomBoolSection = "custom-bool";
inline constexpr const char *kCustomIntSection = "custom-int";
inline constexpr const char *kCustomStringSection = "custom-string";
inline constexpr const char *kPlatformIntSection = "platform-int";
inline constexpr const char *kValueStringSection = "value-string";

struct ProductProfile {
    std::string name;
    std::filesystem::path file;
    std::string title;                                                  /* one line for people */
    std::map<std::string, std::map<std::string, std::string>> sections; /* facts: section, key, value */
};

/* The profiles that come with the programs, by name. Throws PortError when there are none to be found. */
std::vector<ProductProfile> product_profiles();

/* Reads a profile; `product` is the name of one or, with a '/' or ".ini" in it, the path of a file. Throws PortError
 * when there is no such profile or its file is no profile. */
ProductProfile load_product(const std::string &product);

/* What VESK_PRODUCT says, else what was chosen for good, else "television"; it is not checked. Throws PortError when
 * the choice cannot be read. */
std::string chosen_product();

/* Chooses a profile for good, for the user's later programs. Throws PortError. */
void choose_product(const std::string &product);

} // namespace vesk_port
