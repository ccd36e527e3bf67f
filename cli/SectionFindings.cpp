// Findings that the model does not show: what it keeps is what is left after a loss. The context files are
// read once more; what the model does not bear out is no finding.

#include "cli/FileHeaders.h"
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

/// Of a container's record that the model would keep too few bytes for.
void readRecord( FirstMembers& text, String const& file, Sizes& widths ) {
    String name;
    std::optional<std::int64_t> width;
    bool isPov = true;
    text.eachMember( [ & ]( std::string_view member ) {
        if( member == "field_name" )
            name = text.scalar();
        else if( member == "field_width" )
            width = wholeNumber( text.literal() );
        else if( member == "is_pov" )
            isPov = text.scalar() != "false";
        else
            text.walk();
    } );
    if( !isPov && width && *width >= 32 )
        add( widths, name, static_cast<std::uint64_t>( *width ), file );
}

void readContainer( FirstMembers& text, String const& file, Sizes& widths ) {
    text.eachMember( [ & ]( std::string_view member ) {
        if( member == "records" )
            text.eachElement( [ & ] { readRecord( text, file, widths ); } );
        else
            text.walk();
    } );
}

void readPhvStage( FirstMembers& text, String const& file, Losses& losses ) {
    text.eachMember( [ & ]( std::string_view member ) {
        if( member == "ingress" )
            text.eachElement( [ & ] { readContainer( text, file, losses.ingressPhv ); } );
        else if( member == "egress" )
            text.eachElement( [ & ] { readContainer( text, file, losses.egressPhv ); } );
        else
            text.walk();
    } );
}

void readHeader( FirstMembers& text, String const& file, Losses& losses ) {
    auto const [ name, bits ] = headerBits( text );
    if( bits >= 0x10000 )
        add( losses.headers, name, bits, file );
}

void readTable( ContextText& text, FileTables const& tables, Losses& losses ) {
    FileTable const table = fileTable( text, Detail::brief );
    addLosses( table, tables, losses );
    if( table.type == "condition" )
        return;
    auto const handle = table.handle ? std::optional( *table.handle | tables.pipeBits ) : std::nullopt;
    for( String const& odd : table.oddStages )
        losses.stages.push_back( { "placed table", table.name, handle, odd, tables.file } );
}

void readFile( FileTables const& tables, Losses& losses ) {
    ContextText text( tables.file );
    FirstMembers file = passedMembers( text );
    file.eachMember( [ & ]( std::string_view section ) {
        if( section == "tables" )
            file.eachElement( [ & ] { readTable( text, tables, losses ); } );
        else if( section == "phv_allocation" )
            file.eachElement( [ & ] { readPhvStage( file, tables.file, losses ); } );
        else if( section == "flexible_headers" )
            file.eachElement( [ & ] { readHeader( file, tables.file, losses ); } );
        else
            file.walk();
    } );
    for( String const& member : file.repeated() )
        losses.repeated.push_back( { "context file", tables.file, {}, quoted( member ), tables.file } );
}

/// Of a switch configuration the members that are read.
std::string_view nameInSwitchConf( std::string_view name ) {
    for( std::string_view const kept :
         { "devices", "runtime_config", "pipelines", "context_file", "pipes" } ) {
        if( name == kept )
            return kept;
    }
    return {};
}

void readSwitchConf( String const& path, Losses& losses ) {
    ContextText text( path );
    FirstMembers members( text, nameInSwitchConf );
    members.walk();
    for( String const& member : members.repeated() )
        losses.repeated.push_back( { "switch configuration", path, {}, quoted( member ), "" } );
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
    readSwitchConf( parser.switchConf(), losses );
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
