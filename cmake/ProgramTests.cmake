# Tests that start programs of the host that is built for. When that is Windows and this machine is not, Wine starts
# them: TARVENDO_LAUNCHER is what stands in front of the program, empty at home.
set(TARVENDO_LAUNCHER "")
set(TARVENDO_FIXED_ADDRESSES "")
if(WIN32 AND CMAKE_CROSSCOMPILING)
  find_program(TARVENDO_WINE wine REQUIRED)
  set(TARVENDO_LAUNCHER ${TARVENDO_WINE})
  # One of some thousand starts fails when the system puts something at random where Wine needs a page ("failed to map
  # the shared user data"), so the system is asked for fixed addresses where it lets itself be asked.
  execute_process(COMMAND setarch -R true RESULT_VARIABLE refusal OUTPUT_QUIET ERROR_QUIET)
  if(refusal EQUAL 0)
    set(TARVENDO_FIXED_ADDRESSES setarch -R)
  endif()
  set(wine_session ${CMAKE_SOURCE_DIR}/tests/windows/wine_session)
  set(wine_directory ${CMAKE_BINARY_DIR}/wine)

  # One Wine for all tests, made anew, so that what a user has in his own does not matter.
  add_test(NAME wine.starts COMMAND ${TARVENDO_FIXED_ADDRESSES} ${wine_session} start ${wine_directory} $<TARGET_FILE:stub_winboard>)
  add_test(NAME wine.ends COMMAND ${wine_session} end ${wine_directory})
  set_tests_properties(wine.starts PROPERTIES FIXTURES_SETUP wine TIMEOUT 300)
  set_tests_properties(wine.ends PROPERTIES FIXTURES_CLEANUP wine TIMEOUT 60)
endif()

# add_program_test(NAME COMMAND...): a test that starts programs; COMMAND sees to TARVENDO_LAUNCHER itself.
function(add_program_test name)
  add_test(NAME ${name} COMMAND ${TARVENDO_FIXED_ADDRESSES} ${ARGN})
  if(TARVENDO_LAUNCHER)
    set_tests_properties(
      ${name} PROPERTIES FIXTURES_REQUIRED wine
                         ENVIRONMENT "WINEPREFIX=${CMAKE_BINARY_DIR}/wine;WINEDEBUG=-all")
  endif()
endfunction()
