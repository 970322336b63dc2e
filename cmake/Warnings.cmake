# The warnings every target of ours is built with. Link `r4_warnings` privately.
add_library(r4_warnings INTERFACE)
target_compile_options(r4_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    $<$<BOOL:${R4_WARNINGS_AS_ERRORS}>:-Werror>)
