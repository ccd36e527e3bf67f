#pragma once

/// Marks what the platform libraries export; everything else stays hidden inside its library.
#define VESSA_EXPORT __attribute__( ( visibility( "default" ) ) )
