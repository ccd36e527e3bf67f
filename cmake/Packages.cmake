# Debian packages, one a component (Install.cmake): `cpack --config BUILD_DIR/CPackConfig.cmake -B FOLDER`.

set( CPACK_GENERATOR DEB )
set( CPACK_DEB_COMPONENT_INSTALL ON )
set( CPACK_COMPONENTS_GROUPING IGNORE )
set( CPACK_PACKAGE_NAME bfresourceinfo )
set( CPACK_PACKAGE_CONTACT "BfResourceInfo maintainers <bfresourceinfo@example.org>"
     CACHE STRING "Maintainer of the packages" )
set( CPACK_PACKAGE_DESCRIPTION_SUMMARY "" ) # each description below starts with its own
set( CPACK_STRIP_FILES ON )

set( CPACK_DEBIAN_FILE_NAME DEB-DEFAULT )
set( CPACK_DEBIAN_PACKAGE_RELEASE 1 )
set( CPACK_DEBIAN_PACKAGE_SOURCE bfresourceinfo )
set( CPACK_DEBIAN_PACKAGE_PRIORITY optional )
set( CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON )
set( CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON )
set( CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime )
set( CPACK_COMPONENT_BFRI_DEPENDS runtime )

set( CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libbfresourceinfo${PROJECT_VERSION_MAJOR} )
set( CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs )
set( CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON )
set( CPACK_DEBIAN_RUNTIME_DESCRIPTION "resources of a compiled P4 program: shared library
Reads, once, the context files that a switch chip's P4 compiler writes, and
answers a forwarding agent's questions about tables, resources, actions,
counters and headers by index, name, handle and field.
.
This package contains the shared library and the platform libraries below it." )

set( CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libbfresourceinfo-dev )
set( CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel )
set( CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "resources of a compiled P4 program: development files
Reads, once, the context files that a switch chip's P4 compiler writes, and
answers a forwarding agent's questions about tables, resources, actions,
counters and headers by index, name, handle and field.
.
This package contains the C++20 headers, and the files with which CMake and
pkg-config find the library." )

set( CPACK_DEBIAN_BFRI_PACKAGE_NAME bfri )
set( CPACK_DEBIAN_BFRI_PACKAGE_SECTION utils )
set( CPACK_DEBIAN_BFRI_PACKAGE_SHLIBDEPS ON )
set( CPACK_DEBIAN_BFRI_DESCRIPTION "inspector for the resources of a compiled P4 program
Shows what a P4 program takes on a switch chip, out of the context files that
the chip's P4 compiler writes: tables, stages, handles, counters, actions,
headers and more, as text, JSON or CSV." )

# Dependants of a library ask for our minor version: before 1.0 the next one may break them.
math( EXPR next_minor "${PROJECT_VERSION_MINOR} + 1" )
set( shlibs "" )
get_property( libraries GLOBAL PROPERTY BFRESOURCEINFO_LIBRARIES )
foreach( library ${libraries} )
    string( APPEND shlibs "lib${library} ${PROJECT_VERSION_MAJOR} ${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} "
                          "(>= ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}), "
                          "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (<< ${PROJECT_VERSION_MAJOR}.${next_minor}~)\n" )
    get_target_property( folder ${library} BINARY_DIR ) # where dpkg-shlibdeps finds it
    list( APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${folder} )
endforeach()
file( WRITE ${PROJECT_BINARY_DIR}/packaging/shlibs "${shlibs}" )
file( WRITE ${PROJECT_BINARY_DIR}/packaging/triggers "activate-noawait ldconfig\n" )
set( CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/packaging/shlibs
                                                ${PROJECT_BINARY_DIR}/packaging/triggers )

set( CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian/Complete.cmake )
set( CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian/DropScripts.cmake )
include( CPack )
