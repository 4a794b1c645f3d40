#include "product.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <glib.h>
#include <memory>

#include "paths.h"
#include "port_error.h"

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

std::string taken(gchar *text)
{
    std::string copy = text ? text : "";
    g_free(text);
    return copy;
}

ProductProfile read_profile(const fs::path &file)
{
    const std::unique_ptr<GKeyFile, decltype(&g_key_file_free)> keys(g_key_file_new(), g_key_file_free);
    GError *error = nullptr;
    if (!g_key_file_load_from_file(keys.get(), file.c_str(), G_KEY_FILE_NONE, &error)) {
        const std::string reason = error->message;
        g_error_free(error);
        throw PortError(-EIO, "the product profile " + file.string() + " cannot be read: " + reason +
                                  ". See the profiles that there are with: veskctl product list");
    }
    ProductProfile profile{
        file.stem(), file, taken(g_key_file_get_string(keys.get(), "profile", "title", nullptr)), {}};
    for (const char *section :
         {kCustomBoolSection, kCustomIntSection, kCustomStringSection, kPlatformIntSection, kValueStringSection}) {
        gchar **names = g_key_file_get_keys(keys.get(), section, nullptr, nullptr);
        for (gchar **name = names; name && *name; ++name)
            profile.sections[section][*name] = taken(g_key_file_get_string(keys.get(), section, *name, nullptr));
        g_strfreev(names);
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
    throw PortError(-ENOENT, "\"" + product + "\" is no product profile; there are " + names +
                                 ", or give the path of a profile file.");
}

std::string chosen_product()
{
    const char *variable = std::getenv("VESK_PRODUCT");
    if (variable && *variable)
        return variable;
    std::string product;
    std::getline(std::ifstream(product_choice_file()), product);
    return product.empty() ? kDefaultProduct : product;
}

void choose_product(const std::string &product)
{
    load_product(product);
    const fs::path file = product_choice_file();
    make_folder_of(file);
    const std::string line = (is_path(product) ? fs::absolute(product).string() : product) + "\n";
    GError *error = nullptr;
    if (!g_file_set_contents(file.c_str(), line.data(), static_cast<gssize>(line.size()), &error)) {
        const std::string reason = error->message;
        g_error_free(error);
        throw PortError(-EACCES, "the choice cannot be kept in " + file.string() + ": " + reason +
                                     ". Allow writing to its folder or use the variable VESK_PRODUCT.");
    }
}

} // namespace vesk_port
