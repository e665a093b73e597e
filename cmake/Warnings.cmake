# Warnings are errors for the project's own code.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
