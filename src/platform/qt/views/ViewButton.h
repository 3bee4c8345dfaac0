#pragma once

#include <QKeyEvent>

#include "platform/qt/drawing/Strings.h"
#include "platform/qt/views/Focusable.h"
#include "platform/qt/views/ViewControl.h"

namespace thermopix {

/// A button of the toolkit that shows a node; the return key presses it as the space bar does.
template <typename Button>
class ViewButton : public View<Focusable<Button>> {
public:
    using View<Focusable<Button>>::View;

    void show(const ViewNode& node) override {
        setNames(*this, node.identifier, node.accessibility.label);
        if (this->node_ != node) {
            this->node_ = node;
            this->setText(controlText(node.text));
            this->update();
        }
    }

    [[nodiscard]] std::vector<QWidget*> stops() override { return {this}; }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            this->click();
        } else {
            Button::keyPressEvent(event);
        }
    }
};

}  // namespace thermopix
