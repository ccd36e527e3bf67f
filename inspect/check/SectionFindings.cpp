// Findings that the model does not show: what it keeps is what is left after a loss. The context files are
// read once more; what the model does not bear out is no finding.

#include "inspect/check/TableLosses.h"
#include "inspect/load/FileHeaders.h"

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

std::optional<U32> modelHandle( FileName const& record, FileTables const& tables ) {
    return record.handle ? std::optional( *record.handle | tables.pipeBits ) : std::nullopt;
}

void addStages( FileTable const& table, FileTables const& tables, Losses& losses ) {
    auto const handle = modelHandle( table, tables );
    if( !table.stages.empty() && ( table.stages.front() < 0 || table.stages.front() > 255 ) )
        losses.firstStages.push_back(
            { "placed table", table.name, handle,
              "its first stage is " + std::to_string( table.stages.front() ) + ", its entry by handle says " +
                  std::to_string( static_cast<std::uint8_t>( table.stages.front() ) ),
              tables.file } );
    for( String const& odd : table.oddStages )
        losses.stages.push_back( { "placed table", table.name, handle, odd, tables.file } );
}

/// Makes one loss of those that are of one member, which says how often that comes.
void foldRepeats( std::vector<Loss>& repeated, std::size_t from ) {
    std::map<String, std::size_t> again;
    auto const first = repeated.begin() + static_cast<std::ptrdiff_t>( from );
    repeated.erase( std::remove_if( first, repeated.end(),
                                    [ & ]( Loss const& loss ) { return again[ loss.says ]++ > 0; } ),
                    repeated.end() );
    for( std::size_t i = from; i < repeated.size(); ++i ) {
        if( std::size_t const more = again[ repeated[ i ].says ]; more > 1 )
            repeated[ i ].says += " (" + std::to_string( more + 1 ) + " times)";
    }
}

void readTable( ContextText& text, FileTables const& tables, Losses& losses ) {
    FileTable const table = fileTable( text, Detail::brief );
    std::size_t const repeatedBefore = losses.repeated.size();
    addLosses( table, tables, losses );
    foldRepeats( losses.repeated, repeatedBefore );
    if( table.type != "condition" )
        addStages( table, tables, losses );
}

void readLearnQuanta( FirstMembers& text, FileTables const& tables, Losses& losses ) {
    FileName quanta;
    bool hasType = false;
    text.eachMember( [ & ]( std::string_view member ) {
        hasType |= member == "lq_cfg_type";
        if( member == "name" )
            quanta.name = text.scalar();
        else if( member == "handle" )
            quanta.handle = handleOf( text );
        else
            text.walk();
    } );
    if( !hasType )
        losses.leftOutQuantas.push_back( { "learn quanta", quanta.name, modelHandle( quanta, tables ),
                                           "the model has no record of it: it has no \"lq_cfg_type\"",
                                           tables.file } );
}

void readFile( FileTables const& tables, Losses& losses ) {
    ContextText text( tables.file );
    FirstMembers file = passedMembers( text );
    file.eachMember( [ & ]( std::string_view section ) {
        if( section == "tables" )
            file.eachElement( [ & ] { readTable( text, tables, losses ); } );
        else if( section == "learn_quanta" )
            file.eachElement( [ & ] { readLearnQuanta( file, tables, losses ); } );
        else if( section == "phv_allocation" )
            file.eachElement( [ & ] { readPhvStage( file, tables.file, losses ); } );
        else if( section == "flexible_headers" )
            file.eachElement( [ & ] { readHeader( file, tables.file, losses ); } );
        else
            file.walk();
    } );
    std::size_t const repeatedBefore = losses.repeated.size();
    for( String const& member : file.repeated() )
        losses.repeated.push_back( { "context file", tables.file, {}, quoted( member ), tables.file } );
    foldRepeats( losses.repeated, repeatedBefore );
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
    foldRepeats( losses.repeated, 0 );
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

void findLeftOut( CheckContext const& facts, Findings& findings ) {
    findLeftOutTables( facts, findings );
    for( Loss const& loss : facts.losses.leftOutQuantas )
        findings.add( loss.what, loss.name, loss.handle, loss.says, loss.file );
}

void findLostPhvWidths( CheckContext const& facts, Findings& findings ) {
    addPhvFindings( facts.losses.ingressPhv, facts.parser.ingressPhvContainers(), "ingress", findings );
    addPhvFindings( facts.losses.egressPhv, facts.parser.egressPhvContainers(), "egress", findings );
}

void findWrappingHeaders( CheckContext const& facts, Findings& findings ) {
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
