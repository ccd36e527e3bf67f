#include "cli/report/Text.h"

#include "inspect/model/Omissions.h"
#include "inspect/rows/Row.h"

namespace Bfri {

namespace {

String withoutZero( String text ) {
    if( auto const zero = text.find( ".0" ); zero + 3 == text.size() )
        text.erase( zero, 2 );
    return text;
}

String listed( std::initializer_list<std::pair<bool, std::string_view>> words ) {
    String text;
    for( auto const& [ isTrue, word ] : words ) {
        if( isTrue )
            text += ( text.empty() ? "" : ", " ) + String( word );
    }
    return text;
}

String traitsText( std::monostate ) { return ""; }
String traitsText( BfTableCounterInfo const* c ) {
    return listed(
        { { c->packets, "packets" }, { c->bytes, "bytes" }, { true, c->direct ? "direct" : "indirect" } } );
}
String traitsText( BfTableMeterInfo const* m ) {
    return listed( { { true, m->pps ? "packets/s" : "bytes/s" },
                     { true, m->direct ? "direct" : "indirect" },
                     { m->hasPreColor, "pre-colour" } } );
}
String traitsText( BfTableWredInfo const* w ) { return w->direct ? "direct" : "indirect"; }
String traitsText( BfRegisterInfo const* r ) {
    return listed( { { true, r->dataType + ( r->dualWidth ? " ×2" : "" ) },
                     { true, r->indirect ? "indirect" : "direct" } } );
}

/// The handle in a record, where it differs from the resource's own and from those of its tables.
std::optional<U32> otherHandle( Chip const& chip, ChipResource const& resource ) {
    auto const handle = std::visit(
        []( auto const& record ) -> std::optional<U32> {
            if constexpr( std::is_pointer_v<std::decay_t<decltype( record )>> )
                return record->handle;
            else
                return std::nullopt;
        },
        resource.record );
    if( !handle || *handle == resource.handle )
        return std::nullopt;
    for( ChipLink const owner : resource.owners ) {
        if( *handle == ( owner.to == ChipLink::To::table ? chip.tables[ owner.number ].record->handle
                                                         : chip.resources[ owner.number ].handle ) )
            return std::nullopt;
    }
    return handle;
}

} // namespace

String grouped( std::uint64_t number ) {
    String text = std::to_string( number );
    for( std::size_t at = text.size(); at > 3; at -= 3 )
        text.insert( at - 3, "," );
    return text;
}

String rounded( std::uint64_t number ) {
    double const value = static_cast<double>( number );
    if( number < 10'000 )
        return grouped( number );
    if( number < 999'500 )
        return fmt::format( "{:.0f}k", value / 1e3 );
    if( number < 100'000'000 )
        return withoutZero( fmt::format( "{:.1f}M", value / 1e6 ) );
    return grouped( ( number + 500'000 ) / 1'000'000 ) + "M";
}

String roundedFine( std::uint64_t number ) {
    return number >= 1'000 && number < 100'000
               ? withoutZero( fmt::format( "{:.1f}k", static_cast<double>( number ) / 1e3 ) )
               : rounded( number );
}

String entriesText( std::uint64_t number ) {
    return number < 10'000 ? grouped( number ) : roundedFine( number );
}

String percent( std::uint64_t part, std::uint64_t whole ) {
    if( part == 0 || whole == 0 )
        return "0 %";
    double const share = 100 * static_cast<double>( part ) / static_cast<double>( whole );
    return share >= 9.95  ? fmt::format( "{:.0f} %", share )
           : share >= 0.1 ? fmt::format( "{:.1f} %", share )
                          : "< 0.1 %";
}

String counted( std::uint64_t number, std::string_view one, std::string_view many ) {
    return grouped( number ) + ' ' +
           ( number == 1    ? String( one )
             : many.empty() ? String( one ) + 's'
                            : String( many ) );
}

String handleText( U32 handle ) { return hexText( handle ); }

String stagesText( std::vector<StageEntries> const& stages ) {
    String text;
    for( std::size_t i = 0; i < stages.size(); ++i ) {
        std::size_t const first = i;
        while( i + 1 < stages.size() && stages[ i + 1 ].stage == stages[ i ].stage + 1 )
            ++i;
        text += ( text.empty() ? "" : ", " ) + std::to_string( stages[ first ].stage );
        if( i > first )
            text += "–" + std::to_string( stages[ i ].stage );
    }
    return text;
}

String placeText( ChipResource const& resource ) {
    if( resource.stages.empty() )
        return resource.isPlaced ? "stages not known" : "not placed";
    return ( resource.stages.size() == 1 ? "stage " : "stages " ) + stagesText( resource.stages );
}

SplitName::SplitName( std::string_view name ) : last( name ) {
    auto const dot = name.rfind( '.' );
    if( dot == std::string_view::npos || dot + 1 == name.size() )
        return;
    path = name.substr( 0, dot + 1 );
    last = name.substr( dot + 1 );
}

TypeStyle const& styleOf( U32 type ) {
    static constexpr TypeStyle styles[ typeCount ] = {
        { "te", "ternary match", "ternary_match" },
        { "at", "algorithmic TCAM", "algorithmic_tcam" },
        { "hm", "hash match", "hash_match" },
        { "kl", "hash action", "hash_action" },
        { "kl", "phase 0 match", "phase_0_match" },
        { "kl", "match with no key", "match_with_no_key" },
        { "ad", "action data", "action_data" },
        { "se", "selection", "selection" },
        { "ct", "statistics", "statistics" },
        { "mt", "meter", "meter" },
        { "mt", "WRED", "wred" },
        { "rg", "stateful", "stateful" },
        { "ot", "other", "other" },
    };
    return styles[ placeOfType( type ) ];
}

String factsText( Chip const& chip, ChipResource const& resource ) {
    String text = std::visit( []( auto const& record ) { return traitsText( record ); }, resource.record );
    auto const add = [ & ]( String const& more ) { text += ( text.empty() ? "" : ", " ) + more; };
    if( isMatchType( resource.type ) && !resource.table )
        add( "no record: " +
             ( resource.survey->isOmitted ? whyOmitted( *resource.survey ) : "no match table" ) );
    if( resource.isPlaced && resource.stages.empty() )
        add( "stages not known" );
    if( !resource.isPlaced )
        add( "not placed" );
    if( auto const handle = otherHandle( chip, resource ) )
        add( "record of handle " + handleText( *handle ) );
    return text;
}

} // namespace Bfri
