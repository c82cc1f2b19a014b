# Packs what CPack has staged.
set(archive "${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.zip")
execute_process(
  COMMAND "${CMAKE_CURRENT_LIST_DIR}/../tools/zip" "${archive}" "${CPACK_TEMPORARY_DIRECTORY}" "${CPACK_PACKAGE_FILE_NAME}"
  COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_EXTERNAL_BUILT_PACKAGES "${archive}")
