#include "chosen.h"

namespace vesk::looks {

namespace {

constexpr double kMeanLimit = 0.5;
constexpr double kPlaceLimit = 24.0;

const Setting kTelevision{};
const Setting kContrast{"television", false, "en_GB", true};
const Setting kArabic{"television", false, "ar_AE", false};
const Setting kTall{"television", true, "en_GB", false};
const Setting kKorean{"television", false, "ko_KR", false};
const Setting kBoard{"board", false, "en_GB", false};
const Setting kBoardGerman{"board", false, "de_DE", false};
const Setting kBoardTall{"board", true, "en_GB", false};

} // namespace

const std::vector<Chosen> &reference_scenes()
{
    static const std::vector<Chosen> scenes{
        {"list", "row-focused", kTelevision},
        {"list-contrast", "row-focused", kContrast},
        {"list-arabic", "six-rows", kArabic},
        {"list-tall", "six-rows", kTall},
        {"long-list", "fifty-rows-end", kTelevision},
        {"empty", "empty", kTelevision},
        {"drop-down", "dropdown-allowed", kTelevision},
        {"drop-down-board-tall", "dropdown-denied", kBoardTall},
        {"edit", "edit-some", kTelevision},
        {"edit-board", "edit-all", kBoard},
        {"confirmation", "confirmation", kTelevision},
        {"details", "detail-two", kTelevision},
        {"details-korean", "detail-two", kKorean},
        {"edit-contrast", "edit-some", kContrast},
        {"edit-board-german", "edit-none", kBoardGerman},
        {"toast", "toast", kTelevision},
        {"names", "names", kTelevision},
    };
    return scenes;
}

const std::vector<Chosen> &documented_scenes()
{
    static const std::vector<Chosen> scenes{
        {"list", "row-focused", kTelevision},
        {"drop-down", "dropdown-allowed", kTelevision},
        {"edit-mode", "edit-some", kTelevision},
        {"confirmation", "confirmation", kTelevision},
        {"toast", "toast", kTelevision},
        {"details", "detail-two", kTelevision},
        {"right-to-left", "dropdown-allowed", kArabic},
        {"portrait", "six-rows", kTall},
        {"board", "edit-some", kBoard},
        {"board-portrait", "dropdown-allowed", kBoardTall},
        {"high-contrast", "row-focused", kContrast},
        {"empty-list", "empty", kTelevision},
        {"long-list", "fifty-rows-end", kTelevision},
    };
    return scenes;
}

bool looks_like(const Difference &difference)
{
    return difference.mean <= kMeanLimit && difference.largest <= kPlaceLimit;
}

} // namespace vesk::looks
