# Run by CPack in between installing and packing: adds the copyright and the changelog that every Debian package
# carries, and compresses the manual page.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()

set(package_runtime "${CPACK_APPRUNTIME_DEBIAN_LIBRARY}")
set(package_development libappruntime-dev)
set(package_launcher appruntime-launcher)

file(READ "${CPACK_APPRUNTIME_SOURCE}/LICENSE" licence)
string(REGEX MATCH "Copyright[^\n]*" copyright "${licence}")
string(REGEX REPLACE "Copyright \\(c\\) " "" copyright "${copyright}")
string(REGEX REPLACE "^.*${copyright}\n\n" "" licence "${licence}")
string(STRIP "${licence}" licence)
string(REPLACE "\n\n" "\n.\n" licence "${licence}")
string(REPLACE "\n" "\n " licence "${licence}")
# A changelog wants the zone as a number; SOURCE_DATE_EPOCH makes the date repeatable.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)

foreach(component IN ITEMS runtime development launcher)
    set(papers "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}/usr/share/doc/${package_${component}}")
    file(WRITE "${papers}/copyright"
"Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: AppRuntime

Files: *
Copyright: ${copyright}
License: Expat
 ${licence}
")
    file(COPY "${CPACK_APPRUNTIME_SOURCE}/CHANGELOG.md" DESTINATION "${papers}")
    file(RENAME "${papers}/CHANGELOG.md" "${papers}/changelog")
    file(WRITE "${papers}/changelog.Debian"
"appruntime (${CPACK_APPRUNTIME_DEBIAN_VERSION}) unstable; urgency=medium

  * New release; its changes are in the changelog beside this one.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
endforeach()

file(
    GLOB_RECURSE pages
    "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/changelog"
    "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/changelog.Debian"
    "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/launcher/*.1"
)
execute_process(COMMAND gzip -9nf ${pages} COMMAND_ERROR_IS_FATAL ANY)
