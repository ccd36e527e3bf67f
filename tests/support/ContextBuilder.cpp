#include "tests/support/ContextBuilder.h"

namespace Support {

namespace {

JsonTree named( std::string_view name ) {
    return JsonTree::object()
        .with( "/name", JsonTree::string( name ) )
        .with( "/handle", JsonTree::number( handleOf( name ) ) );
}

JsonTree list( std::vector<StageTable> const& stages ) {
    JsonTree result = JsonTree::array();
    for( StageTable const& stage : stages )
        result.with( "/-", stage.tree() );
    return result;
}

JsonTree anyTable( std::string_view name, std::string_view type ) {
    return JsonTree::object()
        .with( "/direction", "\"ingress\"" )
        .with( "/table_type", JsonTree::string( type ) )
        .with( "/handle", JsonTree::number( handleOf( name ) ) )
        .with( "/name", JsonTree::string( name ) )
        .with( "/size", "1024" );
}

/// A table that has its stage tables in itself.
Table plainTable( std::string_view name, std::string_view type ) {
    return Table( anyTable( name, type ).with( "/stage_tables", list( { StageTable( type ) } ) ) );
}

} // namespace

std::uint32_t handleOf( std::string_view name ) {
    std::uint32_t hash = 2166136261U;
    for( char const c : name )
        hash = ( hash ^ static_cast<unsigned char>( c ) ) * 16777619U;
    return ( hash ^ hash >> 28 ) & 0x0FFFFFFF;
}

StageTable::StageTable( std::string_view type )
    : JsonBuilder( JsonTree::object()
                       .with( "/stage_number", "0" )
                       .with( "/size", "1024" )
                       .with( "/stage_table_type", JsonTree::string( type ) ) ) {}

StageTable& StageTable::idleTime( std::uint32_t precision ) {
    return with( "/idletime_stage_table",
                 JsonTree::object().with( "/precision", JsonTree::number( precision ) ) );
}

Table& Table::matchType( std::string_view type ) {
    return with( "/match_attributes/match_type", JsonTree::string( type ) );
}

Table& Table::partitions( std::uint32_t count ) {
    return with( "/match_attributes/number_partitions", JsonTree::number( count ) );
}

Table& Table::stages( std::vector<StageTable> const& stages ) {
    return with( tree_.has( "/stage_tables" ) ? "/stage_tables" : "/match_attributes/stage_tables",
                 list( stages ) );
}

Table& Table::units( std::vector<std::vector<StageTable>> const& units ) {
    without( "/match_attributes/stage_tables" ).with( "/match_attributes/units", "[]" );
    for( auto const& stages : units )
        with( "/match_attributes/units/-", JsonTree::object()
                                               .with( "/match_attributes", JsonTree::object() )
                                               .with( "/match_attributes/stage_tables", list( stages ) ) );
    return *this;
}

Table& Table::idleTime( std::uint32_t precision ) {
    return with( "/match_attributes/stage_tables/0/idletime_stage_table",
                 JsonTree::object().with( "/precision", JsonTree::number( precision ) ) );
}

Table& Table::action( std::string_view name, std::initializer_list<std::string_view> resources ) {
    JsonTree action = named( name );
    if( resources.size() != 0 )
        action.with( "/indirect_resources", "[]" );
    for( std::string_view const resource : resources )
        action.with( "/indirect_resources/-",
                     JsonTree::object().with( "/resource_name", JsonTree::string( resource ) ) );
    return append( "/actions", std::move( action ) );
}

Table& Table::reference( std::string const& kind, std::string_view name, std::string_view how ) {
    return append( kind, named( name ).with( "/how_referenced", JsonTree::string( how ) ) );
}

Table& Table::actionData( std::string_view name, std::string_view how ) {
    return reference( "/action_data_table_refs", name, how );
}

Table& Table::selection( std::string_view name ) {
    return reference( "/selection_table_refs", name, "indirect" );
}

Table matchTable( std::string_view name ) {
    JsonTree tree = anyTable( name, "match" )
                        .with( "/is_resource_controllable", "true" )
                        .with( "/actions", "[]" )
                        .with( "/match_attributes", "{}" )
                        .with( "/match_attributes/match_type", "\"ternary\"" )
                        .with( "/match_attributes/stage_tables", list( { StageTable( "ternary_match" ) } ) );
    return Table( std::move( tree ) ).action( "NoAction" );
}

Table conditionTable( std::string_view name ) {
    return Table( anyTable( name, "condition" ).with( "/stage_tables", "[]" ) );
}

Table actionDataTable( std::string_view name ) { return plainTable( name, "action_data" ); }

Table selectionTable( std::string_view name ) { return plainTable( name, "selection" ); }

Table statisticsTable( std::string_view name ) {
    return plainTable( name, "statistics" )
        .with( "/how_referenced", "\"indirect\"" )
        .with( "/statistics_type", "\"packets_and_bytes\"" );
}

Table meterTable( std::string_view name ) {
    return plainTable( name, "meter" )
        .with( "/how_referenced", "\"indirect\"" )
        .with( "/meter_type", "\"standard\"" )
        .with( "/meter_granularity", "\"bytes\"" );
}

Table wredTable( std::string_view name ) { return meterTable( name ).with( "/meter_type", "\"red\"" ); }

Table statefulTable( std::string_view name ) {
    return plainTable( name, "stateful" )
        .with( "/how_referenced", "\"indirect\"" )
        .with( "/alu_width", "32" )
        .with( "/dual_width_mode", "false" );
}

ContextBuilder::ContextBuilder()
    : JsonBuilder( R"({ "program_name": "leaf", "tables": [], "learn_quanta": [], "phv_allocation": [],
                        "dynamic_hash_calculations": [] })" ) {}

