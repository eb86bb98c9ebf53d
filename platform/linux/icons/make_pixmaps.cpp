// Draws the symbols at build time: make_pixmaps OUTPUT.cpp SYMBOL.svg...
// Writes the definition of symbolPixmaps() (SymbolPixmaps.h) for the files in their order.

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/tray/icon/SymbolPixmaps.h"

namespace {

template <auto release>
struct Releaser {
    template <typename Handle>
    void operator()(Handle* handle) const
    {
        release(handle);
    }
};

using Drawing = std::unique_ptr<RsvgHandle, Releaser<g_object_unref>>;
using Surface = std::unique_ptr<cairo_surface_t, Releaser<cairo_surface_destroy>>;
using Canvas = std::unique_ptr<cairo_t, Releaser<cairo_destroy>>;

// How much of each pixel the drawing covers, row by row; empty when it cannot be drawn.
std::vector<std::uint8_t> coverage(RsvgHandle* drawing, int size)
{
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_A8, size, size));
    const Canvas canvas(cairo_create(surface.get()));
    const RsvgRectangle whole{0, 0, static_cast<double>(size), static_cast<double>(size)};
    if (!rsvg_handle_render_document(drawing, canvas.get(), &whole, nullptr)) return {};

    cairo_surface_flush(surface.get());
    const auto* row = cairo_image_surface_get_data(surface.get());
    const auto stride = cairo_image_surface_get_stride(surface.get());
    std::vector<std::uint8_t> pixels;
    for (int y = 0; y < size; ++y, row += stride) pixels.insert(pixels.end(), row, row + size);
    return pixels;
}

bool writeSymbol(std::ostream& out, const std::filesystem::path& file)
{
    const Drawing drawing(rsvg_handle_new_from_file(file.c_str(), nullptr));
    if (!drawing) return false;

    out << "    {\"" << file.stem().string() << "\",\n     {";
    for (const auto size : vorlane::platform::pixmapSizes) {
        const auto pixels = coverage(drawing.get(), size);
        if (pixels.empty()) return false;
        for (const auto pixel : pixels) out << static_cast<unsigned>(pixel) << ',';
        out << '\n';
    }
    out << "}},\n";
    return true;
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() < 2) {
        std::fputs("usage: make_pixmaps OUTPUT.cpp SYMBOL.svg...\n", stderr);
        return 2;
    }
    std::ofstream out(arguments[0]);
    out << "#include \"platform/linux/tray/icon/SymbolPixmaps.h\"\n\n"
           "namespace vorlane::platform {\n\n"
           "static constexpr SymbolPixmaps symbols[] = {\n";
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        if (writeSymbol(out, arguments[i])) continue;
        std::fprintf(stderr, "make_pixmaps: cannot draw %s\n", arguments[i].c_str());
        return 1;
    }
    out << "};\n\n"
           "std::span<const SymbolPixmaps> symbolPixmaps()\n{\n    return symbols;\n}\n\n"
           "}  // namespace vorlane::platform\n";
    out.close();
    return out ? 0 : 1;
}
