# Targets of one kind are made in one place, so that flags and output folders can't drift apart.

add_library(varnhold_flags INTERFACE)
target_compile_features(varnhold_flags INTERFACE cxx_std_20)
target_compile_options(varnhold_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Wold-style-cast -Woverloaded-virtual -Wimplicit-fallthrough
    -Wno-missing-field-initializers) # designated initialisers leave the rest to their defaults
if(NOT APPLE)
    # A Mac's compiler has never seen this code: what it finds strange mustn't stand in the way.
    target_compile_options(varnhold_flags INTERFACE -Werror)
endif()
target_compile_definitions(varnhold_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(VARNHOLD_SANITIZE)
    target_compile_options(varnhold_flags INTERFACE
        -fsanitize=${VARNHOLD_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(varnhold_flags INTERFACE -fsanitize=${VARNHOLD_SANITIZE})
endif()
if(VARNHOLD_FUZZ)
    # All our code tells the fuzzer where it has been; only its own programs have its main.
    target_compile_options(varnhold_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# varnhold_library(NAME SOURCES ... LINKS ...): the static library of one folder under src/.
function(varnhold_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(varnhold_${name} STATIC ${ARG_SOURCES})
    add_library(varnhold::${name} ALIAS varnhold_${name})
    target_include_directories(varnhold_${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(varnhold_${name} PUBLIC varnhold_flags ${ARG_LINKS})
endfunction()

# varnhold_test(NAME [OWN_HEADERS] [IN_MEMORY] SOURCES ... LINKS ...): one GoogleTest program; each case
# is a test of ctest. OWN_HEADERS is for programs built with other flags than the plain ones (Qt's).
# IN_MEMORY puts temporary homes where a sync costs nothing, if the system has such a place: on a busy
# disk, tests that save a lot would do little but wait.
function(varnhold_test name)
    cmake_parse_arguments(ARG "OWN_HEADERS;IN_MEMORY" "" "SOURCES;LINKS" ${ARGN})
    add_executable(test_${name} ${ARG_SOURCES})
    target_link_libraries(test_${name} PRIVATE varnhold_flags GTest::gmock_main ${ARG_LINKS})
    if(TARGET varnhold_test_headers AND NOT ARG_OWN_HEADERS)
        target_precompile_headers(test_${name} REUSE_FROM varnhold_test_headers)
    endif()
    set_target_properties(test_${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests")
    if(ARG_IN_MEMORY AND IS_DIRECTORY /dev/shm)
        set(environment ENVIRONMENT TMPDIR=/dev/shm)
    endif()
    gtest_discover_tests(test_${name} DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT 600 LABELS unit ${environment})
endfunction()
