#include "platform/qt/views/ViewControl.h"

#include "platform/qt/drawing/Strings.h"

namespace thermopix {

void setNames(QWidget& widget, const std::string& identifier, const std::string& spoken) {
    widget.setObjectName(qtString(identifier));
    const QString name = qtString(spoken);
    if (widget.accessibleName() != name) {
        widget.setAccessibleName(name);
    }
}

}  // namespace thermopix
