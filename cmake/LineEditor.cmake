# Lines are edited at a terminal by libedit (Debian's libedit-dev), where there is one; without it the host's own plain
# reading does. A program says by its property TARVENDO_LINE_EDITOR which it gets:
#   (unset)  libedit, linked as the host links libraries
#   static   libedit and what it needs linked into the program, for an archive that is unpacked anywhere
#   none     plain reading
option(TARVENDO_LIBEDIT "Edit lines at a terminal by libedit, where it is found" ON)

# find_libedit(): sets TARVENDO_HAS_LIBEDIT, TARVENDO_LIBEDIT_SHARED and TARVENDO_LIBEDIT_STATIC in its caller.
function(find_libedit)
  set(TARVENDO_HAS_LIBEDIT FALSE PARENT_SCOPE)
  if(WIN32 OR NOT TARVENDO_LIBEDIT)
    return()
  endif()
  find_path(TARVENDO_HISTEDIT_INCLUDE histedit.h)
  find_library(TARVENDO_LIBEDIT_LIBRARY edit)
  if(NOT TARVENDO_HISTEDIT_INCLUDE OR NOT TARVENDO_LIBEDIT_LIBRARY)
    message(STATUS "libedit not found: lines are not edited at a terminal")
    return()
  endif()
  set(TARVENDO_HAS_LIBEDIT TRUE PARENT_SCOPE)
  set(TARVENDO_LIBEDIT_SHARED ${TARVENDO_LIBEDIT_LIBRARY} PARENT_SCOPE)

  # What libedit.a asks for, in this order; not every system's asks for all of it.
  set(static "")
  foreach(part edit bsd md tinfo)
    find_library(TARVENDO_STATIC_${part} lib${part}.a)
    if(TARVENDO_STATIC_${part})
      list(APPEND static ${TARVENDO_STATIC_${part}})
    endif()
  endforeach()
  if(NOT TARVENDO_STATIC_edit)
    message(STATUS "libedit.a not found: the archive's program needs libedit on its user's machine too")
    set(static ${TARVENDO_LIBEDIT_LIBRARY})
  endif()
  set(TARVENDO_LIBEDIT_STATIC ${static} PARENT_SCOPE)
endfunction()

# add_line_editors(PLATFORM): adds the editors, and has every program that links PLATFORM link the one that it asks for.
function(add_line_editors platform)
  find_libedit()
  set(TARVENDO_HAS_LIBEDIT ${TARVENDO_HAS_LIBEDIT} CACHE INTERNAL "Lines are edited at a terminal")
  set(folder ${CMAKE_SOURCE_DIR}/src/platform/posix)
  add_library(tarvendo_unedited STATIC EXCLUDE_FROM_ALL ${folder}/unedited/line_editor.cpp)
  target_include_directories(tarvendo_unedited PUBLIC ${CMAKE_SOURCE_DIR}/src)
  set(chosen tarvendo_unedited)
  if(TARVENDO_HAS_LIBEDIT)
    add_library(tarvendo_edited STATIC ${folder}/edited/line_editor.cpp)
    target_include_directories(tarvendo_edited PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_include_directories(tarvendo_edited SYSTEM PRIVATE ${TARVENDO_HISTEDIT_INCLUDE})
    set(choice $<TARGET_PROPERTY:TARVENDO_LINE_EDITOR>)
    target_link_libraries(tarvendo_edited INTERFACE ${platform}
      $<IF:$<STREQUAL:${choice},static>,${TARVENDO_LIBEDIT_STATIC},${TARVENDO_LIBEDIT_SHARED}>)
    set(chosen $<IF:$<STREQUAL:${choice},none>,tarvendo_unedited,tarvendo_edited>)
  endif()
  target_link_libraries(${platform} PUBLIC ${chosen})
endfunction()
