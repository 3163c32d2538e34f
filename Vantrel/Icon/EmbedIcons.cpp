// Runs when Vantrel is built: writes the pictures that it is given, smallest first, as the source text of itemIcons().
//
//     embed-icons OUTPUT.cpp PICTURE.png...
#include <cairo/cairo.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <span>
#include <sstream>

namespace {

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};

/// cairo's pixel with its colours divided by its alpha again.
std::uint32_t straight(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24U;
    std::uint32_t result = alpha << 24U;
    for (const unsigned shift : {16U, 8U, 0U}) {
        const std::uint32_t color = pixel >> shift & 0xFFU;
        result |= (alpha == 0 ? 0 : (color * 0xFFU + alpha / 2) / alpha) << shift;
    }
    return result;
}

/// Writes the picture's pixels as the elements of an array. Returns its side; 0 when it is no square picture.
int writePixels(std::ostream& output, const char* file) {
    const std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface(cairo_image_surface_create_from_png(file));
    const int side = cairo_image_surface_get_width(surface.get());
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS ||
        cairo_image_surface_get_format(surface.get()) != CAIRO_FORMAT_ARGB32 ||
        cairo_image_surface_get_height(surface.get()) != side) {
        return 0;
    }
    const unsigned char* const data = cairo_image_surface_get_data(surface.get());
    for (int row = 0; row < side; ++row) {
        const auto* const line = reinterpret_cast<const std::uint32_t*>(
            data + static_cast<std::ptrdiff_t>(row) * cairo_image_surface_get_stride(surface.get()));
        for (int column = 0; column < side; ++column) {
            output << straight(line[column]) << "U,";
        }
        output << '\n';
    }
    return side;
}

}  // namespace

int main(int count, char* arguments[]) {
    const std::span<char*> given(arguments, static_cast<std::size_t>(count));
    if (given.size() < 3) {
        std::fprintf(stderr, "usage: embed-icons OUTPUT.cpp PICTURE.png...\n");
        return EXIT_FAILURE;
    }
    std::ofstream output(given[1]);
    output << "#include \"Vantrel/Icon/ItemIcon.hpp\"\nnamespace vantrel {\nnamespace {\n";
    std::ostringstream icons;
    int number = 0;
    for (const char* const picture : given.subspan(2)) {
        output << "constexpr std::uint32_t icon" << ++number << "[] = {\n";
        const int side = writePixels(output, picture);
        if (side == 0) {
            std::fprintf(stderr, "embed-icons: %s is no square PNG with transparency\n", picture);
            return EXIT_FAILURE;
        }
        output << "};\n";
        icons << '{' << side << ", icon" << number << "},";
    }
    output << "constexpr ItemIcon icons[] = {" << icons.str()
           << "};\n}  // namespace\nstd::span<const ItemIcon> itemIcons() { return icons; }\n}  // namespace vantrel\n";
    return output.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}
