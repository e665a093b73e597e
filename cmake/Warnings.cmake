# Warnings are errors for the project's own code.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)

# g++ 12 sees overlapping copies in "text" + std::string where there are none (gcc.gnu.org/PR105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options(-Wno-restrict)
endif()

# Who may use what the threads share: src/base/thread_annotations.h.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  add_compile_options(-Wthread-safety)
endif()
