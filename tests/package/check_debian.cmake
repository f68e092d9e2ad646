# Run with cmake -P; see CMakeLists.txt next to this file.
#
# Builds the Debian packages of the build tree with CPack, checks their control fields and
# file lists, unpacks the runtime and -dev packages into a scratch root with `dpkg -x`
# and builds and runs the consumer against that root alone, with CMake and with
# pkg-config. Finally runs lintian on the packages, when it is installed, and prints what
# it says.
cmake_minimum_required(VERSION 3.16)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
  set(RUN_OUTPUT "${out}" PARENT_SCOPE)
endfunction()

function(expect text regex what)
  if(NOT text MATCHES "${regex}")
    message(FATAL_ERROR "${what}: expected to match '${regex}', got:\n${text}")
  endif()
endfunction()

function(refuse text regex what)
  if(text MATCHES "${regex}")
    message(FATAL_ERROR "${what}: must not match '${regex}', got:\n${text}")
  endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})

# The reference goes into the -doc package, so it is built first.
if(WITH_DOCS)
  run(${CMAKE_COMMAND} --build ${BUILD_DIR} --target docs)
endif()
run(${CPACK} -G DEB --config ${BUILD_DIR}/CPackConfig.cmake -B ${WORK_DIR}/packages)

run(dpkg --print-architecture)
string(STRIP "${RUN_OUTPUT}" arch)
set(runtime_deb ${WORK_DIR}/packages/${RUNTIME}_${DEB_VERSION}_${arch}.deb)
set(dev_deb ${WORK_DIR}/packages/${DEV}_${DEB_VERSION}_${arch}.deb)
set(doc_deb ${WORK_DIR}/packages/${DOC}_${DEB_VERSION}_all.deb)
set(tools_deb "")
if(TOOLS)
  set(tools_deb ${WORK_DIR}/packages/${TOOLS}_${DEB_VERSION}_${arch}.deb)
