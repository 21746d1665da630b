include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/AppRuntime")
set(include_folder "${CMAKE_INSTALL_INCLUDEDIR}/appruntime")

if(BUILD_SHARED_LIBS AND NOT WIN32)
    # The launcher finds its library beside itself, wherever the package is put.
    file(RELATIVE_PATH libraries "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
    set_target_properties(launcher PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
endif()

install(TARGETS launcher RUNTIME COMPONENT launcher)
if(NOT WIN32)
    install(
        FILES "${PROJECT_SOURCE_DIR}/launcher/launcher.1"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/man1"
        COMPONENT launcher
    )
    install(
        FILES "${PROJECT_SOURCE_DIR}/launcher/ja/launcher.1"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/ja/man1"
        COMPONENT launcher
    )
endif()
install(
    TARGETS AppRuntime
    EXPORT AppRuntimeTargets
    RUNTIME COMPONENT runtime
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
)

# The headers that programs include, in the same folders as in the tree: one #include line works for both.
foreach(header IN ITEMS
        core/appruntime.h
        fields/inputmode.h
        fields/scancursor.h
        files/csvrecord.h
        files/textchannels.h
        files/versioninfo.h
)
    get_filename_component(folder "${header}" DIRECTORY)
    install(
        FILES "${PROJECT_SOURCE_DIR}/runtime/${header}"
        DESTINATION "${include_folder}/runtime/${folder}"
        COMPONENT development
    )
endforeach()
install(
    FILES "${PROJECT_BINARY_DIR}/generated/runtime/core/appruntime_export.h"
    DESTINATION "${include_folder}/runtime/core"
    COMPONENT development
)

install(
    EXPORT AppRuntimeTargets
    NAMESPACE AppRuntime::
    DESTINATION "${package_folder}"
    COMPONENT development
)
configure_package_config_file(
    cmake/AppRuntimeConfig.cmake.in
    "${PROJECT_BINARY_DIR}/AppRuntimeConfig.cmake"
    INSTALL_DESTINATION "${package_folder}"
)
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/AppRuntimeConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion
)
install(
    FILES
        "${PROJECT_BINARY_DIR}/AppRuntimeConfig.cmake"
        "${PROJECT_BINARY_DIR}/AppRuntimeConfigVersion.cmake"
    DESTINATION "${package_folder}"
    COMPONENT development
)

# For builds without CMake. Like the CMake package, it works wherever it is put.
file(RELATIVE_PATH prefix_from_pc "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
set(static_cflags "")
if(NOT BUILD_SHARED_LIBS)
    set(static_cflags " -DAPPRUNTIME_STATIC")
endif()
configure_file(cmake/appruntime.pc.in "${PROJECT_BINARY_DIR}/appruntime.pc" @ONLY)
install(
    FILES "${PROJECT_BINARY_DIR}/appruntime.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
    COMPONENT development
)

# What a programmer reads. Pages lead to the examples and the list of changes as they do in the tree.
set(document_folder "${CMAKE_INSTALL_DATADIR}/doc/appruntime")
install(
    DIRECTORY docs/
    DESTINATION "${document_folder}/guides"
    COMPONENT development
    FILES_MATCHING
    PATTERN "*.md"
    PATTERN "*.svg"
    PATTERN "decisions.md" EXCLUDE
    PATTERN "design.md" EXCLUDE
)
install(
    DIRECTORY examples/
    DESTINATION "${document_folder}/examples"
    COMPONENT development
    FILES_MATCHING
    PATTERN "*.cpp"
    PATTERN "*.h"
    PATTERN "*.csv"
    PATTERN "*.md"
)
# Made by scripts/docs, for Qt Creator and Qt Assistant.
install(
    FILES "${PROJECT_SOURCE_DIR}/build/docs/appruntime.qch"
    DESTINATION "${document_folder}"
    COMPONENT development
    OPTIONAL
)

# For archives; a distribution's packages have papers of their own form.
install(
    FILES "${PROJECT_SOURCE_DIR}/LICENSE" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
    DESTINATION "${document_folder}"
    COMPONENT papers
)
