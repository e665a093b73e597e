# TARVENDO_SANITIZE is "", "address,undefined" or "thread".
set(TARVENDO_SANITIZE "" CACHE STRING "Sanitizers to build with")
if(TARVENDO_SANITIZE)
  add_compile_options(-fsanitize=${TARVENDO_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TARVENDO_SANITIZE})
endif()

# The undefined-behaviour sanitizer looks at every pointer too: is it null, does it point to an object of that type? A
# quarter of the time to compile a room goes into that. What goes wrong at a null pointer the address sanitizer tells too.
option(TARVENDO_SANITIZE_POINTERS "Let the undefined-behaviour sanitizer look at every pointer" ON)
if(TARVENDO_SANITIZE MATCHES undefined AND NOT TARVENDO_SANITIZE_POINTERS)
  add_compile_options(-fno-sanitize=null,alignment,vptr,object-size)
endif()

# TARVENDO_FUZZ builds the fuzzers of fuzz/, which needs clang. What guides them to new places is built into the whole
# program, which takes a fifth longer then; a sample does without.
option(TARVENDO_FUZZ "Build the fuzzers" OFF)
option(TARVENDO_FUZZ_GUIDED "Let the fuzzers see where they come" ON)
if(TARVENDO_FUZZ AND TARVENDO_FUZZ_GUIDED)
  # To look at every comparison took a third of the time. Those of texts are seen all the same, for they call memcmp.
  add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp)
endif()
