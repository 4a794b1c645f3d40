#include "product.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "glib_owner.h"
#include "paths.h"
#include "port_error.h"
#include "regular_file.h"
#include "text.h"

namespace vesk_port {

namespace fs = std::filesystem;

namespace {

constexpr const char *kDefaultProduct = "television";

fs::path profile_folder()
{
    return share_folder() / "profiles";
}

bool is_path(const std::string &product)
{
    return product.find('/') != std::string::npos || product.ends_with(".ini");
}

std::string text_of(GKeyFile *keys, const char *section, const char *name)
{
    const GlibText text(g_key_file_get_string(keys, section, name, nullptr));
    return text ? text.get() : "";
}

ProductProfile read_profile(const fs::path &file)
{
    constexpr const char *advice = "See the profiles that there are with: veskctl product list";
    const auto failure = [&](int code, const std::string &reason) {
        return PortError(code, "the product profile " + escaped(file.string()) + " cannot be read: " + reason + ". " +
                                   advice);
    };
    const std::optional<std::string> text = read_regular_file(file, "product profile", advice);
    if (!text)
        throw failure(-ENOENT, "it does not exist");
    const KeyFile keys(g_key_file_new());
    GlibError error;
    if (!g_key_file_load_from_data(keys.get(), text->data(), text->size(), G_KEY_FILE_NONE, error.place()))
        throw failure(-EIO, error.message());
    ProductProfile profile{file.stem(), file, text_of(keys.get(), "profile", "title"), {}};
    for (const char *section :
         {kCustomBoolSection, kCustomIntSection, kCustomStringSection, kPlatformIntSection, kValueStringSection}) {
        const GlibTexts names(g_key_file_get_keys(keys.get(), section, nullptr, nullptr));
        for (char **name = names.get(); name && *name; ++name)
            profile.sections[section][*name] = text_of(keys.get(), section, *name);
    }
    return profile;
}

} // namespace

std::vector<ProductProfile> product_profiles()
{
    std::vector<ProductProfile> profiles;
    std::error_code error;
    for (const fs::directory_entry &entry : fs::directory_iterator(profile_folder(), error)) {
        if (entry.path().extension() == ".ini")
            profiles.push_back(read_profile(entry.path()));
    }
    if (profiles.empty())
        throw PortError(-ENOENT, "there are no product profiles in " + profile_folder().string() +
                                     "; name the folder that holds share/vesk in VESK_SHARE.");
    std::ranges::sort(profiles, {}, &ProductProfile::name);
    return profiles;
}

ProductProfile load_product(const std::string &product)
{
    if (is_path(product))
        return read_profile(product);
    std::string names;
    for (const ProductProfile &profile : product_profiles()) {
        if (profile.name == product)
            return profile;
        names.append(names.empty() ? "" : ", ").append(profile.name);
    }
    throw PortError(-ENOENT, "\"" + escaped(product) + "\" is no product profile; there are " + names +
                                 ", or give the path of a profile file.");
}

std::string chosen_product()
{
    const char *variable = std::getenv("VESK_PRODUCT");
    if (variable && *variable)
        return variable;
    const std::string choice =
        read_regular_file(product_choice_file(), "chosen product", "Choose one anew with: veskctl product use")
            .value_or("");
    const std::string product = choice.substr(0, choice.find('\n'));
    return product.empty() ? kDefaultProduct : product;
}

void choose_product(const std::string &product)
{
    load_product(product);
    const fs::path file = product_choice_file();
    make_folder_of(file);
    const std::string line = (is_path(product) ? fs::absolute(product).string() : product) + "\n";
    GlibError error;
    if (!g_file_set_contents(file.c_str(), line.data(), static_cast<gssize>(line.size()), error.place()))
        throw PortError(error.file_code(), "the choice cannot be kept in " + escaped(file.string()) + ": " +
                                               error.message() +
                                               ". Allow writing to its folder or use the variable VESK_PRODUCT.");
}

} // namespace vesk_port
