#include "tests/cli/Inputs.h"

#include "cli/commands/Answers.h"
#include "inspect/model/HandleUses.h"

#include <gmock/gmock.h>
#include <set>

namespace {

using Bfri::ExitStatus;
using Bfri::Format;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class Lookup : public InFolder {
  protected:
    Lookup() {
        auto& parser = model->parser();
        BfTableInfo acl = named<BfTableInfo>( "pipe.acl", 0x1000001 );
        acl.adtHandle = 0x2000001;
        acl.adtName = "members";
        acl.maxSelGroups = 2;
        acl.selHandle = 0x3000001;
        acl.selName = "groups";
        parser.bfTablesPush( acl );
        BfTableCounterInfo hits = named<BfTableCounterInfo>( "hits", 0x1000001 );
        hits.ownHandle = 0x4000001;
        hits.direct = true;
        hits.associatedTable = "pipe.acl";
        parser.bfCountersPush( hits );
        parser.bfActionsPush( { 0x20000001, "drop", "pipe.acl" } );
        parser.bfActionsPush( { 0x20000001, "drop", "pipe.lpm" } );
        parser.bfLearnQuantaInfosPush( named<BfLearnQuantaInfo>( "learn", 0 ) );
        parser.bfDynamicHashInfoIs( "hash", { 0x5000001, 0x6000001, 0, {} } );
    }

    int ask( std::vector<String> words, Format format = Format::text ) {
        words.insert( words.begin(), "switch.conf" );
        std::ostringstream outStream;
        std::ostringstream errStream;
        auto const status = Bfri::lookup( *model, { nullptr, words, format }, { outStream, errStream } );
        out = outStream.str();
        err = errStream.str();
        return static_cast<int>( status );
    }

    ConfigurationPtr const model = emptyModel();
    String out;
    String err;
};

TEST_F( Lookup, ShowsEveryRecordThatBearsAHandleAndTheFieldThatDoes ) {
    EXPECT_EQ( ask( { "0x1000001" } ), 0 );
    EXPECT_EQ( out, "HANDLE      KIND     IN FIELD  NAME      TABLE\n"
                    "0x01000001  table    handle    pipe.acl  -\n"
                    "0x01000001  counter  handle    hits      pipe.acl\n" );
    EXPECT_THAT( err, IsEmpty() );
}

TEST_F( Lookup, TakesDecimalAndHexadecimalOfEitherCase ) {
    for( char const* const word :
         { "16777217", "0016777217", "0x1000001", "0X1000001", "0x00000000001000001" } ) {
        EXPECT_EQ( ask( { word } ), 0 ) << word;
        EXPECT_THAT( out, HasSubstr( "\n0x01000001  table    handle    pipe.acl  -\n" ) ) << word;
    }
    EXPECT_EQ( ask( { "0" } ), 0 );
    EXPECT_THAT( out, HasSubstr( "learn-quanta  handle    learn" ) );
}

TEST_F( Lookup, KnowsEveryFieldThatHoldsAHandle ) {
    struct {
        char const* handle;
        char const* row;
    } const rows[] = { { "0x2000001", "table  adtHandle  pipe.acl  -" },
                       { "0x3000001", "table  selHandle  pipe.acl  -" },
                       { "0x4000001", "counter  ownHandle  hits  pipe.acl" },
                       { "0x5000001", "hash  tableHdl  hash  -" },
                       { "0x6000001", "hash  fieldListHdl  hash  -" },
                       { "0x20000001", "action  handle    drop  pipe.acl" },
                       { "0", "learn-quanta  handle    learn  -" } };
    for( auto const& row : rows ) {
        EXPECT_EQ( ask( { row.handle } ), 0 );
        EXPECT_THAT( out, HasSubstr( row.row ) );
    }
}

TEST_F( Lookup, AsCsvHasARowARecord ) {
    EXPECT_EQ( ask( { "0x20000001", "0x4000001" }, Format::csv ), 0 );
    EXPECT_EQ( out, "handle,kind,field,name,table,severalTables\n"
                    "536870913,action,handle,drop,pipe.acl,false\n"
                    "536870913,action,handle,drop,pipe.lpm,false\n"
                    "67108865,counter,ownHandle,hits,pipe.acl,false\n" );
}

TEST_F( Lookup, AsJsonHasAnElementForEachHandleAskedFor ) {
    EXPECT_EQ( ask( { "0x20000001", "7", "0" }, Format::json ), 1 );
    EXPECT_EQ(
        compact( parsed( out ) ),
        R"({"format":1,"handles":[{"handle":536870913,"found":[)"
        R"({"kind":"action","field":"handle","name":"drop","table":"pipe.acl","severalTables":false},)"
        R"({"kind":"action","field":"handle","name":"drop","table":"pipe.lpm","severalTables":false}],)"
        R"("suggestions":[],"omitted":[]},{"handle":7,"found":[],"suggestions":[],"omitted":[]},)"
        R"({"handle":0,"found":[{"kind":"learn-quanta","field":"handle","name":"learn",)"
        R"("table":null,"severalTables":false}],"suggestions":[],"omitted":[]}]})" );
    EXPECT_EQ( err, "bfri: nothing has the handle 7\n" );
}

TEST_F( Lookup, TellsSeveralTablesFromNone ) {
    BfTableCounterInfo counter = named<BfTableCounterInfo>( "shared", 9 );
    counter.ownHandle = 9;
    model->parser().bfCountersPush( counter );
    BfRegisterInfo cells = named<BfRegisterInfo>( "shared", 9 );
    cells.indirect = true;
    model->parser().bfRegisterInfosPush( cells );
    model->parser().multipleParentTablesIs( "shared" );
    EXPECT_EQ( ask( { "9" } ), 0 );
    EXPECT_EQ( out, "HANDLE      KIND      IN FIELD  NAME    TABLE\n"
                    "0x00000009  counter   handle    shared  (several)\n"
                    "0x00000009  register  handle    shared  (several)\n" );
    EXPECT_EQ( ask( { "9" }, Format::json ), 0 );
    EXPECT_THAT( compact( parsed( out ) ), HasSubstr( R"("table":null,"severalTables":true})" ) );
}

TEST_F( Lookup, OfUnknownHandlesNamesEachAndAnswersTheOthers ) {
    EXPECT_EQ( ask( { "7", "0x4000001", "0xFFFFFFFF" } ), 1 );
    EXPECT_EQ( out, "HANDLE      KIND     IN FIELD   NAME  TABLE\n"
                    "0x04000001  counter  ownHandle  hits  pipe.acl\n" );
    EXPECT_EQ( err, "bfri: nothing has the handle 7\nbfri: nothing has the handle 0xFFFFFFFF\n" );
    EXPECT_EQ( ask( { "7" } ), 1 );
    EXPECT_THAT( out, IsEmpty() );
    EXPECT_EQ( ask( { "7" }, Format::csv ), 1 );
    EXPECT_EQ( out, "handle,kind,field,name,table,severalTables\n" );
}

TEST_F( Lookup, HintsAtAHandleWithoutThePipeThatWasGiven ) {
    EXPECT_EQ( ask( { "0x31000001" } ), 1 );
    EXPECT_EQ( err,
               "bfri: nothing has the handle 0x31000001; without a pipe in the upper four bits, as there "
               "is no runtime_config: 0x01000001 (pipe.acl)\n" );
    EXPECT_EQ( ask( { "0x1" } ), 1 ); // 0x20000001 has other lower bits
    EXPECT_EQ( err, "bfri: nothing has the handle 0x1\n" );
    model->parser().bfTablesPush( named<BfTableInfo>( "t", 0x10000077 ) ); // its upper bits are no pipe here
    EXPECT_EQ( ask( { "0x77" } ), 1 );
    EXPECT_EQ( err, "bfri: nothing has the handle 0x77\n" );
}

TEST_F( Lookup, HintsAtAHandleThatLacksIts0x ) {
    for( char const* const word : { "01000001", "1000001", "001000001" } ) {
        EXPECT_EQ( ask( { word } ), 1 );
        EXPECT_EQ( err, String( "bfri: nothing has the handle " ) + word + "; did you mean 0x01000001?\n" );
    }
    EXPECT_EQ( ask( { "01000001" }, Format::json ), 1 );
    EXPECT_EQ( compact( parsed( out )[ "handles" ] ),
               R"([{"handle":1000001,"found":[],"suggestions":["0x01000001"],"omitted":[]}])" );
    EXPECT_EQ( ask( { "01000009" } ), 1 );
    EXPECT_EQ( err, "bfri: nothing has the handle 01000009\n" );
    model->parser().bfTablesPush( named<BfTableInfo>( "t", 0x100001F ) );
    model->parser().bfTablesPush( named<BfTableInfo>( "u", 1000001 ) );
    EXPECT_EQ( ask( { "01000001" } ), 0 ); // its decimal reading
    EXPECT_THAT( err, IsEmpty() );
    try {
        ask( { "100001f" } );
        ADD_FAILURE();
    } catch( Bfri::Failure const& failure ) {
        EXPECT_EQ( failure.status, ExitStatus::usage );
        EXPECT_THAT( failure.what(), testing::EndsWith( "; did you mean 0x0100001f?" ) );
    }
}

TEST_F( Lookup, HintsAtHandlesWithAnotherPipe ) {
    model->parser().bfrtConfigIs( "bfrt.json" );
    model->parser().bfTablesPush( named<BfTableInfo>( "pipe.\x1B", 0x21000001 ) );
    EXPECT_EQ( ask( { "822083585" } ), 1 ); // 0x31000001
    EXPECT_EQ( err, "bfri: nothing has the handle 822083585; with another pipe in the upper four bits: "
                    "0x01000001 (pipe.acl), 0x21000001 (pipe.\\x1b)\n" );
    EXPECT_EQ( ask( { "822083585" }, Format::json ), 1 );
    EXPECT_EQ( compact( parsed( out )[ "handles" ][ 0 ][ "suggestions" ] ),
               R"(["0x01000001","0x21000001"])" );
}

TEST_F( Lookup, OfAWordThatIsNoHandleIsWrongUsageThatNamesIt ) {
    for( char const* const word : { "", "0x", "pipe.acl", "0xG", "12a", "1000001h", "+1", "-1", " 1", "1 ",
                                    "0x0x1", "4294967296", "0x100000000", "99999999999999999999", "1.0" } ) {
        try {
            ask( { "0x1000001", word } );
            ADD_FAILURE() << word;
        } catch( Bfri::Failure const& failure ) {
            EXPECT_EQ( failure.status, ExitStatus::usage );
            EXPECT_EQ( failure.what(),
                       "'" + String( word ) +
                           "' is not a handle: a number up to 0xffffffff, decimal, or hexadecimal with 0x" );
        }
    }
}

class HandlesOfAFile : public InFolder {
  protected:
    Support::ContextBuilder context = referringContext();
    ConfigurationPtr model = modelOf( context );
};

TEST_F( HandlesOfAFile, AreOfTheTablesThatThePageOfAResourceHas ) {
    using namespace Support;
    context
        .table( Support::matchTable( "pipe.lpm" )
                    .selection( "groups" )
                    .actionData( "members" )
                    .meter( "wred" )
                    .statistics( "indirect" ) )
        .table( selectionTable( "groups" ) )
        .table( wredTable( "wred" ).referenced( "direct" ) )
        .table( statisticsTable( "indirect" ) );
    model = modelOf( context );
    struct {
        char const* resource;
        char const* table;
    } const rows[] = { { "groups", "pipe.lpm" },   { "members", "(several)" }, { "wred", "pipe.lpm" },
                       { "indirect", "pipe.lpm" }, { "hits", "pipe.acl" },     { "cells", "pipe.acl" },
                       { "pipe.lpm", "" } };
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.resource );
        String table;
        Bfri::eachHandleUse( model->parser(), [ & ]( Bfri::HandleUse const& bearer ) {
            if( bearer.kind == Bfri::Kind::resources && bearer.name == row.resource )
                table = bearer.severalTables ? "(several)" : String( bearer.table );
        } );
        EXPECT_EQ( table, row.table );
        std::set<String> onPage;
        auto const page = jsonAnswerOf( "show", *model, row.resource );
        for( auto const& section : page.GetObject() ) {
            if( !section.value.IsArray() || !section.value[ 0 ].HasMember( "tables" ) )
                continue;
            for( auto const& owner : section.value[ 0 ][ "tables" ].GetArray() )
                onPage.insert( owner[ "name" ].GetString() );
        }
        EXPECT_EQ( onPage.size() > 1 ? "(several)" : onPage.empty() ? "" : *onPage.begin(), row.table );
    }
}

