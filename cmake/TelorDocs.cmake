# The API reference: `cmake --build <dir> --target docs` (or `make docs`) runs Doxygen
# over every installed public header of the libraries and the pages under docs/reference,
# with the README as the main page, into <build>/docs/html. Warnings are errors unless
# TELOR_DOCS_WARNINGS_AS_ERRORS is off, so an undocumented public class or member fails
# the target. `cmake --install` puts the reference, once built, under the documentation
# folder (component `doc`).
option(TELOR_DOCS "Configure the target 'docs' (API reference) when Doxygen is found" ON)
option(TELOR_DOCS_WARNINGS_AS_ERRORS "Fail the target 'docs' on any Doxygen warning" ON)

if(NOT TELOR_DOCS)
  return()
endif()

find_package(Doxygen 1.9 OPTIONAL_COMPONENTS dot)
if(NOT DOXYGEN_FOUND)
  message(STATUS "Doxygen not found: the target 'docs' is not available")
  return()
endif()

# The public headers are every header of the libraries but the private *_p.h ones, the
# same set that `cmake --install` puts under include/TELORParams5 (a library that joins
# platform/ later is picked up by the same pattern).
file(GLOB telor_doc_headers
  ${PROJECT_SOURCE_DIR}/platform/*/*.h
  ${PROJECT_SOURCE_DIR}/src/*.h
  ${PROJECT_SOURCE_DIR}/src/*/*.h)
list(FILTER telor_doc_headers EXCLUDE REGEX "_p\\.h$")
list(SORT telor_doc_headers)
file(GLOB telor_doc_pages ${PROJECT_SOURCE_DIR}/docs/reference/*.md)
list(SORT telor_doc_pages)

set(TELOR_DOCS_OUTPUT ${PROJECT_BINARY_DIR}/docs)
string(REPLACE ";" " \\\n                         " TELOR_DOCS_INPUT
       "${PROJECT_SOURCE_DIR}/README.md;${telor_doc_pages};${telor_doc_headers}")
set(TELOR_DOCS_EXAMPLE_PATH ${PROJECT_SOURCE_DIR}/examples/snippets)
if(TELOR_DOCS_WARNINGS_AS_ERRORS)
  set(TELOR_DOCS_WARN_AS_ERROR FAIL_ON_WARNINGS)
else()
  set(TELOR_DOCS_WARN_AS_ERROR NO)
endif()
if(TARGET Doxygen::dot)
  set(TELOR_DOCS_HAVE_DOT YES)
  get_filename_component(TELOR_DOCS_DOT_PATH "${DOXYGEN_DOT_EXECUTABLE}" DIRECTORY)
else()
  message(STATUS "Graphviz 'dot' not found: the reference is built without class diagrams")
  set(TELOR_DOCS_HAVE_DOT NO)
  set(TELOR_DOCS_DOT_PATH "")
endif()

configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${TELOR_DOCS_OUTPUT}/Doxyfile @ONLY)

add_custom_target(docs
  COMMAND ${CMAKE_COMMAND} -E remove_directory ${TELOR_DOCS_OUTPUT}/html
  COMMAND Doxygen::doxygen ${TELOR_DOCS_OUTPUT}/Doxyfile
  WORKING_DIRECTORY ${TELOR_DOCS_OUTPUT}
  COMMENT "API reference: ${TELOR_DOCS_OUTPUT}/html"
  VERBATIM)

install(DIRECTORY ${TELOR_DOCS_OUTPUT}/html
        DESTINATION ${CMAKE_INSTALL_DOCDIR}
        COMPONENT doc
        OPTIONAL)
