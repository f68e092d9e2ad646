# Shared settings of the three shared libraries.
#
# telor_add_library(<target> EXPORT_BASE <BASE> SOURCES ... HEADERS ... [INCLUDE_DIRS ...])
# builds lib<target>.so.1 with hidden visibility, an export header <base>_export.h,
# and installs the library and its public headers: the versioned library and its soname
# link in the install component `runtime`, the development link and the headers in `dev`
# (the Debian packages of cmake/TelorPackaging.cmake follow these components).
function(telor_add_library target)
  cmake_parse_arguments(ARG "" "EXPORT_BASE" "SOURCES;HEADERS;INCLUDE_DIRS" ${ARGN})
  add_library(${target} SHARED ${ARG_SOURCES} ${ARG_HEADERS})
  add_library(TELORParams5::${target} ALIAS ${target})
  string(TOLOWER ${ARG_EXPORT_BASE} base_lower)
  generate_export_header(${target}
    BASE_NAME ${ARG_EXPORT_BASE}
    EXPORT_FILE_NAME ${CMAKE_CURRENT_BINARY_DIR}/${base_lower}_export.h)
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    EXPORT_NAME ${target}
    # The three libraries are installed side by side and find each other there.
    INSTALL_RPATH "$ORIGIN")
  # Every conversion between byte and character strings is spelled out in the library.
  target_compile_definitions(${target} PRIVATE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH)
  set(build_dirs ${CMAKE_CURRENT_BINARY_DIR})
  foreach(dir ${ARG_INCLUDE_DIRS})
    list(APPEND build_dirs ${dir})
  endforeach()
  foreach(dir ${build_dirs})
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${dir}>)
  endforeach()
  target_include_directories(${target} PUBLIC $<INSTALL_INTERFACE:${TELOR_INSTALL_INCLUDEDIR}>)
  install(TARGETS ${target} EXPORT TELORParams5Targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  install(FILES ${ARG_HEADERS} ${CMAKE_CURRENT_BINARY_DIR}/${base_lower}_export.h
    DESTINATION ${TELOR_INSTALL_INCLUDEDIR} COMPONENT dev)
endfunction()
