#pragma once
/* What a panel shows, as pixels in memory: to measure, to mark, to shrink and to compare. */

#include <Evas.h>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

#include "television/panel.h"

namespace vesk::looks {

/* A rectangle in pixels of the panel. */
struct Rect {
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;

    int right() const { return x + w; }
    int bottom() const { return y + h; }
    bool empty() const { return w <= 0 || h <= 0; }
    /* Whether `other` lies within, with at least `margin` to every side. */
    bool holds(const Rect &other, int margin = 0) const;
    Rect grown(int by) const { return {x - by, y - by, w + 2 * by, h + 2 * by}; }
    bool operator==(const Rect &) const = default;
};

/* What two rectangles share; empty when they share nothing. */
Rect common(const Rect &a, const Rect &b);

struct Color {
    int red = 0;
    int green = 0;
    int blue = 0;
    bool operator==(const Color &) const = default;
};

class Picture {
public:
    Picture(int width, int height);

    /* What the panel shows now. */
    static Picture of(const Panel &panel);

    /* Reads a picture file through a canvas. Throws std::runtime_error that names the file. */
    static Picture load(Evas *canvas, const std::filesystem::path &file);

    /* Writes the picture in the format that the file's name ends with (png, webp). Throws std::runtime_error that
       names the file. */
    void save(Evas *canvas, const std::filesystem::path &file) const;

    int width() const { return width_; }
    int height() const { return height_; }
    Rect area() const { return {0, 0, width_, height_}; }

    Color at(int x, int y) const;
    void set(int x, int y, Color color);

    /* The picture at a `factor`-th of its size: each pixel is the mean of a square. */
    Picture shrunk(int factor) const;

    /* Draws a bright frame around a place, so that a person finds it. */
    void mark(const Rect &place);

private:
    size_t index(int x, int y) const
    {
        return static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x);
    }

    int width_;
    int height_;
    std::vector<uint32_t> pixels_; /* 0xAARRGGBB */
};

/* How bright a colour is, from 0 to 1. */
double luminance(Color color);

/* The contrast of two colours as the accessibility guidelines count it, from 1 to 21. */
double contrast(Color a, Color b);

/* How far two pictures of one size are apart to the eye, from 0 to 255 each. Differences of brightness count more than
   those of colour; neighbouring pixels are averaged, so that another rasterisation of a glyph hardly counts. */
struct Difference {
    double mean = 0;    /* over the whole picture */
    double largest = 0; /* of the place that differs most */
    Rect place;         /* where that is */
};
Difference difference(const Picture &a, const Picture &b);

} // namespace vesk::looks
