# Every *_test.cpp of a room becomes part of that room's test program, so no test can be forgotten.

# A machine made of memory: files, processes, clock and a log to look at.
file(GLOB fake_sources CONFIGURE_DEPENDS fakes/*.cpp)
add_library(tarvendo_fakes STATIC ${fake_sources})
target_include_directories(tarvendo_fakes PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(tarvendo_fakes PUBLIC tarvendo_base)
target_compile_definitions(tarvendo_fakes INTERFACE TARVENDO_HELP_FILE="${CMAKE_SOURCE_DIR}/help/TourneyHelp.txt")
use_usual_headers(tarvendo_fakes)

if(WIN32)
  set(host windows)
else()
  set(host posix)
endif()

# add_test_program(NAME LIBRARY SOURCE...): a program of GoogleTest's, which is one test for ctest: to start it for
# each of its tests takes longer than most of them. Optimising tests takes longer than it saves, but what a test only
# uses may have much to compute. GoogleTest's header is half of what is left to compile, so it is compiled once for all.
function(add_test_program name library)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE tarvendo_fakes ${library} GTest::gtest_main)
  target_compile_options(${name} PRIVATE -O0)
  list(FILTER ARGN EXCLUDE REGEX "_test\\.cpp$")
  set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -O2 SKIP_PRECOMPILE_HEADERS ON)
  if(name STREQUAL "contract_tests")
    precompile_headers(${name} <gtest/gtest.h>)
  else()
    precompile_headers(${name} REUSE_FROM contract_tests)
  endif()
  # Games are handed to Slurm on Linux alone.
  set(left_out "")
  if(WIN32)
    set(left_out --gtest_filter=-*ClusterHost*)
  endif()
  add_program_test(${name} ${TARVENDO_LAUNCHER} $<TARGET_FILE:${name}> --gtest_brief=1 ${left_out})
endfunction()

# What the fakes promise, held against the real thing.
add_test_program(contract_tests tarvendo_play contract/file_system_test.cpp contract/game_host_test.cpp)

# keep_threaded(NAME): leaves those tests in the list of that name that know of threads.
function(keep_threaded name)
  set(kept "")
  foreach(source ${${name}})
    file(STRINGS ${source} mention REGEX "^#include <(atomic|condition_variable|mutex|thread)>" LIMIT_COUNT 1)
    if(mention)
      list(APPEND kept ${source})
    endif()
  endforeach()
  set(${name} ${kept} PARENT_SCOPE)
endfunction()

function(add_room_tests room)
  file(GLOB sources CONFIGURE_DEPENDS ${room}/*_test.cpp ${room}/${host}/*_test.cpp)
  file(GLOB helpers CONFIGURE_DEPENDS ${room}/*.cpp ${room}/${host}/*.cpp)
  list(REMOVE_ITEM helpers ${sources})
  if(room IN_LIST rooms_with_some_threads)
    keep_threaded(sources)
  endif()
  if(sources)
    add_test_program(${room}_tests tarvendo_${room} ${sources} ${helpers})
  endif()
endfunction()

# All rooms at home. Another host sees those that know of it, and the thread sanitizer those that have threads; the
# built program is run everywhere. Who builds may want fewer.
set(rooms platform base play players tourney reports publish pairing runner console)
set(rooms_with_some_threads "")
if(WIN32)
  set(rooms platform)
elseif(TARVENDO_SANITIZE MATCHES thread)
  set(rooms platform base play tourney runner console)
  set(rooms_with_some_threads base tourney console)
endif()
if(NOT TARVENDO_UNIT_TESTS STREQUAL "ON")
  foreach(room ${TARVENDO_UNIT_TESTS})
    if(NOT room IN_LIST rooms)
      message(FATAL_ERROR "TARVENDO_UNIT_TESTS: '${room}' is no room that is tested here (${rooms}), nor ON or OFF")
    endif()
  endforeach()
  set(rooms ${TARVENDO_UNIT_TESTS})
endif()
foreach(room ${rooms})
  add_room_tests(${room})
endforeach()
if(WIN32)
  keep_windows_apart(platform_tests)
endif()

# The longest is started first, so that nobody waits for it alone.
if(TARGET pairing_tests)
  set_tests_properties(pairing_tests PROPERTIES COST 100)
endif()
