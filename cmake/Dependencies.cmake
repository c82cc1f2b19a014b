# What the build takes from elsewhere: from find_package where a package manager brings it (vcpkg), else from Debian's
# packages. Configuring downloads nothing: tools/setup fetches the sources that Debian has only as source packages.
set(QUILLMATE_DEPS_DIR "${CMAKE_SOURCE_DIR}/build/deps")

# FILE: something that tools/setup provides.
function(quillmate_needs file)
  if(NOT EXISTS "${file}")
    message(FATAL_ERROR "${file} is missing. Run tools/setup first.")
  endif()
endfunction()

# One Python for everything. On Debian it is the system's own, whose packages tools/setup installs.
if(NOT Python3_EXECUTABLE AND EXISTS /usr/bin/python3)
  set(Python3_EXECUTABLE /usr/bin/python3)
endif()
find_package(Python3 3.9 REQUIRED COMPONENTS Interpreter)

find_package(cJSON CONFIG QUIET)
if(TARGET cjson)
  add_library(quillmate_cjson ALIAS cjson)
else()
  quillmate_needs("${QUILLMATE_DEPS_DIR}/cjson/cJSON.c")
  add_library(quillmate_cjson STATIC "${QUILLMATE_DEPS_DIR}/cjson/cJSON.c")
  target_include_directories(quillmate_cjson SYSTEM PUBLIC "${QUILLMATE_DEPS_DIR}/cjson")
  target_compile_options(quillmate_cjson PRIVATE "-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.")
  # A comma as the locale's decimal sign must not reach the text; mingw's own printf knows no %1.15g.
  target_compile_definitions(quillmate_cjson PRIVATE ENABLE_LOCALES)
  if(WIN32)
    # The export table is the module-definition file's alone.
    target_compile_definitions(quillmate_cjson PUBLIC CJSON_HIDE_SYMBOLS PRIVATE __USE_MINGW_ANSI_STDIO=1)
  endif()
endif()

find_package(Boost 1.81 CONFIG QUIET COMPONENTS regex)
if(TARGET Boost::regex AND NOT CMAKE_CROSSCOMPILING AND WIN32)
  add_library(quillmate_boost ALIAS Boost::regex)
else()
  # A link to one folder: /usr/include itself would bring the build machine's C headers into a cross build.
  quillmate_needs("${QUILLMATE_DEPS_DIR}/boost/boost/regex.hpp")
  add_library(quillmate_boost INTERFACE)
  target_include_directories(quillmate_boost SYSTEM INTERFACE "${QUILLMATE_DEPS_DIR}/boost")
endif()

if(BUILD_TESTING)
  # A packaged GoogleTest is not built with the sanitizers.
  if(NOT QUILLMATE_SANITIZE)
    find_package(GTest CONFIG QUIET)
  endif()
  if(NOT TARGET GTest::gtest_main)
    quillmate_needs(/usr/src/googletest/CMakeLists.txt)
    set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)  # its options take the values set here
    set(INSTALL_GTEST OFF)
    set(gtest_force_shared_crt ON)
    add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
  endif()
endif()
