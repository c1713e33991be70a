# Long constant texts stand in files of their own beside the code and become constants at build time,
# byte for byte, each with its digest:
#
#   ombrix_embed(OmbrixAnswerKit FILES Greeting.md skills/weekly/SKILL.md)
#
# takes the files from the target's folder and gives the target's sources
#
#   #include "embedded/OmbrixAnswerKit/Greeting.md.h"
#
#   ombrix::Embedded::greetingMd         the bytes, a constexpr std::string_view
#   ombrix::Embedded::greetingMdSHA256   their SHA-256 in lower-case hexadecimal
#
# The constant's name is the path with its first letter small and every letter behind another sign
# than a letter or digit large: skills/weekly/SKILL.md is `skillsWeeklySKILLMd`. A header is written
# again when its file changes.

# Run as a script, this file writes one header: SOURCE, HEADER and NAME are given with -D.
if(CMAKE_SCRIPT_MODE_FILE)
    file(READ "${SOURCE}" bytes HEX)
    file(SHA256 "${SOURCE}" digest)
    string(LENGTH "${bytes}" size)
    math(EXPR size "${size} / 2")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" bytes "${bytes}")
    # A line of the header holds up to 24 bytes, four signs each.
    string(REPEAT "...." 24 line)
    string(REGEX REPLACE "(${line})" "\\1\"\n    \"" bytes "${bytes}")
    file(WRITE "${HEADER}"
"// Written by the build from ${ORIGIN}.
#pragma once

#include <string_view>

namespace ombrix::Embedded {
inline constexpr std::string_view ${NAME}{
    \"${bytes}\",
    ${size}};
inline constexpr std::string_view ${NAME}SHA256 =
    \"${digest}\";
}  // namespace ombrix::Embedded
")
    return()
endif()

set(OMBRIX_EMBED_SCRIPT ${CMAKE_CURRENT_LIST_FILE})

# A constant's name for a path; see above.
function(ombrix_embedded_name path result)
    string(REGEX MATCHALL "[A-Za-z0-9]+" words "${path}")
    set(name "")
    foreach(word IN LISTS words)
        string(SUBSTRING "${word}" 0 1 first)
        string(SUBSTRING "${word}" 1 -1 rest)
        if(name STREQUAL "")
            string(TOLOWER "${first}" first)
        else()
            string(TOUPPER "${first}" first)
        endif()
        string(APPEND name "${first}${rest}")
    endforeach()
    set(${result} "${name}" PARENT_SCOPE)
endfunction()

function(ombrix_embed target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "FILES")
    if(NOT arg_FILES OR arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "ombrix_embed(${target} FILES file ...)")
    endif()
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "INTERFACE_LIBRARY")  # no source yet that could include a header
        return()
    endif()
    foreach(file IN LISTS arg_FILES)
        set(source ${CMAKE_CURRENT_SOURCE_DIR}/${target}/${file})
        set(header ${PROJECT_BINARY_DIR}/generated/embedded/${target}/${file}.h)
        ombrix_embedded_name("${file}" name)
        add_custom_command(
            OUTPUT ${header}
            COMMAND ${CMAKE_COMMAND} -D SOURCE=${source} -D HEADER=${header} -D NAME=${name}
                -D ORIGIN=${target}/${file} -P ${OMBRIX_EMBED_SCRIPT}
            DEPENDS ${source} ${OMBRIX_EMBED_SCRIPT}
            COMMENT "Embedding ${target}/${file}"
            VERBATIM)
        target_sources(${target} PRIVATE ${header})
    endforeach()
    target_include_directories(${target} PRIVATE ${PROJECT_BINARY_DIR}/generated)
endfunction()
