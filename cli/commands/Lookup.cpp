#include "cli/commands/Answers.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/HandleUses.h"
#include "inspect/model/Kinds.h"
#include "inspect/model/Omissions.h"
#include "inspect/model/Relations.h"
#include "inspect/rows/CsvFormat.h"
#include "inspect/rows/JsonFormat.h"
#include "inspect/rows/Utf8.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

namespace Bfri {

namespace {

using Bearers = std::vector<HandleUse>;

constexpr U32 withoutPipe = 0x0FFFFFFF; ///< of a handle, the bits that no pipe takes

/// A handle as asked for, and what bears it.
struct Found {
    String word;
    U32 handle = 0;
    Bearers bearers = {};
    Bearers others = {}; ///< of handles that differ in the pipe's bits alone
    Omissions leftOut = {};
    std::optional<U32> behind0x = {}; ///< of a word that nothing bears, another reading that something does
};

U32 handleMeant( BfResourceInfo::BfResourceParser const& parser, String const& word ) {
    if( auto const handle = handleIn( word ) )
        return *handle;
    auto const meant = handleWithout0x( parser, word );
    throw Failure( ExitStatus::usage,
                   "'" + escapeForTerminal( word ) +
                       "' is no handle: a number up to 0xffffffff, decimal or hexadecimal behind 0x" +
                       ( meant ? "; did you mean " + textOf( Hex( *meant ) ) + "?" : "" ) );
}

bool areOf( Bearers const& bearers, U32 handle ) {
    return std::any_of( bearers.begin(), bearers.end(),
                        [ & ]( HandleUse const& bearer ) { return bearer.handle == handle; } );
}

/// Whether it may belong to a match table, or be one's resource.
bool isAttachable( HandleUse const& bearer ) {
    return bearer.kind == std::string_view( "resource" ) ||
           std::any_of( attachments().begin(), attachments().end(), [ & ]( Attachment const& attachment ) {
               return kindOf( attachment.kind )->one == std::string_view( bearer.kind );
           } );
}

/// The match tables behind what has the handle as its own, and what of the files has it where nothing does.
Omissions leftOutBehind( U32 handle, Bearers const& bearers, OmittedTables const& tables ) {
    Omissions all;
    std::set<String> names;
    bool isOwned = false;
    for( HandleUse const& bearer : bearers ) {
        if( bearer.owner != bearer.name || bearer.owner.empty() )
            continue;
        if( bearer.kind == std::string_view( "table" ) )
            return {};
        isOwned = true;
        if( isAttachable( bearer ) )
            names.emplace( bearer.name );
    }
    if( !isOwned ) {
        all = tables.withHandle( handle );
        bool const isResource = !all.empty() && all.front().omitted == Omitted::handle;
        names.insert( isResource ? all.front().table : "" );
    }
    for( String const& name : names ) {
        for( Omission& one : tables.of( handle, name ) )
            all.push_back( std::move( one ) );
    }
    return all;
}

/// One pass over the model, however many handles are asked for.
std::unordered_map<U32, Bearers> bearersLike( Configuration const& configuration,
                                              std::vector<Found> const& asked ) {
    std::unordered_map<U32, Bearers> like;
    for( Found const& one : asked ) {
        like[ one.handle & withoutPipe ];
        if( one.behind0x )
            like[ *one.behind0x & withoutPipe ];
    }
    eachHandleUse( configuration.parser(), [ & ]( HandleUse const& bearer ) {
        auto const bucket = like.find( bearer.handle & withoutPipe );
        if( bucket != like.end() )
            bucket->second.push_back( bearer );
    } );
    return like;
}

std::vector<Found> find( Configuration const& configuration, std::span<String const> words ) {
    std::vector<Found> all;
    for( String const& word : words )
        all.push_back( { .word = word,
                         .handle = handleMeant( configuration.parser(), word ),
                         .behind0x = handleBehind0x( word ) } );
    auto const like = bearersLike( configuration, all );
    OmittedTables const tables( configuration );
    for( Found& one : all ) {
        for( HandleUse const& bearer : like.at( one.handle & withoutPipe ) )
            ( bearer.handle == one.handle ? one.bearers : one.others ).push_back( bearer );
        one.leftOut = leftOutBehind( one.handle, one.bearers, tables );
        if( !one.bearers.empty() || !one.behind0x ||
            !areOf( like.at( *one.behind0x & withoutPipe ), *one.behind0x ) )
            one.behind0x.reset();
    }
    return all;
}

Value textOrNone( std::string_view text ) { return text.empty() ? Value() : Value( String( text ) ); }

Row rowOf( HandleUse const& bearer ) {
    return { { "kind", bearer.kind },
             { "field", textOrNone( bearer.field ) },
             { "name", String( bearer.name ) },
             { "table", textOrNone( bearer.table ) },
             { "severalTables", bearer.severalTables } };
}

std::vector<Row> rowsOf( std::vector<Found> const& all ) {
    std::vector<Row> rows;
    for( Found const& one : all ) {
        for( HandleUse const& bearer : one.bearers ) {
            Row& row = rows.emplace_back( rowOf( bearer ) );
            row.insert( row.begin(), { "handle", Hex( bearer.handle ) } );
        }
    }
    return rows;
}

Row shownRow( Row row ) {
    if( valueAs<bool>( row, "severalTables" ) )
        row[ 4 ].value = "(several)";
    row.pop_back();
    return row;
}

void printAsText( std::vector<Row> rows, Streams const& io ) {
    constexpr std::size_t fewest = 60; // more than other lists, as names of tables stand behind names
    if( rows.empty() )
        return;
    std::transform( rows.begin(), rows.end(), rows.begin(), shownRow );
    RowList const list{
        { { "HANDLE", {} }, { "KIND", {} }, { "IN FIELD", {} }, { "NAME", {} }, { "TABLE", {} } },
        std::move( rows ) };
    printColumns( io.out, list, io.look, fewest );
}

void printAsCsv( std::vector<Row> rows, std::ostream& out ) {
    Row fields = rowOf( HandleUse() );
    fields.insert( fields.begin(), { "handle", {} } );
    printCsv( out, { fields, std::move( rows ) } );
}

/// Handles of other bearers that may be meant, each with a name.
std::map<U32, std::string_view> othersOf( Found const& one, bool pipesInHandles ) {
    std::map<U32, std::string_view> names;
    for( HandleUse const& other : one.others ) {
        bool const isPipeLost = other.handle == ( one.handle & withoutPipe );
        if( one.bearers.empty() && ( pipesInHandles || isPipeLost ) )
            names.emplace( other.handle, other.owner.empty() ? other.name : other.owner );
    }
    return names;
}

List suggestionsFor( Found const& one, bool pipesInHandles ) {
    List words = listOf( othersOf( one, pipesInHandles ),
                         []( auto const& other ) { return textOf( Hex( other.first ) ); } );
    if( one.behind0x )
        words.push_back( textOf( Hex( *one.behind0x ) ) );
    return words;
}

void printAsJson( std::vector<Found> const& all, bool pipesInHandles, std::ostream& out ) {
    JsonAnswer( out ).member( "handles", listOf( all, [ & ]( Found const& one ) {
                                  return Row{ { "handle", Hex( one.handle ) },
                                              { "found", listOf( one.bearers, rowOf ) },
                                              { "suggestions", suggestionsFor( one, pipesInHandles ) },
                                              { "leftOut", valuesOf( one.leftOut ) } };
                              } ) );
}

/// Handles come with a pipe in their upper bits from some sources and without it from others.
void sayUnknown( Found const& one, bool pipesInHandles, std::ostream& err ) {
    err << "bfri: nothing has the handle " << one.word;
    char const* before = pipesInHandles
                             ? "; with another pipe in the upper four bits: "
                             : "; without a pipe in the upper four bits, as there is no runtime_config: ";
    for( auto const& [ handle, name ] : othersOf( one, pipesInHandles ) )
        err << std::exchange( before, ", " ) << textOf( Hex( handle ) ) << " (" << escapeForTerminal( name )
            << ")";
    if( !one.leftOut.empty() )
        err << "; " << sentencesOf( one.leftOut );
    if( one.behind0x )
        err << "; did you mean " << textOf( Hex( *one.behind0x ) ) << "?";
    err << '\n';
}

} // namespace

ExitStatus lookup( Configuration const& configuration, Request const& request, Streams const& io ) {
    bool const pipesInHandles = !configuration.parser().bfrtConfig().empty();
    auto const all = find( configuration, std::span( request.words ).subspan( 1 ) );
    switch( request.format ) {
    case Format::text:
        printAsText( rowsOf( all ), io );
        break;
    case Format::csv:
        printAsCsv( rowsOf( all ), io.out );
        break;
    case Format::json:
        printAsJson( all, pipesInHandles, io.out );
        break;
    }
    ExitStatus status = ExitStatus::done;
    for( Found const& one : all ) {
        if( one.bearers.empty() ) {
            sayUnknown( one, pipesInHandles, io.err );
            status = ExitStatus::no;
            continue;
        }
        for( Omission const& leftOut : one.leftOut )
            io.err << "bfri: " << one.word << ": " << sentenceOf( leftOut ) << '\n';
    }
    return status;
}

} // namespace Bfri
