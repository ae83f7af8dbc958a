# One folder is one layer and one library target named after it. Sources are picked up by glob so
# that a new file needs no edit here.
function(quench_layer name)
    cmake_parse_arguments(LAYER "" "" "DEPENDS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    if(sources)
        add_library(${name} STATIC ${sources})
        target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
        target_link_libraries(${name} PUBLIC ${LAYER_DEPENDS} quench_warnings)
    else()
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE ${PROJECT_SOURCE_DIR})
        target_link_libraries(${name} INTERFACE ${LAYER_DEPENDS})
    endif()
endfunction()

# A test suite is every *_test.cpp of tests/<folder>, linked into one executable that takes the
# locale of its environment. COMMA_LOCALE runs the suite a second time under de_DE.UTF-8.
function(quench_test_suite folder)
    cmake_parse_arguments(SUITE "COMMA_LOCALE" "" "DEPENDS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    if(NOT sources)
        return()
    endif()
    set(target ${folder}_tests)
    add_executable(${target} ${sources} ${PROJECT_SOURCE_DIR}/tests/locale/user_locale.cpp)
    target_link_libraries(${target} PRIVATE ${SUITE_DEPENDS} test_support GTest::gtest_main
                                            quench_warnings)
    gtest_discover_tests(${target} WORKING_DIRECTORY ${PROJECT_BINARY_DIR}
                         PROPERTIES ENVIRONMENT "QUENCH_SOURCE_DIR=${PROJECT_SOURCE_DIR}"
                         DISCOVERY_TIMEOUT 60)
    if(SUITE_COMMA_LOCALE)
        quench_comma_locale_run(${target} "QUENCH_SOURCE_DIR=${PROJECT_SOURCE_DIR}")
    endif()
endfunction()

# The tests of a suite once more under the German locale, built by the CommaLocale fixture.
function(quench_comma_locale_run target environment)
    set(locale "LC_ALL=de_DE.UTF-8;LANG=de_DE.UTF-8;LOCPATH=${PROJECT_BINARY_DIR}/locale")
    gtest_discover_tests(${target} WORKING_DIRECTORY ${PROJECT_BINARY_DIR} TEST_SUFFIX ".de_DE"
                         PROPERTIES ENVIRONMENT "${environment};${locale}"
                                    FIXTURES_REQUIRED CommaLocale
                         DISCOVERY_TIMEOUT 60)
endfunction()
