# The libraries that Ombrix links. This build and the installed CMake package both include this
# file, so that a program which links an installed library finds the same ones.
find_package(PkgConfig REQUIRED)
include(${CMAKE_CURRENT_LIST_DIR}/OmbrixICU.cmake)
find_package(SQLite3 REQUIRED)
find_package(Threads REQUIRED)
find_package(simdjson REQUIRED)
pkg_check_modules(NETTLE REQUIRED IMPORTED_TARGET nettle)
pkg_check_modules(PLIST REQUIRED IMPORTED_TARGET libplist-2.0)
