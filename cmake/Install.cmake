# The installed package: libraries, public headers, CMake and pkg-config files, all with relative paths.
# Components, each a package of its own (Packages.cmake): runtime (what a program needs to run), development (what is
# needed to build one), bfri (the inspector).

# Debian's compilers, loader, CMake and pkg-config look into the machine's own library folder below every prefix.
if( PROJECT_IS_TOP_LEVEL AND NOT DEFINED CMAKE_INSTALL_LIBDIR AND CMAKE_LIBRARY_ARCHITECTURE
    AND EXISTS /etc/debian_version )
    set( CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Folder of libraries below the prefix" )
endif()
include( GNUInstallDirs )
include( CMakePackageConfigHelpers )

# Headers keep their folders below one of ours: <resourceinfo/BfResourceInfoIntf.h>, <zel/Ptr.h>.
set( BFRESOURCEINFO_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/bfresourceinfo )
set( BFRESOURCEINFO_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/BfResourceInfo )

# Installs a library and the public headers of a source folder; the arguments behind these are headers that stay
# private.
function( bfri_install_library target source destination )
    set_target_properties( ${target} PROPERTIES VERSION ${PROJECT_VERSION}
                           SOVERSION ${PROJECT_VERSION_MAJOR}
                           INSTALL_RPATH $ORIGIN ) # the libraries find each other wherever they are installed
    install( TARGETS ${target} EXPORT BfResourceInfoTargets
             LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development )
    set_property( GLOBAL APPEND PROPERTY BFRESOURCEINFO_LIBRARIES ${target} )
    file( GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${source}/*.h )
    foreach( private ${ARGN} )
        list( REMOVE_ITEM headers ${PROJECT_SOURCE_DIR}/${source}/${private} )
    endforeach()
    install( FILES ${headers} DESTINATION ${BFRESOURCEINFO_INCLUDEDIR}/${destination} COMPONENT development )
endfunction()

# The package's own files; called last, when all targets are there.
function( bfri_install )
    bfri_install_library( BfResourceInfo resourceinfo resourceinfo Queries.h )
    file( GLOB parser CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resourceinfo/parser/*.h )
    install( FILES ${parser} DESTINATION ${BFRESOURCEINFO_INCLUDEDIR}/resourceinfo/parser
             COMPONENT development )
    file( GLOB model CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resourceinfo/model/*.h )
    list( REMOVE_ITEM model ${PROJECT_SOURCE_DIR}/resourceinfo/model/Source.h
                            ${PROJECT_SOURCE_DIR}/resourceinfo/model/TypeModules.h )
    install( FILES ${model} DESTINATION ${BFRESOURCEINFO_INCLUDEDIR}/resourceinfo/model
             COMPONENT development )

    install( EXPORT BfResourceInfoTargets NAMESPACE BfResourceInfo:: DESTINATION ${BFRESOURCEINFO_CMAKEDIR}
             COMPONENT development )
    configure_package_config_file( ${PROJECT_SOURCE_DIR}/cmake/BfResourceInfoConfig.cmake.in
                                   ${PROJECT_BINARY_DIR}/BfResourceInfoConfig.cmake
                                   INSTALL_DESTINATION ${BFRESOURCEINFO_CMAKEDIR} )
    write_basic_package_version_file( ${PROJECT_BINARY_DIR}/BfResourceInfoConfigVersion.cmake
                                      COMPATIBILITY SameMinorVersion )
    install( FILES ${PROJECT_BINARY_DIR}/BfResourceInfoConfig.cmake
                   ${PROJECT_BINARY_DIR}/BfResourceInfoConfigVersion.cmake
             DESTINATION ${BFRESOURCEINFO_CMAKEDIR} COMPONENT development )

    # From the .pc file's own folder up to the prefix, however deep the machine keeps its libraries (multiarch).
    file( RELATIVE_PATH BFRESOURCEINFO_PC_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix )
    configure_file( ${PROJECT_SOURCE_DIR}/cmake/bfresourceinfo.pc.in ${PROJECT_BINARY_DIR}/bfresourceinfo.pc @ONLY )
    install( FILES ${PROJECT_BINARY_DIR}/bfresourceinfo.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
             COMPONENT development )
endfunction()
