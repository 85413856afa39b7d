# The CMPI interface declarations.
#
# cmpi_interface  what the provider and the platform library build against: an installed CMPI development
#                 package when there is one (or -DCMPI_INCLUDE_DIR=FOLDER), otherwise the project's own.
# cmpi_own        the project's own declarations, complete to version 2.1, for the CIM server and the tests.
find_path(CMPI_INCLUDE_DIR NAMES cmpidt.h
          PATH_SUFFIXES cmpi sfcb Pegasus/Provider/CMPI
          DOC "Folder with cmpidt.h and cmpift.h")

add_library(cmpi_own INTERFACE)
target_include_directories(cmpi_own INTERFACE ${PROJECT_SOURCE_DIR}/cmpi)

add_library(cmpi_interface INTERFACE)
if(CMPI_INCLUDE_DIR)
    foreach(header cmpidt.h cmpift.h)
        if(NOT EXISTS ${CMPI_INCLUDE_DIR}/${header})
            message(FATAL_ERROR "CMPI_INCLUDE_DIR=${CMPI_INCLUDE_DIR} has no ${header}")
        endif()
    endforeach()
    message(STATUS "CMPI interface: ${CMPI_INCLUDE_DIR}")
    target_include_directories(cmpi_interface SYSTEM INTERFACE ${CMPI_INCLUDE_DIR})
    # Some development packages know the operating system by this name only.
    target_compile_definitions(cmpi_interface INTERFACE CMPI_PLATFORM_LINUX_GENERIC_GNU)
else()
    message(STATUS "CMPI interface: the project's own declarations")
    target_link_libraries(cmpi_interface INTERFACE cmpi_own)
endif()
