# The same commit gives the same bytes, wherever and whenever it is built: whoever holds a
# package can tell what it was made from. Folders do not get into debug information, nor
# dates of files into resources. Only for what ships: a debugger on a developer's own
# machine is better served with the folders.
if(NOT CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo" OR R4_SANITISERS)
    return()
endif()

set(shipped_targets
    tessel_core tessel_core_io
    vireling_palette vireling_resources vireling_style vireling_style_icon_engine
    vireling_widgets vireling_window
    applications_usb applications_common crash_reporter_app crash_reporter)

# The later of two that fit counts: the build folder has the same name everywhere.
set(folders_left_out
    -ffile-prefix-map=${CMAKE_SOURCE_DIR}=/usr/src/r4-crash-reporter
    -ffile-prefix-map=${CMAKE_BINARY_DIR}=/usr/src/r4-crash-reporter/build)
foreach(target ${shipped_targets})
    target_compile_options(${target} PRIVATE ${folders_left_out})
endforeach()

find_package(Qt5 5.15 REQUIRED COMPONENTS Core)
get_target_property(resource_compiler Qt5::rcc IMPORTED_LOCATION)
configure_file(undated_rcc.in undated_rcc @ONLY)
set_target_properties(vireling_resources PROPERTIES
    AUTORCC_EXECUTABLE ${CMAKE_CURRENT_BINARY_DIR}/undated_rcc)
