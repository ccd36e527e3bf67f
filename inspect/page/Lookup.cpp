#include "inspect/page/Lookup.h"

#include "inspect/model/RecordKinds.h"

#include <set>
#include <unordered_map>

namespace Bfri {

namespace {

using Uses = std::vector<HandleUse>;
using UsesByHandle = std::unordered_map<U32, Uses>;

constexpr U32 withoutPipe = 0x0FFFFFFF; ///< of a handle, the bits that no pipe takes

/// Uses of the handles that are asked for, of those that differ in the pipe's bits alone, and of what a word
/// means after a 0x.
UsesByHandle usesLike( BfResourceParser const& parser, std::span<String const> words ) {
    UsesByHandle like;
    for( String const& word : words ) {
        like[ *handleIn( word ) & withoutPipe ];
        if( auto const hexadecimal = handleBehind0x( word ) )
            like[ *hexadecimal & withoutPipe ];
    }
    eachHandleUse( parser, [ & ]( HandleUse const& use ) {
        auto const bucket = like.find( use.handle & withoutPipe );
        if( bucket != like.end() )
            bucket->second.push_back( use );
    } );
    return like;
}

/// Tables that the model omits and that have what has the handle as its own; where nothing does, what they
/// have of it.
Omissions omittedOf( U32 handle, Uses const& uses, OmittedTables const& tables ) {
    Omissions all;
    std::set<String> names;
    bool isOwned = false;
    for( HandleUse const& use : uses ) {
        if( use.owner != use.name || use.owner.empty() )
            continue;
        if( use.kind == Kind::tables )
            return {};
        isOwned = true;
        if( use.kind == Kind::resources || kindOf( use.kind ).attachment ) // may belong to a match table
            names.emplace( use.name );
    }
    if( !isOwned ) {
        all = tables.withHandle( handle );
        bool const isResource = !all.empty() && all.front().omitted == Omitted::handle;
        names.insert( isResource ? all.front().table->name : "" );
    }
    for( String const& name : names ) {
        for( Omission const& one : tables.of( handle, name ) )
            all.push_back( one );
    }
    return all;
}

/// Handles come with a pipe in their upper bits from some sources and without it from others.
std::map<U32, String> othersLike( BfResourceParser const& parser, U32 handle, Uses const& like ) {
    bool const pipesInHandles = !parser.bfrtConfig().empty();
    std::map<U32, String> names;
    for( HandleUse const& use : like ) {
        bool const isPipeLost = use.handle == ( handle & withoutPipe );
        if( pipesInHandles || isPipeLost )
            names.emplace( use.handle, use.owner.empty() ? use.name : use.owner );
    }
    return names;
}

Uses usesOf( U32 handle, UsesByHandle const& like ) {
    Uses uses = like.at( handle & withoutPipe );
    std::erase_if( uses, [ & ]( HandleUse const& use ) { return use.handle != handle; } );
    return uses;
}

HandleAnswer answerFor( BfResourceParser const& parser, String const& word, UsesByHandle const& like,
                        OmittedTables const& tables ) {
    U32 const handle = *handleIn( word );
    HandleAnswer answer{ handle, usesOf( handle, like ) };
    answer.omitted = omittedOf( handle, answer.uses, tables );
    if( !answer.uses.empty() )
        return answer;
    answer.others = othersLike( parser, handle, like.at( handle & withoutPipe ) );
    auto const hexadecimal = handleBehind0x( word );
    if( hexadecimal && !usesOf( *hexadecimal, like ).empty() )
        answer.without0x = hexadecimal;
    return answer;
}

Row useRow( HandleUse const& use ) {
    return { { "kind", kindOf( use.kind ).one },
             { "field", textOrNone( use.field ) },
             { "name", String( use.name ) },
             { "table", textOrNone( use.table ) },
             { "severalTables", use.severalTables } };
}

Row withHandle( HandleUse const& use ) {
    Row row = useRow( use );
    row.insert( row.begin(), { "handle", Hex( use.handle ) } );
    return row;
}

List suggestionsOf( HandleAnswer const& answer ) {
    List words = listOf( answer.others, []( auto const& other ) { return hexText( other.first ); } );
    if( answer.without0x )
        words.emplace_back( hexText( *answer.without0x ) );
    return words;
}

} // namespace

std::vector<HandleAnswer> lookUp( Configuration const& configuration, std::span<String const> words ) {
    auto const& parser = configuration.parser();
    auto const like = usesLike( parser, words );
    OmittedTables const tables( configuration );
    std::vector<HandleAnswer> answers;
    for( String const& word : words )
        answers.push_back( answerFor( parser, word, like, tables ) );
    return answers;
}

std::vector<Row> rowsOf( std::vector<HandleAnswer> const& answers ) {
    std::vector<Row> rows;
    for( HandleAnswer const& answer : answers ) {
        for( HandleUse const& use : answer.uses )
            rows.push_back( withHandle( use ) );
    }
    return rows;
}

Row blankUse() { return withHandle( {} ); }

List objectsOf( std::vector<HandleAnswer> const& answers ) {
    return listOf( answers, []( HandleAnswer const& answer ) {
        return Row{ { "handle", Hex( answer.handle ) },
                    { "found", listOf( answer.uses, []( HandleUse const& use ) { return useRow( use ); } ) },
                    { "suggestions", suggestionsOf( answer ) },
                    { "omitted", valuesOf( answer.omitted ) } };
    } );
}

} // namespace Bfri
