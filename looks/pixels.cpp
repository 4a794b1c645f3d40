#include "pixels.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace vesk::looks {

namespace {

constexpr int kFewPixels = 16;

int key_of(Color color)
{
    return color.red << 16 | color.green << 8 | color.blue;
}

Color color_of(int key)
{
    return {key >> 16, key >> 8 & 0xff, key & 0xff};
}

std::unordered_map<int, int> colors_in(const Picture &picture, const Rect &place)
{
    std::unordered_map<int, int> counts;
    const Rect seen = common(place, picture.area());
    for (int y = seen.y; y < seen.bottom(); ++y) {
        for (int x = seen.x; x < seen.right(); ++x)
            ++counts[key_of(picture.at(x, y))];
    }
    return counts;
}

Color most_common(const std::unordered_map<int, int> &counts)
{
    const auto most = std::ranges::max_element(counts, {}, [](const auto &entry) { return entry.second; });
    return most != counts.end() ? color_of(most->first) : Color{};
}

} // namespace

Color common_color(const Picture &picture, const Rect &place)
{
    return most_common(colors_in(picture, place));
}

double contrast_in(const Picture &picture, const Rect &place)
{
    const auto counts = colors_in(picture, place);
    const Color ground = most_common(counts);
    std::vector<std::pair<double, int>> others;
    for (const auto &[color, count] : counts)
        others.emplace_back(contrast(ground, color_of(color)), count);
    std::ranges::sort(others, std::ranges::greater{});
    int seen = 0;
    for (const auto &[value, count] : others) {
        seen += count;
        if (seen >= kFewPixels)
            return value;
    }
    return 1;
}

int standing_out(const Picture &picture, const Rect &place, Color ground, double least)
{
    int sum = 0;
    for (const auto &[color, count] : colors_in(picture, place))
        sum += contrast(ground, color_of(color)) >= least ? count : 0;
    return sum;
}

Rect bounds_of(const Picture &picture, const Rect &place, Color ground, double least)
{
    const Rect seen = common(place, picture.area());
    int left = seen.right();
    int right = seen.x;
    int top = seen.bottom();
    int bottom = seen.y;
    for (int y = seen.y; y < seen.bottom(); ++y) {
        for (int x = seen.x; x < seen.right(); ++x) {
            if (contrast(ground, picture.at(x, y)) < least)
                continue;
            left = std::min(left, x);
            right = std::max(right, x + 1);
            top = std::min(top, y);
            bottom = std::max(bottom, y + 1);
        }
    }
    return left < right ? Rect{left, top, right - left, bottom - top} : Rect{};
}

double frame_around(const Rect &area, int reach, const std::function<bool(int, int)> &is_drawn)
{
    const auto along = [](int from, int length, const auto &seen_at) {
        const int corner = length / 8;
        int seen = 0;
        for (int i = from + corner; i < from + length - corner; ++i)
            seen += seen_at(i);
        return static_cast<double>(seen) / std::max(length - 2 * corner, 1);
    };
    const auto some = [&](const auto &at_depth) {
        for (int depth = 0; depth < reach; ++depth) {
            if (at_depth(depth))
                return true;
        }
        return false;
    };
    return std::min(
        {along(area.x, area.w, [&](int x) { return some([&](int depth) { return is_drawn(x, area.y + depth); }); }),
         along(area.x, area.w,
               [&](int x) { return some([&](int depth) { return is_drawn(x, area.bottom() - 1 - depth); }); }),
         along(area.y, area.h, [&](int y) { return some([&](int depth) { return is_drawn(area.x + depth, y); }); }),
         along(area.y, area.h,
               [&](int y) { return some([&](int depth) { return is_drawn(area.right() - 1 - depth, y); }); })});
}

double brightness_of(const Picture &picture, const Rect &place, const Rect &without)
{
    std::vector<double> values;
    const Rect seen = common(place, picture.area());
    for (int y = seen.y; y < seen.bottom(); ++y) {
        for (int x = seen.x; x < seen.right(); ++x) {
            if (!without.holds({x, y, 1, 1}))
                values.push_back(luminance(picture.at(x, y)));
        }
    }
    if (values.empty())
        return 0;
    const auto brightest = values.end() - 1 - static_cast<std::ptrdiff_t>(values.size() / 1000);
    std::ranges::nth_element(values, brightest);
    return *brightest;
}

} // namespace vesk::looks
