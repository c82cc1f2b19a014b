# The import libraries that hosts link: every command as quillmate_NAME, an alias of the DLL's plain NAME, so that
# linking them captures neither open nor close of the C library; and cJSON under its own names. The list is the DLL's
# own module-definition file.
get_target_property(sources quillmate SOURCES)
list(FILTER sources INCLUDE REGEX "quillmate\\.def$")
file(STRINGS "${sources}" rows REGEX "^  ")
# Two ways to write that a symbol imports another name: GNU's dlltool and LLVM's know the first, Microsoft's the second.
set(gnu_rows "")
set(microsoft_rows "")
foreach(row IN LISTS rows)
  string(STRIP "${row}" row)
  if(row MATCHES "^([a-z0-9_]+) = ")
    string(APPEND gnu_rows "  quillmate_${CMAKE_MATCH_1} == ${CMAKE_MATCH_1}\n")
    string(APPEND microsoft_rows "  quillmate_${CMAKE_MATCH_1} EXPORTAS ${CMAKE_MATCH_1}\n")
  else()
    string(APPEND gnu_rows "  ${row}\n")
    string(APPEND microsoft_rows "  ${row}\n")
  endif()
endforeach()
file(CONFIGURE OUTPUT import_gnu.def CONTENT "LIBRARY quillmate.dll\nEXPORTS\n${gnu_rows}" @ONLY)
file(CONFIGURE OUTPUT import_microsoft.def CONTENT "LIBRARY quillmate.dll\nEXPORTS\n${microsoft_rows}" @ONLY)

# What the linker writes beside the DLL has the plain names; it stays out of the way.
set_target_properties(quillmate PROPERTIES ARCHIVE_OUTPUT_NAME quillmate_plain)
set(gnu_library "${CMAKE_BINARY_DIR}/libquillmate.dll.a")
set(microsoft_library "${CMAKE_BINARY_DIR}/quillmate.lib")
set(import_libraries "")
if(MSVC)
  add_custom_command(OUTPUT "${microsoft_library}" DEPENDS import_microsoft.def
    COMMAND "${CMAKE_AR}" /nologo /machine:x64 "/def:${CMAKE_BINARY_DIR}/import_microsoft.def" "/out:${microsoft_library}"
    VERBATIM)
  list(APPEND import_libraries "${microsoft_library}")
else()
  add_custom_command(OUTPUT "${gnu_library}" DEPENDS import_gnu.def
    # The tool makes symbols of the output's name: without a folder, every build makes the same ones.
    COMMAND "${CMAKE_DLLTOOL}" --deterministic-libraries --input-def import_gnu.def --output-lib libquillmate.dll.a
    WORKING_DIRECTORY "${CMAKE_BINARY_DIR}" VERBATIM)
  list(APPEND import_libraries "${gnu_library}")
  # Microsoft's format, for hosts that Visual Studio builds. Older versions of this tool cannot rename an import.
  find_program(QUILLMATE_LLVM_DLLTOOL llvm-dlltool-19)
  if(QUILLMATE_LLVM_DLLTOOL)
    add_custom_command(OUTPUT "${microsoft_library}" DEPENDS import_gnu.def
      COMMAND "${QUILLMATE_LLVM_DLLTOOL}" -m i386:x86-64 -d "${CMAKE_BINARY_DIR}/import_gnu.def" -l "${microsoft_library}"
      VERBATIM)
    list(APPEND import_libraries "${microsoft_library}")
  endif()
endif()
add_custom_target(quillmate_import_libraries ALL DEPENDS ${import_libraries})

# What a host of this build links.
list(GET import_libraries 0 native_library)
add_library(quillmate_import INTERFACE)
target_include_directories(quillmate_import INTERFACE "${PROJECT_SOURCE_DIR}/include")
target_link_libraries(quillmate_import INTERFACE "${native_library}")
add_dependencies(quillmate_import quillmate quillmate_import_libraries)
