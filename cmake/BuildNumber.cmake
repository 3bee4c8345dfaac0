# The build number, fixed at configure time: what the packager says, else the number of commits, else 0.
if(THERMOPIX_BUILD STREQUAL "")
    execute_process(
        COMMAND git -C ${CMAKE_SOURCE_DIR} rev-list --count HEAD
        OUTPUT_VARIABLE THERMOPIX_BUILD_NUMBER OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET
        RESULT_VARIABLE git_result)
    if(NOT git_result EQUAL 0)
        set(THERMOPIX_BUILD_NUMBER 0)
    endif()
else()
    set(THERMOPIX_BUILD_NUMBER ${THERMOPIX_BUILD})
endif()
