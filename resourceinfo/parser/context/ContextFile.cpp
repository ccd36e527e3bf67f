#include "resourceinfo/parser/context/ContextFile.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/Actions.h"
#include "resourceinfo/parser/context/AttachedTables.h"
#include "resourceinfo/parser/context/ContextDocument.h"
#include "resourceinfo/parser/context/DynamicHashes.h"
#include "resourceinfo/parser/context/FileSurveyor.h"
#include "resourceinfo/parser/context/FlexibleHeaders.h"
#include "resourceinfo/parser/context/LearnQuantas.h"
#include "resourceinfo/parser/context/MatchTables.h"
#include "resourceinfo/parser/context/Phv.h"
#include "resourceinfo/parser/context/Preprocess.h"
#include "resourceinfo/parser/context/Resources.h"
#include "resourceinfo/parser/context/Signatures.h"
#include "resourceinfo/parser/context/Tables.h"

using BfResourceInfo::BfResourceParser;
using Context::Json;

namespace {

void parseTable( BfResourceParser* parser, Json table, String const& path,
                 BfResourceParserContext const& context ) {
    ZEL_ASSERT( table.IsObject() );
    if( table[ "table_type" ].GetString() != "condition" )
        parseBfResource( parser, table, context );
    if( parseBfTable( parser, table, path, context ) == 0 )
        parseBfAction( parser, table, context );
}

void parseTables( BfResourceParser* parser, Json d, String const& path,
                  BfResourceParserContext const& context ) {
    ZEL_ASSERT( d[ "tables" ].IsArray() );
    BF_TRACE( 6 ) << "Parsing resources, tables and actions";
    Context::forEachTable( d, [ & ]( Json table ) { parseTable( parser, table, path, context ); } );
}

void parseAttachedTable( BfResourceParser* parser, Json table, String const& path,
                         BfResourceParserContext const& context ) {
    ZEL_ASSERT( table.IsObject() );
    std::string_view const tableType = table[ "table_type" ].GetString();
    if( tableType == "statistics" )
        parseBfTableCounterInfo( parser, table, path, context );
    else if( tableType == "meter" )
        parseBfTableMeterInfo( parser, table, path, context );
    else if( tableType == "stateful" )
        parseBfRegisterInfo( parser, table, context );
}

void parseAttachedTables( BfResourceParser* parser, Json d, String const& path,
                          BfResourceParserContext const& context ) {
    BF_TRACE( 6 ) << "Parsing counters, meters, and registers";
    Context::forEachTable( d, [ & ]( Json table ) { parseAttachedTable( parser, table, path, context ); } );
}

} // namespace

// The order holds the model together: tables refer to handles that preprocessing found, in any order of the
// file, and what comes after the tables refers to them. It is also the order in which faults are met.
void parseContextJson( BfResourceParser* parser, String const& path, BfResourceParserContext const& context,
                       Context::InputFile& file ) {
    Zel::Operation const operation( Context::Signatures::parseContextJson );
    BF_TRACE( 5 ) << Context::Signatures::parseContextJson << path;
    Context::FileSurveyor surveyor( *parser, path, context );
    Context::ContextDocument const document( path, file, surveyor.notes() );
    surveyor.read( document );
    Json const d = document.root();
    preprocessContext( parser, d, context );
    BF_TRACE( 6 ) << "Preprocessing done";
    parseTables( parser, d, path, context );
    parseAttachedTables( parser, d, path, context );
    parseLearnQuantas( parser, d, context );
    parsePhv( parser, d );
    parseFlexibleHeaders( parser, d, context );
    parseDynamicHashCalculations( parser, d, context );
    surveyor.loaded();
}

void parseContextJson( BfResourceParser* parser, String const& path,
                       BfResourceParserContext const& context ) {
    parseContextJson( parser, path, context, *Context::gzipFile() );
}
