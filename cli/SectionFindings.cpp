// Findings that the model does not show: what it keeps is what is left after a loss. The context files are
// read once more; what the model does not bear out is no finding.

#include "cli/SectionJson.h"
#include "cli/TableLosses.h"

namespace Bfri {

namespace {

using Sizes = std::map<String, LostSize>;

/// Keeps the largest.
void add( Sizes& sizes, String const& name, std::uint64_t size, String const& file ) {
    LostSize& largest = sizes[ name ];
    if( size > largest.size )
        largest = { size, file };
}

/// Those records of a stage and direction that the model would keep too few bytes for.
void addLostWidths( Json const* containers, String const& file, Sizes& widths ) {
    forEachElement( containers, [ & ]( Json const& container ) {
        forEachElement( memberOf( container, "records" ), [ & ]( Json const& record ) {
            Json const* const name = memberOf( record, "field_name" );
            Json const* const width = memberOf( record, "field_width" );
            Json const* const isPov = memberOf( record, "is_pov" );
            if( !name || !name->IsString() || !width || !width->IsUint() || !isPov || !isPov->IsFalse() )
                return;
            if( width->GetUint() >= 32 )
                add( widths, name->GetString(), width->GetUint(), file );
        } );
    } );
}

void addStages( Json const& stages, String const& file, Losses& losses ) {
    forEachElement( &stages, [ & ]( Json const& stage ) {
        addLostWidths( memberOf( stage, "ingress" ), file, losses.ingressPhv );
        addLostWidths( memberOf( stage, "egress" ), file, losses.egressPhv );
    } );
}

void addHeaders( Json const& headers, String const& file, Losses& losses ) {
    forEachElement( &headers, [ & ]( Json const& header ) {
        auto const [ name, bits ] = headerBitsOf( header );
        if( bits >= 0x10000 )
            add( losses.headers, name, bits, file );
    } );
}

void readSection( String const& section, ContextText& text, FileTables const& tables, Losses& losses ) {
    if( section == "tables" )
        text.eachElement( [ & ] { addLosses( fileTable( text, Detail::brief ), tables, losses ); } );
    else if( section == "phv_allocation" )
        addStages( treeOf( text ), tables.file, losses );
    else if( section == "flexible_headers" )
        addHeaders( treeOf( text ), tables.file, losses );
    else
        text.skip();
}

void readFile( FileTables const& tables, Losses& losses ) {
    ContextText text( tables.file );
    SeenMembers seen;
    text.eachMember( [ & ]( String const& section ) {
        if( seen.isRepeated( section ) ) {
            losses.repeated.push_back( { "context file", tables.file, {}, quoted( section ), tables.file } );
            text.skip();
        } else
            readSection( section, text, tables, losses );
    } );
}

template<class Containers>
void addPhvFindings( Sizes const& widths, Containers const& containers, char const* direction,
                     Findings& findings ) {
    for( auto const& [ name, lost ] : widths ) {
        auto const kept = containers.find( name );
        if( kept != containers.end() && kept->value() < lost.size )
            findings.add( "PHV field", name, {},
                          "takes " + std::to_string( lost.size ) + " bytes in " + direction +
                              ", the model says " + std::to_string( kept->value() ),
                          lost.file );
    }
}

} // namespace

Losses lossesOf( BfResourceInfo::BfResourceParser const& parser ) {
    Losses losses;
    for( auto const& entry : parser.contextFile() )
        readFile( { entry.value(), pipeBitsOf( parser, entry.key().value() ), parser }, losses );
    return losses;
}

void findLostPhvWidths( Facts const& facts, Findings& findings ) {
    addPhvFindings( facts.losses.ingressPhv, facts.parser.ingressPhvContainers(), "ingress", findings );
    addPhvFindings( facts.losses.egressPhv, facts.parser.egressPhvContainers(), "egress", findings );
}

void findWrappingHeaders( Facts const& facts, Findings& findings ) {
    for( auto const& [ name, lost ] : facts.losses.headers ) {
        BfHeaderInfo const* const kept = facts.parser.bfHeaders().find( name );
        if( kept && kept->size() == lost.size % 0x10000 / 8 )
            findings.add( "header", name, {},
                          "its fields have " + std::to_string( static_cast<std::int64_t>( lost.size ) ) +
                              " bits, the model says " + std::to_string( kept->size() ) + " bytes",
                          lost.file );
    }
}

} // namespace Bfri
