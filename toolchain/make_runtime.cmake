# Compiles the runtime of a kit that lies there whole, so that the first program doesn't have to:
#   cmake -DKIT=<folder> -P make_runtime.cmake
# Where the compiler for the controller is missing, the first program does.

set(make_folder ${KIT}/example/build/gcc)

# Sources copied with their old times could look older than objects made from others before them.
file(REMOVE_RECURSE ${make_folder}/objects/runtime)

find_program(TILER_MAKE make)
find_program(TILER_KIT_COMPILER arm-none-eabi-gcc)
if(NOT TILER_MAKE OR NOT TILER_KIT_COMPILER)
  message(STATUS "No make or no arm-none-eabi-gcc: the kit compiles its runtime at the first download")
  return()
endif()
# As the script in make.exe does it: nothing of an outer make.
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env --unset=MAKEFLAGS --unset=MFLAGS --unset=MAKELEVEL
    --unset=MAKEFILES --unset=MAKEOVERRIDES --unset=GNUMAKEFLAGS ${TILER_MAKE} runtime
  WORKING_DIRECTORY ${make_folder}
  OUTPUT_QUIET
  RESULT_VARIABLE result)
if(result)
  message(WARNING "The kit's runtime could not be compiled; the first download tries again")
endif()
