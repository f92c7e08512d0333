# Fails unless FOLDER holds the manual pages of both programs with their sections in order.
set(sections_of_veldra NAME AUFRUF BESCHREIBUNG DATEIEN "SIEHE AUCH")
set(sections_of_veldra-cli
    NAME AUFRUF BESCHREIBUNG BEFEHLE "OPTIONEN FÜR NETZTEIL UND AUSWAHL" "OPTIONEN FÜR DAS BILD"
    "OPTIONEN FÜR DEN PLOT" "OPTIONEN FÜR KOORDINATEN" RÜCKGABE BEISPIELE "SIEHE AUCH")
foreach(program veldra veldra-cli)
  file(STRINGS ${FOLDER}/${program}.1 headings ENCODING UTF-8 REGEX "^\\.(SH|TH) ")
  list(POP_FRONT headings title)
  if(NOT title MATCHES "^\\.TH \"?${program}\"? \"?1\"?")
    message(FATAL_ERROR "${program}.1 begins with ${title}")
  endif()
  list(TRANSFORM headings REPLACE "^\\.SH \"?([^\"]*)\"?$" "\\1")
  if(NOT headings STREQUAL "${sections_of_${program}}")
    message(FATAL_ERROR "${program}.1 has the sections ${headings}")
  endif()
endforeach()
