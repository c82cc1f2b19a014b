# Classes made from the platform's own interface declarations at build time.
set(TESTBROWSER_GENERATOR "${CMAKE_CURRENT_LIST_DIR}")
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# Full paths of the platform headers named, in `variable`.
function(testbrowser_platform_headers variable)
  set(paths)
  foreach(name ${ARGN})
    find_file(header_path NAMES ${name} PATH_SUFFIXES include NO_CACHE REQUIRED)
    list(APPEND paths "${header_path}")
    unset(header_path)
  endforeach()
  set(${variable} "${paths}" PARENT_SCOPE)
endfunction()

# Runs a script of the generator: OUTPUT HEADER... -- INTERFACE...
function(testbrowser_generate script output headers interfaces)
  testbrowser_platform_headers(paths ${headers})
  add_custom_command(OUTPUT "${output}"
    COMMAND Python3::Interpreter "${TESTBROWSER_GENERATOR}/${script}" "${output}" ${paths} -- ${interfaces}
    DEPENDS "${TESTBROWSER_GENERATOR}/${script}" "${TESTBROWSER_GENERATOR}/platform_header.py"
    VERBATIM)
endfunction()

# testbrowser_stubs(TARGET FILE HEADERS a.h... INTERFACES IX...): gives TARGET the header "generated/FILE" with a
# class IXStub for each interface, which answers E_NOTIMPL to everything.
function(testbrowser_stubs target file)
  cmake_parse_arguments(stubs "" "" "HEADERS;INTERFACES" ${ARGN})
  file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/generated")
  set(output "${CMAKE_CURRENT_BINARY_DIR}/generated/${file}")
  testbrowser_generate(stubs.py "${output}" "${stubs_HEADERS}" "${stubs_INTERFACES}")
  target_sources(${target} PRIVATE "${output}")
  target_include_directories(${target} PUBLIC "${CMAKE_CURRENT_BINARY_DIR}")
endfunction()

# testbrowser_facets(TARGET FILE HEADERS a.h... INTERFACES IX...): adds to TARGET the classes that hand every method
# of the interfaces to the object behind it.
function(testbrowser_facets target file)
  cmake_parse_arguments(facets "" "" "HEADERS;INTERFACES" ${ARGN})
  set(output "${CMAKE_CURRENT_BINARY_DIR}/${file}")
  testbrowser_generate(facets.py "${output}" "${facets_HEADERS}" "${facets_INTERFACES}")
  target_sources(${target} PRIVATE "${output}")
endfunction()
