#include "resourceinfo/parser/context/Tables.h"

#include "resourceinfo/model/Source.h"

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

namespace {

SurveyedStageTable surveyStageTable( LooseJson stageTable, String path ) {
    LooseJson const number = stageTable[ "stage_number" ];
    return { .path = std::move( path ),
             .stage = number.wholeNumber(),
             .stageText = number.exists() ? std::optional( number.literal() ) : std::nullopt,
             .type = stageTable[ "stage_table_type" ].text(),
             .size = stageTable[ "size" ].unsignedNumber() };
}

void addStageTables( LooseJson stageTables, String const& path, std::vector<SurveyedStageTable>& result ) {
    for( JsonValue const& stageTable : stageTables.elements() ) {
        std::size_t const index = static_cast<std::size_t>( &stageTable - stageTables.elements().data() );
        result.push_back(
            surveyStageTable( LooseJson( stageTable ), path + "stage_tables/" + std::to_string( index ) ) );
    }
}

} // namespace

std::vector<SurveyedStageTable> surveyStageTables( LooseJson table ) {
    std::vector<SurveyedStageTable> result;
    LooseJson const match_attributes = table[ "match_attributes" ];
    if( table[ "stage_tables" ].exists() )
        addStageTables( table[ "stage_tables" ], "", result );
    else if( match_attributes[ "units" ].exists() ) {
        std::size_t index = 0;
        for( JsonValue const& unit : match_attributes[ "units" ].elements() )
            addStageTables( LooseJson( unit )[ "match_attributes" ][ "stage_tables" ],
                            "match_attributes/units/" + std::to_string( index++ ) + "/match_attributes/",
                            result );
    } else
        addStageTables( match_attributes[ "stage_tables" ], "match_attributes/", result );
    return result;
}

std::optional<U32> surveyHandle( LooseJson value, BfResourceParserContext const& context ) {
    auto const handle = value[ "handle" ].unsignedNumber();
    return handle ? std::optional( *handle | context.handlePipeBits ) : std::nullopt;
}

std::string_view stageTableType( Json table, Json stage ) {
    std::string_view const type = stage[ "stage_table_type" ].GetString();
    return type == "meter" && table[ "meter_type" ].GetString() == "red" ? "wred" : type;
}

void TableScope::locate( Zel::InputPlace& place ) const {
    place.element = { "table", index_, table_.textOf( "name" ) };
}

} // namespace Context
