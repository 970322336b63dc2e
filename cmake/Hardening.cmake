# The program runs as root on a machine nobody watches: position-independent
# executables, read-only relocations, stack canaries and checked libc calls.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

add_compile_options(-fstack-protector-strong)
add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)

# Fortification needs the optimiser, and the sanitisers replace the calls it checks.
if(NOT R4_SANITISERS)
    add_compile_options($<$<CONFIG:Release,RelWithDebInfo>:-U_FORTIFY_SOURCE>
                        $<$<CONFIG:Release,RelWithDebInfo>:-D_FORTIFY_SOURCE=2>)
endif()
