#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "shell/AboutPanelContent.h"

namespace thermopix {

/// The inside of the About panel: icon, name, version and credits, one below the other.
class AboutContent final : public QWidget {
public:
    explicit AboutContent(const AboutPanelContent& content);

    [[nodiscard]] QSize wantedSize() const { return wanted_; }

private:
    QSize wanted_;
};

}  // namespace thermopix
