# The help pages stand in Help beside the program: copied there in the build tree (for quillary and
# quillary-cli), installed with the program's shared files, where the help viewer also looks.
set(_help_dir "${PROJECT_SOURCE_DIR}/resources/Help")
file(GLOB _help_pages CONFIGURE_DEPENDS "${_help_dir}/*")
add_custom_target(quillary_help ALL
    COMMAND ${CMAKE_COMMAND} -E copy_directory "${_help_dir}" "$<TARGET_FILE_DIR:quillary>/Help"
    COMMAND ${CMAKE_COMMAND} -E copy_directory "${_help_dir}" "$<TARGET_FILE_DIR:quillary-cli>/Help"
    DEPENDS ${_help_pages}
    COMMENT "Help pages beside the programs")
include(GNUInstallDirs)
install(DIRECTORY "${_help_dir}" DESTINATION ${CMAKE_INSTALL_DATADIR}/quillary)
