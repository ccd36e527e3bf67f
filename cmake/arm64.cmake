# Compiles for arm64 with Debian's cross compiler; scripts/checks/arm64 unpacks what else it needs below BFRI_SYSROOT.
set( CMAKE_SYSTEM_NAME Linux )
set( CMAKE_SYSTEM_PROCESSOR aarch64 )
set( CMAKE_CXX_COMPILER aarch64-linux-gnu-g++ )
set( BFRI_SYSROOT "${CMAKE_CURRENT_LIST_DIR}/../build/arm64-sysroot" )
set( CMAKE_FIND_ROOT_PATH "${BFRI_SYSROOT}" )
set( CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER )
set( CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY )
set( CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY )
set( CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY )
set( CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu )
set( CMAKE_CROSSCOMPILING_EMULATOR
     "qemu-aarch64;-L;/usr/aarch64-linux-gnu;-E;LD_LIBRARY_PATH=${BFRI_SYSROOT}/usr/lib/aarch64-linux-gnu" )
