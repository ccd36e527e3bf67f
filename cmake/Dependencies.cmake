# Everything that comes from outside; why each is there stands in docs/architecture.md.

find_path( ISAL_INCLUDE_DIR isa-l/igzip_lib.h )
find_library( ISAL_LIBRARY isal )
if( ISAL_INCLUDE_DIR AND ISAL_LIBRARY )
    add_library( ISAL::isal UNKNOWN IMPORTED )
    set_target_properties( ISAL::isal PROPERTIES IMPORTED_LOCATION "${ISAL_LIBRARY}"
                                                 INTERFACE_INCLUDE_DIRECTORIES "${ISAL_INCLUDE_DIR}" )
    set( inflate isal )
else()
    set( inflate zlib )
endif()
set( BFRESOURCEINFO_INFLATE ${inflate} CACHE STRING "What inflates gzip files: isal, the default where it is found, or zlib" )
set_property( CACHE BFRESOURCEINFO_INFLATE PROPERTY STRINGS isal zlib )
if( NOT BFRESOURCEINFO_INFLATE MATCHES "^(isal|zlib)$" )
    message( FATAL_ERROR "BFRESOURCEINFO_INFLATE is ${BFRESOURCEINFO_INFLATE}: must be isal or zlib" )
elseif( BFRESOURCEINFO_INFLATE STREQUAL isal AND NOT TARGET ISAL::isal )
    message( FATAL_ERROR "BFRESOURCEINFO_INFLATE is isal, which is not found (package libisal-dev)" )
endif()

if( BFRESOURCEINFO_INFLATE STREQUAL zlib OR BFRESOURCEINFO_TOOLS OR BFRESOURCEINFO_EXAMPLES OR BFRESOURCEINFO_DEVELOPER )
    find_package( ZLIB REQUIRED )
endif()

find_path( RAPIDJSON_INCLUDE_DIR rapidjson/document.h REQUIRED )
add_library( RapidJSON::RapidJSON INTERFACE IMPORTED )
set_target_properties( RapidJSON::RapidJSON PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${RAPIDJSON_INCLUDE_DIR}" )
if( CMAKE_CXX_COMPILER_ID STREQUAL Clang ) # whose sanitizer objects to sums with the null pointer of an empty stack
    set_target_properties( RapidJSON::RapidJSON PROPERTIES INTERFACE_COMPILE_DEFINITIONS
        "RAPIDJSON_FORCEINLINE=__attribute__((no_sanitize(\"pointer-overflow\"),always_inline))" )
endif()

# Compiled in: headers alone.
find_path( XXHASH_INCLUDE_DIR xxhash.h REQUIRED )
add_library( xxHash::xxHash INTERFACE IMPORTED )
set_target_properties( xxHash::xxHash PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${XXHASH_INCLUDE_DIR}" )

if( BFRESOURCEINFO_EXAMPLES )
    find_package( CLI11 REQUIRED )
endif()
if( BFRESOURCEINFO_TOOLS )
    find_package( fmt REQUIRED )
    find_path( UNISTRING_INCLUDE_DIR unistr.h REQUIRED )
    find_library( UNISTRING_LIBRARY unistring REQUIRED )
    add_library( Unistring::unistring UNKNOWN IMPORTED )
    set_target_properties( Unistring::unistring PROPERTIES IMPORTED_LOCATION "${UNISTRING_LIBRARY}"
                                                           INTERFACE_INCLUDE_DIRECTORIES "${UNISTRING_INCLUDE_DIR}" )
    find_path( PCRE2_INCLUDE_DIR pcre2.h REQUIRED )
    find_library( PCRE2_LIBRARY pcre2-8 REQUIRED )
    add_library( PCRE2::pcre2 UNKNOWN IMPORTED )
    set_target_properties( PCRE2::pcre2 PROPERTIES IMPORTED_LOCATION "${PCRE2_LIBRARY}"
                                                   INTERFACE_INCLUDE_DIRECTORIES "${PCRE2_INCLUDE_DIR}" )
endif()
if( BFRESOURCEINFO_DEVELOPER )
    find_package( GTest REQUIRED )
    find_package( Threads REQUIRED )
endif()
