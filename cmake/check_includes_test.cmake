# Tests check_includes.cmake on small source trees: each forbidden include must be found, and each
# allowed one passed over.
#
# Run as: cmake -D WORK_DIR=<a folder to use> -P check_includes_test.cmake
cmake_minimum_required(VERSION 3.25)

set(house "# a comment\nground : system\nleft right\nattic/den : toolkit\nattic : toolkit\n")

function(check result output)
  execute_process(COMMAND "${CMAKE_COMMAND}" -D "SOURCE_DIR=${WORK_DIR}" -P
                          "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/check_includes.cmake"
                  RESULT_VARIABLE code OUTPUT_VARIABLE text ERROR_VARIABLE text)
  set(${result} ${code} PARENT_SCOPE)
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

function(expect result file line)
  file(REMOVE_RECURSE "${WORK_DIR}")
  file(WRITE "${WORK_DIR}/rooms.txt" "${house}")
  file(WRITE "${WORK_DIR}/left/clean.cpp" "#include <string>\n#include \"left/clean.h\"\n")
  file(WRITE "${WORK_DIR}/${file}" "#include <vector>\n${line}\n")
  check(code output)
  if(code EQUAL 0)
    set(found passes)
  else()
    set(found fails)
  endif()
  if(NOT found STREQUAL result)
    message(SEND_ERROR "${file} with '${line}' ${found}, but should be one that ${result}\n${output}")
  endif()
  if(result STREQUAL fails AND NOT output MATCHES "${file}: ")
    message(SEND_ERROR "the report on '${line}' does not name ${file}:\n${output}")
  endif()
endfunction()

# Floors: down and into the own room, never up, never sideways.
expect(passes left/layer.cpp "#include \"ground/file.h\"")
expect(passes left/layer.cpp "#include \"left/deep/layer.h\"")
expect(passes ground/posix/file.cpp "#include \"ground/file.h\"")
expect(passes attic/window.cpp "#include \"attic/den/picture.h\"")
expect(fails ground/file.cpp "#include \"left/layer.h\"")
expect(fails left/layer.cpp "#include \"right/layer.h\"")
expect(fails left/layer.cpp "#include \"attic/den/picture.h\"")
expect(fails attic/den/picture.cpp "#include \"attic/window.h\"")
expect(fails left/layer.cpp "#include \"layer.h\"")
expect(fails cellar/layer.cpp "#include <string>")
expect(fails layer.cpp "#include <string>")

# The toolkit.
expect(fails left/layer.cpp "#include <QPainter>")
expect(fails left/layer.h "#  include <QtCore/QString>")
expect(fails left/session.h "#include \"QString\"")
expect(fails left/session.h "#include <qstring.h>")
expect(fails ground/files.cpp "#include <QFile>")
expect(passes attic/den/picture.cpp "#include <QPainter>")
expect(passes attic/window.h "#include <QMainWindow>")
expect(passes left/layer.cpp "#include <queue>")

# The operating system.
expect(fails left/writer.cpp "#include <unistd.h>")
expect(fails left/writer.cpp "\t#include <sys/stat.h>")
expect(fails attic/den/picture.cpp "#include <fcntl.h>")
expect(passes ground/posix/files.cpp "#include <sys/stat.h>")
expect(passes left/layer.cpp "// as QPainter does; see <unistd.h>")

# A check that finds nothing to look at must not pass.
file(REMOVE_RECURSE "${WORK_DIR}")
file(WRITE "${WORK_DIR}/rooms.txt" "${house}")
check(code output)
if(code EQUAL 0)
  message(SEND_ERROR "an empty source tree passes")
endif()
file(REMOVE_RECURSE "${WORK_DIR}")
file(WRITE "${WORK_DIR}/left/clean.cpp" "#include <string>\n")
check(code output)
if(code EQUAL 0)
  message(SEND_ERROR "a source tree without a list of rooms passes")
endif()
