# What every source file of ours is compiled with: warnings as errors, strict Qt.
set(VELMOR_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
set(VELMOR_DEFINITIONS
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY POINTERHOLDER_TRANSITION=4)

# velmor_sanitize(TARGET)
# The sanitizers, where the build asks for them.
function(velmor_sanitize target)
    if(VELMOR_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
endfunction()

# velmor_defaults(TARGET)
# What every target of ours is compiled with.
function(velmor_defaults target)
    target_compile_options(${target} PRIVATE ${VELMOR_WARNINGS})
    target_compile_definitions(${target} PRIVATE ${VELMOR_DEFINITIONS})
    velmor_sanitize(${target})
endfunction()

# velmor_module(NAME [QML uri] SOURCES file... [QML_FILES file...] [SINGLETONS file...]
#               [RESOURCES file...] [DERIVES_FROM uri...] LINK library...)
# The static library velmor_NAME of the current folder. Headers are included from the top of the
# tree: "engine/ScanEngineClient.h". List every file, headers too: the list is the contents page.
#
# With QML it is also the QML module of that address, which holds the QML_FILES, those in
# SINGLETONS being singletons, and the types that the sources register; a program that shows it
# links velmor_NAMEplugin too. Resources lie beside the module's QML files, under their own paths.
# DERIVES_FROM names the modules that base classes of the registered types are from.
function(velmor_module name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "QML"
        "SOURCES;QML_FILES;SINGLETONS;RESOURCES;DERIVES_FROM;LINK")
    if(arg_QML)
        velmor_qml_library(velmor_${name} ${arg_QML}
            SOURCES ${arg_SOURCES} QML_FILES ${arg_QML_FILES} SINGLETONS ${arg_SINGLETONS}
            RESOURCES ${arg_RESOURCES} DERIVES_FROM ${arg_DERIVES_FROM})
    else()
        add_library(velmor_${name} STATIC ${arg_SOURCES})
        velmor_defaults(velmor_${name})
    endif()
    target_include_directories(velmor_${name} PUBLIC ${CMAKE_SOURCE_DIR})
    target_link_libraries(velmor_${name} PUBLIC ${arg_LINK})
endfunction()

# velmor_qml_library(TARGET uri SOURCES file... QML_FILES file... SINGLETONS file...
#                    RESOURCES file... DERIVES_FROM uri...)
# Part of `velmor_module`. The code that Qt generates from QML files isn't free of warnings, so the
# strictness is put on our files and not on the target.
function(velmor_qml_library target uri)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" ""
        "SOURCES;QML_FILES;SINGLETONS;RESOURCES;DERIVES_FROM")
    set_source_files_properties(${arg_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
    # Files in subfolders have flat resource names: they find each other beside the module's qmldir.
    foreach(file ${arg_QML_FILES} ${arg_SINGLETONS})
        get_filename_component(flat ${file} NAME)
        set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${flat})
    endforeach()
    qt_add_qml_module(${target} STATIC
        URI ${uri}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        DEPENDENCIES QtQuick ${arg_DERIVES_FROM}
        SOURCES ${arg_SOURCES}
        QML_FILES ${arg_QML_FILES} ${arg_SINGLETONS}
        RESOURCES ${arg_RESOURCES})
    set(code ${arg_SOURCES})
    list(FILTER code INCLUDE REGEX "\\.cpp$")
    set_source_files_properties(${code} PROPERTIES
        COMPILE_OPTIONS "${VELMOR_WARNINGS}"
        COMPILE_DEFINITIONS "${VELMOR_DEFINITIONS}")
    velmor_sanitize(${target})
    target_link_libraries(${target} PUBLIC Qt6::Quick)
endfunction()

# velmor_program(NAME SOURCES file... LINK library...)
# A program in the build's bin folder.
function(velmor_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
    add_executable(${name} ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE ${arg_LINK})
    velmor_defaults(${name})
endfunction()
