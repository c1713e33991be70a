include(OmbrixEmbed OPTIONAL)

# A storey: the static library of every .cpp in the folder of the same name. The folder list is
# globbed so that a new module is a new pair of files and nothing else; CONFIGURE_DEPENDS makes the
# build notice it.
function(ombrix_library name)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
    if(NOT sources)
        add_library(${name} INTERFACE)
        list(TRANSFORM ARGN REPLACE "^(PUBLIC|PRIVATE)$" INTERFACE)
        target_link_libraries(${name} ${ARGN})
        target_include_directories(${name} INTERFACE ${CMAKE_CURRENT_SOURCE_DIR})
        return()
    endif()
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} ${ARGN} PRIVATE OmbrixWarnings)
    target_precompile_headers(${name} PRIVATE
        <algorithm> <array> <cstdint> <map> <optional> <span> <string> <string_view> <utility> <vector>)
endfunction()
