#include "picture.h"

#include <Elementary.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace vesk::looks {

namespace {

using CanvasObject = std::unique_ptr<Evas_Object, decltype(&evas_object_del)>;

constexpr Color kMark{255, 0, 96};
constexpr int kMarkWidth = 4;
constexpr int kMarkGap = 6;
constexpr int kCell = 4; /* side of the squares that are compared, in pixels of the shrunk pictures */

uint32_t packed(Color color)
{
    return 0xff000000U | static_cast<uint32_t>(color.red) << 16 | static_cast<uint32_t>(color.green) << 8 |
           static_cast<uint32_t>(color.blue);
}

Color unpacked(uint32_t pixel)
{
    return {static_cast<int>(pixel >> 16 & 0xff), static_cast<int>(pixel >> 8 & 0xff), static_cast<int>(pixel & 0xff)};
}

/* Of every value that a channel can have: whole pictures are measured. */
std::array<double, 256> linear_values()
{
    std::array<double, 256> values{};
    for (size_t channel = 0; channel < values.size(); ++channel) {
        const double value = static_cast<double>(channel) / 255.0;
        values[channel] = value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    }
    return values;
}

double linear(int channel)
{
    static const auto values = linear_values();
    return values[static_cast<size_t>(channel)];
}

/* Brightness and two differences of colour, all about 0 to 255, as in television signals. */
std::array<double, 3> signal(Color color)
{
    const double luma = 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue;
    return {luma, 0.5 * (color.blue - luma), 0.5 * (color.red - luma)};
}

std::array<double, 3> mean_signal(const Picture &picture, const Rect &cell)
{
    std::array<double, 3> sum{};
    for (int y = cell.y; y < cell.bottom(); ++y) {
        for (int x = cell.x; x < cell.right(); ++x) {
            const auto value = signal(picture.at(x, y));
            for (size_t i = 0; i < sum.size(); ++i)
                sum[i] += value[i];
        }
    }
    for (double &value : sum)
        value /= static_cast<double>(cell.w) * cell.h;
    return sum;
}

} // namespace

bool Rect::holds(const Rect &other, int margin) const
{
    return other.x >= x + margin && other.y >= y + margin && other.right() <= right() - margin &&
           other.bottom() <= bottom() - margin;
}

Rect common(const Rect &a, const Rect &b)
{
    const int left = std::max(a.x, b.x);
    const int top = std::max(a.y, b.y);
    return {left, top, std::max(std::min(a.right(), b.right()) - left, 0),
            std::max(std::min(a.bottom(), b.bottom()) - top, 0)};
}

Picture::Picture(int width, int height)
    : width_(width), height_(height), pixels_(static_cast<size_t>(width) * static_cast<size_t>(height))
{
}

static Picture from_image(const Evas_Object *image)
{
    int width = 0;
    int height = 0;
    evas_object_image_size_get(image, &width, &height);
    const auto *pixels = static_cast<const uint32_t *>(evas_object_image_data_get(image, EINA_FALSE));
    const auto stride = static_cast<size_t>(evas_object_image_stride_get(image)) / sizeof(uint32_t);
    Picture picture(width, height);
    for (int y = 0; pixels && y < height; ++y) {
        for (int x = 0; x < width; ++x)
            picture.set(x, y, unpacked(pixels[static_cast<size_t>(y) * stride + static_cast<size_t>(x)]));
    }
    return picture;
}

Picture Picture::of(const Panel &panel)
{
    return from_image(elm_win_inlined_image_object_get(panel.window()));
}

Picture Picture::load(Evas *canvas, const std::filesystem::path &file)
{
    const CanvasObject image(evas_object_image_add(canvas), evas_object_del);
    evas_object_image_file_set(image.get(), file.c_str(), nullptr);
    if (evas_object_image_load_error_get(image.get()) != EVAS_LOAD_ERROR_NONE)
        throw std::runtime_error("The picture " + file.string() + " cannot be read; draw it anew.");
    return from_image(image.get());
}

void Picture::save(Evas *canvas, const std::filesystem::path &file) const
{
    const CanvasObject image(evas_object_image_add(canvas), evas_object_del);
    evas_object_image_size_set(image.get(), width_, height_);
    evas_object_image_alpha_set(image.get(), EINA_FALSE);
    auto *target = evas_object_image_data_get(image.get(), EINA_TRUE);
    const auto stride = static_cast<size_t>(evas_object_image_stride_get(image.get()));
    for (int y = 0; target && y < height_; ++y)
        std::memcpy(static_cast<char *>(target) + static_cast<size_t>(y) * stride, &pixels_[index(0, y)],
                    static_cast<size_t>(width_) * sizeof(uint32_t));
    evas_object_image_data_set(image.get(), target);
    if (!target || !evas_object_image_save(image.get(), file.c_str(), nullptr, "compress=6 quality=82"))
        throw std::runtime_error("The picture " + file.string() +
                                 " cannot be written; see whether its folder exists and has room.");
}

Color Picture::at(int x, int y) const
{
    return unpacked(pixels_[index(x, y)]);
}

void Picture::set(int x, int y, Color color)
{
    pixels_[index(x, y)] = packed(color);
}

Picture Picture::shrunk(int factor) const
{
    Picture small(width_ / factor, height_ / factor);
    const int count = factor * factor;
    for (int y = 0; y < small.height_; ++y) {
        for (int x = 0; x < small.width_; ++x) {
            Color sum;
            for (int i = 0; i < count; ++i) {
                const Color pixel = at(x * factor + i % factor, y * factor + i / factor);
                sum.red += pixel.red;
                sum.green += pixel.green;
                sum.blue += pixel.blue;
            }
            small.set(x, y,
                      {(sum.red + count / 2) / count, (sum.green + count / 2) / count, (sum.blue + count / 2) / count});
        }
    }
    return small;
}

void Picture::mark(const Rect &place)
{
    const Rect inner = place.grown(kMarkGap);
    const Rect drawn = common(inner.grown(kMarkWidth), area());
    for (int y = drawn.y; y < drawn.bottom(); ++y) {
        for (int x = drawn.x; x < drawn.right(); ++x) {
            if (!inner.holds({x, y, 1, 1}))
                set(x, y, kMark);
        }
    }
}

double luminance(Color color)
{
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

double contrast(Color a, Color b)
{
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

Difference difference(const Picture &a, const Picture &b)
{
    if (a.area() != b.area())
        return {255, 255, a.area()};
    Difference result;
    double sum = 0;
    int cells = 0;
    for (int y = 0; y + kCell <= a.height(); y += kCell) {
        for (int x = 0; x + kCell <= a.width(); x += kCell) {
            const Rect cell{x, y, kCell, kCell};
            const auto first = mean_signal(a, cell);
            const auto second = mean_signal(b, cell);
            const double apart = std::hypot(first[0] - second[0], first[1] - second[1], first[2] - second[2]);
            sum += apart;
            ++cells;
            if (apart > result.largest) {
                result.largest = apart;
                result.place = cell;
            }
        }
    }
    result.mean = cells ? sum / cells : 0;
    return result;
}

} // namespace vesk::looks
