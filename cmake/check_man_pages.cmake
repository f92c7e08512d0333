# Fails unless FOLDER holds the manual pages of both programs with their sections in order.
set(sections_of_veldra NAME AUFRUF BESCHREIBUNG DATEIEN "SIEHE AUCH")
set(sections_of_veldra-cli
    NAME AUFRUF BESCHREIBUNG BEFEHLE "OPTIONEN FÜR NETZTEIL UND AUSWAHL" "OPTIONEN FÜR DAS BILD"
    "OPTIONEN FÜR DEN PLOT" "OPTIONEN FÜR KOORDINATEN" RÜCKGABE BEISPIELE "SIEHE AUCH")
foreach(program veldra veldra-cli)
  file(READ ${FOLDER}/${program}.1 page)
  if(NOT page MATCHES "\n\\.TH \"${program}\" \"1\"")
    message(FATAL_ERROR "${program}.1 has not its title")
  endif()
  # Brackets keep the elements of a list together.
  string(REGEX REPLACE "[][;]" " " page "${page}")
  string(REGEX MATCHALL "\n\\.SH\n[^\n]*" headings "${page}")
  list(TRANSFORM headings REPLACE "\n\\.SH\n" "")
  if(NOT headings STREQUAL "${sections_of_${program}}")
    message(FATAL_ERROR "${program}.1 has the sections ${headings}")
  endif()
endforeach()
