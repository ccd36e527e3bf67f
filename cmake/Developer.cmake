# What only we build with: warnings and sanitizers live in a target that is never exported.

add_library( bfri_warnings INTERFACE )
if( BFRESOURCEINFO_DEVELOPER )
    target_compile_options( bfri_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror )
    # GCC 12 sees overlapping copies in `"text" + string`, and uninitialised reads in std::variant, where there are none.
    target_compile_options( bfri_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict -Wno-maybe-uninitialized> )
endif()
if( BFRESOURCEINFO_SANITIZE )
    add_compile_options( -fsanitize=${BFRESOURCEINFO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer )
    add_link_options( -fsanitize=${BFRESOURCEINFO_SANITIZE} )
endif()

option( BFRESOURCEINFO_FUZZ "Link the fuzz targets with libFuzzer (Clang)" OFF )
if( BFRESOURCEINFO_FUZZ )
    add_compile_options( -fsanitize=fuzzer-no-link )
endif()
