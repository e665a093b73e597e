# TARVENDO_SANITIZE is "", "address,undefined" or "thread".
set(TARVENDO_SANITIZE "" CACHE STRING "Sanitizers to build with")
if(TARVENDO_SANITIZE)
  add_compile_options(-fsanitize=${TARVENDO_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TARVENDO_SANITIZE})
endif()

# TARVENDO_FUZZ builds the programs of fuzz/, which needs clang.
option(TARVENDO_FUZZ "Build the fuzzers" OFF)
if(TARVENDO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
