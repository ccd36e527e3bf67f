# Run by CPack before it packs: gives each package what only a Debian package has. The staging folder holds one folder a
# component.

# Compresses a file as Debian wants it: best, and without time and name.
function( compress file )
    execute_process( COMMAND gzip -9nf ${file} COMMAND_ERROR_IS_FATAL ANY )
endfunction()

# The code of headers that Debian's packages of them (the arguments) brought is inside our binaries: their notices follow.
function( write_copyright file )
    file( READ ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/copyright text )
    foreach( package ${ARGN} )
        file( READ /usr/share/doc/${package}/copyright notice )
        string( APPEND text "\n\nContains code of ${package}, of which Debian says:\n\n${notice}" )
    endforeach()
    file( WRITE ${file} "${text}" )
endfunction()

set( headers_in_runtime rapidjson-dev )
set( headers_in_bfri rapidjson-dev libcli11-dev )

string( TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC )
foreach( component ${CPACK_COMPONENTS_ALL} )
    string( TOUPPER ${component} upper )
    set( package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME} )
    set( share ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share )

    write_copyright( ${share}/doc/${package}/copyright ${headers_in_${component}} )
    configure_file( ${CMAKE_CURRENT_LIST_DIR}/changelog.in ${share}/doc/${package}/changelog.Debian @ONLY )
    configure_file( ${CMAKE_CURRENT_LIST_DIR}/../../CHANGELOG.md ${share}/doc/${package}/changelog COPYONLY )
    compress( ${share}/doc/${package}/changelog.Debian )
    compress( ${share}/doc/${package}/changelog )

    file( GLOB pages ${share}/man/man*/*.[1-8] )
    foreach( page ${pages} )
        compress( ${page} )
    endforeach()
    configure_file( ${CMAKE_CURRENT_LIST_DIR}/${component}.lintian-overrides ${share}/lintian/overrides/${package} COPYONLY )
endforeach()
# Whatever the umask.
execute_process( COMMAND chmod -R u=rwX,go=rX ${CPACK_TEMPORARY_DIRECTORY} COMMAND_ERROR_IS_FATAL ANY )
