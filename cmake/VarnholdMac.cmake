# What only a Mac's program is made of.
enable_language(OBJCXX)

# varnhold_native_library(NAME SOURCES ... LINKS ...): like varnhold_library, for Objective-C++, which counts
# references by hand: other compilers than a Mac's know no other way.
function(varnhold_native_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(varnhold_${name} STATIC ${ARG_SOURCES})
    add_library(varnhold::${name} ALIAS varnhold_${name})
    target_include_directories(varnhold_${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_compile_options(varnhold_${name} PRIVATE -Wall -Wextra)
    target_link_libraries(varnhold_${name} PUBLIC ${ARG_LINKS} varnhold_cocoa)
endfunction()

add_library(varnhold_cocoa INTERFACE)
target_compile_options(varnhold_cocoa INTERFACE $<$<COMPILE_LANGUAGE:OBJCXX>:-std=gnu++20>)
if(APPLE)
    target_compile_options(varnhold_cocoa INTERFACE $<$<COMPILE_LANGUAGE:OBJCXX>:-fno-objc-arc>)
    target_link_libraries(varnhold_cocoa INTERFACE "-framework Cocoa")
else()
    add_subdirectory("${PROJECT_SOURCE_DIR}/tests/macos/stand_ins" "${PROJECT_BINARY_DIR}/stand_ins")
endif()

set(VARNHOLD_DAEMON_CODE "" CACHE PATH "Folder of the bots' code, to be put into the bundle")

# varnhold_bundle(TARGET): has a program come out as Varnhold.app, a folder of the form that a Mac starts.
function(varnhold_bundle target)
    set(contents "${PROJECT_BINARY_DIR}/Varnhold.app/Contents")
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME Varnhold RUNTIME_OUTPUT_DIRECTORY "${contents}/MacOS")
    configure_file("${PROJECT_SOURCE_DIR}/packaging/macos/Info.plist.in" "${contents}/Info.plist" @ONLY)
    configure_file("${PROJECT_SOURCE_DIR}/packaging/macos/AppIcon.icns" "${contents}/Resources/AppIcon.icns" COPYONLY)
    if(VARNHOLD_DAEMON_CODE)
        add_custom_command(TARGET ${target} POST_BUILD
            COMMAND ${CMAKE_COMMAND} -E rm -rf "${contents}/Resources/daemon"
            COMMAND ${CMAKE_COMMAND} -E copy_directory "${VARNHOLD_DAEMON_CODE}" "${contents}/Resources/daemon"
            VERBATIM)
    endif()
    install(DIRECTORY "${PROJECT_BINARY_DIR}/Varnhold.app" DESTINATION . USE_SOURCE_PERMISSIONS)
endfunction()
