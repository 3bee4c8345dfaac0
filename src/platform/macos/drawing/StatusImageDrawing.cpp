#include "platform/macos/drawing/StatusImageDrawing.h"

#include "pixels/Ink.h"

namespace thermopix {

void fillCells(const StatusImage& image, FillCell fill) {
    const double side = image.cell - 2 * image.inset;
    for (std::int64_t y = 0; y < image.bitmap.height(); ++y) {
        for (std::int64_t x = 0; x < image.bitmap.width(); ++x) {
            const Ink ink = image.bitmap.at(x, y);
            if (ink != Ink::none) {
                fill({static_cast<double>(x) * image.cell + image.inset,
                      static_cast<double>(y) * image.cell + image.inset, side, side},
                     alpha(ink));
            }
        }
    }
}

}  // namespace thermopix
