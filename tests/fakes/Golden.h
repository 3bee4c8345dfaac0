#pragma once

#include <string>
#include <string_view>

namespace thermopix {

/// Expects the text to be that of the golden file, a path below `tests/`. Where it is not, what was seen is kept below
/// `seen/` in the build's folder, and the failure says how to approve it.
void expectGolden(std::string_view path, const std::string& text);

}  // namespace thermopix
