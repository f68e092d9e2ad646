# Debian packages through CPack: `cpack -G DEB` in the build folder, or `make package`.
#
#   libtelorparams5-1     component runtime  the three shared libraries (sonames .so.1)
#   libtelorparams5-dev   component dev      headers, development links, CMake package, .pc
#   libtelorparams5-doc   component doc      the HTML API reference (build `docs` first)
#   telor-tools           component tools    the programs: `telor-server` with the example
#                                            plant (and the `telor` tool once it exists)
#
# The packages install to /usr. Each carries its copyright file and its Debian changelog
# under /usr/share/doc/<package>; those files are only installed for packaging, never by
# a plain `cmake --install`.
set(TELOR_DEB_RELEASE 1)
set(TELOR_DEB_VERSION ${PROJECT_VERSION}-${TELOR_DEB_RELEASE})
set(TELOR_DEB_RUNTIME libtelorparams5-${PROJECT_VERSION_MAJOR})
set(TELOR_DEB_DEV libtelorparams5-dev)
set(TELOR_DEB_DOC libtelorparams5-doc)
set(TELOR_DEB_TOOLS telor-tools)

# The maintainer of the packages, in the Maintainer field and the Debian changelog.
set(TELOR_DEB_MAINTAINER "libTELORParams5 developers <libtelorparams5@example.org>"
    CACHE STRING "Maintainer of the Debian packages: name <address>")

set(CPACK_PACKAGE_NAME libtelorparams5)
set(CPACK_PACKAGE_VENDOR "libTELORParams5 developers")
set(CPACK_PACKAGE_CONTACT "${TELOR_DEB_MAINTAINER}")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# Each package's description starts with its own synopsis line (CPack would put a shared
# summary, if one were set, in front of every description).
set(telor_synopsis "client library of a parameter-monitoring system")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime dev doc)
# The programs, when the link library lets them be built.
set(TELOR_DEB_COMPONENTS runtime dev doc)
if(TARGET telor-server)
  list(APPEND CPACK_COMPONENTS_ALL tools)
  list(APPEND TELOR_DEB_COMPONENTS tools)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME ${TELOR_DEB_TOOLS})
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION net)
  # dpkg-shlibdeps cannot resolve this project's own libraries, which are not installed on
  # the machine that builds the packages, so it does not run on the programs: their
  # dependencies are stated. The libraries are those of the runtime package, in the same
  # version; Qt as the runtime package's computed dependency gives it; Qt's SQLite driver
  # is a plugin that no program links.
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS OFF)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS
      "${TELOR_DEB_RUNTIME} (= ${TELOR_DEB_VERSION}), libqt5core5a (>= 5.15.1), libqt5network5 (>= 5.15.1), libqt5sql5 (>= 5.15.1), libqt5sql5-sqlite, libc6 (>= 2.34), libstdc++6 (>= 5), libgcc-s1 (>= 3.0)")
  set(CPACK_DEBIAN_TOOLS_DESCRIPTION
"programs of a parameter-monitoring system
telor-server simulates a plant described by an XML file and answers the
messages of libTELORParams5 about it over TCP: descriptions, current values
and subscriptions, value and event archives kept in SQLite, live events and
group edits. The example boiler plant is included and is the default.")
endif()

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${TELOR_DEB_RELEASE})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# dpkg-shlibdeps runs on the runtime package, the only one with binaries. (CPack would
# otherwise run `file` on each of the reference's many files to look for binaries.)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The shlibs file of the runtime package, which tells dpkg-shlibdeps of packages built
# against these libraries, where this package is installed, what to depend on.
set(telor_shlibs "")
foreach(lib TELORParams5 TELORProtocol5 Utils5 TELORLink5)
  string(APPEND telor_shlibs "lib${lib} ${PROJECT_VERSION_MAJOR} ${TELOR_DEB_RUNTIME} (>= ${TELOR_DEB_VERSION})\n")
endforeach()
file(WRITE ${PROJECT_BINARY_DIR}/debian/shlibs "${telor_shlibs}")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${TELOR_DEB_RUNTIME})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
"${telor_synopsis}
Control-room applications link libTELORParams5 to hold the current values
and states of the parameters they show, to know what each parameter is, to
subscribe to changes, to query value and event archives, to follow events
and to edit the tree of parameter groups, all in the servers' exact wire
format.

This package holds the shared library libTELORParams5.so.1 and the two
platform libraries it stands on, libTELORProtocol5.so.1 (messages, packets,
streams) and libUtils5.so.1 (translatable text), which need Qt 5 Core alone,
and the link library libTELORLink5.so.1, which carries messages over TCP
with Qt 5 Network.")
# The linker cache is refreshed by a trigger; the maintainer scripts that CPack would
# otherwise generate to call ldconfig are replaced by ones that do nothing.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    ${PROJECT_BINARY_DIR}/debian/shlibs
    ${PROJECT_SOURCE_DIR}/cmake/debian/triggers
    ${PROJECT_SOURCE_DIR}/cmake/debian/postinst
    ${PROJECT_SOURCE_DIR}/cmake/debian/postrm)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_DEV_PACKAGE_NAME ${TELOR_DEB_DEV})
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${TELOR_DEB_RUNTIME} (= ${TELOR_DEB_VERSION}), qtbase5-dev (>= 5.15)")
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS "${TELOR_DEB_DOC}")
set(CPACK_DEBIAN_DEV_DESCRIPTION
"${telor_synopsis} - development files
The headers of libTELORParams5 and of its two platform libraries under
/usr/include/TELORParams5, with the umbrella header TELORParams5.h, the
development links, the CMake package TELORParams5 (find_package, targets
TELORParams5::TELORParams5 and TELORParams5::TELORLink5) and the pkg-config
files TELORParams5.pc and TELORLink5.pc; the link library's umbrella header
is TELORLink5.h.")

set(CPACK_DEBIAN_DOC_PACKAGE_NAME ${TELOR_DEB_DOC})
set(CPACK_DEBIAN_DOC_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOC_DESCRIPTION
"${telor_synopsis} - API reference
The HTML reference of every public class and operation of libTELORParams5
and its platform libraries, with one page per subsystem: the road of a value
from subscription to screen, descriptions and display text, archives,
events, the group tree and its log text, tags, packed records and the core
map.")

# Copyright and Debian changelog of each package, for packaging only (EXCLUDE_FROM_ALL:
# a component install such as CPack's takes them, a full `cmake --install` does not).
configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/changelog
               ${PROJECT_BINARY_DIR}/debian/changelog.Debian @ONLY)
find_program(TELOR_GZIP gzip)
if(TELOR_GZIP)
  execute_process(COMMAND ${TELOR_GZIP} -9nf ${PROJECT_BINARY_DIR}/debian/changelog.Debian)
  foreach(component ${TELOR_DEB_COMPONENTS})
    string(TOUPPER ${component} upper)
    set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright
                  ${PROJECT_BINARY_DIR}/debian/changelog.Debian.gz
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package}
            PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
            COMPONENT ${component}
            EXCLUDE_FROM_ALL)
  endforeach()
endif()
# The lintian findings that are deliberate, each with its reason in the file.
foreach(component runtime dev)
  string(TOUPPER ${component} upper)
  set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/${component}.lintian-overrides
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides
          RENAME ${package}
          PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
          COMPONENT ${component}
          EXCLUDE_FROM_ALL)
endforeach()

include(CPack)
