# quillary_add_test(NAME [UI]): one test program per tests/ folder, built from every test_*.cpp in it,
# registered with CTest test by test. UI programs also link the screens.
function(quillary_add_test name)
    cmake_parse_arguments(ARG "UI" "" "" ${ARGN})
    file(GLOB _srcs CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    add_executable(${name} ${_srcs})
    target_link_libraries(${name} PRIVATE quillary_test_support GTest::gtest GTest::gmock)
    if(ARG_UI)
        target_link_libraries(${name} PRIVATE quillary_ui)
    endif()
    target_compile_definitions(${name} PRIVATE
        QUILLARY_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
    add_dependencies(${name} quillary-cli)
    gtest_discover_tests(${name}
        DISCOVERY_MODE PRE_TEST
        NO_PRETTY_VALUES
        PROPERTIES ENVIRONMENT "LANG=en_NZ.UTF-8;LC_ALL=en_NZ.UTF-8;TZ=Pacific/Auckland;QT_QPA_PLATFORM=offscreen"
                   TIMEOUT 120)
endfunction()
