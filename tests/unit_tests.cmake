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

# For another host the tests are built to be run once: the less the compiler does, the better.
function(build_quickly program)
  if(NOT TARVENDO_LAUNCHER)
    return()
  endif()
  target_compile_options(${program} PRIVATE -O0)
  # What a test only uses may have much to compute.
  get_target_property(helpers ${program} SOURCES)
  list(FILTER helpers EXCLUDE REGEX "_test\\.cpp$")
  set_source_files_properties(${helpers} PROPERTIES COMPILE_OPTIONS -O2 SKIP_PRECOMPILE_HEADERS ON)
  if(program STREQUAL "platform_tests")
    target_precompile_headers(${program} PRIVATE <gtest/gtest.h>)
  else()
    target_precompile_headers(${program} REUSE_FROM platform_tests)
  endif()
endfunction()

function(add_room_tests room)
  file(GLOB sources CONFIGURE_DEPENDS ${room}/*_test.cpp ${room}/${host}/*_test.cpp)
  if(NOT sources)
    return()
  endif()
  file(GLOB helpers CONFIGURE_DEPENDS ${room}/*.cpp ${room}/${host}/*.cpp)
  add_executable(${room}_tests ${helpers})
  target_link_libraries(${room}_tests PRIVATE tarvendo_fakes tarvendo_${room} GTest::gtest_main)
  build_quickly(${room}_tests)
  discover_tests(${room}_tests)
endfunction()

foreach(room platform base players tourney reports pairing runner console)
  add_room_tests(${room})
endforeach()

# What the fakes promise, held against the real thing.
add_executable(contract_tests contract/file_system_test.cpp)
target_link_libraries(contract_tests PRIVATE tarvendo_fakes tarvendo_platform GTest::gtest_main)
build_quickly(contract_tests)
discover_tests(contract_tests)
