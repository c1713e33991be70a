# The libraries that Ombrix links. This build and the installed CMake package both include this
# file, so that a program which links an installed library finds the same ones.
find_package(PkgConfig REQUIRED)
include(${CMAKE_CURRENT_LIST_DIR}/OmbrixICU.cmake)
find_package(SQLite3 REQUIRED)
find_package(Threads REQUIRED)
find_package(simdjson REQUIRED)
pkg_check_modules(NETTLE REQUIRED IMPORTED_TARGET nettle)
pkg_check_modules(PLIST REQUIRED IMPORTED_TARGET libplist-2.0)

# The target TARGET: the archive libNAME.a and what it needs in Release builds, else SHARED.
macro(ombrix_archive target shared name)
    add_library(${target} INTERFACE IMPORTED)
    find_library(OMBRIX_ARCHIVE_${name} lib${name}.a)
    if(CMAKE_BUILD_TYPE STREQUAL "Release" AND OMBRIX_ARCHIVE_${name})
        target_link_libraries(${target} INTERFACE ${OMBRIX_ARCHIVE_${name}} ${ARGN})
    else()
        target_link_libraries(${target} INTERFACE ${shared})
    endif()
endmacro()
ombrix_archive(Ombrix::SQLite SQLite::SQLite3 sqlite3 m ${CMAKE_DL_LIBS})
ombrix_archive(Ombrix::Nettle PkgConfig::NETTLE nettle)
