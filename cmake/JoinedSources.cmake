# join_sources( TARGET ): compiles the sources of each folder as one. Nearly all of a file's compile time goes into the
# headers that its neighbours include too.
function( join_sources target )
    get_target_property( sources ${target} SOURCES )
    foreach( source IN LISTS sources )
        get_filename_component( folder ${source} DIRECTORY )
        string( MAKE_C_IDENTIFIER "folder_${folder}" group )
        set_source_files_properties( ${source} PROPERTIES UNITY_GROUP ${group} )
    endforeach()
    set_target_properties( ${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP )
endfunction()
