# cJSON and Boost.Regex: from find_package where the build brings them (vcpkg), else from Debian's packages.
# Debian's source packages carry its security patches; tools/debian-source unpacks one under build/deps.
set(QUILLMATE_DEPS_DIR "${CMAKE_SOURCE_DIR}/build/deps")

find_package(cJSON CONFIG QUIET)
if(TARGET cjson)
  add_library(quillmate_cjson ALIAS cjson)
else()
  if(NOT EXISTS "${QUILLMATE_DEPS_DIR}/cjson/cJSON.c")
    execute_process(COMMAND "${CMAKE_SOURCE_DIR}/tools/debian-source" cjson "${QUILLMATE_DEPS_DIR}/cjson"
      COMMAND_ERROR_IS_FATAL ANY)
  endif()
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
  # A link of one folder: /usr/include itself would bring the build machine's C headers into a cross build.
  file(MAKE_DIRECTORY "${QUILLMATE_DEPS_DIR}/boost")
  if(NOT EXISTS "${QUILLMATE_DEPS_DIR}/boost/boost")
    file(CREATE_LINK /usr/include/boost "${QUILLMATE_DEPS_DIR}/boost/boost" SYMBOLIC)
  endif()
  add_library(quillmate_boost INTERFACE)
  target_include_directories(quillmate_boost SYSTEM INTERFACE "${QUILLMATE_DEPS_DIR}/boost")
endif()

if(BUILD_TESTING)
  set(INSTALL_GTEST OFF)
  set(gtest_force_shared_crt ON)
  add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
endif()
