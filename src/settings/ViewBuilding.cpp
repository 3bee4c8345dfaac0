#include "settings/ViewBuilding.h"

#include <utility>

namespace thermopix::Views {

ViewNode vertical(double spacing, std::vector<ViewNode> children) {
    ViewNode node;
    node.spacing = spacing;
    node.children = std::move(children);
    return node;
}

ViewNode horizontal(double spacing, std::vector<ViewNode> children) {
    ViewNode node = vertical(spacing, std::move(children));
    node.axis = Axis::horizontal;
    node.alignment = Alignment::center;
    return node;
}

ViewNode text(std::string_view text, double points, ColorRole role) {
    ViewNode node;
    node.kind = ViewKind::text;
    node.text = text;
    node.textStyle.points = points;
    node.color = RoleColor{role};
    return node;
}

ViewNode symbol(std::string_view name, double points, ColorRole role) {
    ViewNode node = text(name, points, role);
    node.kind = ViewKind::symbol;
    return node;
}

ViewNode pixelImage(StatusImage image, Color color) {
    ViewNode node;
    node.kind = ViewKind::pixelImage;
    node.image = std::move(image);
    node.color = color;
    return node;
}

ViewNode spacer() {
    ViewNode node;
    node.kind = ViewKind::spacer;
    return node;
}

ViewNode divider() {
    ViewNode node;
    node.kind = ViewKind::divider;
    node.color = RoleColor{ColorRole::separator};
    return node;
}

ViewNode toggle(std::string_view title, std::string_view identifier, bool isOn) {
    ViewNode node;
    node.kind = ViewKind::toggle;
    node.text = title;
    node.identifier = identifier;
    node.isOn = isOn;
    return node;
}

ViewNode pushButton(std::string_view title, std::string_view identifier) {
    ViewNode node;
    node.kind = ViewKind::button;
    node.text = title;
    node.identifier = identifier;
    return node;
}

}  // namespace thermopix::Views