ContextBuilder& ContextBuilder::learnQuanta( std::string_view name ) {
    return append( "/learn_quanta", named( name ).with( "/lq_cfg_type", "0" ) );
}

ContextBuilder& ContextBuilder::phvStage( std::string_view field, std::uint32_t width ) {
    JsonTree const container = JsonTree::object().with(
        "/records", JsonTree::array().with( "/-", JsonTree::object()
                                                      .with( "/is_pov", "false" )
                                                      .with( "/field_name", JsonTree::string( field ) )
                                                      .with( "/field_width", JsonTree::number( width ) ) ) );
    JsonTree const containers = JsonTree::array().with( "/-", container );
    return append( "/phv_allocation",
                   JsonTree::object().with( "/ingress", containers ).with( "/egress", containers ) );
}

ContextBuilder& ContextBuilder::flexibleHeader( std::string_view name, std::uint32_t bits ) {
    JsonTree header = JsonTree( R"({ "fields": [ { "slice": {} } ] })" );
    header.with( "/name", JsonTree::string( name ) )
        .with( "/fields/0/slice/bit_width", JsonTree::number( bits ) );
    return append( "/flexible_headers", std::move( header ) );
}

ContextBuilder& ContextBuilder::dynamicHash( std::string_view name,
                                             std::initializer_list<std::string_view> fields ) {
    JsonTree calculation = named( name ).with( "/field_lists", R"([ { "handle": 1, "fields": [] } ])" );
    for( std::string_view const field : fields )
        calculation.with( "/field_lists/0/fields/-",
                          JsonTree::object().with( "/name", JsonTree::string( field ) ) );
    return append( "/dynamic_hash_calculations", std::move( calculation ) );
}

DeviceBuilder::DeviceBuilder() : JsonBuilder( R"({ "pipelines": [] })" ) {}

DeviceBuilder& DeviceBuilder::runtimeConfig( std::string_view path ) {
    return with( "/runtime_config", JsonTree::string( path ) );
}

DeviceBuilder& DeviceBuilder::pipeline( std::string_view contextFile,
                                        std::initializer_list<std::uint32_t> pipes ) {
    JsonTree pipeline = JsonTree::object().with( "/context_file", JsonTree::string( contextFile ) );
    pipeline.with( "/pipes", "[]" );
    for( std::uint32_t const pipe : pipes )
        pipeline.with( "/pipes/-", JsonTree::number( pipe ) );
    return append( "/pipelines", std::move( pipeline ) );
}

SwitchConfBuilder::SwitchConfBuilder() : JsonBuilder( R"({ "devices": [] })" ) {}

} // namespace Support
