# Long constant texts are files in the folder texts/ of their library. The build makes each a constant,
# byte for byte, with its digest:
#
#   ombrix_embed(OmbrixAnswerKit)
#
# takes every file below OmbrixAnswerKit/texts/ and gives the target's sources, for
# OmbrixAnswerKit/texts/skills/weekly/SKILL.md,
#
#   #include "embedded/OmbrixAnswerKit/skills/weekly/SKILL.md.h"
#
#   ombrix::Embedded::OmbrixAnswerKit::skillsWeeklySKILLMd         the bytes, a constexpr std::string_view
#   ombrix::Embedded::OmbrixAnswerKit::skillsWeeklySKILLMdSHA256   their SHA-256 in lower-case hexadecimal
#
# The constant's name is the path with its first letter lower-cased; a letter after anything but a
# letter or digit is upper-cased. The namespace is the target's, so two libraries may have texts of
# one name. A header is written again when its file changes.

# Run as a script, this file writes one header: SOURCE, HEADER, NAME, SPACE and
# ORIGIN are given with -D.
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

namespace ombrix::Embedded::${SPACE} {
inline constexpr std::string_view ${NAME}{
    \"${bytes}\",
    ${size}};
inline constexpr std::string_view ${NAME}SHA256 =
    \"${digest}\";
}  // namespace ombrix::Embedded::${SPACE}
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
    set(folder ${CMAKE_CURRENT_SOURCE_DIR}/${target}/texts)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${folder} ${folder}/*)
    set(names "")
    foreach(file IN LISTS files)
        set(source ${folder}/${file})
        set(header ${PROJECT_BINARY_DIR}/generated/embedded/${target}/${file}.h)
        ombrix_embedded_name("${file}" name)
        if(name IN_LIST names)
            message(FATAL_ERROR "${target}/texts: two files give the constant ${name}")
        endif()
        list(APPEND names ${name})
        add_custom_command(
            OUTPUT ${header}
            COMMAND ${CMAKE_COMMAND} -D SOURCE=${source} -D HEADER=${header} -D NAME=${name}
                -D SPACE=${target} -D ORIGIN=${target}/texts/${file} -P ${OMBRIX_EMBED_SCRIPT}
            DEPENDS ${source} ${OMBRIX_EMBED_SCRIPT}
            COMMENT "Embedding ${target}/texts/${file}"
            VERBATIM)
        target_sources(${target} PRIVATE ${header})
    endforeach()
    target_include_directories(${target} PRIVATE ${PROJECT_BINARY_DIR}/generated)
endfunction()
