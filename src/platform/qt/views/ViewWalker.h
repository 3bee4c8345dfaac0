#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "platform/qt/views/Controls.h"

namespace thermopix {

/// Shows trees of views in a widget. A tree of the same shape as the one before (kinds, identifiers and order) only
/// brings the controls up to date; where the shape differs, that part is made anew.
class ViewWalker {
public:
    /// The controls become children of `host`, which outlives the walker.
    ViewWalker(QWidget& host, ReportEvent report);

    /// Lays the tree out in the host's size.
    void show(const ViewNode& root);

private:
    /// A node as it is shown; without control where only its children are seen.
    struct Mounted {
        ViewKind kind = ViewKind::stack;
        std::string identifier;
        Controls::Make* make = nullptr;
        ViewControl* control = nullptr;
        std::vector<Mounted> children;
    };

    void mount(Mounted& mounted, const PlacedNode& placed, QWidget& parent);
    void mountChildren(Mounted& mounted, const PlacedNode& placed, QWidget& parent);
    void remove(Mounted& mounted);
    static void joinChoices(const Mounted& stack);
    static void collectStops(const Mounted& mounted, std::vector<QWidget*>& stops);
    void restoreTabOrder() const;

    QWidget& host_;
    ReportEvent report_;
    Mounted root_;
    /// The present walk made or removed controls.
    bool hasNewShape_ = false;
};

}  // namespace thermopix
