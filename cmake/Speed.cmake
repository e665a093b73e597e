# What makes a build that starts from nothing quicker; the presets say which of it they use. Off by itself: so a source
# has to include what it needs, and a change compiles nothing but what it touches.
option(TARVENDO_PRECOMPILED_HEADERS "Compile the standard library's headers in advance" OFF)
option(TARVENDO_UNITY "Compile the sources of a room several at a time" OFF)

# With it, names that are one source's own (in an unnamed namespace) have to differ from those of the room's others.
set(CMAKE_UNITY_BUILD ${TARVENDO_UNITY})
# All sources of a target at once: in eights they took a quarter longer.
set(CMAKE_UNITY_BUILD_BATCH_SIZE 0)

# keep_windows_apart(TARGET): compiles the sources that know Windows among themselves and all others among themselves,
# for its headers define names that are meant for nobody else. Of those the files' own class has one too
# (RemoveDirectory), so who includes it stays alone.
function(keep_windows_apart target)
  get_target_property(sources ${target} SOURCES)
  foreach(source ${sources})
    file(STRINGS ${source} names_files REGEX "^#include \"platform/files\\.h\"" LIMIT_COUNT 1)
    if(NOT source MATCHES "/windows/|_windows\\.cpp$")
      set_source_files_properties(${source} PROPERTIES UNITY_GROUP others)
    elseif(NOT names_files)
      set_source_files_properties(${source} PROPERTIES UNITY_GROUP windows)
    endif()
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()

# A precompiled header has to be the same for ccache each time that it is made. (Its user's sloppiness has to hold
# "pch_defines,time_macros" as well, see its manual.)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  set(precompiling_options "SHELL:-Xclang -fno-pch-timestamp")
else()
  set(precompiling_options -fpch-preprocess)
endif()

# precompile_headers(TARGET HEADER...): compiles the headers in advance for all sources of the target.
# precompile_headers(TARGET REUSE_FROM OTHER): those that were compiled for a target with the same options.
function(precompile_headers target)
  target_compile_options(${target} PRIVATE ${precompiling_options})
  if(ARGV1 STREQUAL "REUSE_FROM")
    target_precompile_headers(${target} ${ARGN})
  else()
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# use_usual_headers(TARGET): those below, where headers are compiled in advance.
function(use_usual_headers target)
  if(TARVENDO_PRECOMPILED_HEADERS)
    precompile_headers(${target} REUSE_FROM tarvendo_platform)
  endif()
endfunction()

# What nearly every source includes.
set(TARVENDO_USUAL_HEADERS <algorithm> <array> <chrono> <condition_variable> <cstdint> <functional> <map> <memory> <mutex>
                           <optional> <string> <string_view> <thread> <utility> <vector>)
