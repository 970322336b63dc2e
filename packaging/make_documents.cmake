# The manual page and the change log, dated and compressed.
#   cmake -D SOURCES=DIR -D OUT=DIR -D VERSION=X.Y.Z -P make_documents.cmake
string(TIMESTAMP DATE "%Y-%m-%d" UTC)
string(TIMESTAMP CHANGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)

function(make_document name)
    configure_file(${SOURCES}/${name}.in ${OUT}/${ARGV1} @ONLY)
    # -n: neither name nor date, which would differ from one build to the next.
    execute_process(COMMAND gzip -9nf ${OUT}/${ARGV1} RESULT_VARIABLE failed)
    if(failed)
        message(FATAL_ERROR "gzip failed on ${OUT}/${ARGV1}")
    endif()
endfunction()

make_document(crash_reporter.8 crash_reporter.8)
make_document(debian/changelog changelog)
