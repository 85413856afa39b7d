# The libraries that the server takes from the system.
#
# cimserver_http   libmicrohttpd
# cimserver_tls    GnuTLS, which libmicrohttpd speaks TLS with
# cimserver_crypt  libcrypt, for the hashes of passwords
# cimserver_xml    expat
#
# A 32-bit build on a 64-bit machine has no development packages of its own: they cannot be installed beside
# the 64-bit ones. The headers are the same, so the run-time packages are enough; the libraries are then found
# by the name that they are loaded by.
set(THREADS_PREFER_PTHREAD_FLAG ON)
set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON) # the tests link what the server links
find_package(Threads REQUIRED)
find_package(CLI11 REQUIRED)

# Sets the cache variable to the library's file.
function(find_server_library variable name soname package)
    if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND EXISTS /usr/lib/i386-linux-gnu)
        find_library(${variable} NAMES ${soname} PATHS /usr/lib/i386-linux-gnu NO_DEFAULT_PATH)
        set(missing "apt-get install ${package}:i386 (and the development package of the machine's own kind)")
    else()
        find_library(${variable} NAMES ${name})
        set(missing "the development package of ${package}")
    endif()
    if(NOT ${variable})
        message(FATAL_ERROR "The CIM server needs ${name}. Install ${missing}, "
                            "or configure with -DFCIP_BUILD_SERVER=OFF.")
    endif()
endfunction()

find_server_library(MICROHTTPD_LIBRARY microhttpd libmicrohttpd.so.12 libmicrohttpd12)
find_path(MICROHTTPD_INCLUDE_DIR NAMES microhttpd.h REQUIRED)
add_library(cimserver_http INTERFACE)
target_include_directories(cimserver_http SYSTEM INTERFACE ${MICROHTTPD_INCLUDE_DIR})
target_link_libraries(cimserver_http INTERFACE ${MICROHTTPD_LIBRARY})

find_server_library(GNUTLS_LIBRARY gnutls libgnutls.so.30 libgnutls30)
find_path(GNUTLS_INCLUDE_DIR NAMES gnutls/gnutls.h REQUIRED)
add_library(cimserver_tls INTERFACE)
target_include_directories(cimserver_tls SYSTEM INTERFACE ${GNUTLS_INCLUDE_DIR})
target_link_libraries(cimserver_tls INTERFACE ${GNUTLS_LIBRARY})

find_server_library(CRYPT_LIBRARY crypt libcrypt.so.1 libcrypt1)
add_library(cimserver_crypt INTERFACE)
target_link_libraries(cimserver_crypt INTERFACE ${CRYPT_LIBRARY})

find_server_library(EXPAT_LIBRARY expat libexpat.so.1 libexpat1)
find_package(EXPAT REQUIRED) # with the library found above
add_library(cimserver_xml INTERFACE)
target_link_libraries(cimserver_xml INTERFACE EXPAT::EXPAT)
