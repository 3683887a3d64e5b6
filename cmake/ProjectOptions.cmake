# What every target of this tree is compiled with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()
set(CMAKE_CXX_FLAGS_RELEASE "-O2")

# Programs, modules and the host library stand side by side, so that each finds the others.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

# What differs by system is chosen by source file: NAME_posix.cpp or NAME_win32.cpp.
if(WIN32)
  set(QX_SYSTEM win32)
  enable_language(RC)
  include(WindowsRuntime)
else()
  set(QX_SYSTEM posix)
endif()

# The same sums everywhere: no fused multiply-add behind our back.
option(QX_WERROR "Treat warnings as errors" ON)
if(MSVC)
  set(QX_COMPILE_OPTIONS /fp:precise /W4 /utf-8 /permissive- $<$<BOOL:${QX_WERROR}>:/WX>)
else()
  set(QX_COMPILE_OPTIONS -ffp-contract=off -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    $<$<BOOL:${QX_WERROR}>:-Werror>)
endif()
add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:${QX_COMPILE_OPTIONS}>")

option(QX_SANITIZE "Build with address and undefined-behaviour sanitizers" OFF)
if(QX_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
  add_link_options(-fsanitize=address,undefined)
endif()

option(QX_FUZZ "Build the fuzz targets in place of the tests (needs clang)" OFF)
if(QX_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
