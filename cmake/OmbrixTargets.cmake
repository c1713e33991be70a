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

# Makes a program start quickly, in Release builds; docs/dependencies.md says what each step brings.
# What Debian has as an archive is linked statically, the C++ library too, and simdjson is loaded when
# it is needed. The addresses of our own tables are relocated from a packed list, in a few hundred
# words instead of 17,600 entries; all of them are read-only before `main`.
function(ombrix_quick_start program)
    if(NOT CMAKE_BUILD_TYPE STREQUAL "Release" OR NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        return()
    endif()
    foreach(property IMPORTED_SONAME IMPORTED_SONAME_RELEASE IMPORTED_SONAME_RELWITHDEBINFO
            IMPORTED_SONAME_NONE)
        get_target_property(soname simdjson::simdjson ${property})
        if(soname)
            break()
        endif()
    endforeach()
    if(NOT soname)
        return()  # it is an archive
    endif()
    target_sources(${program} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/program/SimdjsonOnDemand.cpp)
    set_property(SOURCE ${PROJECT_SOURCE_DIR}/cmake/program/SimdjsonOnDemand.cpp
        TARGET_DIRECTORY ${program} PROPERTY COMPILE_DEFINITIONS OMBRIX_SIMDJSON="${soname}")
    target_link_libraries(${program} PRIVATE ${CMAKE_DL_LIBS})
    target_link_options(${program} PRIVATE
        -static-libstdc++ -static-libgcc
        -Wl,--as-needed -Wl,--gc-sections -Wl,-z,pack-relative-relocs -Wl,-z,now)
endfunction()
