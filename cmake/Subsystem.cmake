# add_subsystem(<name> USES <subsystem>... LIBRARIES <target>... HEADERS <file>... SOURCES <file>...)
#
# One folder under src/ is one namespace and one static library orlenta_<name>. USES declares its edges. An edge to a
# subsystem that isn't declared earlier in the top CMakeLists.txt points upward and stops the configuration.
# Static libraries don't keep undeclared includes from compiling, so tools/check-layers compares the edges with the
# includes. It also runs as a test.
set_property(GLOBAL PROPERTY ORLENTA_SUBSYSTEMS "")

function(add_subsystem name)
  cmake_parse_arguments(arg "" "" "USES;LIBRARIES;HEADERS;SOURCES" ${ARGN})
  get_property(declared GLOBAL PROPERTY ORLENTA_SUBSYSTEMS)
  foreach(used IN LISTS arg_USES)
    if(NOT used IN_LIST declared)
      message(FATAL_ERROR "src/${name} may not use ${used}, which is in a higher layer or not declared yet")
    endif()
  endforeach()
  set(libraries ${arg_LIBRARIES})
  if(NOT name STREQUAL "shell" AND "Qt6::Widgets" IN_LIST libraries)
    message(FATAL_ERROR "src/${name} may not link Qt Widgets; only the shell may")
  endif()

  set(target orlenta_${name})
  add_library(${target} STATIC ${arg_SOURCES} ${arg_HEADERS})
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS "${CMAKE_SOURCE_DIR}/src" FILES ${arg_HEADERS})
  target_include_directories(${target} PUBLIC "${CMAKE_SOURCE_DIR}/src")
  list(TRANSFORM arg_USES PREPEND orlenta_ OUTPUT_VARIABLE used_targets)
  target_link_libraries(${target} PUBLIC ${used_targets} ${libraries} PRIVATE orlenta_warnings)

  set_property(GLOBAL APPEND PROPERTY ORLENTA_SUBSYSTEMS ${name})
endfunction()

# add_subsystem_tests(<name> LIBRARIES <target>... SOURCES <file>...) adds the GoogleTest program of a subsystem.
function(add_subsystem_tests name)
  cmake_parse_arguments(arg "" "" "LIBRARIES;SOURCES" ${ARGN})
  set(target ${name}_tests)
  add_executable(${target} ${arg_SOURCES})
  target_include_directories(${target} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
  target_link_libraries(${target} PRIVATE orlenta_${name} orlenta_test_support ${arg_LIBRARIES} GTest::gtest GTest::gmock
    orlenta_warnings)
  target_compile_definitions(${target} PRIVATE ORLENTA_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data")
  gtest_discover_tests(${target} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/lsan.supp")
endfunction()

