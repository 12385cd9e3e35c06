#include "simulator/graphics/blur.hpp"

#include <cstdint>
#include <cstdio>
#include <vector>

#include "bench/support/BenchPhone.hpp"
#include "simulator/graphics/cairo_pointers.hpp"

/// Blurs an area of 640 by 876 pixels, which the list's pane covers, and copies it. Prints the ratio of their processor times
/// (median of rounds that alternate); ends with status 1 when it is above 12.

using namespace simulator;

namespace {

CairoPointer<cairo_surface_t> newArea()
{
    return CairoPointer<cairo_surface_t>(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 640, 876));
}

CairoPointer<cairo_surface_t> copyOf(cairo_surface_t* area)
{
    CairoPointer<cairo_surface_t> copy = newArea();
    const CairoPointer<cairo_t> cairo(cairo_create(copy.get()));
    cairo_set_source_surface(cairo.get(), area, 0, 0);
    cairo_set_operator(cairo.get(), CAIRO_OPERATOR_SOURCE);
    cairo_paint(cairo.get());
    return copy;
}

} // namespace

int main()
{
    const auto area = newArea();
    std::uint32_t noise = 1;
    for (int i = 0; i < cairo_image_surface_get_stride(area.get()) * cairo_image_surface_get_height(area.get()); ++i) {
        noise = noise * 1664525 + 1013904223;
        cairo_image_surface_get_data(area.get())[i] = static_cast<unsigned char>(noise >> 24);
    }
    cairo_surface_mark_dirty(area.get());

    constexpr int rounds = 41;
    constexpr double radius = 8;
    std::vector<double> blurred;
    std::vector<double> copied;
    for (int round = 0; round < rounds; ++round) {
        copied.push_back(processorTimeOf([&] { copyOf(area.get()); }));
        blurred.push_back(processorTimeOf([&] { blur(area.get(), radius); }));
    }
    constexpr double milliseconds = 1000;
    constexpr double limit = 12;
    const double ratio = median(blurred) / median(copied);
    std::printf("| the blur of 640 x 876 pixels | %.2f ms | copying them %.2f ms | ratio %.1f (at most %.0f) |\n",
                median(blurred) * milliseconds, median(copied) * milliseconds, ratio, limit);
    return ratio <= limit ? 0 : 1;
}
