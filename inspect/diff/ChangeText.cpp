#include "inspect/diff/Verdict.h"

namespace Bfri {

namespace {

/// A record that is referred to, or a stage and its entries.
String rowInLine( Row const& row ) {
    if( Value const& stage = valueOf( row, "stage" ); stage.is.index() != 0 )
        return lineOf( stage ) + ": " + lineOf( valueOf( row, "size" ) );
    String const handle = lineOf( valueOf( row, "handle" ) );
    Value const& name = valueOf( row, "name" );
    return name.is.index() == 0 ? handle : handle + " (" + lineOf( name ) + ')';
}

String listInLine( List const& list ) {
    bool const hasStages = !list.empty() && std::holds_alternative<Row>( list.front().is ) &&
                           valueOf( std::get<Row>( list.front().is ), "stage" ).is.index() != 0;
    String text;
    for( Value const& element : list )
        text += ( text.empty() ? "" : hasStages ? ", " : " " ) + lineOf( element );
    return '[' + text + ']';
}

struct InLine {
    String operator()( std::monostate ) const { return "-"; }
    String operator()( bool flag ) const { return flag ? "yes" : "no"; }
    String operator()( U32 number ) const { return std::to_string( number ); }
    String operator()( std::int64_t number ) const { return std::to_string( number ); }
    String operator()( Hex number ) const { return hexText( number.value ); }
    String operator()( String const& text ) const { return text.empty() ? "-" : text; }
    String operator()( List const& list ) const { return listInLine( list ); }
    String operator()( Row const& row ) const { return rowInLine( row ); }
};

/// As texts show it: the field's name for people, and a resource's direction and type in words.
Change inWords( Change const& change ) {
    auto const direction = []( Value const& isIngress ) {
        return std::get<bool>( isIngress.is ) ? "ingress" : "egress";
    };
    if( change.field == "ingress" )
        return { "direction", direction( change.from ), direction( change.to ) };
    return { change.field == "typeName" ? "type" : change.field, change.from, change.to };
}

} // namespace

String lineOf( Value const& value ) { return std::visit( InLine(), value.is ); }

String fromTo( Value const& from, Value const& to ) { return lineOf( from ) + " -> " + lineOf( to ); }

String lineOf( std::vector<Change> const& changes ) {
    bool const hasTypeName =
        std::ranges::any_of( changes, []( Change const& one ) { return one.field == "typeName"; } );
    std::vector<std::pair<String, String>> groups;
    for( Change const& one : changes ) {
        if( hasTypeName && one.field == "type" ) // a number
            continue;
        Change const change = inWords( one );
        String const values = fromTo( change.from, change.to );
        auto const alike =
            std::ranges::find_if( groups, [ & ]( auto const& group ) { return group.second == values; } );
        if( alike == groups.end() )
            groups.emplace_back( change.field, values );
        else
            alike->first.append( ", " ).append( change.field );
    }
    String text;
    for( auto const& [ fields, values ] : groups )
        text.append( text.empty() ? "" : "; " ).append( fields ).append( " " ).append( values );
    return text;
}

String pipesText( U32 mask ) {
    String text;
    for( U32 pipe = 0; pipe < 32; ++pipe ) {
        if( !( mask >> pipe & 1 ) )
            continue;
        U32 last = pipe;
        while( last < 31 && mask >> ( last + 1 ) & 1 )
            ++last;
        text += ( text.empty() ? "" : " " ) + std::to_string( pipe ) +
                ( last > pipe ? '-' + std::to_string( last ) : "" );
        pipe = last;
    }
    return text;
}

} // namespace Bfri
