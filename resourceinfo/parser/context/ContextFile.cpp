#include "resourceinfo/parser/context/ContextFile.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/ContextDocument.h"
#include "resourceinfo/parser/context/MatchTables.h"
#include "resourceinfo/parser/context/Preprocess.h"
#include "resourceinfo/parser/context/Tables.h"

using BfResourceInfo::BfResourceParser;

namespace {

void parseTable( BfResourceParser* parser, Json table, String const& path,
                 BfResourceParserContext const& context ) {
    ZEL_ASSERT( table.IsObject() );
    parseBfTable( parser, table, path, context );
}

void parseTables( BfResourceParser* parser, Json d, String const& path,
                  BfResourceParserContext const& context ) {
    ZEL_ASSERT( d[ "tables" ].IsArray() );
    BF_TRACE( 6 ) << "Parsing resources, tables and actions";
    forEachTable( d, [ & ]( Json table ) { parseTable( parser, table, path, context ); } );
}

void parseReferencedTable( Json table ) { ZEL_ASSERT( table.IsObject() ); }

void parseReferencedTables( Json d ) {
    BF_TRACE( 6 ) << "Parsing counters, meters, and registers";
    forEachTable( d, parseReferencedTable );
}

void parseLearnQuantas( Json d ) {
    Json const lqs = d[ "learn_quanta" ];
    ZEL_ASSERT( lqs.IsArray() );
    BF_TRACE( 6 ) << "Parsing learn quantas";
}

void parsePhv( Json d ) {
    Json const phvs = d[ "phv_allocation" ];
    ZEL_ASSERT( phvs.IsArray() );
    BF_TRACE( 6 ) << "Parsing PHV";
}

void parseFlexibleHeaders( Json d ) {
    if( !d.HasMember( "flexible_headers" ) )
        return;
    BF_TRACE( 6 ) << "Parsing flexible headers";
    d[ "flexible_headers" ].Size();
}

void parseDynamicHashCalculations( Json d ) {
    BF_TRACE( 6 ) << "Parsing dynamic_hash_calculations";
    d[ "dynamic_hash_calculations" ].Size();
}

} // namespace

// The order holds the model together: tables refer to handles that preprocessing found, in any order of the
// file, and what comes behind the tables refers to them. It is also the order in which faults are met.
void parseContextJson( BfResourceParser* parser, String const& path,
                       BfResourceParserContext const& context ) {
    BF_TRACE( 5 ) << "void parseContextJson(BfResourceInfo::BfResourceParser*, const String&, "
                     "const BfResourceParserContext&)"
                  << path;
    ContextDocument const document( path );
    Json const d = document.root();
    preprocessContext( parser, d, context );
    BF_TRACE( 6 ) << "Preprocessing done";
    parseTables( parser, d, path, context );
    parseReferencedTables( d );
    parseLearnQuantas( d );
    parsePhv( d );
    parseFlexibleHeaders( d );
    parseDynamicHashCalculations( d );
}
