# TARVENDO_SANITIZE is "", "address,undefined" or "thread".
set(TARVENDO_SANITIZE "" CACHE STRING "Sanitizers to build with")
if(TARVENDO_SANITIZE)
  add_compile_options(-fsanitize=${TARVENDO_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TARVENDO_SANITIZE})
endif()
