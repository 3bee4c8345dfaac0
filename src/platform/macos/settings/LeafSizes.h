#pragma once

#include <string>
#include <unordered_map>

#include "base/FunctionView.h"
#include "shell/ViewLayout.h"

namespace thermopix {

/// Remembers how large leaves are, since layout asks for each many times and controls are slow to tell.
class LeafSizes {
public:
    /// The remembered size, else what `measure` says.
    [[nodiscard]] Size size(const ViewNode& leaf, double width, MeasureLeaf measure);

private:
    std::unordered_map<std::string, Size> sizes_;
};

}  // namespace thermopix
