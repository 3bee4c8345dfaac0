# Builds for macOS on Debian: clang's Apple targets, lld, and the stand-in SDK of stand_in.py in THERMOPIX_STAND_IN.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES THERMOPIX_STAND_IN)
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 22.0)
set(CMAKE_SYSTEM_PROCESSOR ${CMAKE_OSX_ARCHITECTURES})
set(CMAKE_OSX_SYSROOT ${THERMOPIX_STAND_IN}/sdk CACHE PATH "")

find_program(compiler clang++-14 REQUIRED)
foreach(language CXX OBJCXX)
    set(CMAKE_${language}_COMPILER ${compiler})
    set(CMAKE_${language}_COMPILER_TARGET ${CMAKE_OSX_ARCHITECTURES}-apple-macos13)
    # The SDK's libc++, where Debian's clang would take the one beside it, or another library. The C headers, Debian's
    # here, mean other things by these names.
    set(CMAKE_${language}_FLAGS_INIT "-stdlib=libc++ -nostdinc++ -isystem ${CMAKE_OSX_SYSROOT}/usr/include/c++/v1")
    string(APPEND CMAKE_${language}_FLAGS_INIT " -U__nonnull -U__nullable -D_GNU_SOURCE")
endforeach()
string(APPEND CMAKE_OBJCXX_FLAGS_INIT " -Wunguarded-availability -Wnullable-to-nonnull-conversion"
    " -Warc-retain-cycles -Wundeclared-selector -Wstrict-selector-match -Wobjc-messaging-id")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld")

find_program(CMAKE_AR llvm-ar-14 REQUIRED)
find_program(CMAKE_RANLIB llvm-ranlib-14 REQUIRED)
set(CMAKE_INSTALL_NAME_TOOL ${THERMOPIX_STAND_IN}/tools/install_name_tool)
set(CMAKE_CROSSCOMPILING_EMULATOR ${THERMOPIX_STAND_IN}/tools/run)

# What is found is the stand-in's, never this machine's own.
set(CMAKE_FIND_ROOT_PATH ${THERMOPIX_STAND_IN}/sdk ${THERMOPIX_STAND_IN}/homebrew)
set(CMAKE_PREFIX_PATH ${THERMOPIX_STAND_IN}/homebrew)
foreach(kind LIBRARY INCLUDE PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
