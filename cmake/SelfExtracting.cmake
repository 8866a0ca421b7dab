# Run by CPack when an archive is made: puts packaging/installer.sh in front of it, which gives the
# installer that an update service hands out (docs/update-service.md).
file(READ "${CMAKE_CURRENT_LIST_DIR}/../packaging/installer.sh" script)
string(REGEX MATCHALL "\n" line_ends "${script}")
list(LENGTH line_ends lines)
string(REPLACE "@LINES@" "${lines}" script "${script}")
foreach(archive IN LISTS CPACK_PACKAGE_FILES)
  # CPack itself moves the archive there when this is done.
  string(REGEX REPLACE "\\.tar\\.xz$" ".run" name "${archive}")
  get_filename_component(name "${name}" NAME)
  set(installer "${CPACK_PACKAGE_DIRECTORY}/${name}")
  file(SHA256 "${archive}" sum)
  string(REPLACE "@SHA256@" "${sum}" head "${script}")
  file(WRITE "${archive}.head" "${head}")
  execute_process(COMMAND cat "${archive}.head" "${archive}" OUTPUT_FILE "${installer}"
    COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE "${archive}.head")
  file(CHMOD "${installer}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
    GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  message(STATUS "Installer: ${installer}")
endforeach()
