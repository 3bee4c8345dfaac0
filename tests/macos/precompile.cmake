# What most of the core includes is read once. Only one of the two builds does so, as it hides a missing include.
cmake_language(DEFER CALL target_precompile_headers thermopix_core PRIVATE
    <algorithm> <array> <chrono> <functional> <map> <memory> <optional> <string> <string_view> <tuple> <variant>
    <vector> <fmt/format.h>)
