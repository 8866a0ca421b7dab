# Lays the kit out as the program expects it:
#   cmake -DDESTINATION=<folder> -P lay_out_kit.cmake

set(source ${CMAKE_CURRENT_LIST_DIR})
set(make_folder ${DESTINATION}/example/build/gcc)

file(COPY ${source}/example/vantrel.h DESTINATION ${DESTINATION}/example)
file(COPY ${source}/example/build/gcc/makefile DESTINATION ${make_folder})
file(COPY ${source}/runtime DESTINATION ${DESTINATION})
file(COPY ${source}/run-on-emulator DESTINATION ${DESTINATION})
file(COPY ${source}/README.md DESTINATION ${DESTINATION})
file(MAKE_DIRECTORY ${make_folder}/objects)

# The program writes this file; what it wrote is not taken back.
if(NOT EXISTS ${DESTINATION}/example/user_main.c)
  file(COPY ${source}/example/user_main.c DESTINATION ${DESTINATION}/example)
endif()

execute_process(COMMAND ${CMAKE_COMMAND} -E copy_if_different
  ${source}/example/build/gcc/launcher.sh ${make_folder}/make.exe)
file(CHMOD ${make_folder}/make.exe PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(KIT ${DESTINATION})
include(${source}/make_runtime.cmake)
