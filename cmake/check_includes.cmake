# Fails when a source file reaches for something that its room may not use:
#
# - the toolkit belongs to platform/qt, the windows (frm*) and the batch program alone,
# - the operating system's own headers belong to platform/os alone.
#
# Run as: cmake -D SOURCE_DIR=<the src folder> -P check_includes.cmake
cmake_minimum_required(VERSION 3.25)

if(NOT IS_DIRECTORY "${SOURCE_DIR}")
  message(FATAL_ERROR "SOURCE_DIR is no folder: '${SOURCE_DIR}'")
endif()

set(toolkit_rooms "^(platform/qt/|batch/|[^/]+/frm[^/]*$)")
set(toolkit_include "^[ \t]*#[ \t]*include[ \t]*([<\"](Q[A-Za-z]|q[a-z]+\\.h|Qt[A-Za-z0-9]*/)|\"platform/qt/|\"([^\"]*/)?frm)")
set(system_rooms "^platform/os/")
string(JOIN "|" system_headers "unistd" "fcntl" "sys/[a-z_]+" "dirent" "dlfcn" "poll" "pwd" "grp"
       "pthread" "sched" "spawn" "termios" "utime" "glob" "fnmatch" "ftw" "netdb" "netinet/[a-z_]+"
       "arpa/[a-z_]+" "linux/[a-z_]+" "windows" "io" "direct")
set(system_include "^[ \t]*#[ \t]*include[ \t]*[<\"](${system_headers})\\.h[>\"]")

file(GLOB_RECURSE files RELATIVE "${SOURCE_DIR}" "${SOURCE_DIR}/*.cpp" "${SOURCE_DIR}/*.h")
list(LENGTH files file_count)
if(file_count EQUAL 0)
  message(FATAL_ERROR "no source files in ${SOURCE_DIR}")
endif()

set(violations "")
foreach(file IN LISTS files)
  file(STRINGS "${SOURCE_DIR}/${file}" includes REGEX "^[ \t]*#[ \t]*include")
  foreach(line IN LISTS includes)
    if((NOT file MATCHES "${toolkit_rooms}" AND line MATCHES "${toolkit_include}")
       OR (NOT file MATCHES "${system_rooms}" AND line MATCHES "${system_include}"))
      string(APPEND violations "\n  ${file}: ${line}")
    endif()
  endforeach()
endforeach()

if(violations)
  message(FATAL_ERROR "includes that their room may not use:${violations}")
endif()
message(STATUS "${file_count} source files include only what their rooms may use")
