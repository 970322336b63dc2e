# What the package holds beside the program and is made rather than copied. Dates come from
# SOURCE_DATE_EPOCH, which scripts/package sets to that of the last commit.
set(package_files ${CMAKE_BINARY_DIR}/package_files)
set(bill_of_materials ${package_files}/r4-crash-reporter.spdx.json)

add_custom_target(package_files
    COMMAND ${CMAKE_COMMAND}
        -D SOURCES=${CMAKE_CURRENT_SOURCE_DIR} -D OUT=${package_files}
        -D VERSION=${PROJECT_VERSION}
        -P ${CMAKE_CURRENT_SOURCE_DIR}/make_documents.cmake
    COMMAND python3 ${CMAKE_CURRENT_SOURCE_DIR}/bill_of_materials.py
        --program $<TARGET_FILE:crash_reporter> --version ${PROJECT_VERSION}
        --output ${bill_of_materials}
    VERBATIM)
add_dependencies(package_files crash_reporter translations)
