# Archives of everything, and a set of Debian packages: the library that programs need to run, what they need to be
# built, and the launcher. scripts/package makes both.
set(CPACK_PACKAGE_NAME appruntime)
set(CPACK_PACKAGE_VENDOR "The AppRuntime authors")
# Reaches nobody. Whoever hands packages on gives an address of their own: scripts/package takes DEBEMAIL.
set(CPACK_PACKAGE_CONTACT "The AppRuntime authors <appruntime@localhost>" CACHE STRING "Maintainer of the packages")
# Left empty, or it would stand as the first line of every Debian package's own description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_FILE_NAME
    "appruntime-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}"
)
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE
)

# A program needs a library at least as new as the one it was built with, and the launcher is such a program. Headers
# and library are one set: the link that programs are linked with leads to the file of this very version.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development launcher)
set(CPACK_DEBIAN_PACKAGE_RELEASE 0app1) # a 0 in front leaves the revisions from 1 on to Debian itself
set(debian_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(debian_library "libappruntime${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE appruntime)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${debian_library}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
# A trigger tells the loader about the library. CPack would write two scripts for that, unless we name our own; it
# leaves out files that do not exist.
file(WRITE "${PROJECT_BINARY_DIR}/triggers" "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_BINARY_DIR}/triggers;no/postinst;no/postrm")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "shared runtime of a family of business programs
Settings, trace, running of programs, text files and records, and
Japanese-aware texts, dates, numbers and check digits for programs on Qt."
)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libappruntime-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${debian_library} (= ${debian_version}), qt6-base-dev (>= 6.4)"
)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "shared runtime of a family of business programs (development)
Headers of the library, its CMake package and its pkg-config file, with the
guides and examples, for those who write programs on it."
)

set(CPACK_DEBIAN_LAUNCHER_PACKAGE_NAME appruntime-launcher)
set(CPACK_DEBIAN_LAUNCHER_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_LAUNCHER_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LAUNCHER_PACKAGE_DEPENDS "${debian_library} (>= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/runtime")
set(CPACK_COMPONENT_LAUNCHER_DESCRIPTION
    "console launcher for a family of business programs
Prints a banner and the command line, runs a program for at most 30
seconds and drops its output."
)

# What every Debian package carries beside its files is made when the set is.
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/debian-papers.cmake")
set(CPACK_APPRUNTIME_SOURCE "${PROJECT_SOURCE_DIR}")
set(CPACK_APPRUNTIME_DEBIAN_VERSION "${debian_version}")
set(CPACK_APPRUNTIME_DEBIAN_LIBRARY "${debian_library}")

include(CPack)
