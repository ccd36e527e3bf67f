#include "tests/inspect/diff/Compared.h"

#include <sstream>

Bfri::Configuration loadedWithDigests( String const& path ) {
    std::ostringstream trace;
    return std::get<Bfri::Configuration>( Bfri::loadConfiguration( path, Bfri::Survey::digests, trace ) );
}

Bfri::Comparison compared( String const& old, String const& now, Bfri::ComparisonScope const& scope ) {
    writeFile( "old.json", old );
    writeFile( "new.json", now );
    return compare( loadedWithDigests( "old.json" ), loadedWithDigests( "new.json" ), scope );
}

std::vector<String> noticesIn( Bfri::Verdict const& verdict ) {
    std::vector<String> notices;
    for( Bfri::Notice const& notice : verdict.notices ) {
        if( notice.kind->code != String( "BD309" ) )
            notices.push_back( notice.kind->code + ( ' ' + notice.what ) + ' ' + notice.name +
                               ( notice.table ? " of " + *notice.table : "" ) );
    }
    return notices;
}

Support::ContextBuilder editedProgram() {
    using namespace Support;
    return ContextBuilder()
        .table( Support::matchTable( "a" )
                    .size( 1000 )
                    .stages( { StageTable( "hash_match" ).number( 1 ).size( 600 ).with( "/memory", "[1,2]" ),
                               StageTable( "hash_match" ).number( 2 ).size( 400 ) } )
                    .action( "hit", { "indirect" } )
                    .action( "miss" )
                    .with( "/actions/2/parameters", R"([{"name":"port","bits":9}])" )
                    .with( "/match_attributes/key_fields", R"([{"name":"f","bits":32}])" )
                    .with( "/default_action", "\"miss\"" )
                    .actionData( "data" )
                    .statistics( "direct" )
                    .meter( "police" )
                    .stateful( "cells" ) )
        .table( Support::matchTable( "b" ).size( 2000 ).action( "set" ) )
        .table( Support::matchTable( "fixed" ).with( "/static_entries", R"([{"entry":1},{"entry":2}])" ) )
        .table( conditionTable( "condition" ).with( "/source", "\"x == 1\"" ) )
        .table( actionDataTable( "data" ) )
        .table( statisticsTable( "direct" ).referenced( "direct" ) )
        .table( statisticsTable( "indirect" ).size( 64 ) )
        .table( meterTable( "police" ).referenced( "direct" ) )
        .table( wredTable( "wred" ) )
        .table( statefulTable( "cells" ).referenced( "direct" ).with( "/initial", "7" ) )
        .table( Support::matchTable( "plain" ).size( 10 ).action( "apply" ) )
        .learnQuanta( "learn" )
        .with( "/learn_quanta/0/fields", R"([{"name":"f"}])" )
        .phvStage( "f", 8 )
        .flexibleHeader( "header", 16 )
        .dynamicHash( "hash", { "x", "y", "z" } )
        .with( "/parser", R"({"states":[1,2]})" );
}
