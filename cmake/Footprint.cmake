# Code that nothing calls is left out of the program: every page of it that a neighbour pulls in is resident memory.
add_compile_options(-ffunction-sections -fdata-sections)
if(APPLE)
    add_link_options(-Wl,-dead_strip)
else()
    add_link_options(-Wl,--gc-sections)
endif()

# thermopix_every_tick(TARGET SOURCE...): what runs at each refresh is compiled for speed where all else is for size.
function(thermopix_every_tick target)
    set_property(SOURCE ${ARGN} TARGET_DIRECTORY ${target} APPEND PROPERTY
        COMPILE_OPTIONS $<$<CONFIG:MinSizeRel>:-O2>)
endfunction()
