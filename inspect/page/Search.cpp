#include "inspect/page/Search.h"

#include "inspect/model/HandleUses.h"

namespace Bfri {

namespace {

using Rows = std::vector<Row const*>;

PagesFound pagesOfHandle( Configuration const& configuration, U32 handle ) {
    std::set<String> owners;
    std::set<String> others;
    eachHandleUse( configuration.parser(), [ & ]( HandleUse const& use ) {
        if( use.handle == handle )
            ( use.owner == use.name ? owners : others ).emplace( use.name );
    } );
    if( owners.empty() && !others.empty() )
        return OnlyReferredTo{ handle, std::move( others ) };
    std::vector<Page> pages;
    pages.reserve( owners.size() );
    for( String const& name : owners )
        pages.push_back( pageOf( configuration, name, handle ) );
    return pages;
}

/// Keeps only the actions with these tables and handles on a page.
Page actionsOf( Page page, std::set<std::pair<String, U32>> const& asked ) {
    std::erase_if( page.sections,
                   []( Section const& section ) { return section.kind->kind != Kind::actions; } );
    std::erase_if( page.sections.front().entries, [ & ]( Entry const& action ) {
        return asked.count( { valueAs<String>( action.record, "tableName" ),
                              valueAs<Hex>( action.record, "handle" ).value } ) == 0;
    } );
    return page;
}

PagesFound pagesOfActions( Configuration const& configuration, String const& word ) {
    ActionsMeant const meant = actionsMeant( configuration.parser(), word );
    if( auto const* const several = std::get_if<SeveralRecords>( &meant ) )
        return *several;
    std::map<String, std::set<std::pair<String, U32>>> asked; // by name: tables and handles
    for( BfActionInfo const* const action : std::get<0>( meant ) )
        asked[ action->name ].emplace( action->tableName, action->handle );
    std::vector<Page> pages;
    pages.reserve( asked.size() );
    for( auto const& [ name, tables ] : asked )
        pages.push_back( actionsOf( pageOf( configuration, name ), tables ) );
    return pages;
}

template<class Rule>
Rows chosen( std::vector<Row> const& rows, Rule rule ) {
    Rows some;
    for( Row const& row : rows ) {
        if( rule( row ) )
            some.push_back( &row );
    }
    return some;
}

Rows named( std::vector<Row> const& rows, String const& name ) {
    return chosen( rows, [ & ]( Row const& row ) { return valueAs<String>( row, "name" ) == name; } );
}

/// By the field "handle".
Rows withHandle( std::vector<Row> const& rows, String const& word ) {
    auto const number = handleIn( word );
    return chosen( rows, [ & ]( Row const& row ) {
        auto const* const handle = std::get_if<Hex>( &valueOf( row, "handle" ).is );
        return handle && number == handle->value;
    } );
}

std::vector<String> namesIn( std::vector<Row> const& rows ) {
    std::vector<String> names;
    names.reserve( rows.size() );
    for( Row const& row : rows )
        names.push_back( valueAs<String>( row, "name" ) );
    return names;
}

/// One of each that are the same in every field.
Rows differing( Rows rows ) {
    auto const isLess = []( Row const* a, Row const* b ) { return *a < *b; };
    std::sort( rows.begin(), rows.end(), isLess );
    auto const isSame = [ & ]( Row const* a, Row const* b ) { return !isLess( a, b ); };
    rows.erase( std::unique( rows.begin(), rows.end(), isSame ), rows.end() );
    return rows;
}

/// What to type for each of several records: for actions with the table, for others the handle.
std::vector<String> wordsFor( BfResourceParser const& parser, RecordKind const& kind,
                              std::vector<Row> const& rows, Rows const& meant ) {
    std::vector<BfActionInfo const*> actions;
    std::set<String> words;
    for( Row const* const row : meant ) {
        if( kind.kind == Kind::actions )
            actions.push_back( &parser.bfActions().at( static_cast<U32>( row - rows.data() ) ) );
        else if( auto const* const handle = std::get_if<Hex>( &valueOf( *row, "handle" ).is ) )
            words.insert( hexText( handle->value ) );
    }
    return actions.empty() ? std::vector( words.begin(), words.end() ) : wordsForActions( actions );
}

} // namespace

PagesFound pagesFor( Configuration const& configuration, String const& word ) {
    auto const names = allNames( configuration.parser() );
    auto const handle = handleIn( word );
    if( std::find( names.begin(), names.end(), word ) == names.end() ) {
        auto found = handle ? pagesOfHandle( configuration, *handle ) : pagesOfActions( configuration, word );
        auto const* const pages = std::get_if<std::vector<Page>>( &found );
        if( !pages || !pages->empty() )
            return found;
    }
    Meaning meaning = meaningOf( names, word );
    if( meaning.is != Meaning::Is::found )
        return meaning;
    return std::vector{ pageOf( configuration, meaning.names.front() ) };
}

RecordFound recordFor( BfResourceParser const& parser, RecordKind const& kind, std::vector<Row> const& rows,
                       String const& word ) {
    Rows meant = named( rows, word );
    if( meant.empty() )
        meant = withHandle( rows, word );
    if( meant.empty() && kind.kind == Kind::actions ) {
        ActionsMeant const actions = actionsMeant( parser, word );
        if( auto const* const several = std::get_if<SeveralRecords>( &actions ) )
            return *several;
        for( BfActionInfo const* const action : std::get<0>( actions ) )
            meant.push_back( &rows[ static_cast<std::size_t>( action - &parser.bfActions().at( 0 ) ) ] );
    }
    if( meant.empty() ) {
        Meaning meaning = meaningOf( namesIn( rows ), word );
        if( meaning.is != Meaning::Is::found )
            return meaning;
        meant = named( rows, meaning.names.front() );
    }
    meant = differing( std::move( meant ) );
    if( meant.size() == 1 )
        return meant.front();
    auto words = wordsFor( parser, kind, rows, meant );
    bool const tellApart = words.size() == meant.size();
    return SeveralRecords{ &kind, meant.size(), std::move( words ), tellApart };
}

} // namespace Bfri
