#include "cli/commands/Answers.h"
#include "inspect/model/Records.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

template<class Records>
List recordList( Records const& records ) {
    return listOf( records, []( auto const& record ) { return rowOf( record ); } );
}

/// A map by name as an object, names in byte order.
template<class Map, class ToValue>
Row byName( Map const& map, ToValue const& toValue ) {
    Row row;
    for( auto const* const entry : sortedByKey( map ) )
        row.push_back( { entry->first, toValue( entry->second ) } );
    return row;
}

template<class Containers>
Row containerBytes( Containers const& containers ) {
    Row row;
    for( auto const& entry : containers )
        row.push_back( { entry.key(), U32{ entry.value() } } );
    return row;
}

void dumpConfiguration( Configuration const& configuration, JsonAnswer& answer ) {
    BfResourceParser const& parser = configuration.parser();
    answer.member( "switchConf", configuration.path );
    answer.member( "contextFile", listOf( parser.contextFile(), []( auto const& entry ) {
                       return Row{ { "pipeMask", Hex( entry.key().value() ) }, { "path", entry.value() } };
                   } ) );
    answer.member( "bfrtConfig", parser.bfrtConfig() );
    answer.member( "hitBitSmashEntries", parser.hitBitSmashEntries() );
}

void dumpRecords( BfResourceParser const& parser, JsonAnswer& answer ) {
    answer.member( "bfResources", recordList( parser.bfResources() ) );
    answer.member( "bfTables", recordList( parser.bfTables() ) );
    answer.member( "bfCounters", recordList( parser.bfCounters() ) );
    answer.member( "bfMeters", recordList( parser.bfMeters() ) );
    answer.member( "bfWreds", recordList( parser.bfWreds() ) );
    answer.member( "bfRegisterInfos", recordList( parser.bfRegisterInfos() ) );
    answer.member( "bfLearnQuantaInfos", recordList( parser.bfLearnQuantaInfos() ) );
    answer.member( "bfActions", recordList( parser.bfActions() ) );
}

void dumpNamed( BfResourceParser const& parser, JsonAnswer& answer ) {
    answer.member( "bfHeaders", byName( parser.bfHeaders(),
                                        []( BfHeaderInfo const& header ) { return U32{ header.size() }; } ) );
    answer.member( "bfDynamicHashInfo", byName( parser.bfDynamicHashInfo(),
                                                []( auto const& record ) { return rowOf( record ); } ) );
    answer.member( "ingressPhvContainers", containerBytes( parser.ingressPhvContainers() ) );
    answer.member( "egressPhvContainers", containerBytes( parser.egressPhvContainers() ) );
}

void dumpRelations( BfResourceParser const& parser, JsonAnswer& answer ) {
    answer.member( "resourceHandles", listOf( sortedByKey( parser.resourceHandles() ),
                                              []( auto entry ) { return rowOf( entry->second ); } ) );
    answer.member( "parentTable",
                   byName( parser.parentTable(), []( String const& parent ) { return parent; } ) );
    auto const& set = parser.multipleParentTables();
    std::vector<String> names( set.begin(), set.end() );
    std::sort( names.begin(), names.end() );
    answer.member( "multipleParentTables", listOf( names, []( String const& name ) { return name; } ) );
}

} // namespace

ExitStatus dump( Configuration const& configuration, Request const&, Streams const& io ) {
    auto const& parser = configuration.parser();
    JsonAnswer answer( io.out );
    dumpConfiguration( configuration, answer );
    dumpRecords( parser, answer );
    dumpNamed( parser, answer );
    dumpRelations( parser, answer );
    return ExitStatus::done;
}

} // namespace Bfri
