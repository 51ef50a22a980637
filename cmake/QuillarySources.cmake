# Each folder of src/ adds its files with one call. Screen files (frm*, *Widget*, and all of src/ui)
# go to quillary_ui; everything else is logic and goes to quillary_engine, which links Qt Core and
# SQLite only, so a widget include in logic fails the build.
function(quillary_sources)
    file(GLOB _files CONFIGURE_DEPENDS
        "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    foreach(_f IN LISTS _files)
        get_filename_component(_name "${_f}" NAME)
        if(_name MATCHES "^frm" OR _name MATCHES "Widget" OR _name MATCHES "Dialog"
           OR CMAKE_CURRENT_SOURCE_DIR MATCHES "/src/ui$")
            target_sources(quillary_ui PRIVATE "${_f}")
        else()
            target_sources(quillary_engine PRIVATE "${_f}")
        endif()
    endforeach()
endfunction()

# Copies the skin's pictures into a Resources folder beside a program of the build tree.
function(quillary_copy_resources target)
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/resources/Resources
                $<TARGET_FILE_DIR:${target}>/Resources
        VERBATIM)
endfunction()
