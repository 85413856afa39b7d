# The libraries that the server takes from the system.
#
# cimserver_http  libmicrohttpd
# cimserver_xml   pugixml
#
# A 32-bit build on a 64-bit machine has no development packages of its own: they cannot stand beside the 64-bit
# ones. The headers are the same, so the run-time packages are enough; the libraries are then found by the name
# that they are loaded by.
set(THREADS_PREFER_PTHREAD_FLAG ON)
set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON) # the tests link what the server links
find_package(Threads REQUIRED)
find_package(CLI11 REQUIRED)

function(cimserver_package target header library soname package)
    find_path(${target}_INCLUDE_DIR NAMES ${header})
    if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND EXISTS /usr/lib/i386-linux-gnu)
        find_library(${target}_LIBRARY NAMES ${soname} PATHS /usr/lib/i386-linux-gnu NO_DEFAULT_PATH)
        set(missing "apt-get install ${package}:i386 (and the development package of the machine's own kind)")
    else()
        find_library(${target}_LIBRARY NAMES ${library})
        set(missing "the development package of ${package}")
    endif()
    if(NOT ${target}_INCLUDE_DIR OR NOT ${target}_LIBRARY)
        message(FATAL_ERROR "The CIM server needs ${header} and ${library}. Install ${missing}, "
                            "or configure with -DFCIP_BUILD_SERVER=OFF.")
    endif()
    add_library(${target} INTERFACE)
    target_include_directories(${target} SYSTEM INTERFACE ${${target}_INCLUDE_DIR})
    target_link_libraries(${target} INTERFACE ${${target}_LIBRARY})
endfunction()

cimserver_package(cimserver_http microhttpd.h microhttpd libmicrohttpd.so.12 libmicrohttpd12)
cimserver_package(cimserver_xml pugixml.hpp pugixml libpugixml.so.1 libpugixml1v5)
