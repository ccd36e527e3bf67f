#include "cli/report/Parts.h"

namespace Bfri {

GridCell ReportData::totalOf( std::size_t program, std::size_t column ) const {
    GridCell total;
    for( StageGrid const& grid : grids[ program ] ) {
        if( !grid.isEmpty() )
            total += grid.all.cells[ column ];
    }
    return total;
}

std::uint64_t ReportData::entriesOf( std::size_t program ) const {
    std::uint64_t entries = 0;
    for( StageGrid const& grid : grids[ program ] )
        entries += grid.all.sum().entries;
    return entries;
}

Attribute linkTo( ChipLink link ) {
    return { "href",
             own( "#{}{}", link.to == ChipLink::To::table ? Literal( "t" ) : Literal( "r" ), link.number ) };
}

void addTableMark( Attributes& attributes, ChipResource const& resource ) {
    if( resource.table )
        attributes.push_back( { "data-t", own( "{}", *resource.table ) } );
    else if( resource.owners.size() == 1 && resource.owners.front().to == ChipLink::To::table )
        attributes.push_back( { "data-t", own( "{}", resource.owners.front().number ) } );
}

void writeSwatch( Html& html, U32 type ) { html.leaf( "i", { { "class", styleOf( type ).css } }, "" ); }

void writeName( Html& html, std::string_view name ) {
    SplitName const parts( name );
    if( !parts.path.empty() )
        html.leaf( "s", parts.path );
    html.leaf( "b", parts.last );
}

void writeHandle( Html& html, U32 handle ) { html.leaf( "code", handleText( handle ) ); }

void writeStrong( Html& html, std::string_view text ) { html.leaf( "b", text ); }

MarkStyle const& styleOf( Mark mark ) {
    static constexpr MarkStyle styles[ markCount ] = {
        { "removed", "−", "removed" }, { "shrank", "▼", "shrank" }, { "added", "+", "added" },
        { "grew", "▲", "grew" },       { "moved", "→", "moved" },   { "changed", "~", "changed" } };
    return styles[ static_cast<std::size_t>( mark ) ];
}

void writeMark( Html& html, Mark mark ) {
    MarkStyle const& style = styleOf( mark );
    html.leaf( "i", { { "class", own( "d {}", style.css ) }, { "title", style.word } }, style.glyph.view() );
}

void writeMarks( Html& html, Marks marks ) {
    for( std::size_t mark = 0; mark < markCount; ++mark ) {
        if( marks.test( mark ) )
            writeMark( html, static_cast<Mark>( mark ) );
    }
}

Mark gravest( Marks marks ) {
    std::size_t mark = 0;
    while( mark + 1 < markCount && !marks.test( mark ) )
        ++mark;
    return static_cast<Mark>( mark );
}

void writeSeverity( Html& html, Severity severity ) {
    static constexpr MarkStyle styles[] = {
        { "note", "●", "note" }, { "warning", "▲", "warning" }, { "error", "■", "error" } };
    MarkStyle const& style = styles[ static_cast<std::size_t>( severity ) ];
    html.leaf( "i", { { "class", own( "sv {}", style.css ) }, { "aria-hidden", "true" } },
               style.glyph.view() );
}

void writeDelta( Html& html, std::uint64_t now, std::uint64_t was, String ( *text )( std::uint64_t ) ) {
    if( now != was )
        html.leaf( "sup", { { "class", now > was ? Literal( "up" ) : Literal( "dn" ) } },
                   ( now > was ? "+" : "−" ) + text( now > was ? now - was : was - now ) );
}

Literal cssOf( Soundness verdict ) {
    static constexpr Literal classes[] = { "ok", "warn", "bad" };
    return classes[ static_cast<std::size_t>( verdict ) ];
}

void writeIcon( Html& html, Soundness verdict ) {
    static constexpr Literal outlines[] = { "M1 12a11 11 0 1 0 22 0a11 11 0 1 0-22 0z",
                                            "M12 1.5L23.4 21.5H.6z",
                                            "M7.6 1h8.8L23 7.6v8.8L16.4 23H7.6L1 16.4V7.6z" };
    static constexpr Literal signs[] = { "M6.5 12.5l3.6 3.6 7.4-8", "M12 8.5v6M12 17.6v.4",
                                         "M12 6v7.5M12 16.8v.4" };
    auto const i = static_cast<std::size_t>( verdict );
    html.open( "svg", { { "class", "ic" },
                        { "viewBox", "0 0 24 24" },
                        { "width", "22" },
                        { "height", "22" },
                        { "aria-hidden", "true" } } )
        .shape( "path", { { "d", outlines[ i ] } } )
        .shape( "path", { { "class", "w" }, { "d", signs[ i ] } } )
        .close();
}

void writePipes( Html& html, ChipProgram const& program, bool withWord ) {
    html.open( "span", { { "class", "pp" } } );
    for( U32 const pipe : program.pipes )
        html.leaf( "i", std::to_string( pipe ) );
    if( program.pipes.empty() )
        html.leaf( "i", "–" );
    if( withWord )
        html.leaf( "small", program.pipes.size() == 1 ? "pipe" : "pipes" );
    html.close();
}

void writeSwitch( Html& html, Literal name, char const* label, std::span<Choice const> choices ) {
    html.open( "div", { { "class", "tog" }, { "role", "radiogroup" }, labelled( label ) } );
    for( Choice const& choice : choices ) {
        Attributes input{ { "type", "radio" }, { "name", name }, { "id", choice.id } };
        if( &choice == &choices.front() )
            input.push_back( { "checked", "" } );
        html.empty( "input", input ).leaf( "label", { { "for", choice.id } }, choice.label.view() );
    }
    html.close();
}

OwnText questionOf( ReportData const& data, ChipProgram const& program, Stage stage, bool ingress,
                    std::optional<U32> type ) {
    OwnText question( "" );
    if( data.chip.programs.size() > 1 && !program.pipes.empty() )
        question += own( "pipe:{} ", program.pipes.front() );
    question += own( "stage:{} dir:{}", stage, directionWord( ingress ) );
    if( type )
        question += own( " kind:{}", styleOf( *type ).slug );
    return question;
}

} // namespace Bfri
