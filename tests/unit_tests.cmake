# Every *_test.cpp of a room becomes part of that room's test program, so no test can be forgotten.
include(GoogleTest)

# A machine made of memory: files, processes, clock and a log to look at.
file(GLOB fake_sources CONFIGURE_DEPENDS fakes/*.cpp)
add_library(tarvendo_fakes STATIC ${fake_sources})
target_include_directories(tarvendo_fakes PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(tarvendo_fakes PUBLIC tarvendo_base)
target_compile_definitions(tarvendo_fakes INTERFACE TARVENDO_HELP_FILE="${CMAKE_SOURCE_DIR}/help/TourneyHelp.txt")

if(WIN32)
  set(host windows)
else()
  set(host posix)
endif()

# At home each test is one for ctest. Where every start costs more than most tests, a program is one.
function(discover_tests program)
  if(TARVENDO_LAUNCHER)
    add_program_test(${program} ${TARVENDO_LAUNCHER} $<TARGET_FILE:${program}> --gtest_brief=1)
  else()
    gtest_discover_tests(${program} DISCOVERY_TIMEOUT 60)
  endif()
endfunction()

# add_test_program(NAME LIBRARY SOURCE...): a program of GoogleTest's. Optimising tests takes longer than it
# saves, but what a test only uses may have much to compute. GoogleTest's header is half of what is left to
# compile, so it is compiled once for all. (With ccache that needs its sloppiness, see its manual.)
function(add_test_program name library)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE tarvendo_fakes ${library} GTest::gtest_main)
  target_compile_options(${name} PRIVATE -O0)
  list(FILTER ARGN EXCLUDE REGEX "_test\\.cpp$")
  set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -O2 SKIP_PRECOMPILE_HEADERS ON)
  if(name STREQUAL "contract_tests")
    target_precompile_headers(${name} PRIVATE <gtest/gtest.h>)
  else()
    target_precompile_headers(${name} REUSE_FROM contract_tests)
  endif()
  discover_tests(${name})
endfunction()

# What the fakes promise, held against the real thing.
add_test_program(contract_tests tarvendo_platform contract/file_system_test.cpp)

function(add_room_tests room)
  file(GLOB sources CONFIGURE_DEPENDS ${room}/*_test.cpp ${room}/${host}/*_test.cpp)
  if(NOT sources)
    return()
  endif()
  file(GLOB helpers CONFIGURE_DEPENDS ${room}/*.cpp ${room}/${host}/*.cpp)
  add_test_program(${room}_tests tarvendo_${room} ${helpers})
endfunction()

foreach(room platform base players tourney reports pairing runner console)
  add_room_tests(${room})
endforeach()
