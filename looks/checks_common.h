#pragma once
/* What the checks have in common: names of the theme, ways through a scene, and words for findings. */

#include <string>
#include <vector>

#include "checks.h"

namespace vesk::looks {

constexpr char kDeviceRow[] = "elm/genlist/item/C_TextItem_WhiteSingleline05/default";
constexpr char kDropdown[] = "elm/popup/base/C_ListDropdown_White";
constexpr char kConfirmation[] = "elm/popup/base/P_PopupBasicBottom_02";
constexpr char kMainPanel[] = "elm/popup/base/C_PopupBasic_WhiteRight";
constexpr char kToast[] = "elm/layout/C_PopupToast_White/";

constexpr double kStandsOut = 3.0; /* the least contrast of what is no text */

std::string quoted(const Text &text);
std::string ratio(double value);
std::string described(const Rect &area);

/* The rows of devices from top to bottom. */
std::vector<Drawing> device_rows(const Shown &scene);

/* The first ground of that group, or null. */
const Ground *ground_named(const Shown &scene, const char *group);

/* What a drawing lies on, or null. */
const Ground *ground_of(const Shown &scene, int ground);

/* Whether something that asks or tells lies before this ground. */
bool waits(const Shown &scene, int ground);

/* Whether something drawn later hides most of a place on a ground. */
bool hidden(const Shown &scene, const Rect &place, int ground);

/* The text of a row's or button's part that belongs to `drawing`: all of them, in the order of painting. */
std::vector<const Text *> texts_of(const Shown &scene, const Drawing &drawing);
std::vector<const Drawn *> pictures_of(const Shown &scene, const Drawing &drawing);

} // namespace vesk::looks
