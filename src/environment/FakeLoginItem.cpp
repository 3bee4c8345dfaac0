#include "environment/FakeLoginItem.h"

#include <utility>

namespace thermopix {

std::optional<ServiceError> FakeLoginItem::setEnabled(bool value) {
    if (std::exchange(failNextWrite, false)) {
        return ServiceError{"file write: no permission"};
    }
    enabled = value;
    return std::nullopt;
}

}  // namespace thermopix
