#include "system/UnavailableLoginItem.h"

namespace thermopix {

std::optional<ServiceError> UnavailableLoginItem::setEnabled(bool value) {
    if (!value) {
        return std::nullopt;
    }
    return ServiceError{"this system offers no way to open programs at login"};
}

}  // namespace thermopix
