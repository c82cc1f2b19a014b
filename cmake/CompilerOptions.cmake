# Warnings, hardening and reproducibility, the same for every target of ours.
get_property(has_build_types GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
if(NOT has_build_types AND NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Debug, Release, RelWithDebInfo or MinSizeRel" FORCE)
endif()
add_library(quillmate_options INTERFACE)
if(MSVC)
  target_compile_options(quillmate_options INTERFACE /W4 /WX /utf-8 /permissive- /Zc:__cplusplus)
  # Microsoft's warnings about the standard library's own functions.
  target_compile_definitions(quillmate_options INTERFACE _CRT_SECURE_NO_WARNINGS)
else()
  target_compile_options(quillmate_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Werror
    # Paths of the machine that builds stay out of the files.
    "-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.")
endif()
if(WIN32)
  target_compile_definitions(quillmate_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
    WINVER=0x0A00 _WIN32_WINNT=0x0A00)
  if(MINGW)
    target_compile_options(quillmate_options INTERFACE -fstack-protector-strong
      # Needs an optimised build.
      $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
    target_link_options(quillmate_options INTERFACE -static -fstack-protector-strong
      -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat -Wl,--no-insert-timestamp)
  endif()
elseif(QUILLMATE_SANITIZE)
  target_compile_options(quillmate_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quillmate_options INTERFACE -fsanitize=address,undefined)
endif()
