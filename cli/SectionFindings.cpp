// Findings that the model does not show: what it keeps is what is left after the loss. Their sections of the
// context files are read once more, wherever in a file a member of that name stands; what the model does not
// bear out is no finding.

#include "cli/ContextText.h"
#include "cli/Facts.h"

#include <map>

#include <rapidjson/document.h>

namespace Bfri {

namespace {

using Json = rapidjson::Value;

Json const* memberOf( Json const& value, char const* name ) {
    if( !value.IsObject() )
        return nullptr;
    auto const found = value.FindMember( name );
    return found == value.MemberEnd() ? nullptr : &found->value;
}

/// Hands each element of an array member to `step`.
template<class Step>
void forEachElement( Json const* list, Step step ) {
    if( list && list->IsArray() ) {
        for( Json const& element : list->GetArray() )
            step( element );
    }
}

using Widths = std::map<String, U32>;

/// The widest of those records of a stage and direction that the model would keep too few bytes for.
void addLostWidths( Json const* containers, Widths& widths ) {
    forEachElement( containers, [ & ]( Json const& container ) {
        forEachElement( memberOf( container, "records" ), [ & ]( Json const& record ) {
            Json const* const name = memberOf( record, "field_name" );
            Json const* const width = memberOf( record, "field_width" );
            Json const* const isPov = memberOf( record, "is_pov" );
            if( !name || !name->IsString() || !width || !width->IsUint() || !isPov || !isPov->IsFalse() )
                return;
            if( width->GetUint() >= 32 ) {
                U32& widest = widths[ name->GetString() ];
                widest = std::max( widest, width->GetUint() );
            }
        } );
    } );
}

void addStages( Json const& stages, Losses& losses ) {
    forEachElement( &stages, [ & ]( Json const& stage ) {
        addLostWidths( memberOf( stage, "ingress" ), losses.ingressPhv );
        addLostWidths( memberOf( stage, "egress" ), losses.egressPhv );
    } );
}

std::uint64_t bitsOf( Json const& header ) {
    std::uint64_t bits = 0;
    forEachElement( memberOf( header, "fields" ), [ & ]( Json const& field ) {
        Json const* const slice = memberOf( field, "slice" );
        Json const* const width = slice ? memberOf( *slice, "bit_width" ) : nullptr;
        bits += width && width->IsInt64() ? static_cast<std::uint64_t>( width->GetInt64() ) : 0;
    } );
    return bits;
}

void addHeaders( Json const& headers, Losses& losses ) {
    forEachElement( &headers, [ & ]( Json const& header ) {
        Json const* const name = memberOf( header, "name" );
        std::uint64_t const bits = bitsOf( header );
        if( name && name->IsString() && bits >= 0x10000 )
            losses.headers[ name->GetString() ] = bits;
    } );
}

template<class Containers>
void addPhvFindings( Widths const& widths, Containers const& containers, char const* direction,
                     Findings& findings ) {
    for( auto const& [ name, bytes ] : widths ) {
        auto const kept = containers.find( name );
        if( kept != containers.end() && kept->value() < bytes )
            findings.add( "PHV field", name, {},
                          "takes " + std::to_string( bytes ) + " bytes in " + direction +
                              ", the model says " + std::to_string( kept->value() ) );
    }
}

} // namespace

Losses lossesOf( BfResourceInfo::BfResourceParser const& parser ) {
    constexpr std::string_view sections[] = { "phv_allocation", "flexible_headers" };
    Losses losses;
    for( auto const& entry : parser.contextFile() ) {
        ContextText text( entry.value() );
        for( std::size_t i = 0; ( i = text.skipToName( sections ) ) < std::size( sections ); ) {
            rapidjson::Document section;
            section.ParseStream<rapidjson::kParseIterativeFlag | rapidjson::kParseStopWhenDoneFlag>( text );
            if( !section.HasParseError() )
                ( i == 0 ? addStages : addHeaders )( section, losses );
        }
    }
    return losses;
}

void findLostPhvWidths( Facts const& facts, Findings& findings ) {
    addPhvFindings( facts.losses.ingressPhv, facts.parser.ingressPhvContainers(), "ingress", findings );
    addPhvFindings( facts.losses.egressPhv, facts.parser.egressPhvContainers(), "egress", findings );
}

void findWrappingHeaders( Facts const& facts, Findings& findings ) {
    for( auto const& [ name, bits ] : facts.losses.headers ) {
        BfHeaderInfo const* const kept = facts.parser.bfHeaders().find( name );
        if( kept && kept->size() == bits % 0x10000 / 8 )
            findings.add( "header", name, {},
                          "its fields have " + std::to_string( static_cast<std::int64_t>( bits ) ) +
                              " bits, the model says " + std::to_string( kept->size() ) + " bytes" );
    }
}

} // namespace Bfri
