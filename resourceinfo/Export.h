#pragma once

/// Marks what libBfResourceInfo exports; the list of it is abi/libBfResourceInfo.symbols.
#define BFRESOURCEINFO_EXPORT __attribute__( ( visibility( "default" ) ) )
