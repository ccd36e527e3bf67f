# Run by CPack on finished packages: takes out the scripts that CPack writes to call ldconfig, which our trigger does.
foreach( package ${CPACK_PACKAGE_FILES} )
    file( REMOVE_RECURSE ${package}.d )
    execute_process( COMMAND dpkg-deb --raw-extract ${package} ${package}.d COMMAND_ERROR_IS_FATAL ANY )
    execute_process( COMMAND chmod 755 ${package}.d ${package}.d/DEBIAN COMMAND_ERROR_IS_FATAL ANY )
    file( REMOVE ${package}.d/DEBIAN/postinst ${package}.d/DEBIAN/postrm )
    execute_process( COMMAND dpkg-deb --root-owner-group --build ${package}.d ${package} OUTPUT_QUIET
                     COMMAND_ERROR_IS_FATAL ANY )
endforeach()
