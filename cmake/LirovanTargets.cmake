# Everything that all targets share: language level, warnings, and the three kinds of target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
# Packaging takes what is built: `cmake --build --preset program --target package_contents`, then `cpack`.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY TRUE)

add_library(lirovan_options INTERFACE)
target_compile_options(lirovan_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-qual
  # This compiler sees overlaps and unset values in the standard library's own string code when it optimises.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict -Wno-maybe-uninitialized>
  $<$<BOOL:${LIROVAN_WERROR}>:-Werror>)
# Strings enter Qt only through an explicit encoding; signals and slots are spelled Q_SIGNALS and Q_SLOTS.
target_compile_definitions(lirovan_options INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

# Tests are compiled once and run once: what they test is optimised, they themselves hardly.
add_library(lirovan_test_options INTERFACE)
target_compile_options(lirovan_test_options INTERFACE $<$<CONFIG:Release>:-O1>)

# The headers that most sources read, precompiled once for each kind of target: reading them is most of what a source
# costs. Every source still includes what it uses; the presets `core` and `fuzz` are built without.
function(lirovan_precompile kind header)
  add_library(lirovan_precompiled_${kind} OBJECT "${PROJECT_SOURCE_DIR}/cmake/precompiled/none.cpp")
  target_link_libraries(lirovan_precompiled_${kind} PRIVATE lirovan_options ${ARGN})
  target_precompile_headers(lirovan_precompiled_${kind} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/precompiled/${header}")
endfunction()

# lirovan_use_precompiled(NAME SUFFIX LINKS...): SUFFIX is empty, or _test for a target that uses GoogleTest.
function(lirovan_use_precompiled name suffix)
  if(NOT LIROVAN_PCH)
    return()
  elseif("${ARGN}" MATCHES "Qt6::(Widgets|Gui|Test)|lirovan_(platform_ui|browse|search|notes|desk|shell)(;|$)")
    target_precompile_headers(${name} REUSE_FROM lirovan_precompiled_ui${suffix})
  else()
    target_precompile_headers(${name} REUSE_FROM lirovan_precompiled_core${suffix})
  endif()
endfunction()

if(LIROVAN_PCH)
  lirovan_precompile(core core.h Qt6::Core)
  if(LIROVAN_UI)
    lirovan_precompile(ui ui.h Qt6::Widgets)
  endif()
  if(LIROVAN_TESTS)
    lirovan_precompile(core_test core_test.h lirovan_test_options Qt6::Core GTest::gtest)
    if(LIROVAN_UI)
      lirovan_precompile(ui_test ui_test.h lirovan_test_options Qt6::Widgets GTest::gtest)
    endif()
  endif()
endif()

# lirovan_library(NAME SOURCES... LINKS...): one static library. LINKS are public, since headers show the types of
# the layers below.
function(lirovan_library name)
  cmake_parse_arguments(ARG "MOC" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${name} PRIVATE lirovan_options PUBLIC ${ARG_LINKS})
  lirovan_use_precompiled(${name} "" ${ARG_LINKS})
  set_target_properties(${name} PROPERTIES AUTOMOC ${ARG_MOC})
endfunction()

# lirovan_program(NAME SOURCES... LINKS...): one executable in build/<preset>/bin.
function(lirovan_program name)
  cmake_parse_arguments(ARG "MOC" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE lirovan_options ${ARG_LINKS})
  lirovan_use_precompiled(${name} "" ${ARG_LINKS})
  set_target_properties(${name} PROPERTIES AUTOMOC ${ARG_MOC})
endfunction()

# lirovan_test(NAME SOURCES... LINKS... [ENVIRONMENT VAR=VALUE...] [TIMEOUT s] [MAIN]): one GoogleTest program,
# registered with CTest as one test. MAIN: the sources bring their own main() (a test that needs a QApplication).
function(lirovan_test name)
  cmake_parse_arguments(ARG "MOC;MAIN" "TIMEOUT" "SOURCES;LINKS;ENVIRONMENT;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${name} PRIVATE lirovan_options lirovan_test_options ${ARG_LINKS} lirovan_test_places GTest::gtest)
  lirovan_use_precompiled(${name} "_test" ${ARG_LINKS})
  if(NOT ARG_MAIN)
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
  endif()
  set_target_properties(${name} PROPERTIES AUTOMOC ${ARG_MOC}
    RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  add_test(NAME ${name} COMMAND ${name})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QTWEBENGINE_DISABLE_SANDBOX=1;LC_ALL=C.UTF-8;${ARG_ENVIRONMENT}"
    LABELS "${ARG_LABELS}")
endfunction()
