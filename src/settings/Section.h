#pragma once

#include <string_view>
#include <vector>

#include "shell/ViewNode.h"

namespace thermopix {

/// A title over its content.
[[nodiscard]] ViewNode section(std::string_view title, std::vector<ViewNode> content);

/// Controls that belong together, on a card: each as wide as the card, with a line between one and the next.
[[nodiscard]] ViewNode card(std::vector<ViewNode> content);

/// The rows of a list of which one is chosen, on a card.
[[nodiscard]] ViewNode choiceList(std::vector<ViewNode> rows);

/// An explanation in small print, on as many lines as it needs.
[[nodiscard]] ViewNode captionText(std::string_view text);

}  // namespace thermopix
