# Compiler settings that hold for every target of the house.

option(QUIB_TESTS "Build the tests" ON)
option(QUIB_BENCHMARKS "Build the benchmarks" ON)
option(QUIB_FUZZ "Build the fuzz targets as tests that replay their seeds" ON)
option(QUIB_LIBFUZZER "Build the fuzz targets for coverage-guided fuzzing (needs clang)" OFF)
option(QUIB_HEADER_CHECK "Compile every header alone" OFF)
option(QUIB_PCH "Use a precompiled header of Qt and standard headers" ON)
option(QUIB_COVERAGE "Instrument for coverage" OFF)
set(QUIB_SANITIZE "" CACHE STRING "Sanitizers to build with, e.g. address,undefined or thread")

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()
# The build type Test: quick to build, quick enough to run, with lines in stack traces.
set(CMAKE_CXX_FLAGS_TEST "-O1 -g1")

find_program(QUIB_CCACHE ccache)
if(QUIB_CCACHE)
  # A precompiled header makes the cache distrust macros and times unless it is told that they hold still.
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${QUIB_CCACHE}")
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-fpch-preprocess)
  endif()
endif()
find_program(QUIB_MOLD mold)
if(QUIB_MOLD)
  add_link_options(-fuse-ld=mold)
endif()
# A program that draws nothing must not spend its start on loading the libraries that draw.
add_link_options(-Wl,--as-needed)

add_library(QuibOptions INTERFACE)
target_compile_options(QuibOptions INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Werror -fno-exceptions -fvisibility=hidden)
target_compile_definitions(QuibOptions INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
  QT_NO_KEYWORDS QT_NO_FOREACH QT_USE_QSTRINGBUILDER QT_STRICT_ITERATORS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_NO_EXCEPTIONS)
if(CMAKE_BUILD_TYPE STREQUAL "Debug" OR QUIB_TESTS)
  # Assertions stay on wherever tests are built, optimised builds included.
  target_compile_definitions(QuibOptions INTERFACE QUIB_ASSERTIONS=1)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees uninitialised members in every moved std::variant; clang and valgrind look after that instead.
  target_compile_options(QuibOptions INTERFACE -Wno-maybe-uninitialized)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(QuibOptions INTERFACE -Wthread-safety)
endif()
if(QUIB_SANITIZE)
  target_compile_options(QuibOptions INTERFACE -fsanitize=${QUIB_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer -g1)
  target_link_options(QuibOptions INTERFACE -fsanitize=${QUIB_SANITIZE})
endif()
if(QUIB_LIBFUZZER)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "QUIB_LIBFUZZER needs clang")
  endif()
  target_compile_options(QuibOptions INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(QUIB_COVERAGE)
  target_compile_options(QuibOptions INTERFACE --coverage -O0 -g)
  target_link_options(QuibOptions INTERFACE --coverage)
endif()
