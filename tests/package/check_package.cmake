# Run with cmake -P; see CMakeLists.txt next to this file.
cmake_minimum_required(VERSION 3.16)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
  set(RUN_OUTPUT "${out}" PARENT_SCOPE)
endfunction()

set(prefix ${WORK_DIR}/prefix)
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

# The three libraries with their sonames.
foreach(lib TELORParams5 TELORProtocol5 Utils5)
  file(GLOB found ${prefix}/lib*/lib${lib}.so.1 ${prefix}/lib*/*/lib${lib}.so.1)
  if(NOT found)
    message(FATAL_ERROR "lib${lib}.so.1 is not installed")
  endif()
endforeach()

# The umbrella header names every installed header but the export headers.
set(incdir ${prefix}/include/TELORParams5)
file(READ ${incdir}/TELORParams5.h umbrella)
file(GLOB headers RELATIVE ${incdir} ${incdir}/*.h)
foreach(h ${headers})
  if(h STREQUAL "TELORParams5.h" OR h MATCHES "_export\\.h$")
    continue()
  endif()
  if(NOT umbrella MATCHES "#include \"${h}\"")
    message(FATAL_ERROR "TELORParams5.h does not include ${h}")
  endif()
endforeach()
file(GLOB private_headers ${incdir}/*_p.h)
if(private_headers)
  message(FATAL_ERROR "private headers were installed: ${private_headers}")
endif()

# A consumer that knows nothing but the package name.
run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/consumer-build
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=Release
    "-DCMAKE_CXX_FLAGS=${CONSUMER_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${CONSUMER_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/consumer-build)
run(${WORK_DIR}/consumer-build/consumer)
if(NOT RUN_OUTPUT MATCHES "consumer ok")
  message(FATAL_ERROR "the consumer did not run as expected: ${RUN_OUTPUT}")
endif()

# pkg-config knows the package too.
find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  file(GLOB pcdir ${prefix}/lib*/pkgconfig ${prefix}/lib*/*/pkgconfig)
  set(ENV{PKG_CONFIG_PATH} "${pcdir}")
  run(${PKG_CONFIG} --cflags --libs TELORParams5)
  if(NOT RUN_OUTPUT MATCHES "-lTELORParams5")
    message(FATAL_ERROR "pkg-config gave: ${RUN_OUTPUT}")
  endif()
endif()
# The example of the README, built the way the README says, must compile and run too.
file(READ ${README} readme)
string(FIND "${readme}" "```cmake\n" cmake_at)
string(FIND "${readme}" "```cpp\n" cpp_at)
if(cmake_at LESS 0 OR cpp_at LESS 0)
  message(FATAL_ERROR "the README has no CMake and C++ example")
endif()
foreach(kind cmake cpp)
  string(LENGTH "```${kind}\n" fence)
  math(EXPR start "${${kind}_at} + ${fence}")
  string(SUBSTRING "${readme}" ${start} -1 rest)
  string(FIND "${rest}" "```" stop)
  string(SUBSTRING "${rest}" 0 ${stop} ${kind}_text)
endforeach()
set(example ${WORK_DIR}/readme-example)
file(WRITE ${example}/CMakeLists.txt "${cmake_text}")
file(WRITE ${example}/main.cpp "${cpp_text}")
run(${CMAKE_COMMAND} -S ${example} -B ${example}/build
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=Release
    "-DCMAKE_CXX_FLAGS=${CONSUMER_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${CONSUMER_FLAGS}")
run(${CMAKE_COMMAND} --build ${example}/build)
run(${example}/build/controlroom)
if(NOT RUN_OUTPUT MATCHES "3.5, state 8")
  message(FATAL_ERROR "the README example printed: ${RUN_OUTPUT}")
endif()

message(STATUS "package ok")
