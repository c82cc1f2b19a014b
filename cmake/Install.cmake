# What `cmake --install` copies and what CPack packs: the library, its import libraries, the header, the player, and the
# files by which CMake and pkg-config find them. tools/package adds the documentation, the notices and the sums.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/quillmate")

install(TARGETS quillmate quillmate-play RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
install(FILES ${import_libraries} DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(FILES include/quillmate.h DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(FILES cmake/package-readme.txt DESTINATION . RENAME README.txt)
install(FILES CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
# Made by tools/package.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/build/site/" DESTINATION "${CMAKE_INSTALL_DOCDIR}/html" OPTIONAL
  PATTERN ".buildinfo" EXCLUDE PATTERN ".doctrees" EXCLUDE)
install(FILES "${PROJECT_SOURCE_DIR}/build/THIRD-PARTY-NOTICES.txt" DESTINATION "${CMAKE_INSTALL_DOCDIR}" OPTIONAL)
install(DIRECTORY examples/hosts examples/order examples/recipes DESTINATION "${CMAKE_INSTALL_DOCDIR}/examples")

configure_package_config_file(cmake/quillmate-config.cmake.in quillmate-config.cmake
  INSTALL_DESTINATION "${package_dir}"
  PATH_VARS CMAKE_INSTALL_BINDIR CMAKE_INSTALL_INCLUDEDIR CMAKE_INSTALL_LIBDIR)
write_basic_package_version_file(quillmate-config-version.cmake COMPATIBILITY SameMajorVersion)
configure_file(cmake/quillmate.pc.in quillmate.pc @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/quillmate-config.cmake"
  "${CMAKE_CURRENT_BINARY_DIR}/quillmate-config-version.cmake" DESTINATION "${package_dir}")
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/quillmate.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# CPack stages; the script packs.
set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT "${PROJECT_SOURCE_DIR}/cmake/PackZip.cmake")
set(CPACK_PACKAGE_FILE_NAME "quillmate-${PROJECT_VERSION}-win64")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_SOURCE_DIR}/build/package")
include(CPack)
