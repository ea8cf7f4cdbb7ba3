# What only the project itself has, not a subproject: the documentation that is installed, the target
# `uninstall`, and CPack.

set(COMMONMEDIA_COMPONENTS libraries development tools)

set(COMMONMEDIA_DOC_DIR ${CMAKE_INSTALL_DATADIR}/doc/libcommonmedia-dev
    CACHE STRING "Directory of the documentation, relative to the prefix")
install(
    FILES README.md CHANGELOG.md SECURITY.md commonmedia/DELIBERATE.md
    DESTINATION ${COMMONMEDIA_DOC_DIR}
    COMPONENT development)
install(
    DIRECTORY docs
    DESTINATION ${COMMONMEDIA_DOC_DIR}
    COMPONENT development
    FILES_MATCHING PATTERN "*.md" PATTERN "*.svg")
file(GLOB COMMONMEDIA_EXAMPLES CONFIGURE_DEPENDS examples/*.cpp examples/*.expected)
install(
    FILES ${COMMONMEDIA_EXAMPLES} examples/Makefile
    DESTINATION ${COMMONMEDIA_DOC_DIR}/examples
    COMPONENT development)

list(TRANSFORM COMMONMEDIA_COMPONENTS REPLACE "(.+)" "\"${CMAKE_BINARY_DIR}/install_manifest_\\1.txt\""
     OUTPUT_VARIABLE COMMONMEDIA_COMPONENT_MANIFESTS)
list(JOIN COMMONMEDIA_COMPONENT_MANIFESTS " " COMMONMEDIA_COMPONENT_MANIFESTS)
configure_file(cmake/uninstall.cmake.in uninstall.cmake @ONLY)
add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -P ${CMAKE_CURRENT_BINARY_DIR}/uninstall.cmake)

set(CPACK_GENERATOR TGZ)
set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_IGNORE_FILES "/build/" [[/\.git/]] "__pycache__")
set(CPACK_PACKAGE_CONTACT "the maintainers of commonmedia")
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL ${COMMONMEDIA_COMPONENTS})
include(CPack)
