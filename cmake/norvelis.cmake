# norvelis_library(core SOURCES a.cpp ... LINKS fmt::fmt ...): one room of the house as a static library. What
# stands in LINKS is all that the room may use; headers are included as "core/text.h".
function(norvelis_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(norvelis_${name} STATIC ${ARG_SOURCES})
    add_library(norvelis::${name} ALIAS norvelis_${name})
    target_include_directories(norvelis_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(norvelis_${name} PUBLIC ${ARG_LINKS})
endfunction()

# norvelis_test(core SOURCES text_test.cpp ... LINKS norvelis::core): one test program for one folder.
function(norvelis_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name}_test ${ARG_SOURCES})
    target_include_directories(${name}_test PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name}_test PRIVATE ${ARG_LINKS} GTest::gtest GTest::gmock GTest::gtest_main)
    target_compile_definitions(${name}_test PRIVATE NORVELIS_SOURCE="${PROJECT_SOURCE_DIR}" NORVELIS_APP="${NORVELIS_APP}")
    add_test(NAME ${name} COMMAND ${name}_test)
    set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
