# Compiles every header alone, included twice: each brings what it needs and guards itself. Without the precompiled
# header, which would hide what is missing.
file(GLOB_RECURSE headers RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS
  "${PROJECT_SOURCE_DIR}/Platform/*.h" "${PROJECT_SOURCE_DIR}/Core/*.h" "${PROJECT_SOURCE_DIR}/CommandLine/*.h"
  "${PROJECT_SOURCE_DIR}/App/*.h"
  "${PROJECT_SOURCE_DIR}/Tests/*.h" "${PROJECT_SOURCE_DIR}/Benchmarks/*.h")
set(header_sources)
foreach(header IN LISTS headers)
  string(REGEX REPLACE "[^A-Za-z0-9_+/]" "_" name "${header}")
  set(source "${PROJECT_BINARY_DIR}/HeaderCheck/${name}.cpp")
  file(CONFIGURE OUTPUT "${source}" @ONLY
    CONTENT "#include \"${PROJECT_SOURCE_DIR}/@header@\"\n#include \"${PROJECT_SOURCE_DIR}/@header@\" // IWYU pragma: keep\n")
  list(APPEND header_sources "${source}")
endforeach()
add_library(HeaderCheck OBJECT ${header_sources})
quib_link_all_modules(HeaderCheck)
target_link_libraries(HeaderCheck PRIVATE Qt6::DBus Qt6::Gui Qt6::Network Qt6::Test Qt6::Widgets ICU::i18n ICU::uc SQLite::SQLite3 PkgConfig::CURL PkgConfig::PLIST)
target_include_directories(HeaderCheck PRIVATE "${PROJECT_SOURCE_DIR}/CommandLine" "${PROJECT_SOURCE_DIR}/App")
foreach(target TestSupport BenchmarkSupport)
  if(TARGET ${target})
    target_link_libraries(HeaderCheck PRIVATE ${target})
  endif()
endforeach()
target_compile_options(HeaderCheck PRIVATE -O0 -g0)
if(TARGET GeneratedEntities)
  add_dependencies(HeaderCheck GeneratedEntities)
endif()