endif()
foreach(deb ${runtime_deb} ${dev_deb} ${doc_deb} ${tools_deb})
  if(NOT EXISTS ${deb})
    file(GLOB made ${WORK_DIR}/packages/*.deb)
    message(FATAL_ERROR "${deb} was not built; CPack made: ${made}")
  endif()
endforeach()

# --- control fields -------------------------------------------------------------------
run(dpkg-deb -I ${runtime_deb})
set(info "${RUN_OUTPUT}")
expect("${info}" "\n Package: ${RUNTIME}\n" "runtime package name")
expect("${info}" "\n Version: ${DEB_VERSION}\n" "runtime version")
expect("${info}" "\n Section: libs\n" "runtime section")
expect("${info}" "\n Architecture: ${arch}\n" "runtime architecture")
# dpkg-shlibdeps finds Qt 5 Core, the C++ runtime and the C library.
expect("${info}" "\n Depends: [^\n]*libqt5core5a" "runtime dependencies")
expect("${info}" "\n Depends: [^\n]*libstdc\\+\\+6" "runtime dependencies")
expect("${info}" "\n Depends: [^\n]*libc6" "runtime dependencies")
expect("${info}" "\n Depends: [^\n]*libqt5network5" "runtime dependencies (the link library)")
refuse("${info}" "\n Depends: [^\n]*${RUNTIME}" "runtime dependencies")
expect("${info}" "\n Description: [^\n]+\n [^\n]+" "runtime description")
run(dpkg-deb -e ${runtime_deb} ${WORK_DIR}/runtime-control)
file(READ ${WORK_DIR}/runtime-control/triggers triggers)
expect("${triggers}" "^activate-noawait ldconfig\n$" "runtime triggers")
file(READ ${WORK_DIR}/runtime-control/shlibs shlibs)
foreach(lib TELORParams5 TELORProtocol5 Utils5 TELORLink5)
  expect("${shlibs}" "lib${lib} 1 ${RUNTIME} \\(>= ${DEB_VERSION}\\)" "runtime shlibs")
endforeach()
foreach(script postinst postrm)
  file(READ ${WORK_DIR}/runtime-control/${script} text)
  refuse("${text}" "ldconfig\n" "runtime ${script} (the trigger refreshes the cache)")
endforeach()

run(dpkg-deb -I ${dev_deb})
set(info "${RUN_OUTPUT}")
expect("${info}" "\n Package: ${DEV}\n" "dev package name")
expect("${info}" "\n Version: ${DEB_VERSION}\n" "dev version")
expect("${info}" "\n Section: libdevel\n" "dev section")
expect("${info}" "\n Depends: ${RUNTIME} \\(= ${DEB_VERSION}\\), qtbase5-dev \\(>= 5\\.15\\)\n" "dev dependencies")

run(dpkg-deb -I ${doc_deb})
set(info "${RUN_OUTPUT}")
expect("${info}" "\n Package: ${DOC}\n" "doc package name")
expect("${info}" "\n Section: doc\n" "doc section")
expect("${info}" "\n Architecture: all\n" "doc architecture")
refuse("${info}" "\n Depends:" "doc dependencies")

# --- file lists -------------------------------------------------------------------------
function(contents deb var)
  execute_process(COMMAND dpkg-deb -c ${deb} OUTPUT_VARIABLE out RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "dpkg-deb -c ${deb} failed")
  endif()
  # Keep the paths alone ("./usr/lib/x -> y" for links).
  string(REGEX REPLACE "[^\n]* \\./" "/" out "${out}")
  set(${var} "${out}" PARENT_SCOPE)
endfunction()

contents(${runtime_deb} files)
foreach(lib TELORParams5 TELORProtocol5 Utils5 TELORLink5)
  expect("${files}" "\n/usr/lib[^\n]*/lib${lib}\\.so\\.${VERSION}\n" "runtime files")
  expect("${files}" "\n/usr/lib[^\n]*/lib${lib}\\.so\\.1 -> lib${lib}\\.so\\.${VERSION}\n" "runtime files")
endforeach()
expect("${files}" "\n/usr/share/doc/${RUNTIME}/copyright\n" "runtime files")
expect("${files}" "\n/usr/share/doc/${RUNTIME}/changelog\\.Debian\\.gz\n" "runtime files")
refuse("${files}" "\\.h\n|\\.so\n|\\.so -> |cmake|pkgconfig|/html/" "runtime files")

contents(${dev_deb} files)
foreach(lib TELORParams5 TELORProtocol5 Utils5 TELORLink5)
  expect("${files}" "\n/usr/lib[^\n]*/lib${lib}\\.so -> lib${lib}\\.so\\.1\n" "dev files")
endforeach()
expect("${files}" "\n/usr/include/TELORParams5/TELORParams5\\.h\n" "dev files")
expect("${files}" "\n/usr/include/TELORParams5/telorparams5_export\\.h\n" "dev files")
expect("${files}" "\n/usr/lib[^\n]*/cmake/TELORParams5/TELORParams5Config\\.cmake\n" "dev files")
expect("${files}" "\n/usr/lib[^\n]*/cmake/TELORParams5/TELORParams5Targets\\.cmake\n" "dev files")
expect("${files}" "\n/usr/lib[^\n]*/pkgconfig/TELORParams5\\.pc\n" "dev files")
expect("${files}" "\n/usr/share/doc/${DEV}/copyright\n" "dev files")
refuse("${files}" "\n/usr/lib[^ \n]*\\.so\\.[0-9.]+\n|_p\\.h\n|/html/" "dev files")
# Every public header of the sources is in the package, with the four export headers.
file(GLOB public_headers RELATIVE ${SOURCE_DIR}
     ${SOURCE_DIR}/platform/*/*.h ${SOURCE_DIR}/src/*.h ${SOURCE_DIR}/src/*/*.h)
list(FILTER public_headers EXCLUDE REGEX "_p\\.h$")
foreach(header ${public_headers})
  get_filename_component(name ${header} NAME)
  string(REPLACE "." "\\." name "${name}")
  expect("${files}" "\n/usr/include/TELORParams5/${name}\n" "dev files")
endforeach()
string(REGEX MATCHALL "/usr/include/TELORParams5/[^\n]*\\.h\n" packaged_headers "${files}")
list(LENGTH packaged_headers packaged_count)
list(LENGTH public_headers public_count)
math(EXPR expected_count "${public_count} + 4")
if(NOT packaged_count EQUAL expected_count)
  message(FATAL_ERROR "the -dev package holds ${packaged_count} headers, not ${expected_count}")
endif()

contents(${doc_deb} files)
expect("${files}" "\n/usr/share/doc/[^\n]*/html/index\\.html\n" "doc files")
expect("${files}" "\n/usr/share/doc/[^\n]*/html/classBPDouble\\.html\n" "doc files")
expect("${files}" "\n/usr/share/doc/${DOC}/copyright\n" "doc files")
refuse("${files}" "\\.so(\\.[0-9]+)*\n|\\.h\n" "doc files")

# --- a consumer against the unpacked packages alone -----------------------------------
set(root ${WORK_DIR}/root)
run(dpkg -x ${runtime_deb} ${root})
run(dpkg -x ${dev_deb} ${root})
file(GLOB libdir LIST_DIRECTORIES true ${root}/usr/lib/libTELORParams5.so.1 ${root}/usr/lib/*/libTELORParams5.so.1)
get_filename_component(libdir "${libdir}" DIRECTORY)
run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/consumer-build
    -DCMAKE_PREFIX_PATH=${root}/usr -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=Release
    -DCMAKE_FIND_USE_CMAKE_SYSTEM_PATH=ON)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/consumer-build)
# The libraries the consumer loads are those of the scratch root.
run(ldd ${WORK_DIR}/consumer-build/consumer)
foreach(lib TELORParams5 TELORProtocol5 Utils5)
  expect("${RUN_OUTPUT}" "lib${lib}\\.so\\.1 => ${libdir}/lib${lib}\\.so\\.1" "consumer's libraries")
endforeach()
run(${WORK_DIR}/consumer-build/consumer)
expect("${RUN_OUTPUT}" "consumer ok" "consumer built with the CMake package")

# The same consumer built with nothing but the pkg-config file.
find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  set(ENV{PKG_CONFIG_PATH} "${libdir}/pkgconfig")
  run(${PKG_CONFIG} --cflags --libs TELORParams5)
  string(STRIP "${RUN_OUTPUT}" flags)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  run(${CXX} -std=c++17 ${CONSUMER_DIR}/main.cpp -o ${WORK_DIR}/consumer-pc ${flags}
      -Wl,-rpath,${libdir})
  run(${WORK_DIR}/consumer-pc)
  expect("${RUN_OUTPUT}" "consumer ok" "consumer built with pkg-config")
endif()

# --- the programs ----------------------------------------------------------------------
if(TOOLS)
  run(dpkg-deb -I ${tools_deb})
  set(info "${RUN_OUTPUT}")
  expect("${info}" "\n Package: ${TOOLS}\n" "tools package name")
  expect("${info}" "\n Section: net\n" "tools section")
  expect("${info}" "\n Depends: [^\n]*${RUNTIME} \\(= ${DEB_VERSION}\\)" "tools dependencies")
  expect("${info}" "\n Depends: [^\n]*libqt5sql5-sqlite" "tools dependencies")
  expect("${info}" "\n Depends: [^\n]*libqt5network5" "tools dependencies")
  expect("${info}" "\n Depends: [^\n]*libqt5sql5 " "tools dependencies")
  contents(${tools_deb} files)
  expect("${files}" "\n/usr/bin/telor-server\n" "tools files")
  expect("${files}" "\n/usr/share/telor-server/plant/boiler\.xml\n" "tools files")
  expect("${files}" "\n/usr/share/doc/${TOOLS}/copyright\n" "tools files")
  refuse("${files}" "\.so|\.h\n" "tools files")
  # Unpacked beside the runtime package, the program runs and finds its plant.
  run(dpkg -x ${tools_deb} ${root})
  set(ENV{LD_LIBRARY_PATH} "${libdir}")
  run(${root}/usr/bin/telor-server --help)
  expect("${RUN_OUTPUT}" "--plant" "telor-server --help")
  unset(ENV{LD_LIBRARY_PATH})
endif()

# --- lintian ---------------------------------------------------------------------------
find_program(LINTIAN lintian)
if(LINTIAN)
  execute_process(COMMAND ${LINTIAN} --display-info --tag-display-limit 0
                          ${runtime_deb} ${dev_deb} ${doc_deb} ${tools_deb}
                  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
  message(STATUS "lintian (exit ${rc}):\n${out}${err}")
  string(REGEX MATCHALL "(^|\n)E: [^\n]*" errors "${out}")
  if(errors)
    message(FATAL_ERROR "lintian reports errors:\n${errors}")
  endif()
else()
  message(STATUS "lintian is not installed; the packages were not linted")
endif()

message(STATUS "debian packages ok")
