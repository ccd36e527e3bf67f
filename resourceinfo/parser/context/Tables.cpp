#include "resourceinfo/parser/context/Tables.h"

#include "resourceinfo/model/Source.h"

#include <ostream>

U32 getHandle( Context::Json value, BfResourceParserContext const& context ) {
    return value[ "handle" ].GetUint() | context.handlePipeBits;
}

String getLogicalPipe( Context::Json value, String const& fileName ) {
    if( value.HasMember( "logical_pipe" ) )
        return String( value[ "logical_pipe" ].GetString() );
    if( fileName.ends_with( "context_a.json" ) )
        return "a";
    if( fileName.ends_with( "context_b.json" ) )
        return "b";
    return "";
}

namespace Context {

namespace {

StageTables unitStageTables( Json units ) {
    ZEL_ASSERT( units.IsArray() );
    StageTables result;
    result.stages = units[ 0 ][ "match_attributes" ][ "stage_tables" ];
    for( Json const unit : units )
        result.count += unit[ "match_attributes" ][ "stage_tables" ].Size();
    return result;
}

StageTables matchStageTables( Json match_attributes ) {
    ZEL_ASSERT( match_attributes.IsObject() );
    if( match_attributes.HasMember( "units" ) )
        return unitStageTables( match_attributes[ "units" ] );
    ZEL_ASSERT( match_attributes.HasMember( "stage_tables" ) );
    ZEL_ASSERT( match_attributes[ "stage_tables" ].IsArray() );
    return { match_attributes[ "stage_tables" ], match_attributes[ "stage_tables" ].Size() };
}

} // namespace

StageTables findStageTables( Json table ) {
    if( table.HasMember( "stage_tables" ) ) {
        ZEL_ASSERT( !table.HasMember( "match_attributes" ) );
        return { table[ "stage_tables" ], table[ "stage_tables" ].Size() };
    }
    if( table.HasMember( "match_attributes" ) )
        return matchStageTables( table[ "match_attributes" ] );
    BF_TRACE( 0 ) << table.textOf( "name" ).value_or( "" ) << " failed";
    ZEL_ASSERT( false );
}

std::string_view stageTableType( Json table, Json stage ) {
    std::string_view const type = stage[ "stage_table_type" ].GetString();
    return type == "meter" && table[ "meter_type" ].GetString() == "red" ? "wred" : type;
}

void TableScope::describe( std::ostream& os ) const {
    os << "table " << index_;
    if( auto const name = table_.textOf( "name" ) )
        os << " \"" << *name << '"';
}

} // namespace Context
