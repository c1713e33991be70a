# What `cmake --install` and `cpack` put where. Two components:
#
#   runtime      the programs, their manual pages and completions, the documentation and the
#                example library
#   development  the static libraries, their headers and the CMake package Ombrix
#
# `cpack -G DEB` makes one Debian package of each: ombrix-cli and libombrix-dev.
include(CMakePackageConfigHelpers)

set(layers OmbrixPlatform OmbrixCore OmbrixMarkdownKit OmbrixAnswerKit OmbrixMemoryKit)

# ---- runtime ----------------------------------------------------------------------------------

set(documentation ${CMAKE_INSTALL_DATAROOTDIR}/doc/ombrix-cli)
install(FILES README.md DESTINATION ${documentation} COMPONENT runtime)
install(DIRECTORY docs DESTINATION ${documentation} COMPONENT runtime)
# Below the same folder names as in the source tree, so that the commands of the documentation work
# from ${documentation} as they do from there.
install(DIRECTORY examples DESTINATION ${documentation} COMPONENT runtime
    PATTERN "*.cpp" EXCLUDE PATTERN "*.db*" EXCLUDE PATTERN ".gitignore" EXCLUDE)

# ---- development ------------------------------------------------------------------------------

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/Ombrix)
foreach(layer IN LISTS layers)
    string(REPLACE "Ombrix" "" name ${layer})
    set_target_properties(${layer} PROPERTIES EXPORT_NAME ${name})
    install(DIRECTORY ${layer} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ombrix
        COMPONENT development FILES_MATCHING PATTERN "*.h" PATTERN Gio.h EXCLUDE PATTERN texts EXCLUDE)
endforeach()
install(TARGETS ${layers} EXPORT OmbrixTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(EXPORT OmbrixTargets NAMESPACE Ombrix:: DESTINATION ${package} COMPONENT development)
configure_package_config_file(cmake/package/OmbrixConfig.cmake.in
    ${PROJECT_BINARY_DIR}/OmbrixConfig.cmake INSTALL_DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OmbrixConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OmbrixConfig.cmake
    ${PROJECT_BINARY_DIR}/OmbrixConfigVersion.cmake
    DESTINATION ${package} COMPONENT development)
# Files that the package shares with this build.
install(FILES cmake/OmbrixICU.cmake cmake/OmbrixDependencies.cmake
    DESTINATION ${package} COMPONENT development)

# ---- Debian packages --------------------------------------------------------------------------

set(CPACK_PACKAGE_NAME ombrix-cli)
set(CPACK_PACKAGE_VENDOR Ombrix)
set(CPACK_PACKAGE_CONTACT "Ombrix <ombrix@users.noreply.invalid>")
set(CPACK_COMPONENTS_ALL runtime development)
set(debianPackages ombrix-cli libombrix-dev)  # of each component
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ombrix-cli)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
# Loaded while it runs, when JSON is read (cmake/program/SimdjsonOnDemand.cpp).
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS libsimdjson14)
# Loaded while it runs, for the Trash and the session bus; the rest works without.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS libglib2.0-0)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
"answers from a local library of meetings, for agents and scripts
ombrix-cli reads one person's folder of meeting transcripts and the local
database of the desktop application. It answers questions with ranked and
cited sources, imports other tools' exports and lists prepared next moves.
It uses no network and calls no model.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libombrix-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libicu-dev, libsqlite3-dev, libsimdjson-dev, nettle-dev, libplist-dev, pkg-config")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"static libraries of the Ombrix meeting engine
The libraries that hold the logic of ombrix-cli, with their headers and a
CMake package, for applications that link them.")

# What Debian asks of every package. The changelog is compressed without a time in it, so that the
# same source gives the same bytes.
configure_file(cmake/package/changelog.in ${PROJECT_BINARY_DIR}/package/changelog.Debian @ONLY)
add_custom_command(
    OUTPUT ${PROJECT_BINARY_DIR}/package/changelog.Debian.gz
    COMMAND ${OMBRIX_GZIP} -9nkf ${PROJECT_BINARY_DIR}/package/changelog.Debian
    DEPENDS ${PROJECT_BINARY_DIR}/package/changelog.Debian
    VERBATIM)
add_custom_target(OmbrixChangelog ALL DEPENDS ${PROJECT_BINARY_DIR}/package/changelog.Debian.gz)
foreach(component package IN ZIP_LISTS CPACK_COMPONENTS_ALL debianPackages)
    install(FILES cmake/package/copyright ${PROJECT_BINARY_DIR}/package/changelog.Debian.gz
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component})
endforeach()
include(CPack)
