# JSON is written with nlohmann-json, which is headers only (Debian: nlohmann-json3-dev). They are taken from the machine
# that builds, whatever the program is built for; a copy, so that nothing else of that machine's headers is found with
# them.
find_path(TARVENDO_JSON_HEADERS nlohmann/json.hpp NO_CMAKE_FIND_ROOT_PATH)
if(NOT TARVENDO_JSON_HEADERS)
  message(FATAL_ERROR "nlohmann/json.hpp not found. On Debian: apt-get install nlohmann-json3-dev")
endif()
file(COPY ${TARVENDO_JSON_HEADERS}/nlohmann DESTINATION ${CMAKE_BINARY_DIR}/json)

# use_json(TARGET): lets the target's own sources include <nlohmann/json.hpp>.
function(use_json target)
  target_include_directories(${target} SYSTEM PRIVATE ${CMAKE_BINARY_DIR}/json)
endfunction()
