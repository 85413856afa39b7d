# The Debian packages, made by CPack from one build tree: one package a component.
#
#   provider   kesto-fcip-provider    the library, its classes and registrations, register-provider
#   server     kesto-cimserver        the CIM server and its systemd unit
#   emulator   kesto-switch-emulator  the emulated switch, in a folder of its own, and kesto-switch
#   documents  kesto-fcip-doc         the documents, in the folders that their links expect
#
# The preset `package` configures for it; tools/package builds and checks them.
set(package_of_provider kesto-fcip-provider)
set(package_of_server kesto-cimserver)
set(package_of_emulator kesto-switch-emulator)
set(package_of_documents kesto-fcip-doc)
set(pages_of_provider register-provider.8)
set(pages_of_server kesto-cimserver.8 kesto-cimserver-certificate.8 kesto-cimserver-user.8)
set(pages_of_emulator kesto-switch.1)

find_program(GZIP gzip REQUIRED)
# Gzips FILE, in which @PROJECT_VERSION@ and the like are replaced, into the build tree as NAME.gz.
function(fcip_compressed file name)
    configure_file(${file} ${name} @ONLY)
    execute_process(COMMAND ${GZIP} -9nfk ${CMAKE_CURRENT_BINARY_DIR}/${name} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# The component's page or pages, its change log and its copyright.
function(fcip_install_papers component)
    set(package ${package_of_${component}})
    foreach(page IN LISTS pages_of_${component})
        string(REGEX REPLACE ".*\\." "" section ${page})
        fcip_compressed(man/${page} ${page})
        install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${page}.gz
                DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT ${component})
    endforeach()
    set(folder ${CMAKE_INSTALL_DATADIR}/doc/${package})
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz DESTINATION ${folder} COMPONENT ${component})
    install(FILES debian/copyright DESTINATION ${folder} COMPONENT ${component})
    if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/${package}.lintian-overrides)
        install(FILES debian/${package}.lintian-overrides RENAME ${package}
                DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT ${component})
    endif()
endfunction()

fcip_compressed(debian/changelog changelog)
fcip_install_papers(provider)
fcip_install_papers(documents)

# The documents keep their folders, so that their links lead where they lead in the sources.
set(documents ${CMAKE_INSTALL_DATADIR}/doc/kesto-fcip-doc)
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md
        DESTINATION ${documents} COMPONENT documents)
foreach(folder docs emulator emulator/examples platform schema)
    file(GLOB files CONFIGURE_DEPENDS
         ${PROJECT_SOURCE_DIR}/${folder}/*.md ${PROJECT_SOURCE_DIR}/${folder}/*.json)
    list(APPEND files ${PROJECT_SOURCE_DIR}/${folder}/platform_services.h)
    list(FILTER files EXCLUDE REGEX "(docs|emulator|examples|schema)/platform_services.h$")
    install(FILES ${files} DESTINATION ${documents}/${folder} COMPONENT documents)
endforeach()

set(components provider documents)
if(FCIP_BUILD_SERVER)
    list(APPEND components server)
    fcip_install_papers(server)
    install(FILES systemd/kesto-cimserver.service DESTINATION lib/systemd/system COMPONENT server)
    install(FILES systemd/kesto-cimserver.default RENAME kesto-cimserver
            DESTINATION ${CMAKE_INSTALL_FULL_SYSCONFDIR}/default COMPONENT server)
    install(DIRECTORY DESTINATION ${CMAKE_INSTALL_FULL_SYSCONFDIR}/kesto-cimserver COMPONENT server)
endif()
if(FCIP_BUILD_EMULATOR)
    list(APPEND components emulator)
    fcip_install_papers(emulator)
    configure_file(systemd/emulator.conf.in emulator.conf @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/emulator.conf
            DESTINATION lib/systemd/system/kesto-cimserver.service.d COMPONENT emulator)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kesto-fcip-provider)
set(CPACK_PACKAGE_VENDOR KESTO)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_CONTACT "FCIP provider maintainers <fcip@kesto.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE i386)
endif()
# libkestoplatform.so.1 is the switch's own and in no package's dependencies; here its stand-in is found.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
foreach(component IN LISTS components)
    string(TOUPPER ${component} COMPONENT)
    set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME ${package_of_${component}})
    set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_SECTION admin)
endforeach()

set(CPACK_COMPONENT_PROVIDER_DESCRIPTION "FCIP management provider (CMPI) of a storage-network switch
Serves the Fibre Channel over IP tunnels of the switch as CIM objects, in any
CIM server that loads CMPI providers. register-provider(8) puts it into
OpenPegasus and SFCB.")
set(CPACK_DEBIAN_PROVIDER_PACKAGE_RECOMMENDS curl)
set(CPACK_DEBIAN_PROVIDER_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/kesto-fcip-provider/prerm
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/kesto-fcip-provider/postrm)
set(CPACK_DEBIAN_PROVIDER_PACKAGE_SUGGESTS "kesto-cimserver, kesto-switch-emulator, kesto-fcip-doc")

set(CPACK_COMPONENT_SERVER_DESCRIPTION "CIM server of the FCIP management provider
Serves the provider of kesto-fcip-provider to any WBEM client by CIM-XML,
where no other CIM server is at hand. It listens on the loopback interface
unless it is told otherwise.")
set(CPACK_DEBIAN_SERVER_PACKAGE_DEPENDS "adduser, kesto-fcip-provider (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_SERVER_PACKAGE_SUGGESTS "sblim-wbemcli, kesto-switch-emulator")
set(CPACK_DEBIAN_SERVER_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/kesto-cimserver/postinst
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/kesto-cimserver/prerm
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/kesto-cimserver/postrm
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/kesto-cimserver/conffiles)

set(CPACK_COMPONENT_EMULATOR_DESCRIPTION "emulated storage-network switch for the FCIP provider
Stands in for the switch's platform library where there is no switch: a
library that answers from a scenario file, and kesto-switch(1), which checks
and makes such files. Where it is installed, kesto-cimserver.service shows the
emulated switch.")

set(CPACK_COMPONENT_DOCUMENTS_DESCRIPTION "documents of the FCIP management provider
Its classes and associations, how it is deployed into OpenPegasus, SFCB and
kesto-cimserver, the emulated switch and its scenarios.")
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_SHLIBDEPS OFF)
include(CPack)
