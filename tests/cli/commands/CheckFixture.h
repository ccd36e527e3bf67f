#pragma once

#include "tests/cli/Inputs.h"

class Check : public InFolder {
  protected:
    /// Checks a configuration with that context file.
    Outcome outcomeOf( String const& context ) {
        writeSwitchConf( "context.json" );
        writeFile( "context.json", context );
        return bfri( { "check", "switch.conf" } );
    }
    /// The member "failure" of that configuration.
    String failureOf( String const& context ) {
        outcomeOf( context );
        auto const answer = parsed( bfri( { "check", "switch.conf", "--json" } ).out );
        return compact( answer[ "configurations" ][ 0 ][ "failure" ] );
    }
};
