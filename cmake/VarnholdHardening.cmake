# What is installed meets other people's files: a fault in reading them shall end the program and not serve
# whoever wrote them. Also for what is generated, since one object without it takes it from the whole program.
# Debug builds leave it out: fortified functions need the optimiser.
include(CheckPIESupported)
if(CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo" AND NOT APPLE AND NOT VARNHOLD_SANITIZE)
    check_pie_supported()
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -D_GLIBCXX_ASSERTIONS
        -fstack-protector-strong -fstack-clash-protection)
    if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
        # Marks our own code. A whole program is marked only where the system's start files are, too.
        add_compile_options(-fcf-protection)
    endif()
    add_link_options(-Wl,-z,relro,-z,now)
endif()
