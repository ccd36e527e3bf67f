#include "resourceinfo/parser/context/AttachedTables.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/Preprocess.h"
#include "resourceinfo/parser/context/Signatures.h"
#include "resourceinfo/parser/context/Tables.h"

using BfResourceInfo::BfResourceParser;
using BfResourceInfo::BfZelResource;
using Context::Json;

namespace {

/// The match table that an attached table belongs to, and the handle that it is known by.
struct Owner {
    U32 handle = 0;
    String table;
};

/// Of one that is referenced directly: known by the handle of the match table that lists it.
Owner directOwner( BfResourceParser* parser, std::string_view referenceKind, U32 ownHandle ) {
    U32 const handle = getTableThatReferences( parser, referenceKind, ownHandle );
    BfZelResource const* const resource = parser->resourceHandles().find( handle );
    return { handle, resource ? resource->name : String() };
}

/// Of any other: known by its own handle. It belongs to the one table whose actions name it.
Owner indirectOwner( BfResourceParser* parser, String const& name, U32 ownHandle ) {
    return { ownHandle, parser->parentTable( name ) };
}

/// The type of a register's cell, by the width of the arithmetic that works on it.
char const* cellType( U32 width ) {
    if( width > 32 )
        return "*uint8";
    switch( ( width + 7 ) / 8 ) {
    case 1:
        return "uint8_t";
    case 2:
        return "uint16_t";
    default:
        return "uint32_t";
    }
}

} // namespace

int parseBfTableCounterInfo( BfResourceParser* parser, Json table, String const& contextFile,
                             BfResourceParserContext const& context ) {
    Zel::Operation const operation( Context::Signatures::parseBfTableCounterInfo );
    BfTableCounterInfo record;
    record.name = table[ "name" ].GetString();
    record.ownHandle = getHandle( table, context );
    record.size = table[ "size" ].GetUint();
    record.direct = table[ "how_referenced" ].GetString() != "indirect";
    Owner owner = record.direct ? directOwner( parser, "statistics_table_refs", record.ownHandle )
                                : indirectOwner( parser, record.name, record.ownHandle );
    record.handle = owner.handle;
    record.associatedTable = std::move( owner.table );
    std::string_view const type = table[ "statistics_type" ].GetString();
    record.bytes = type == "bytes" || type == "packets_and_bytes";
    record.packets = type == "packets" || type == "packets_and_bytes";
    record.logicalPipe = getLogicalPipe( table, contextFile );
    BF_TRACE( 7 ) << "Parsed counter" << record.name; // no space: operators match the text as it is
    parser->bfCountersPush( std::move( record ) );
    return 0;
}

int parseBfTableMeterInfo( BfResourceParser* parser, Json table, String const& contextFile,
                           BfResourceParserContext const& context ) {
    Zel::Operation const operation( Context::Signatures::parseBfTableMeterInfo );
    BfTableMeterInfo record;
    record.name = table[ "name" ].GetString();
    std::string_view const meterType = table[ "meter_type" ].GetString();
    U32 const ownHandle = getHandle( table, context );
    record.direct = table[ "how_referenced" ].GetString() == "direct";
    Owner owner = record.direct ? directOwner( parser, "meter_table_refs", ownHandle )
                                : indirectOwner( parser, record.name, ownHandle );
    record.handle = owner.handle;
    record.associatedTable = std::move( owner.table );
    record.pps = table[ "meter_granularity" ].GetString() == "packets";
    record.hasPreColor = table.HasMember( "pre_color_field_name" );
    record.logicalPipe = getLogicalPipe( table, contextFile );
    if( meterType == "red" ) {
        BF_TRACE( 7 ) << "Parsed wred " << record.name;
        parser->bfWredsPush( { .name = std::move( record.name ),
                               .handle = record.handle,
                               .direct = record.direct,
                               .logicalPipe = std::move( record.logicalPipe ) } );
        return 0;
    }
    BF_TRACE( 7 ) << "Parsed meter " << record.name;
    parser->bfMetersPush( std::move( record ) );
    return 0;
}

int parseBfRegisterInfo( BfResourceParser* parser, Json table, BfResourceParserContext const& context ) {
    Zel::Operation const operation( Context::Signatures::parseBfRegisterInfo );
    BfRegisterInfo record;
    record.name = table[ "name" ].GetString();
    record.handle = getHandle( table, context );
    record.indirect = table[ "how_referenced" ].GetString() == "indirect";
    if( !record.indirect )
        record.handle = getTableThatReferences( parser, "stateful_table_refs", record.handle );
    U32 const width = table[ "alu_width" ].GetUint();
    record.width = width;
    record.dualWidth = table.HasMember( "dual_width_mode" ) && table[ "dual_width_mode" ].GetBool();
    if( record.dualWidth )
        ZEL_ASSERT( width == 32 );
    record.dataType = record.dualWidth ? "uint64_t" : cellType( width );
    BF_TRACE( 7 ) << "Parsed reg info " << record.name;
    parser->bfRegisterInfosPush( std::move( record ) );
    return 0;
}

void surveyAttachedTable( Context::SurveyedTable const& table, Context::FileSurvey& file ) {
    String const& type = table.statisticsType;
    if( table.type == "statistics" && type != "packets" && type != "bytes" && type != "packets_and_bytes" )
        file.unknownWords.push_back( { table.index, "statistics_type", type } );
    if( table.howReferenced != "direct" && table.howReferenced != "indirect" )
        file.unknownWords.push_back( { table.index, "how_referenced", table.howReferenced } );
}
