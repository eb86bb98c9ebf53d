// Draws the application icon at build time: draw_icon DRAWING.svg SIZE OUTPUT.png

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <charconv>
#include <cstdio>
#include <memory>
#include <string_view>

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

bool draw(const char* file, int size, const char* output)
{
    const Drawing drawing(rsvg_handle_new_from_file(file, nullptr));
    if (!drawing) return false;

    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size, size));
    const Canvas canvas(cairo_create(surface.get()));
    const RsvgRectangle whole{0, 0, static_cast<double>(size), static_cast<double>(size)};
    if (!rsvg_handle_render_document(drawing.get(), canvas.get(), &whole, nullptr)) return false;
    return cairo_surface_write_to_png(surface.get(), output) == CAIRO_STATUS_SUCCESS;
}

}  // namespace

int main(int argc, char** argv)
{
    int size = 0;
    const std::string_view text(argc == 4 ? argv[2] : "");
    (void)std::from_chars(text.begin(), text.end(), size);
    if (size <= 0) {
        std::fputs("usage: draw_icon DRAWING.svg SIZE OUTPUT.png\n", stderr);
        return 2;
    }
    if (draw(argv[1], size, argv[3])) return 0;
    std::fprintf(stderr, "draw_icon: cannot draw %s\n", argv[1]);
    return 1;
}
