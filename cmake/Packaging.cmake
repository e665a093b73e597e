# What is installed where, and the packages that CPack makes of it. There are two layouts:
#   portable  everything in one directory, the way the program looks for it: the archives
#   system    spread over a prefix, the way a Unix system wants it: `cmake --install` and the .deb
# In both the program finds its help and its script beside itself.
include(GNUInstallDirs)

set(packaging ${CMAKE_SOURCE_DIR}/packaging)
set(pictures pics/full.gif pics/half.gif pics/break.gif)

if(WIN32)
  set(host windows)
  set(line_ends DOS)
  set(portable portable)
else()
  set(host linux)
  set(line_ends UNIX)
  # Left out where nobody asks for it by its name, as `cmake --install` does.
  set(portable portable EXCLUDE_FROM_ALL)
endif()

# Sets VARIABLE to a copy, called NAME, of the text SOURCE as it is packed: with the line ends of the host on which it is
# read. More arguments are pairs: a file that the text links to, and where that file lies as seen from the packed text.
function(packed_text variable source name)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${source})
  file(READ ${CMAKE_SOURCE_DIR}/${source} text)
  while(ARGN)
    list(POP_FRONT ARGN here there)
    get_filename_component(shown ${there} NAME)
    string(REPLACE "[${here}]" "[${shown}]" text "${text}")
    string(REPLACE "](${here})" "](${there})" text "${text}")
  endwhile()
  set(copy ${CMAKE_BINARY_DIR}/packaging/${name})
  file(GENERATE OUTPUT ${copy} CONTENT "${text}" NEWLINE_STYLE ${line_ends})
  set(${variable} ${copy} PARENT_SCOPE)
endfunction()

