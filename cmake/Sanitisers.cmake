# Sanitisers and coverage reach every target, ours and the tests alike.
if(R4_SANITISERS)
    add_compile_options(-fsanitize=${R4_SANITISERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${R4_SANITISERS})
endif()
if(R4_COVERAGE)
    add_compile_options(--coverage -O0)
    add_link_options(--coverage)
endif()
