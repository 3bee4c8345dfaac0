#include "pixels/PngWriter.h"

#include <png.h>

#include <cmath>
#include <csetjmp>
#include <cstddef>
#include <new>
#include <utility>

#include "base/Fatal.h"
#include "pixels/CellGrid.h"

namespace thermopix {

namespace {

static_assert(sizeof(RgbaColor) == 4 && alignof(RgbaColor) == 1, "a row of pixels is a row of PNG samples");

constexpr double pointsPerMetre = 72 / 0.0254;
constexpr int bitsPerSample = 8;

/// What libpng needs, in plain data only: its errors jump out of `encode`, past any destructor there.
struct Encoding {
    png_structp writer;
    png_infop info;
    const RgbaColor* pixels;
    png_uint_32 width;
    png_uint_32 height;
    png_uint_32 pixelsPerMetre;
};

/// False when the file is out of memory; no exception may pass through libpng.
bool append(std::string& file, png_const_bytep bytes, std::size_t count) noexcept {
    try {
        file.append(reinterpret_cast<const char*>(bytes), count);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void write(png_structp writer, png_bytep bytes, std::size_t count) {
    auto* file = static_cast<std::string*>(png_get_io_ptr(writer));
    if (!append(*file, bytes, count)) {
        png_error(writer, "out of memory");
    }
}

void flush(png_structp /*writer*/) {}

[[noreturn]] void fail(png_structp writer, png_const_charp /*message*/) {
    png_longjmp(writer, 1);
}

void ignoreWarning(png_structp /*writer*/, png_const_charp /*message*/) {}

bool encode(const Encoding& encoding) {
    if (setjmp(png_jmpbuf(encoding.writer)) != 0) {
        return false;
    }
    png_set_IHDR(encoding.writer, encoding.info, encoding.width, encoding.height, bitsPerSample, PNG_COLOR_TYPE_RGBA,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(encoding.writer, encoding.info, encoding.pixelsPerMetre, encoding.pixelsPerMetre,
                 PNG_RESOLUTION_METER);
    png_write_info(encoding.writer, encoding.info);
    for (png_uint_32 row = 0; row < encoding.height; ++row) {
        png_write_row(encoding.writer,
                      reinterpret_cast<png_const_bytep>(encoding.pixels + std::size_t{row} * encoding.width));
    }
    png_write_end(encoding.writer, encoding.info);
    return true;
}

/// libpng's two structures, freed together.
class Writer {
public:
    Writer() : writer_(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, ignoreWarning)) {
        if (writer_ != nullptr) {
            info_ = png_create_info_struct(writer_);
        }
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer() { png_destroy_write_struct(&writer_, &info_); }

    [[nodiscard]] bool isReady() const { return info_ != nullptr; }
    [[nodiscard]] png_structp writer() const { return writer_; }
    [[nodiscard]] png_infop info() const { return info_; }

private:
    png_structp writer_;
    png_infop info_ = nullptr;
};

/// None for a density that a PNG file cannot say.
std::optional<png_uint_32> pixelsPerMetre(std::int64_t scale) {
    const double density = std::round(static_cast<double>(scale) * pointsPerMetre);
    if (density < 1 || density > PNG_UINT_31_MAX) {
        return std::nullopt;
    }
    return static_cast<png_uint_32>(density);
}

}  // namespace

std::optional<std::string> pngData(const RgbaImage& image, std::int64_t scale) {
    require(image.pixels.size() == CellGrid::cellCount(image.width, image.height),
            "an image needs width × height pixels");
    const auto density = pixelsPerMetre(scale);
    if (!density || image.pixels.empty() || image.width > PNG_UINT_31_MAX || image.height > PNG_UINT_31_MAX) {
        return std::nullopt;
    }
    const Writer writer;
    if (!writer.isReady()) {
        return std::nullopt;
    }
    std::string file;
    png_set_write_fn(writer.writer(), &file, write, flush);
    const bool isWritten = encode({.writer = writer.writer(),
                                   .info = writer.info(),
                                   .pixels = image.pixels.data(),
                                   .width = static_cast<png_uint_32>(image.width),
                                   .height = static_cast<png_uint_32>(image.height),
                                   .pixelsPerMetre = *density});
    return isWritten ? std::optional(std::move(file)) : std::nullopt;
}

}  // namespace thermopix
