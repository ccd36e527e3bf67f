#include "cli/Answers.h"
#include "cli/Bearers.h"
#include "cli/CsvFormat.h"
#include "cli/JsonFormat.h"
#include "cli/LeftOut.h"
#include "cli/TextFormat.h"
#include "cli/Utf8.h"

#include <algorithm>
#include <cstdio>
#include <unordered_map>

namespace Bfri {

namespace {

using Bearers = std::vector<Bearer>;

constexpr U32 withoutPipe = 0x0FFFFFFF; ///< of a handle, the bits that no pipe takes

/// A handle as asked for, and what bears it.
struct Found {
    String word;
    U32 handle = 0;
    Bearers bearers = {};
    Bearers others = {}; ///< of handles that differ in the pipe's bits alone
};

U32 handleMeant( String const& word ) {
    auto const handle = handleIn( word );
    if( !handle )
        throw Failure( ExitStatus::usage,
                       "'" + shown( word ) +
                           "' is no handle: a number up to 0xffffffff, decimal or hexadecimal behind 0x" );
    return *handle;
}

/// One pass over the model, however many handles are asked for.
std::unordered_map<U32, Bearers> bearersLike( Model const& model, std::vector<Found> const& asked ) {
    std::unordered_map<U32, Bearers> like;
    for( Found const& one : asked )
        like[ one.handle & withoutPipe ];
    eachBearer( *model.parser(), [ & ]( Bearer const& bearer ) {
        auto const bucket = like.find( bearer.handle & withoutPipe );
        if( bucket != like.end() )
            bucket->second.push_back( bearer );
    } );
    return like;
}

std::vector<Found> find( Model const& model, std::span<String const> words ) {
    std::vector<Found> all;
    for( String const& word : words )
        all.push_back( { word, handleMeant( word ) } );
    auto const like = bearersLike( model, all );
    for( Found& one : all ) {
        for( Bearer const& bearer : like.at( one.handle & withoutPipe ) )
            ( bearer.handle == one.handle ? one.bearers : one.others ).push_back( bearer );
    }
    return all;
}

Value textOrNone( std::string_view text ) { return text.empty() ? Value() : Value( String( text ) ); }

Row rowOf( Bearer const& bearer ) {
    return { { "kind", bearer.kind },
             { "field", textOrNone( bearer.field ) },
             { "name", String( bearer.name ) },
             { "table", textOrNone( bearer.table ) },
             { "severalTables", bearer.severalTables } };
}

std::vector<Row> rowsOf( std::vector<Found> const& all ) {
    std::vector<Row> rows;
    for( Found const& one : all ) {
        for( Bearer const& bearer : one.bearers ) {
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

/// Without field and table, so that what tells the rows apart has room.
void narrow( RowList& list ) {
    auto const erase = []( Row& row ) {
        row.erase( row.begin() + 4 );
        row.erase( row.begin() + 2 );
    };
    erase( list.header );
    std::for_each( list.rows.begin(), list.rows.end(), erase );
}

void printAsText( std::vector<Row> rows, Streams const& io ) {
    constexpr std::size_t enough = 60;
    if( rows.empty() )
        return;
    std::transform( rows.begin(), rows.end(), rows.begin(), shownRow );
    RowList list{ { { "HANDLE", {} }, { "KIND", {} }, { "IN FIELD", {} }, { "NAME", {} }, { "TABLE", {} } },
                  std::move( rows ) };
    if( io.look.columns > 0 && io.look.columns < enough )
        narrow( list );
    printColumns( io.out, list, io.look );
}

void printAsCsv( std::vector<Row> rows, std::ostream& out ) {
    Row fields = rowOf( Bearer() );
    fields.insert( fields.begin(), { "handle", {} } );
    printCsv( out, { fields, std::move( rows ) } );
}

void printAsJson( std::vector<Found> const& all, std::ostream& out ) {
    JsonAnswer( out ).member(
        "handles", listOf( all, []( Found const& one ) {
            return Row{ { "handle", Hex( one.handle ) }, { "found", listOf( one.bearers, rowOf ) } };
        } ) );
}

/// The handles of other bearers that may be meant, each once with a name: ": 0x21000042 (pipe.acl)".
String othersOf( Found const& one, bool pipesInHandles ) {
    std::map<U32, std::string_view> names;
    for( Bearer const& other : one.others ) {
        if( pipesInHandles || other.handle == ( one.handle & withoutPipe ) )
            names.emplace( other.handle, other.owner.empty() ? other.name : other.owner );
    }
    String text;
    for( auto const& [ handle, name ] : names ) {
        char number[ 16 ];
        std::snprintf( number, sizeof number, "0x%08x", handle );
        text += ( text.empty() ? ": " : ", " ) + String( number ) + " (" + shown( name ) + ")";
    }
    return text;
}

/// Handles come with a pipe in their upper bits from some sources and without it from others.
void sayUnknown( Found const& one, BfResourceInfo::BfResourceParser const& parser, std::ostream& err ) {
    bool const pipesInHandles = !parser.bfrtConfig().empty();
    err << "bfri: nothing has the handle " << one.word;
    String const others = othersOf( one, pipesInHandles );
    if( !others.empty() )
        err << ( pipesInHandles ? "; with another pipe in the upper four bits"
                                : "; without a pipe in the upper four bits, as there is no runtime_config" )
            << others;
    String const leftOut = leftOutOfHandle( parser, one.handle );
    err << ( leftOut.empty() ? "" : "; " ) << leftOut << '\n';
}

} // namespace

ExitStatus lookup( Model const& model, Request const& request, Streams const& io ) {
    auto const all = find( model, std::span( request.words ).subspan( 1 ) );
    switch( request.format ) {
    case Format::text:
        printAsText( rowsOf( all ), io );
        break;
    case Format::csv:
        printAsCsv( rowsOf( all ), io.out );
        break;
    case Format::json:
        printAsJson( all, io.out );
        break;
    }
    ExitStatus status = ExitStatus::done;
    for( Found const& one : all ) {
        if( one.bearers.empty() ) {
            sayUnknown( one, *model.parser(), io.err );
            status = ExitStatus::no;
        }
    }
    return status;
}

} // namespace Bfri
