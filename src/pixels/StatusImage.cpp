#include "pixels/StatusImage.h"

namespace thermopix {

double StatusImage::width() const {
    return isBlank() ? 1.0 : cell * static_cast<double>(bitmap.width());
}

double StatusImage::height() const {
    return isBlank() ? 1.0 : cell * static_cast<double>(bitmap.height());
}

}  // namespace thermopix
