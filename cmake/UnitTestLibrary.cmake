# GoogleTest as GTest::gtest_main: the installed one. For another host none is installed, so it is built from its
# sources (Debian package googletest). Sets TARVENDO_HAS_GOOGLETEST.
set(TARVENDO_GOOGLETEST_SOURCES /usr/src/googletest CACHE PATH "GoogleTest's sources, for another host")

find_package(GTest QUIET)
if(NOT GTest_FOUND AND CMAKE_CROSSCOMPILING AND EXISTS ${TARVENDO_GOOGLETEST_SOURCES}/CMakeLists.txt)
  set(BUILD_GMOCK OFF CACHE BOOL "")
  set(INSTALL_GTEST OFF CACHE BOOL "")
  add_subdirectory(${TARVENDO_GOOGLETEST_SOURCES} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  # Other people's warnings are not ours to mend, and it is built to be run once.
  set_target_properties(gtest gtest_main PROPERTIES COMPILE_OPTIONS "-w;-O0")
endif()

if(TARGET GTest::gtest_main)
  set(TARVENDO_HAS_GOOGLETEST TRUE)
else()
  set(TARVENDO_HAS_GOOGLETEST FALSE)
endif()
