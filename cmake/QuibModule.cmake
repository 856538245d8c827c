# quib_module(NAME [DEPENDS ...] [PRIVATE ...]): one static library for the sources of the current folder.
# A module's link line is its permission to include another module's headers.
function(quib_module name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;PRIVATE" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  if(NOT sources)
    return()
  endif()
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/Platform" "${PROJECT_SOURCE_DIR}/Core")
  target_link_libraries(${name} PUBLIC QuibOptions Qt6::Core ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE})
  quib_precompile(${name})
  set_property(GLOBAL APPEND PROPERTY QUIB_MODULES ${name})
endfunction()

# quib_precompile(NAME): Qt and standard headers only; the build passes without it (QUIB_PCH=OFF).
function(quib_precompile name)
  if(QUIB_PCH)
    target_precompile_headers(${name} PRIVATE <QString> <QStringView> <QByteArray> <QList> <QHash> <QSet> <QMap>
      <algorithm> <functional> <memory> <optional> <string> <utility> <variant> <vector>)
  endif()
endfunction()

# quib_test(NAME [DEPENDS ...]): one GoogleTest program for the sources of the current folder, one ctest a case.
function(quib_test name)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/Tests")
  target_link_libraries(${name} PRIVATE TestSupport ${ARG_DEPENDS})
  quib_precompile(${name})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 300 ENVIRONMENT QT_QPA_PLATFORM=offscreen)
endfunction()

# quib_link_all_modules(NAME): links every module of Platform and Core, for programs that stand outside the layers.
function(quib_link_all_modules name)
  get_property(modules GLOBAL PROPERTY QUIB_MODULES)
  target_link_libraries(${name} PRIVATE ${modules})
endfunction()
