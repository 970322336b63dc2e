# r4_add_test(NAME <name> RING <unit|system> SOURCES <files...>
#             [LIBRARIES <targets...>] [LABELS <more labels...>] [TIMEOUT <seconds>]
#             [SANDBOXED])
#
# One QtTest program, registered with ctest under the label of its ring. It runs
# on the offscreen platform, at 96 dots per inch, with one font, and may take TIMEOUT seconds (60 unless given)
# before it counts as hung. SANDBOXED runs it in the sandbox, for tests whose
# product paths ("/user_data") or shared memory must not be the machine's own.
#
# The programs of a label are built by the target tests_<label>.
find_package(Qt5 5.15 REQUIRED COMPONENTS Test)

foreach(label unit system threads)
    add_custom_target(tests_${label})
endforeach()

set(leak_options
    "suppressions=${CMAKE_SOURCE_DIR}/tests/support/leak_suppressions.txt:print_suppressions=0")

# What is tested is built as it ships, or as its sanitiser likes it. Of the tests' own code
# there is more than of the product's: it is built as fast as can be. A failed check names
# its line anyway.
if(R4_SANITISERS)
    set(test_code_options -O0 -g0)
else()
    set(test_code_options $<$<CONFIG:RelWithDebInfo>:-O1;-g1>)
endif()

set(test_fonts ${CMAKE_SOURCE_DIR}/tests/support/fonts.conf)

function(r4_add_test)
    cmake_parse_arguments(TEST "SANDBOXED" "NAME;RING;TIMEOUT" "SOURCES;LIBRARIES;LABELS" ${ARGN})
    if(NOT TEST_TIMEOUT)
        set(TEST_TIMEOUT 60)
    endif()
    add_executable(${TEST_NAME} ${TEST_SOURCES})
    set_target_properties(${TEST_NAME} PROPERTIES
        AUTOMOC ON
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    target_link_libraries(${TEST_NAME} PRIVATE ${TEST_LIBRARIES} Qt5::Test r4_warnings)
    target_compile_options(${TEST_NAME} PRIVATE ${test_code_options})
    foreach(label ${TEST_RING} ${TEST_LABELS})
        add_dependencies(tests_${label} ${TEST_NAME})
    endforeach()
    set(wrapper "")
    if(TEST_SANDBOXED)
        set(wrapper ${CMAKE_SOURCE_DIR}/tools/sandbox --ro-bind ${CMAKE_BINARY_DIR}
                    --env R4_SANDBOX=1 --)
    endif()
    add_test(NAME ${TEST_NAME} COMMAND ${wrapper} $<TARGET_FILE:${TEST_NAME}>)
    set_tests_properties(${TEST_NAME} PROPERTIES
        LABELS "${TEST_RING};${TEST_LABELS}"
        TIMEOUT ${TEST_TIMEOUT}
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_FONT_DPI=96;FONTCONFIG_FILE=${test_fonts};LC_ALL=C.UTF-8;TZ=UTC;LSAN_OPTIONS=${leak_options}")
endfunction()
