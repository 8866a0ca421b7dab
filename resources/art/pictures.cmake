# Pictures of the program, rendered at build time.
#
#   tiler_add_pictures(<target> [MANIFESTS <file>...] [SOURCES <dir>...] [NO_CHECK])
#
# Renders all pictures of the manifests, compares their names with those in the sources,
# and compiles the pictures into <target>. MANIFESTS defaults to pictures.json here, SOURCES
# to the program's source directories. NO_CHECK leaves the comparison out. The target
# contact-sheet lays all pictures out on contact-sheet.png in the build directory.

find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(OPTIPNG optipng REQUIRED)

set(TILER_ART_DIR "${CMAKE_CURRENT_LIST_DIR}")

function(tiler_add_pictures p_target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "NO_CHECK" "" "MANIFESTS;SOURCES")
    if(NOT ARG_MANIFESTS)
        set(ARG_MANIFESTS "${TILER_ART_DIR}/pictures.json")
    endif()
    if(NOT ARG_SOURCES)
        set(ARG_SOURCES "${PROJECT_SOURCE_DIR}/module" "${PROJECT_SOURCE_DIR}/actions")
    endif()
    set(manifests "")
    foreach(manifest IN LISTS ARG_MANIFESTS)
        get_filename_component(manifest "${manifest}" ABSOLUTE)
        list(APPEND manifests "${manifest}")
    endforeach()

    set(out "${CMAKE_CURRENT_BINARY_DIR}/pictures")
    set(qrc "${CMAKE_CURRENT_BINARY_DIR}/pictures.qrc")
    set(render "${Python3_EXECUTABLE}" "${TILER_ART_DIR}/render.py" --rsvg "${RSVG_CONVERT}"
        --manifest ${manifests} --out "${out}")

    file(GLOB drawings CONFIGURE_DEPENDS
         "${TILER_ART_DIR}/templates/*.svg" "${TILER_ART_DIR}/glyphs/*.svg")
    set(art "${TILER_ART_DIR}/render.py" "${TILER_ART_DIR}/palette.json"
        "${TILER_ART_DIR}/leds.json" ${manifests} ${drawings})

    # The names decide which files the build makes, so that one that is missing is made again.
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${manifests})
    execute_process(
        COMMAND "${Python3_EXECUTABLE}" "${TILER_ART_DIR}/render.py" --list --manifest ${manifests}
        OUTPUT_VARIABLE names RESULT_VARIABLE failed)
    if(failed)
        message(FATAL_ERROR "The picture manifests cannot be read.")
    endif()
    string(STRIP "${names}" names)
    string(REPLACE "\n" ";" names "${names}")
    list(TRANSFORM names PREPEND "${out}/" OUTPUT_VARIABLE pictures)

    # The stamp is the output, not the collection file: that keeps its date while no
    # picture changes, and would be out of date for ever.
    set(stamp "${CMAKE_CURRENT_BINARY_DIR}/pictures.stamp")
    add_custom_command(
        OUTPUT "${stamp}"
        BYPRODUCTS "${qrc}" ${pictures}
        COMMAND ${render} --qrc "${qrc}"
        COMMAND "${CMAKE_COMMAND}" -E touch "${stamp}"
        DEPENDS ${art}
        COMMENT "Rendering pictures"
        VERBATIM)
    add_custom_target(${p_target}-pictures DEPENDS "${stamp}")

    set(cpp "${CMAKE_CURRENT_BINARY_DIR}/qrc_pictures.cpp")
    get_target_property(rcc Qt5::rcc IMPORTED_LOCATION)
    add_custom_command(
        OUTPUT "${cpp}"
        COMMAND "${rcc}" --name pictures --output "${cpp}" "${qrc}"
        DEPENDS "${stamp}" "${qrc}"
        COMMENT "Compiling pictures"
        VERBATIM)
    set_source_files_properties("${cpp}" PROPERTIES SKIP_AUTOGEN ON GENERATED ON)
    target_sources(${p_target} PRIVATE "${cpp}")
    add_dependencies(${p_target} ${p_target}-pictures)

    if(NOT ARG_NO_CHECK)
        set(checked "${CMAKE_CURRENT_BINARY_DIR}/pictures.checked")
        set(patterns "")
        foreach(directory IN LISTS ARG_SOURCES)
            foreach(suffix IN ITEMS h hpp cpp cc ui)
                list(APPEND patterns "${directory}/*.${suffix}")
            endforeach()
        endforeach()
        file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${patterns})
        add_custom_command(
            OUTPUT "${checked}"
            COMMAND "${Python3_EXECUTABLE}" "${TILER_ART_DIR}/check.py" --sources ${ARG_SOURCES}
                    --manifest ${manifests} --stamp "${checked}"
            DEPENDS "${TILER_ART_DIR}/check.py" "${TILER_ART_DIR}/render.py" ${manifests} ${sources}
            COMMENT "Checking picture names"
            VERBATIM)
        add_custom_target(${p_target}-picture-names DEPENDS "${checked}")
        add_dependencies(${p_target} ${p_target}-picture-names)
    endif()

    if(NOT TARGET contact-sheet)
        add_custom_target(contact-sheet
            COMMAND ${render} --contact-sheet "${CMAKE_CURRENT_BINARY_DIR}/contact-sheet.png"
            DEPENDS "${stamp}"
            COMMENT "Laying out ${CMAKE_CURRENT_BINARY_DIR}/contact-sheet.png"
            VERBATIM)
    endif()
endfunction()
