# Includes say the room: "modules/supermodule.h", "proj/controls/selectablebutton.h",
# "actions/model/actionblock.h". tools/check-includes.py holds them against the rooms' table.
include_directories("${PROJECT_SOURCE_DIR}/module/source" "${PROJECT_SOURCE_DIR}/module"
  "${PROJECT_SOURCE_DIR}")

# A room of the program: one static library.
#   tiler_room(<name> SOURCES <files> NEEDS <libraries>)
function(tiler_room p_name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;NEEDS" ${ARGN})
  add_library(${p_name} STATIC ${ROOM_SOURCES})
  target_link_libraries(${p_name} PUBLIC ${ROOM_NEEDS} PRIVATE tiler_warnings)
endfunction()

# One test program, registered with ctest. It runs without a display, in
# English, with a home folder of its own.
#   tiler_test(<name> SOURCES <files> NEEDS <libraries> ARGUMENTS <arguments>)
function(tiler_test p_name)
  cmake_parse_arguments(T "" "TIMEOUT" "SOURCES;NEEDS;ARGUMENTS" ${ARGN})
  if(NOT T_TIMEOUT)
    set(T_TIMEOUT 120)
  endif()
  add_executable(${p_name} ${T_SOURCES})
  target_link_libraries(${p_name} PRIVATE ${T_NEEDS} Qt5::Test tiler_warnings)
  # Each test program has a folder to itself, so that what lies beside the
  # program is its own when several run at once.
  set_target_properties(${p_name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY
    "${CMAKE_CURRENT_BINARY_DIR}/${p_name}.d")
  add_test(NAME ${p_name} COMMAND ${p_name} ${T_ARGUMENTS})
  # In quotes, or the sanitizers take a blank in a path for its end.
  set_tests_properties(${p_name} PROPERTIES TIMEOUT ${T_TIMEOUT} ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen;LANG=en_US.UTF-8;LC_ALL=C.UTF-8;XDG_CONFIG_HOME=${CMAKE_CURRENT_BINARY_DIR}/${p_name}.d/config;XDG_RUNTIME_DIR=/tmp;LSAN_OPTIONS=suppressions='${PROJECT_SOURCE_DIR}/tests/leaks.supp':print_suppressions=0;TSAN_OPTIONS=suppressions='${PROJECT_SOURCE_DIR}/tests/races.supp'")
endfunction()

# Warnings for our own code. Calls that Qt 5.15 marks deprecated are in use on
# purpose; this is the one place that silences them.
add_library(tiler_warnings INTERFACE)
target_compile_options(tiler_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wno-deprecated-declarations
  # Of Qt's logging macros.
  $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
target_compile_definitions(tiler_warnings INTERFACE QT_NO_DEPRECATED_WARNINGS
  # The log names functions in every build; of itself Qt tells them in the debug one alone.
  $<$<NOT:$<CONFIG:Debug>>:QT_MESSAGELOGCONTEXT>)
option(TILER_WERROR "Treat warnings as errors" OFF)
if(TILER_WERROR)
  target_compile_options(tiler_warnings INTERFACE -Werror)
endif()

# A second build of the same sources comes from the cache, where there is one.
find_program(TILER_CCACHE ccache)
if(TILER_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${TILER_CCACHE}")
endif()
