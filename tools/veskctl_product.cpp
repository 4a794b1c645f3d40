#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "desktop/product.h"
#include "desktop/text.h"
#include "veskctl.h"
#include "veskctl_table.h"

namespace veskctl {

using vesk_port::escaped;
using vesk_port::ProductProfile;

namespace {

void list_products(bool as_json)
{
    const std::string chosen = vesk_port::chosen_product();
    nlohmann::json list = nlohmann::json::array();
    std::vector<std::vector<std::string>> rows;
    for (const ProductProfile &profile : vesk_port::product_profiles()) {
        const bool in_use = profile.name == chosen;
        list.push_back({{"name", profile.name}, {"title", profile.title}, {"in_use", in_use}});
        rows.push_back({in_use ? "*" : " ", escaped(profile.name), escaped(profile.title)});
    }
    if (as_json)
        print_json(list);
    else
        print_table({" ", "PRODUCT", "TITLE"}, rows);
}

nlohmann::json facts_of(const ProductProfile &profile)
{
    nlohmann::json facts = profile.sections;
    const auto switches = facts.find(vesk_port::kCustomBoolSection);
    if (switches == facts.end())
        return facts;
    for (nlohmann::json &fact : *switches) {
        if (fact == "true" || fact == "false")
            fact = fact == "true";
    }
    return facts;
}

void show_product(const std::string &product, bool as_json)
{
    const ProductProfile profile = product.empty() ? vesk_port::load_product(vesk_port::chosen_product())
                                                   : as_usage([&] { return vesk_port::load_product(product); });
    if (as_json) {
        print_json({{"name", profile.name},
                    {"title", profile.title},
                    {"file", profile.file.string()},
                    {"facts", facts_of(profile)}});
        return;
    }
    std::printf("%s: %s (%s)\n", escaped(profile.name).c_str(), escaped(profile.title).c_str(),
                escaped(profile.file.string()).c_str());
    std::vector<std::vector<std::string>> rows;
    for (const auto &[section, facts] : profile.sections) {
        for (const auto &[key, value] : facts)
            rows.push_back({section, escaped(key), escaped(value)});
    }
    print_table({"SECTION", "KEY", "VALUE"}, rows);
}

void use_product(const std::string &product)
{
    as_usage([&] { vesk_port::load_product(product); });
    vesk_port::choose_product(product);
    const char *variable = std::getenv("VESK_PRODUCT");
    if (variable && *variable)
        std::fprintf(stderr, "veskctl: the choice is kept, but VESK_PRODUCT=%s holds as long as it is set.\n",
                     vesk_port::short_message(variable).c_str());
}

} // namespace

void add_product_commands(CLI::App &program)
{
    CLI::App *product = program.add_subcommand("product", "The kind of display that the programs play");
    product->require_subcommand(1);

    struct Arguments {
        std::string product;
        bool as_json = false;
    };
    const auto given = std::make_shared<Arguments>();
    constexpr const char *product_help = "The name of a profile, or the path of a profile file";

    CLI::App *list = product->add_subcommand("list", "Shows the profiles that there are");
    list->add_flag("--json", given->as_json, "As JSON, for programs");
    list->callback([given] { list_products(given->as_json); });

    CLI::App *show = product->add_subcommand("show", "Shows the facts of a profile");
    show->add_option("product", given->product, std::string(product_help) + "; the one in use when left out");
    show->add_flag("--json", given->as_json, "As JSON, for programs");
    show->callback([given] { show_product(given->product, given->as_json); });

    CLI::App *use = product->add_subcommand("use", "Chooses a profile for programs that start from now on");
    use->add_option("product", given->product, product_help)->required();
    use->callback([given] { use_product(given->product); });
}

} // namespace veskctl