packed_text(first_tourney packaging/first-tourney-${host}.txt first-tourney.txt)
packed_text(help help/TourneyHelp.txt TourneyHelp.txt)
set(user_documents "")
# All of them, for each links to others.
file(GLOB documents_of_project RELATIVE ${CMAKE_SOURCE_DIR} CONFIGURE_DEPENDS docs/*.md)
foreach(document ${documents_of_project})
  packed_text(copy ${document} ${document})
  list(APPEND user_documents ${copy})
endforeach()

set(examples "")
file(GLOB examples_of_project RELATIVE ${CMAKE_SOURCE_DIR} CONFIGURE_DEPENDS examples/*.txt)
foreach(example ${examples_of_project})
  packed_text(copy ${example} ${example})
  list(APPEND examples ${copy})
endforeach()

# Builds all that is installed, and nothing else.
add_custom_target(packaged DEPENDS tarvendo)

# An archive is unpacked anywhere, so its program has libedit in it.
set(portable_program tarvendo)
if(TARGET tarvendo_static)
  set(portable_program tarvendo_static)
  add_dependencies(packaged tarvendo_static)
endif()

# --- Portable -------------------------------------------------------------------------------------

install(TARGETS ${portable_program} RUNTIME DESTINATION . COMPONENT ${portable})
packed_text(readme README.md README.txt help/TourneyHelp.txt TourneyHelp.txt)
install(FILES ${readme} ${help} ${first_tourney} DESTINATION . COMPONENT ${portable})
install(FILES ${pictures} DESTINATION pics COMPONENT ${portable})
install(FILES ${user_documents} DESTINATION docs COMPONENT ${portable})
install(FILES docs/table.png docs/report.png DESTINATION docs COMPONENT ${portable})
if(WIN32)
  # Pieces of MinGW-w64 are linked into the program; their licences want to be handed on with it.
  find_file(TARVENDO_MINGW_LICENCES copyright PATHS /usr/share/doc/mingw-w64-common
            NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  if(TARVENDO_MINGW_LICENCES)
    install(FILES ${TARVENDO_MINGW_LICENCES} DESTINATION docs RENAME mingw-w64-licences.txt
            COMPONENT ${portable})
  endif()
else()
  # What is linked into the program wants its licence handed on with it.
  set(licences "")
  if(TARVENDO_HAS_LIBEDIT)
    foreach(library edit bsd md ncurses)
      set(licence /usr/share/doc/lib${library}-dev/copyright)
      if(EXISTS ${licence})
        file(READ ${licence} text)
        string(APPEND licences "== lib${library} ==\n\n${text}\n")
      endif()
    endforeach()
  endif()
  if(licences)
    file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/packaging/libedit-licences.txt CONTENT "${licences}")
    install(FILES ${CMAKE_BINARY_DIR}/packaging/libedit-licences.txt DESTINATION docs COMPONENT ${portable})
  endif()
  install(PROGRAMS adapters/xboard/winboard.exe DESTINATION . COMPONENT ${portable})
  install(FILES adapters/xboard/README.md DESTINATION docs RENAME xboard.md COMPONENT ${portable})
  install(FILES ${packaging}/tarvendo.bash-completion DESTINATION . COMPONENT ${portable})
  # They are of engines that Debian has.
  install(FILES ${examples} DESTINATION examples COMPONENT ${portable})
endif()

# --- System ---------------------------------------------------------------------------------------

# Installs a symbolic link: LINK, below the prefix, to TARGET, as seen from the link's directory.
function(install_link target link)
  get_filename_component(directory ${link} DIRECTORY)
  get_filename_component(name ${link} NAME)
  set(made ${CMAKE_BINARY_DIR}/packaging/links/${directory}/${name})
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/packaging/links/${directory})
  file(CREATE_LINK ${target} ${made} SYMBOLIC)
  install(FILES ${made} DESTINATION ${directory} COMPONENT system)
endfunction()

# Installs a text packed in the way that Debian wants manual pages and change logs.
function(install_packed source destination name)
  set(copy ${CMAKE_BINARY_DIR}/packaging/${name})
  add_custom_command(OUTPUT ${copy}.gz
                     COMMAND ${CMAKE_COMMAND} -E copy ${source} ${copy}
                     COMMAND ${GZIP} -9nf ${copy}
                     DEPENDS ${source} VERBATIM)
  add_custom_target(packed_${name} ALL DEPENDS ${copy}.gz)
  add_dependencies(packaged packed_${name})
  install(FILES ${copy}.gz DESTINATION ${destination} COMPONENT system)
endfunction()

if(NOT WIN32)
  set(data ${CMAKE_INSTALL_DATADIR}/tarvendo)
  # The real program; its directory, which is not for libraries, is the one that it looks in.
  install(TARGETS tarvendo RUNTIME DESTINATION lib/tarvendo COMPONENT system)
  install(PROGRAMS adapters/xboard/winboard.exe DESTINATION lib/tarvendo COMPONENT system)
  install(FILES ${help} DESTINATION ${data} COMPONENT system)
  install(FILES ${pictures} DESTINATION ${data}/pics COMPONENT system)
  install_link(../../${data}/TourneyHelp.txt lib/tarvendo/TourneyHelp.txt)
  install_link(../../${data}/pics lib/tarvendo/pics)
  install_link(../lib/tarvendo/tarvendo ${CMAKE_INSTALL_BINDIR}/tarvendo)

  set(documents ${CMAKE_INSTALL_DATADIR}/doc/tarvendo)
  # The documents' directory and the data's lie in the same one, two levels up.
  packed_text(readme README.md README.md help/TourneyHelp.txt ../../tarvendo/TourneyHelp.txt)
  install(FILES ${readme} packaging/copyright DESTINATION ${documents} COMPONENT system)
  install(FILES ${user_documents} DESTINATION ${documents}/docs COMPONENT system)
  install(FILES docs/table.png docs/report.png DESTINATION ${documents}/docs COMPONENT system)
  install(FILES adapters/xboard/README.md DESTINATION ${documents}/docs RENAME xboard.md
          COMPONENT system)
  install(FILES ${first_tourney} ${examples} DESTINATION ${documents}/examples COMPONENT system)
  install(FILES ${packaging}/tarvendo.bash-completion RENAME tarvendo
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT system)
  find_program(GZIP gzip)
  if(GZIP)
    install_packed(${packaging}/tarvendo.1 ${CMAKE_INSTALL_DATADIR}/man/man1 tarvendo.1)
    install_packed(${packaging}/changelog ${documents} changelog)
  else()
    message(STATUS "gzip not found: the manual page is not installed")
  endif()
endif()

# --- Packages -------------------------------------------------------------------------------------

set(CPACK_PACKAGE_NAME tarvendo)
set(CPACK_PACKAGE_VENDOR "The Tarvendo project")
set(CPACK_PACKAGE_CONTACT "The Tarvendo project <tarvendo@example.org>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://tarvendo.example.org/")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_FILE_NAME tarvendo-${PROJECT_VERSION}-${host}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# An archive holds the portable layout below one directory; the .deb what is not left out.
set(CPACK_COMPONENTS_ALL portable)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR TGZ DEB)
  # The project's own package: its version has no revision; its change log lies in packaging/.
  file(STRINGS ${packaging}/changelog newest_entry LIMIT_COUNT 1)
  if(NOT newest_entry MATCHES "^tarvendo \\(${PROJECT_VERSION}\\) ")
    message(FATAL_ERROR "packaging/changelog does not begin with version ${PROJECT_VERSION}")
  endif()
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION misc)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xboard, xvfb")
  set(CPACK_DEBIAN_PACKAGE_SUGGESTS "fairymax, phalanx, stockfish, gnuchess, polyglot")
  set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
  set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Tarvendo organises tournaments between chess engines, everybody against
everybody or by the Swiss system, and plays them unattended: one game after
the other is handed to XBoard, the results are read, all games are collected
in one PGN file, and the standings are kept as text and as a web page.
It is used from a prompt or with a script of commands.")
endif()

include(CPack)
