# Tests check_includes.cmake on small source trees: each forbidden include must be found, and each
# allowed one passed over.
#
# Run as: cmake -D WORK_DIR=<a folder to use> -P check_includes_test.cmake
cmake_minimum_required(VERSION 3.25)

function(expect result file line)
  file(REMOVE_RECURSE "${WORK_DIR}")
  file(WRITE "${WORK_DIR}/shell/clean.cpp" "#include <string>\n#include \"shell/session.h\"\n")
  file(WRITE "${WORK_DIR}/${file}" "#include <vector>\n${line}\n")
  execute_process(COMMAND "${CMAKE_COMMAND}" -D "SOURCE_DIR=${WORK_DIR}" -P
                          "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/check_includes.cmake"
                  RESULT_VARIABLE code OUTPUT_VARIABLE output ERROR_VARIABLE output)
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

expect(fails drawing/layer.cpp "#include <QPainter>")
expect(fails drawing/layer.h "#  include <QtCore/QString>")
expect(fails shell/session.h "#include \"QString\"")
expect(fails shell/session.h "#include <qstring.h>")
expect(fails view/viewport.cpp "#include \"platform/qt/qt_font.h\"")
expect(fails shell/lifecycle.cpp "#include \"shell/frmTorvel.h\"")
expect(fails platform/os/files_posix.cpp "#include <QFile>")
expect(fails drawing/deep/frmHidden.cpp "#include <QWidget>")
expect(fails graphikdatei/writer.cpp "#include <unistd.h>")
expect(fails graphikdatei/writer.cpp "\t#include <sys/stat.h>")
expect(fails platform/qt/picture.cpp "#include <fcntl.h>")

expect(passes platform/qt/picture.cpp "#include <QPainter>")
expect(passes batch/main.cpp "#include \"platform/qt/picture_image.h\"")
expect(passes shell/frmTorvel.cpp "#include <QMainWindow>")
expect(passes shell/frmTorvel.h "#include <QMainWindow>")
expect(passes platform/os/files_posix.cpp "#include <sys/stat.h>")
expect(passes drawing/layer.cpp "#include <queue>")
expect(passes drawing/layer.cpp "// as QPainter does; see <unistd.h>")

# A check that finds nothing to look at must not pass.
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
execute_process(COMMAND "${CMAKE_COMMAND}" -D "SOURCE_DIR=${WORK_DIR}" -P
                        "${CMAKE_CURRENT_LIST_DIR}/check_includes.cmake"
                RESULT_VARIABLE code OUTPUT_QUIET ERROR_QUIET)
if(code EQUAL 0)
  message(SEND_ERROR "an empty source tree passes")
endif()
