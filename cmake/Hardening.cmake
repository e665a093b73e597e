# A released program for Linux is hardened like the system's own: what a damaged file could make it
# overwrite is watched or read-only. Some systems' compilers do that by themselves, Debian's do not.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT TARVENDO_SANITIZE AND NOT TARVENDO_FUZZ)
  # CMake would compile the rooms as parts of shared libraries, which they never are.
  add_compile_options(-fPIE -fstack-protector-strong)
  add_compile_options($<$<CONFIG:Release>:-U_FORTIFY_SOURCE>
                      $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
  add_link_options(-pie -Wl,-z,relro -Wl,-z,now)
endif()
