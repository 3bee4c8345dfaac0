# Code that nothing calls is left out of the program: every page of it that a neighbour pulls in is resident memory.
add_compile_options(-ffunction-sections -fdata-sections)
if(APPLE)
    add_link_options(-Wl,-dead_strip)
else()
    add_link_options(-Wl,--gc-sections)
endif()

# A shared C++ library is a megabyte that the resident program would keep mapped for the few parts that it uses.
option(THERMOPIX_STATIC_RUNTIME "Put the used parts of the C++ library and of fmt into the resident program" OFF)
set(THERMOPIX_FMT fmt::fmt)
if(THERMOPIX_STATIC_RUNTIME)
    set(THERMOPIX_FMT fmt::fmt-header-only)
endif()
function(thermopix_resident target)
    if(THERMOPIX_STATIC_RUNTIME)
        target_link_options(${target} PRIVATE -static-libstdc++ -static-libgcc)
    endif()
endfunction()

# thermopix_every_tick(TARGET SOURCE...): what runs at each refresh is compiled for speed where all else is for size.
function(thermopix_every_tick target)
    set_property(SOURCE ${ARGN} TARGET_DIRECTORY ${target} APPEND PROPERTY
        COMPILE_OPTIONS $<$<CONFIG:MinSizeRel>:-O2>)
    # A precompiled header is optimised as the rest.
    set_property(SOURCE ${ARGN} TARGET_DIRECTORY ${target} PROPERTY SKIP_PRECOMPILE_HEADERS ON)
endfunction()
