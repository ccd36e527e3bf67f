#include "report/Parts.h"

#include "inspect/model/Omissions.h"

namespace Bfri {

GridCell ReportData::totalOf( std::size_t program, std::size_t column ) const {
    GridCell total = grids[ program ][ 0 ].all.cells[ column ];
    return total += grids[ program ][ 1 ].all.cells[ column ];
}

std::uint64_t ReportData::entriesOf( std::size_t program ) const {
    return grids[ program ][ 0 ].all.sum().entries + grids[ program ][ 1 ].all.sum().entries;
}

std::uint64_t ReportData::mostEntriesOf( std::size_t program ) const {
    return std::max( grids[ program ][ 0 ].mostEntries(), grids[ program ][ 1 ].mostEntries() );
}

String Direction::name() const { return fmt::format( "{}, {}", program().name, directionWord( ingress ) ); }

OwnText Direction::question( std::size_t column, std::optional<U32> type ) const {
    bool const isOneOfSeveral = data.chip.programs.size() > 1 && !program().pipes.empty();
    return own( "{}stage:{} dir:{}{}",
                isOneOfSeveral ? own( "pipe:{} ", program().pipes.front() ) : OwnText(),
                data.chip.stages[ column ], directionWord( ingress ),
                type ? own( " kind:{}", styleOf( *type ).slug ) : OwnText() );
}

namespace {

String withoutZero( String text ) {
    if( auto const zero = text.find( ".0" ); zero + 3 == text.size() )
        text.erase( zero, 2 );
    return text;
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
    if( number == 1 )
        return fmt::format( "1 {}", one );
    return many.empty() ? fmt::format( "{} {}s", grouped( number ), one )
                        : fmt::format( "{} {}", grouped( number ), many );
}

String countedEntries( std::uint64_t number ) { return counted( number, "entry", "entries" ); }

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

Literal wordOf( Mark mark ) {
    static constexpr Literal words[ markCount ] = { "removed", "shrank", "added",
                                                    "grew",    "moved",  "changed" };
    return words[ static_cast<std::size_t>( mark ) ];
}

std::vector<Mark> marksIn( Marks marks ) {
    std::vector<Mark> all;
    for( std::size_t mark = 0; mark < markCount; ++mark ) {
        if( marks.test( mark ) )
            all.push_back( static_cast<Mark>( mark ) );
    }
    return all;
}

namespace {

String traitsText( std::monostate ) { return ""; }
String traitsText( BfTableCounterInfo const* c ) {
    return fmt::format( "{}{}{}direct", c->packets ? "packets, " : "", c->bytes ? "bytes, " : "",
                        c->direct ? "" : "in" );
}
String traitsText( BfTableMeterInfo const* m ) {
    return fmt::format( "{}, {}direct{}", m->pps ? "packets/s" : "bytes/s", m->direct ? "" : "in",
                        m->hasPreColor ? ", pre-colour" : "" );
}
String traitsText( BfTableWredInfo const* w ) { return w->direct ? "direct" : "indirect"; }
String traitsText( BfRegisterInfo const* r ) {
    return fmt::format( "{}{}, {}direct", r->dataType, r->dualWidth ? " ×2" : "", r->indirect ? "in" : "" );
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
    bool const isKnown = handle == resource.handle ||
                         std::any_of( resource.owners.begin(), resource.owners.end(),
                                      [ & ]( ChipLink owner ) { return handle == chip.handleOf( owner ); } );
    return isKnown ? std::nullopt : handle;
}

} // namespace

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
        add( "record of handle " + hexText( *handle ) );
    return text;
}

OwnText hrefOf( ChipLink link ) {
    return own( "#{}{}", link.to == ChipLink::To::table ? 't' : 'r', link.number );
}

OwnText tableMark( ChipResource const& resource ) {
    if( resource.table )
        return own( " data-t={}", *resource.table );
    if( resource.owners.size() == 1 && resource.owners.front().to == ChipLink::To::table )
        return own( " data-t={}", resource.owners.front().number );
    return {};
}

Html swatchOf( U32 type ) { return markup( "<i class={}></i>", styleOf( type ).css ); }

Html typeWord( U32 type ) { return markup( "{}{}", swatchOf( type ), styleOf( type ).word ); }

Html nameParts( std::string_view name ) {
    SplitName const parts( name );
    Html html;
    if( !parts.path.empty() )
        html.add( "<s>{}</s>", parts.path );
    return html.add( "<b>{}</b>", parts.last );
}

Html linkedName( std::optional<ChipLink> const& link, std::string_view name ) {
    return link ? markup( "<a href={}>{}</a>", hrefOf( *link ), nameParts( name ) )
                : markup( "<span class=a>{}</span>", nameParts( name ) );
}

Html codeOf( U32 handle ) { return markup( "<code>{}</code>", hexText( handle ) ); }

Html markOf( Mark mark ) {
    static constexpr Literal glyphs[ markCount ] = { "−", "▼", "+", "▲", "→", "~" };
    return markup( "<i class=\"d {0}\" title={0}>{1}</i>", wordOf( mark ),
                   glyphs[ static_cast<std::size_t>( mark ) ] );
}

Html marksOf( Marks marks ) {
    Html html;
    for( Mark const mark : marksIn( marks ) )
        html += markOf( mark );
    return html;
}

Html severityMark( Severity severity ) {
    static constexpr Literal words[] = { "note", "warning", "error" }, glyphs[] = { "●", "▲", "■" };
    auto const i = static_cast<std::size_t>( severity );
    return markup( R"(<i class="sv {}" aria-hidden=true>{}</i>)", words[ i ], glyphs[ i ] );
}

Html delta( std::uint64_t now, std::uint64_t was, String ( *text )( std::uint64_t ) ) {
    if( now == was )
        return {};
    return now > was ? markup( "<sup class=up>+{}</sup>", text( now - was ) )
                     : markup( "<sup class=dn>−{}</sup>", text( was - now ) );
}

Literal cssOf( Soundness verdict ) {
    static constexpr Literal classes[] = { "ok", "warn", "bad" };
    return classes[ static_cast<std::size_t>( verdict ) ];
}

Html iconOf( Soundness verdict ) {
    static constexpr Literal outlines[] = { "M1 12a11 11 0 1 0 22 0a11 11 0 1 0-22 0z",
                                            "M12 1.5L23.4 21.5H.6z",
                                            "M7.6 1h8.8L23 7.6v8.8L16.4 23H7.6L1 16.4V7.6z" };
    static constexpr Literal signs[] = { "M6.5 12.5l3.6 3.6 7.4-8", "M12 8.5v6M12 17.6v.4",
                                         "M12 6v7.5M12 16.8v.4" };
    auto const i = static_cast<std::size_t>( verdict );
    return markup( R"(<svg class=ic viewBox="0 0 24 24" width=22 height=22 aria-hidden=true>)"
                   R"(<path d="{}" /><path class=w d="{}" /></svg>)",
                   outlines[ i ], signs[ i ] );
}

Html pipeBoxes( ChipProgram const& program, bool withWord ) {
    Html html = markup( "<span class=pp>" );
    for( U32 const pipe : program.pipes )
        html.add( "<i>{}</i>", pipe );
    if( program.pipes.empty() )
        html.add( "<i>–</i>" );
    if( withWord )
        html.add( "<small>{}</small>", program.pipes.size() == 1 ? "pipe" : "pipes" );
    return html.add( "</span>" );
}

Html switchOf( Literal name, Literal label, std::span<Choice const> choices ) {
    Html html = markup( R"(<div class=tog role=radiogroup aria-label="{}">)", label );
    for( Choice const& choice : choices )
        html.add( "<input type=radio name={0} id={1}{2}><label for={1}>{3}</label>", name, choice.id,
                  when( &choice == &choices.front(), " checked" ), choice.label );
    return html.add( "</div>" );
}

void openTable( Html& html, std::span<ListColumn const> columns, Literal headClass ) {
    html.add( "<div class=x><table class=ls><colgroup>" );
    for( ListColumn const& column : columns )
        html.add( "<col{}>", column.width ? own( " style=width:{}px", column.width ) : OwnText() );
    html.add( "</colgroup><thead{}><tr>", headClass );
    for( ListColumn const& column : columns )
        html.add( "<th scope=col{}>{}", column.css, column.title );
    html.add( "<tbody>" );
}

} // namespace Bfri
