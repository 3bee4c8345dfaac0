# Warnings of every target of the project; an interface library, so that no third-party code sees them.
# Not -Wnull-dereference: optimised, g++ 12 suspects the standard containers; static analysis and the sanitizers look.
add_library(thermopix_warnings INTERFACE)
target_compile_options(thermopix_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-align -Wunused -Wdouble-promotion -Wformat=2
    -Wimplicit-fallthrough)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Optimised, g++ 12 warns of overlap inside "text" + std::string.
    target_compile_options(thermopix_warnings INTERFACE -Wno-restrict)
endif()
if(THERMOPIX_WERROR)
    target_compile_options(thermopix_warnings INTERFACE -Werror)
endif()
