# Long constant texts are files in the folder texts/ of their library. The build turns each into a
# constant with the same bytes, and computes its digest.
#
#   ombrix_embed(OmbrixAnswerKit)
#
# does so for every file in OmbrixAnswerKit/texts/ and its sub-folders. For
# OmbrixAnswerKit/texts/skills/weekly/SKILL.md, sources of that library can then write
#
#   #include "embedded/OmbrixAnswerKit/skills/weekly/SKILL.md.h"
#
#   Embedded::OmbrixAnswerKit::skillsWeeklySKILLMd         the bytes, a constexpr std::string_view
#   Embedded::OmbrixAnswerKit::skillsWeeklySKILLMdSHA256   their SHA-256 in lower-case hexadecimal
#
# The constant's name is the path without its punctuation: the first letter is lower-cased, a letter
# after punctuation upper-cased. The namespace, inside ombrix, is the library's name, so two
# libraries may each have a text of the same name. The header is rewritten when its file changes.

# When CMake runs this file as a script, it writes one header. -D sets SOURCE (the text), HEADER
# (the file to write), NAME (the constant), SPACE (the namespace) and ORIGIN (the text's path, for
# the comment).
if(CMAKE_SCRIPT_MODE_FILE)
    file(READ "${SOURCE}" bytes HEX)
    file(SHA256 "${SOURCE}" digest)
    string(LENGTH "${bytes}" size)
    math(EXPR size "${size} / 2")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" bytes "${bytes}")
    # Up to 24 bytes on a line of the header; a byte is four characters, as in \x41.
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

# Sets `result` to the name of the constant for the text at `path`.
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
    set(folder ${PROJECT_SOURCE_DIR}/${target}/texts)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${folder} ${folder}/*)
    set(names "")
    foreach(file IN LISTS files)
        set(source ${folder}/${file})
        set(header ${PROJECT_BINARY_DIR}/generated/embedded/${target}/${file}.h)
        ombrix_embedded_name("${file}" name)
        if(name IN_LIST names)
            message(FATAL_ERROR "${target}/texts: two files would become the constant ${name}")
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
