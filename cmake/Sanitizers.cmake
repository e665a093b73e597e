# TARVENDO_SANITIZE is "", "address,undefined" or "thread".
set(TARVENDO_SANITIZE "" CACHE STRING "Sanitizers to build with")
if(TARVENDO_SANITIZE)
  add_compile_options(-fsanitize=${TARVENDO_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TARVENDO_SANITIZE})
endif()

# TARVENDO_FUZZ builds the fuzzers of fuzz/, which needs clang. What guides them to new places is built into the whole
# program, which takes a fifth longer then; a sample does without.
option(TARVENDO_FUZZ "Build the fuzzers" OFF)
option(TARVENDO_FUZZ_GUIDED "Let the fuzzers see where they come" ON)
if(TARVENDO_FUZZ AND TARVENDO_FUZZ_GUIDED)
  # To look at every comparison took a third of the time. Those of texts are seen all the same, for they call memcmp.
  add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp)
endif()
