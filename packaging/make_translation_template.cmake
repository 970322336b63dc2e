# Every text that an operator reads, with the context it is looked up in.
#   cmake -D LUPDATE=PROGRAM -D SOURCES=DIR -D TEMPLATE=FILE -P make_translation_template.cmake
get_filename_component(folder ${TEMPLATE} DIRECTORY)
file(MAKE_DIRECTORY ${folder})
# From nothing each time: what a text was once is no business of a template.
file(REMOVE ${TEMPLATE})
# Without line numbers it changes only when a text does.
execute_process(
    COMMAND ${LUPDATE} -silent -locations none -no-ui-lines -source-language en_GB
        -I ${SOURCES}/software/applications -I ${SOURCES}
        ${SOURCES}/software/applications
        ${SOURCES}/vireling/palette ${SOURCES}/vireling/style
        ${SOURCES}/vireling/widgets ${SOURCES}/vireling/window
        -ts ${TEMPLATE}
    RESULT_VARIABLE result OUTPUT_VARIABLE complaints ERROR_VARIABLE complaints)
if(result)
    message(FATAL_ERROR "lupdate failed: ${complaints}")
endif()

# A class without Q_OBJECT looks its texts up under the class it is derived from, which for
# the one there is, the safe shutdown screen, is QWidget. lupdate does not know that.
set(lacks_context "[^\n]*Class 'SafeShutdownWidget' lacks Q_OBJECT macro\n?")
string(REGEX REPLACE "${lacks_context}" "" others "${complaints}")
if(others)
    message(FATAL_ERROR "lupdate complains: ${others}")
endif()
file(READ ${TEMPLATE} text)
string(REPLACE "<name>SafeShutdownWidget</name>" "<name>QWidget</name>" text "${text}")
file(WRITE ${TEMPLATE} "${text}")
