# norvelis_library(core SOURCES a.cpp ... LINKS norvelis::store ...): one module as a static library. LINKS is all
# that it may use: the compiler finds the headers of those modules, and of the modules that they use, and no others.
#
# That is so because each target has an include root of its own, build/include/<target>, which holds one link: from
# the module's folder under src/ to its sources. Linking to a target brings its root along. A target whose sources are
# not in the folder of its CMakeLists.txt names its folders, relative to src/: FOLDERS engine.
function(norvelis_include_root target scope)
    set(root ${PROJECT_BINARY_DIR}/include/${target})
    file(REMOVE_RECURSE ${root})
    foreach(folder IN LISTS ARGN)
        cmake_path(GET folder PARENT_PATH parent)
        file(MAKE_DIRECTORY ${root}/${parent})
        file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
    endforeach()
    target_include_directories(${target} ${scope} ${root})
endfunction()

function(norvelis_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;FOLDERS" ${ARGN})
    if(NOT ARG_FOLDERS)
        cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/src OUTPUT_VARIABLE ARG_FOLDERS)
    endif()
    if(ARG_SOURCES)
        add_library(norvelis_${name} STATIC ${ARG_SOURCES})
        set(scope PUBLIC)
    else()
        add_library(norvelis_${name} INTERFACE)
        set(scope INTERFACE)
    endif()
    add_library(norvelis::${name} ALIAS norvelis_${name})
    set_property(GLOBAL APPEND PROPERTY NORVELIS_LIBRARIES ${name})
    norvelis_include_root(norvelis_${name} ${scope} ${ARG_FOLDERS})
    target_link_libraries(norvelis_${name} ${scope} ${ARG_LINKS})
endfunction()

# norvelis_test(core SOURCES text_test.cpp ... LINKS norvelis::core): one test program for one folder. It ends by itself
# when a test hangs; the sanitizers slow a test down to a fifth.
function(norvelis_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    set(test_seconds 60)
    set(program_seconds 300)
    set(environment QT_QPA_PLATFORM=offscreen)
    if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
        set(test_seconds 300)
        set(program_seconds 1500)
        list(APPEND environment "LSAN_OPTIONS=print_suppressions=0:suppressions=${PROJECT_SOURCE_DIR}/tests/leaks.supp")
    endif()
    add_executable(${name}_test ${ARG_SOURCES} ${PROJECT_SOURCE_DIR}/tests/watchdog.cpp)
    target_compile_options(${name}_test PRIVATE -O0)  # A test runs once; optimizing it takes longer than that.
    target_include_directories(${name}_test PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name}_test PRIVATE ${ARG_LINKS} norvelis::testing GTest::gtest GTest::gmock GTest::gtest_main)
    target_compile_definitions(${name}_test PRIVATE NORVELIS_SOURCE="${PROJECT_SOURCE_DIR}" NORVELIS_APP="${NORVELIS_APP}"
        NORVELIS_TEST_SECONDS=${test_seconds})
    add_test(NAME ${name} COMMAND ${name}_test)
    set_tests_properties(${name} PROPERTIES TIMEOUT ${program_seconds} ENVIRONMENT "${environment}")
endfunction()

# norvelis_bench(extract LINKS ...): the benchmark program of one folder under bench/.
function(norvelis_bench name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name}_bench ${name}_bench.cpp ${ARG_SOURCES})
    target_include_directories(${name}_bench PRIVATE ${PROJECT_SOURCE_DIR}/bench)
    target_compile_definitions(${name}_bench
        PRIVATE NORVELIS_SOURCE="${PROJECT_SOURCE_DIR}" NORVELIS_APP="${NORVELIS_APP}")
    target_link_libraries(${name}_bench PRIVATE ${ARG_LINKS} norvelis::testing CLI11::CLI11 fmt::fmt)
endfunction()
