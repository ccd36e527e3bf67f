// Findings that the model does not show: what it keeps is what is left after a loss. Their sections of the
// context files are read once more, wherever in a file a member of that name stands; what the model does not
// bear out is no finding.

#include "cli/ContextText.h"
#include "cli/Facts.h"
#include "cli/SectionJson.h"

#include <algorithm>
#include <bit>
#include <map>

#include <rapidjson/reader.h>

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

constexpr unsigned options = rapidjson::kParseIterativeFlag | rapidjson::kParseStopWhenDoneFlag;

constexpr std::string_view tableTypes[] = { "match",      "condition", "action_data", "selection",
                                            "statistics", "meter",     "stateful" };
constexpr std::string_view directions[] = { "ingress", "egress" };

/// Takes from the events of a section "tables" the few members that the words stand in: as a tree, that
/// section may be large.
class TableWords : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TableWords> {
    using Text = Vessa::String;

  public:
    TableWords( Text const& file, U32 pipeBits, Losses& losses )
        : file_( file ), pipeBits_( pipeBits ), losses_( losses ) {}

    bool Default() { return true; }
    bool StartObject() {
        member_.clear();
        if( ++depth_ == ofTable )
            texts_.clear();
        return true;
    }
    bool StartArray() {
        member_.clear();
        ++depth_;
        return true;
    }
    bool Key( char const* name, rapidjson::SizeType length, bool ) {
        if( depth_ == ofTable )
            member_.assign( name, length );
        return true;
    }
    bool String( char const* text, rapidjson::SizeType length, bool ) {
        if( depth_ == ofTable && ( member_ == "name" || member_ == "table_type" || member_ == "direction" ) )
            texts_.try_emplace( member_, text, length );
        return true;
    }
    bool Uint( unsigned number ) {
        if( depth_ == ofTable && member_ == "handle" )
            handle_ = number | pipeBits_;
        return true;
    }
    bool EndObject( rapidjson::SizeType ) {
        if( depth_-- == ofTable )
            judge();
        return true;
    }
    bool EndArray( rapidjson::SizeType ) {
        --depth_;
        return true;
    }

  private:
    static constexpr std::size_t ofTable = 2; // in the array

    void judge() {
        requireOneOf( tableTypes, "table_type", losses_.tableTypes );
        requireOneOf( directions, "direction", losses_.directions );
        handle_.reset();
    }
    void requireOneOf( std::span<std::string_view const> known, char const* member,
                       std::vector<UnknownWord>& unknown ) {
        auto const word = texts_.find( member );
        if( word != texts_.end() && std::find( known.begin(), known.end(), word->second ) == known.end() )
            unknown.push_back( { texts_[ "name" ], handle_, word->second, file_ } );
    }

    Text const& file_;
    U32 const pipeBits_;
    Losses& losses_;
    std::size_t depth_ = 0; // of open containers
    Text member_;           // of a table, whose value comes
    std::map<Text, Text> texts_;
    std::optional<U32> handle_;
};

/// Whether the value that comes is one of the words; what is not even a string keeps a file from loading.
bool isOneOf( std::span<std::string_view const> known, ContextText& text ) {
    constexpr std::size_t longest = 32;
    rapidjson::SkipWhitespace( text );
    if( text.Peek() != '"' )
        return true;
    text.Take();
    String word;
    while( word.size() < longest && text.Peek() != '"' && !text.atEnd() )
        word += text.Take();
    return std::find( known.begin(), known.end(), word ) != known.end();
}

void addUnknownWords( String const& file, U32 pipeBits, Losses& losses ) {
    constexpr std::string_view tables[] = { "tables" };
    ContextText text( file );
    while( text.skipToName( tables ) == 0 ) {
        TableWords words( file, pipeBits, losses );
        rapidjson::Reader().Parse<options>( text, words );
    }
}

void addSections( String const& file, U32 pipeBits, Losses& losses ) {
    constexpr std::string_view names[] = { "table_type", "direction", "phv_allocation", "flexible_headers" };
    ContextText text( file );
    bool anyUnknown = false;
    for( std::size_t i = 0; ( i = text.skipToName( names ) ) < std::size( names ); ) {
        if( i < 2 ) {
            bool const known = i == 0 ? isOneOf( tableTypes, text ) : isOneOf( directions, text );
            anyUnknown |= !known;
            continue;
        }
        rapidjson::Document section;
        section.ParseStream<options>( text );
        if( !section.HasParseError() )
            ( i == 2 ? addStages : addHeaders )( section, file, losses );
    }
    if( anyUnknown ) // in a table, or elsewhere: only reading the tables tells
        addUnknownWords( file, pipeBits, losses );
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
    for( auto const& entry : parser.contextFile() ) {
        U32 const lowest = static_cast<U32>( std::countr_zero( entry.key().value() ) ) % 16;
        addSections( entry.value(), parser.bfrtConfig().empty() ? 0 : lowest << 28, losses );
    }
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

void findUnknownTableTypes( Facts const& facts, Findings& findings ) {
    for( UnknownWord const& unknown : facts.losses.tableTypes )
        findings.add( "table", unknown.table, unknown.handle,
                      "its \"table_type\" is " + quoted( unknown.word ) + ", which the model does not know",
                      unknown.file );
}

void findUnknownDirections( Facts const& facts, Findings& findings ) {
    for( UnknownWord const& unknown : facts.losses.directions ) {
        auto const kept = facts.placed.find( unknown.handle.value_or( 0 ) );
        if( kept != facts.placed.end() && kept->second->name == unknown.table && !kept->second->ingress )
            findings.add( "placed table", unknown.table, unknown.handle,
                          "its \"direction\" is " + quoted( unknown.word ) + ", the model says egress",
                          unknown.file );
    }
}

} // namespace Bfri
