# Registers the test that no program of the unit ring holds the real reboot,
# mount or umount. The ring is every executable tst_* built below tests/unit.
function(r4_unit_test_programs FOLDER RESULT)
    set(programs)
    get_property(folders DIRECTORY ${FOLDER} PROPERTY SUBDIRECTORIES)
    foreach(folder IN LISTS folders)
        r4_unit_test_programs(${folder} found)
        list(APPEND programs ${found})
    endforeach()
    string(FIND "${FOLDER}" "${CMAKE_SOURCE_DIR}/tests/unit/" position)
    if(position EQUAL 0)
        get_property(targets DIRECTORY ${FOLDER} PROPERTY BUILDSYSTEM_TARGETS)
        foreach(target IN LISTS targets)
            get_target_property(type ${target} TYPE)
            if(target MATCHES "^tst_" AND type STREQUAL "EXECUTABLE")
                list(APPEND programs $<TARGET_FILE:${target}>)
            endif()
        endforeach()
    endif()
    set(${RESULT} "${programs}" PARENT_SCOPE)
endfunction()

function(r4_add_end_call_check)
    r4_unit_test_programs(${CMAKE_CURRENT_SOURCE_DIR} programs)
    add_test(NAME no_unit_test_holds_the_real_end_calls
        COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/unit/check_no_real_end_calls.sh
            ${CMAKE_NM} ${programs})
    set_tests_properties(no_unit_test_holds_the_real_end_calls PROPERTIES LABELS unit)
endfunction()

# Once every folder of this directory has added its programs.
cmake_language(DEFER CALL r4_add_end_call_check)
