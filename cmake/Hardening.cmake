# What an optimised build is hardened with, for a package or not: stack protector, library calls that know the size of
# their buffers, linkage that is read-only before main() begins, and control-flow protection where the compiler has it for
# the processor. Not under the sanitizers, which look for the same mistakes and would see less of them.
include(CheckCXXCompilerFlag)

set(THERMOPIX_HARDENED FALSE)
set(flags "${CMAKE_BUILD_TYPE} ${CMAKE_CXX_FLAGS}")
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT flags MATCHES "-fsanitize" AND
   flags MATCHES "^(Release|MinSizeRel|RelWithDebInfo) |-O[1-3s]")
    set(THERMOPIX_HARDENED TRUE)
    set(THERMOPIX_HARDENING -fstack-protector-strong)
    # A packager's own level stays.
    if(NOT flags MATCHES "_FORTIFY_SOURCE")
        list(APPEND THERMOPIX_HARDENING -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    endif()
    check_cxx_compiler_flag(-fcf-protection=full THERMOPIX_CAN_TRACK_BRANCHES)
    check_cxx_compiler_flag(-mbranch-protection=standard THERMOPIX_CAN_PROTECT_BRANCHES)
    if(THERMOPIX_CAN_TRACK_BRANCHES)
        list(APPEND THERMOPIX_HARDENING -fcf-protection=full)
    elseif(THERMOPIX_CAN_PROTECT_BRANCHES)
        list(APPEND THERMOPIX_HARDENING -mbranch-protection=standard)
    endif()
endif()

# thermopix_harden(): all that is built in this folder and below; of the tests, only some are optimised.
function(thermopix_harden)
    if(THERMOPIX_HARDENED)
        add_compile_options(${THERMOPIX_HARDENING})
        add_link_options(-Wl,-z,relro -Wl,-z,now)
    endif()
endfunction()
