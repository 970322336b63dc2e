# r4_add_test(NAME <name> RING <unit|system> SOURCES <files...>
#             [LIBRARIES <targets...>] [LABELS <more labels...>] [TIMEOUT <seconds>]
#             [SANDBOXED])
#
# One QtTest program, registered with ctest under the label of its ring. It runs on the
# offscreen platform, at 96 dots per inch, with one font, and may take TIMEOUT seconds (60
# unless given) before it counts as hung. SANDBOXED runs it in the sandbox, for tests whose
# product paths ("/user_data") or shared memory must not be the machine's own. Of its
# sources, headers with Q_OBJECT must be listed: nothing else looks for them.
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
# its line anyway. A hundred and fifty copies of the product's debug information are for
# nobody either: the dev preset has it, and sanitisers keep it for naming lines.
if(R4_SANITISERS)
    set(test_code_options -O0 -g0)
    set(test_link_options "")
else()
    set(test_code_options $<$<CONFIG:RelWithDebInfo>:-O1;-g0>)
    set(test_link_options $<$<CONFIG:RelWithDebInfo>:-Wl,--strip-debug>)
endif()
find_program(R4_LINKER_GOLD ld.gold)
if(R4_LINKER_GOLD)
    list(APPEND test_link_options -fuse-ld=gold)
endif()

set(test_fonts ${CMAKE_SOURCE_DIR}/tests/support/fonts.conf)

# Qt's headers are most of what the compiler reads for a test. They are read once for all
# tests that link the same part of Qt.
function(add_test_headers QT_PART)
    set(name test_headers_${QT_PART})
    file(TOUCH ${CMAKE_BINARY_DIR}/${name}.cpp)
    add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/${name}.cpp)
    target_precompile_headers(${name} PRIVATE <QtTest> <Qt${QT_PART}>)
    target_compile_options(${name} PRIVATE ${test_code_options})
    target_link_libraries(${name} PRIVATE Qt5::${QT_PART} Qt5::Test r4_warnings)
endfunction()

# The greatest part of Qt that the libraries bring along: Core, Gui or Widgets.
function(find_qt_part RESULT)
    set(found Core)
    foreach(library ${ARGN})
        set(part Core)
        if(library MATCHES "Qt5::(Widgets|Gui)")
            set(part ${CMAKE_MATCH_1})
        elseif(TARGET ${library})
            get_target_property(libraries ${library} INTERFACE_LINK_LIBRARIES)
            find_qt_part(part ${libraries})
        endif()
        if(part STREQUAL Widgets OR found STREQUAL Core)
            set(found ${part})
        endif()
    endforeach()
    set(${RESULT} ${found} PARENT_SCOPE)
endfunction()

foreach(part Core Gui Widgets)
    find_package(Qt5 5.15 REQUIRED COMPONENTS ${part})
    add_test_headers(${part})
endforeach()

# Runs moc on those files of a test that need it. CMake's AUTOMOC takes longer to look at a
# test than the compiler takes to build it.
function(r4_moc_test TEST)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${TEST}_moc)
    foreach(source ${ARGN})
        get_filename_component(name ${source} NAME_WE)
        file(STRINGS ${source} needs REGEX "Q_OBJECT|\\.moc\"" LIMIT_COUNT 1)
        if(NOT needs)
            continue()
        elseif(source MATCHES "\\.h$")
            set(output ${folder}/moc_${name}.cpp)
        else()
            set(output ${folder}/${name}.moc)
        endif()
        qt5_generate_moc(${source} ${output} TARGET ${TEST})
        target_sources(${TEST} PRIVATE ${output})
    endforeach()
    target_include_directories(${TEST} PRIVATE ${folder})
endfunction()

function(r4_add_test)
    cmake_parse_arguments(TEST "SANDBOXED" "NAME;RING;TIMEOUT" "SOURCES;LIBRARIES;LABELS" ${ARGN})
    if(NOT TEST_TIMEOUT)
        set(TEST_TIMEOUT 60)
    endif()
    add_executable(${TEST_NAME} ${TEST_SOURCES})
    set_target_properties(${TEST_NAME} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    r4_moc_test(${TEST_NAME} ${TEST_SOURCES})
    target_link_libraries(${TEST_NAME} PRIVATE ${TEST_LIBRARIES} Qt5::Test r4_warnings)
    target_compile_options(${TEST_NAME} PRIVATE ${test_code_options})
    target_link_options(${TEST_NAME} PRIVATE ${test_link_options})
    find_qt_part(qt_part ${TEST_LIBRARIES})
    target_precompile_headers(${TEST_NAME} REUSE_FROM test_headers_${qt_part})
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
