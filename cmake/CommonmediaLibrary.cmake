# What the libraries of this project have in common: sources in src, public headers in include, what they export,
# their version, how they are installed.
#
#   commonmedia_library(TARGET COMPONENT [PRIVATE_NAMES HEADER...] [REQUIRES LIBRARY...])
#
# COMPONENT is the name in commonmedia::COMPONENT. PRIVATE_NAMES are public headers whose names other projects
# use as well: they are installed for inclusion as <commonmedia/NAME> alone. REQUIRES are the packages of
# pkg-config that this one builds on.

include(CMakePackageConfigHelpers)

# Until 1.0 a minor version may change the interface, so it belongs to the name that programs are linked with.
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(COMMONMEDIA_SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
else()
    set(COMMONMEDIA_SOVERSION ${PROJECT_VERSION_MAJOR})
endif()
set(COMMONMEDIA_HEADER_DIR ${CMAKE_INSTALL_INCLUDEDIR}/commonmedia)
set(COMMONMEDIA_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/commonmedia)

function(commonmedia_library target component)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "PRIVATE_NAMES;REQUIRES")
    file(GLOB sources CONFIGURE_DEPENDS src/*.cpp src/*.h)
    add_library(${target} ${sources})
    add_library(commonmedia::${component} ALIAS ${target})
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include>)
    commonmedia_target_defaults(${target})
    set_target_properties(
        ${target}
        PROPERTIES VERSION ${PROJECT_VERSION}
                   SOVERSION ${COMMONMEDIA_SOVERSION}
                   EXPORT_NAME ${component}
                   POSITION_INDEPENDENT_CODE ON
                   CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "SHARED_LIBRARY")
        target_compile_definitions(${target} PRIVATE COMMONMEDIA_DLL)
        if(NOT WIN32 AND NOT APPLE)
            # Instances of the standard library's templates are everybody's; they stay inside.
            set(map ${PROJECT_SOURCE_DIR}/cmake/standard-library.map)
            target_link_options(${target} PRIVATE -Wl,--version-script=${map} -Wl,--no-undefined)
            set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
        endif()
    endif()
    if(COMMONMEDIA_SANITIZE)
        # The tests are compiled without optimisation, which takes a quarter of the time; what they test is
        # not, so that the large inputs stay quick.
        target_compile_options(${target} PRIVATE -O1)
    endif()
    if(COMMONMEDIA_COVERAGE)
        # The libraries alone are counted; whoever links them brings the runtime along. Threads count one by
        # one.
        target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
        target_link_options(${target} PUBLIC --coverage)
    endif()
    if(COMMONMEDIA_INSTALL)
        commonmedia_install_library(${target} ${component} ${type})
    endif()
endfunction()

# Headers: every name as <commonmedia/NAME>, and NAME alone unless it is a private name. The directory of the
# headers therefore holds a directory `commonmedia` with one-line headers, in the tree as well as installed.
function(commonmedia_install_library target component type)
    file(GLOB headers include/*.h include/commonmedia/*.h)
    foreach(name IN LISTS arg_PRIVATE_NAMES)
        list(FILTER headers EXCLUDE REGEX "/${name}$")
        install(FILES include/${name} DESTINATION ${COMMONMEDIA_HEADER_DIR}/commonmedia COMPONENT development)
    endforeach()
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS include FILES ${headers})
    install(
        TARGETS ${target}
        EXPORT ${target}Targets
        LIBRARY COMPONENT libraries NAMELINK_COMPONENT development
        ARCHIVE COMPONENT development
        RUNTIME COMPONENT libraries
        FILE_SET HEADERS DESTINATION ${COMMONMEDIA_HEADER_DIR} COMPONENT development)
    install(
        EXPORT ${target}Targets
        NAMESPACE commonmedia::
        DESTINATION ${COMMONMEDIA_PACKAGE_DIR}
        COMPONENT development)

    set(pc_name ${target})
    string(REPLACE "_" "-" pc_name ${pc_name})
    set(pc_requires ${arg_REQUIRES})
    set(pc_private "")
    if(type STREQUAL "SHARED_LIBRARY")
        set(pc_private -lcrypto)
    else()
        list(APPEND pc_requires libcrypto)
    endif()
    list(JOIN pc_requires " " pc_requires)
    set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE pc_libdir)
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig OUTPUT_VARIABLE pc_prefix)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${pc_name}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${pc_name}.pc DESTINATION ${pc_dir} COMPONENT development)
endfunction()

# The package that find_package reads, after every library was added.
function(commonmedia_install_package)
    set(COMMONMEDIA_IS_STATIC TRUE)
    get_target_property(type commonmedia TYPE)
    if(type STREQUAL "SHARED_LIBRARY")
        set(COMMONMEDIA_IS_STATIC FALSE)
    endif()
    configure_package_config_file(
        ${PROJECT_SOURCE_DIR}/cmake/commonmediaConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/commonmediaConfig.cmake
        INSTALL_DESTINATION ${COMMONMEDIA_PACKAGE_DIR}
        NO_SET_AND_CHECK_MACRO)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/commonmediaConfigVersion.cmake.in commonmediaConfigVersion.cmake
                   @ONLY)
    install(
        FILES ${CMAKE_CURRENT_BINARY_DIR}/commonmediaConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/commonmediaConfigVersion.cmake
        DESTINATION ${COMMONMEDIA_PACKAGE_DIR}
        COMPONENT development)
endfunction()
