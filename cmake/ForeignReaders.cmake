# Libraries of other projects that read session descriptions: peers of the tests and of the example call.
#
#   foreign::re      libre, with the definitions that Debian builds it with: without HAVE_INET6 the struct of an
#                    address has another size than in the library
#   foreign::sofia   Sofia-SIP
#   foreign::osip    the parser of oSIP; its pkg-config file names one that Debian does not ship
#
# A target exists when its library does. TSHARK is the program, or TSHARK-NOTFOUND.

find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
    pkg_check_modules(RE QUIET IMPORTED_TARGET libre)
    pkg_check_modules(SOFIA QUIET IMPORTED_TARGET sofia-sip-ua)
endif()
if(TARGET PkgConfig::RE AND NOT TARGET foreign::re)
    add_library(foreign_re INTERFACE)
    target_link_libraries(foreign_re INTERFACE PkgConfig::RE)
    target_compile_definitions(foreign_re INTERFACE HAVE_INTTYPES_H HAVE_STDBOOL_H HAVE_INET6)
    add_library(foreign::re ALIAS foreign_re)
endif()
if(TARGET PkgConfig::SOFIA AND NOT TARGET foreign::sofia)
    add_library(foreign_sofia INTERFACE)
    target_link_libraries(foreign_sofia INTERFACE PkgConfig::SOFIA)
    add_library(foreign::sofia ALIAS foreign_sofia)
endif()
find_library(OSIP_PARSER osipparser2)
find_path(OSIP_INCLUDE osipparser2/sdp_message.h)
if(OSIP_PARSER AND OSIP_INCLUDE AND NOT TARGET foreign::osip)
    add_library(foreign_osip INTERFACE)
    target_link_libraries(foreign_osip INTERFACE ${OSIP_PARSER})
    target_include_directories(foreign_osip SYSTEM INTERFACE ${OSIP_INCLUDE})
    add_library(foreign::osip ALIAS foreign_osip)
endif()
find_program(TSHARK tshark)
