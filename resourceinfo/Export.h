#pragma once

/// Marks what libBfResourceInfo exports; the list of it is abi/libBfResourceInfo.symbols.
#define BFRESOURCEINFO_EXPORT __attribute__( ( visibility( "default" ) ) )

/// Keeps a member of an exported class inside.
#define BFRESOURCEINFO_LOCAL __attribute__( ( visibility( "hidden" ) ) )
