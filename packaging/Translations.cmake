# cmake --build build/release --target translations
#
# Makes the translation template. The program speaks the language it is written in and
# loads no translation: see "Languages" in docs/integration.md.
set(translation_template ${CMAKE_BINARY_DIR}/translations/r4_crash_reporter.ts)

find_program(LUPDATE NAMES lupdate PATHS /usr/lib/qt5/bin NO_DEFAULT_PATH)
if(LUPDATE)
    set(make_template
        COMMAND ${CMAKE_COMMAND} -D LUPDATE=${LUPDATE} -D SOURCES=${CMAKE_SOURCE_DIR}
            -D TEMPLATE=${translation_template}
            -P ${CMAKE_CURRENT_SOURCE_DIR}/make_translation_template.cmake)
else()
    set(make_template
        COMMAND ${CMAKE_COMMAND} -E echo "lupdate is missing: scripts/bootstrap package"
        COMMAND ${CMAKE_COMMAND} -E false)
endif()
add_custom_target(translations ${make_template} VERBATIM)
