# The German manual pages of both programs, from their pages in the handbook: there the first line
# is the heading that the handbook lists, which a manual page has no use for.
find_program(LOWDOWN lowdown)
if(NOT LOWDOWN)
  message(STATUS "lowdown is missing: the manual pages are left out")
  return()
endif()

set(man_pages)
foreach(program veldra veldra-cli)
  set(source ${PROJECT_SOURCE_DIR}/docs/handbuch/${program}.md)
  set(page ${PROJECT_BINARY_DIR}/man/de/man1/${program}.1)
  add_custom_command(
    OUTPUT ${page}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/man/de/man1
    COMMAND tail -n +3 ${source} | ${LOWDOWN} -s -Tman --out-no-smarty -Mtitle=${program} -Msection=1
            -Mshiftheadinglevelby=-1 -o ${page}
    DEPENDS ${source}
    VERBATIM)
  list(APPEND man_pages ${page})
endforeach()
add_custom_target(man_pages ALL DEPENDS ${man_pages})
install(FILES ${man_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/de/man1)