TEST_F( HandlesOfAFile, OfWhatIsDirectAreItsOwnToo ) {
    context.table( Support::matchTable( "pipe.lpm" ).meter( "wred" ) )
        .table( Support::wredTable( "wred" ).referenced( "direct" ) );
    model = modelOf( context );
    String const handle = std::to_string( Support::handleOf( "wred" ) );
    EXPECT_THAT( bfri( { "lookup", "switch.conf", handle.c_str() } ).out,
                 HasSubstr( "  wred      -                wred      pipe.lpm\n" ) );
    EXPECT_THAT( compact( parsed( bfri( { "lookup", "switch.conf", handle.c_str(), "--json" } ).out ) ),
                 HasSubstr( R"({"kind":"wred","field":null,"name":"wred","table":"pipe.lpm",)" ) );
}

TEST_F( Lookup, HasABlockForEachRowWhereTheTerminalIsNarrow ) {
    model->parser().bfActionsPush(
        { 0x20000002, "pipe.SwitchIngress.some_control.drop", "pipe.SwitchIngress.some_control.acl" } );
    auto const textOn = [ & ]( std::size_t columns ) {
        std::ostringstream text;
        Bfri::lookup( *model, { nullptr, { "switch.conf", "0x4000001", "0x20000002" } },
                      { text, text, { .columns = columns } } );
        return text.str();
    };
    for( std::size_t const columns : { 59U, 40U, 39U, 25U, 10U } )
        EXPECT_EQ( textOn( columns ), "HANDLE    0x04000001\n"
                                      "KIND      counter\n"
                                      "IN FIELD  ownHandle\n"
                                      "NAME      hits\n"
                                      "TABLE     pipe.acl\n\n"
                                      "HANDLE    0x20000002\n"
                                      "KIND      action\n"
                                      "IN FIELD  handle\n"
                                      "NAME      pipe.SwitchIngress.some_control.drop\n"
                                      "TABLE     pipe.SwitchIngress.some_control.acl\n" )
            << columns;
    for( std::size_t const columns : { 80U, 60U } ) {
        EXPECT_THAT( textOn( columns ), HasSubstr( "\n0x20000002  action   " ) ) << columns;
        std::istringstream lines( textOn( columns ) );
        for( String line; std::getline( lines, line ); )
            EXPECT_LE( line.size(), columns );
    }
}

TEST_F( HandlesOfAFile, AreAnsweredByTheProgram ) {
    String const handle = std::to_string( Support::handleOf( "counter" ) );
    auto const outcome = bfri( { "lookup", "switch.conf", handle.c_str(), "7" } );
    EXPECT_EQ( outcome.status, 1 );
    EXPECT_THAT( outcome.out, HasSubstr( "  counter   handle    counter  pipe.acl\n" ) );
    EXPECT_EQ( outcome.err, "bfri: nothing has the handle 7\n" );
    EXPECT_EQ( bfri( { "lookup", "switch.conf" } ).status, 2 );
    auto const bad = bfri( { "lookup", "switch.conf", "x", "--json" } );
    EXPECT_EQ( bad.status, 2 );
    EXPECT_THAT( parsed( bad.out )[ "error" ].GetString(), StartsWith( "'x' is not a handle" ) );
}

} // namespace
