include(OmbrixEmbed)

# A layer: the static library of every .cpp in the folder of its name and in the folders inside it.
# The list is globbed, so a new module is a new pair of files and nothing else; CONFIGURE_DEPENDS
# makes the build notice it.
function(ombrix_library name)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} ${ARGN} PRIVATE OmbrixWarnings)
    target_precompile_headers(${name} PRIVATE
        <algorithm> <array> <cstdint> <map> <optional> <span> <string> <string_view> <utility> <vector>)
endfunction()
