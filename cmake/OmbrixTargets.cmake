include(OmbrixEmbed)

# One layer: a static library of every .cpp file in the folder NAME and its sub-folders, with the
# texts in NAME/texts/ (see OmbrixEmbed). What follows NAME is passed to target_link_libraries.
#
#   ombrix_library(NAME PUBLIC ... PRIVATE ...)
#
# The sources are globbed with CONFIGURE_DEPENDS: to add a module, add its two files. main.cpp is
# left out: it belongs to an executable, so that tests can link everything else.
function(ombrix_library name)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${name}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:include/ombrix>)
    target_compile_features(${name} PUBLIC cxx_std_20)
    target_link_libraries(${name} ${ARGN} PRIVATE $<BUILD_INTERFACE:OmbrixWarnings>)
    ombrix_embed(${name})
    target_precompile_headers(${name} PRIVATE
        <algorithm> <array> <cstdint> <map> <optional> <span> <string> <string_view> <utility> <vector>)
endfunction()
