# velmor_defaults(TARGET)
# What every target of ours is compiled with: warnings as errors, strict Qt, the sanitizers.
function(velmor_defaults target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
        QT_NO_CAST_FROM_BYTEARRAY POINTERHOLDER_TRANSITION=4)
    if(VELMOR_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
endfunction()

# velmor_module(NAME SOURCES file... LINK library...)
# The static library velmor_NAME of the current folder. Headers are included from the top of the
# tree: "engine/ScanEngineClient.h". List every file, headers too: the list is the contents page.
function(velmor_module name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
    add_library(velmor_${name} STATIC ${arg_SOURCES})
    target_include_directories(velmor_${name} PUBLIC ${CMAKE_SOURCE_DIR})
    target_link_libraries(velmor_${name} PUBLIC ${arg_LINK})
    velmor_defaults(velmor_${name})
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
