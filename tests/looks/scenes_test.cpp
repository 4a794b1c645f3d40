/* The gallery's checks on a dozen of its scenes: those in which most can go wrong. */

#include <algorithm>
#include <gtest/gtest.h>

#include "checks.h"

using namespace vesk::looks;

namespace {

struct Case {
    const char *state;
    Setting setting;
};

std::string name_of(const Case &shown)
{
    return scene_name(*find_state(shown.state), shown.setting);
}

void PrintTo(const Case &shown, std::ostream *out)
{
    *out << name_of(shown);
}

const Setting kEnglish{};
const Setting kGerman{"television", false, "de_DE", false};
const Setting kArabic{"television", false, "ar_AE", false};
const Setting kContrast{"television", false, "en_GB", true};
const Setting kTall{"television", true, "en_GB", false};
const Setting kBoard{"board", false, "en_GB", false};
const Setting kBoardTall{"board", true, "en_GB", false};

const Case kCases[]{
    {"empty", kContrast},
    {"six-rows", kArabic},
    {"fifty-rows-end", kEnglish},
    {"row-selected", kContrast},
    {"button-focused", kTall},
    {"dropdown-allowed", kEnglish},
    {"dropdown-denied", kBoardTall},
    {"dropdown-last-row", kArabic},
    {"edit-some", kBoard},
    {"edit-all", kGerman},
    {"confirmation", kArabic},
    {"toast", kEnglish},
    {"toast-lines", kTall},
    {"detail-two", kBoardTall},
    {"detail-none", kContrast},
    {"names", kEnglish},
    {"names-edit", kArabic},
};

struct SceneTest : testing::TestWithParam<Case> {};

TEST_P(SceneTest, HasNothingWrongWithIt)
{
    const Case &wanted = GetParam();
    Scene scene(*find_state(wanted.state), wanted.setting);
    const Shown seen = shown(scene);
    const auto findings = check(seen);
    for (const Finding &finding : findings)
        ADD_FAILURE() << scene.name() << ": " << finding.what;
    if (!findings.empty())
        ADD_FAILURE() << "marked in " << save_marked(scene.panel().canvas(), seen, findings, LOOKS_FINDINGS);
}

INSTANTIATE_TEST_SUITE_P(All, SceneTest, testing::ValuesIn(kCases), [](const auto &param) {
    std::string name = name_of(param.param);
    std::ranges::replace_if(
        name, [](char letter) { return !isalnum(static_cast<unsigned char>(letter)); }, '_');
    return name;
});

} // namespace
