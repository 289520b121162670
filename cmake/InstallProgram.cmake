# Runs at install time: puts the program's files beside the installed
# program and, unless packaging into DESTDIR, adds the desktop entry.
# Expects TANDREL_PROGRAM_DIR, TANDREL_SOURCE_DIR and TANDREL_DESKTOP_ENTRY.
set(dst "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}")
execute_process(COMMAND "${CMAKE_COMMAND}" -DSRC=${TANDREL_PROGRAM_DIR} -DDST=${dst}
                -P "${TANDREL_SOURCE_DIR}/cmake/CopyProgramFiles.cmake")
if(TANDREL_DESKTOP_ENTRY AND "$ENV{DESTDIR}" STREQUAL "")
  set(TANDREL_DIR "${CMAKE_INSTALL_PREFIX}")
  if(NOT "$ENV{XDG_DATA_HOME}" STREQUAL "")
    set(apps "$ENV{XDG_DATA_HOME}/applications")
  else()
    set(apps "$ENV{HOME}/.local/share/applications")
  endif()
  configure_file("${TANDREL_SOURCE_DIR}/assets/tandrel.desktop.in" "${apps}/tandrel.desktop" @ONLY)
  message(STATUS "Desktop entry: ${apps}/tandrel.desktop")
endif()
