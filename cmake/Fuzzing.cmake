# Fuzz targets, for clang's libFuzzer. The core is instrumented for it, so that a fuzzer sees which branches it
# has reached; src/ is added after this file.
if(THERMOPIX_FUZZERS)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "THERMOPIX_FUZZERS needs clang")
    endif()
    add_compile_options(-fsanitize=fuzzer-no-link)
    add_custom_target(fuzzers)
endif()

# thermopix_fuzz(NAME ROOM room SOURCES ... [LIBRARIES ...]): a fuzz target, and a CTest test that runs it on a fixed
# row of inputs. `./dev fuzz` runs it for longer. Targets are called thermopix_<what>_fuzz.
function(thermopix_fuzz name)
    cmake_parse_arguments(ARG "" "ROOM" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE thermopix_core thermopix_warnings ${ARG_LIBRARIES})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    add_dependencies(fuzzers ${name})
    add_test(NAME "fuzz: ${name}"
        COMMAND ${name} -runs=20000 -seed=1 -max_len=512 -artifact_prefix=${CMAKE_BINARY_DIR}/ -verbosity=0)
    set_tests_properties("fuzz: ${name}" PROPERTIES LABELS "fuzz;${ARG_ROOM}" TIMEOUT 600)
endfunction()
