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

# testbrowser_stubs(TARGET FILE HEADERS a.h... INTERFACES IX...): gives TARGET the header "generated/FILE" with a
# class IXStub for each interface, which answers E_NOTIMPL to everything.
function(testbrowser_stubs target file)
  cmake_parse_arguments(stubs "" "" "HEADERS;INTERFACES" ${ARGN})
  testbrowser_platform_headers(headers ${stubs_HEADERS})
  set(output "${CMAKE_CURRENT_BINARY_DIR}/generated/${file}")
  add_custom_command(OUTPUT "${output}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_CURRENT_BINARY_DIR}/generated"
    COMMAND Python3::Interpreter "${TESTBROWSER_GENERATOR}/stubs.py" "${output}" ${headers} -- ${stubs_INTERFACES}
    DEPENDS "${TESTBROWSER_GENERATOR}/stubs.py" "${TESTBROWSER_GENERATOR}/platform_header.py"
    VERBATIM)
  target_sources(${target} PRIVATE "${output}")
  target_include_directories(${target} PUBLIC "${CMAKE_CURRENT_BINARY_DIR}")
endfunction()
