#include "tests/cli/Inputs.h"

#include "cli/commands/Answers.h"

#include <gmock/gmock.h>

namespace {

using Bfri::ExitStatus;
using Bfri::Format;
using testing::ElementsAre;
using testing::HasSubstr;

class Table : public InFolder {
  protected:
    Table() {
        auto& parser = model->parser();
        parser.bfTablesPush( named<BfTableInfo>( "pipe.Ingress.acl", 1 ) );
        BfTableInfo lpm = named<BfTableInfo>( "pipe.Ingress.lpm", 2 );
        lpm.hitBitSupported = true; // from slot 0 on
        lpm.adtName = "members";    // of handle 0 and size 0
        lpm.maxSelGroups = 2;       // so has a selection table, of handle 0
        parser.bfTablesPush( lpm );
        parser.bfTablesPush( named<BfTableInfo>( "pipe.Egress.acl", 3 ) );
        BfResourceInfo::BfZelResource placed;
        placed.handle = 1;
        placed.stageStart = 6;
        placed.statReferencesEnq( 5 );
        placed.statReferencesEnq( 6 );
        placed.meterReferencesEnq( 7 );
        parser.resourceHandlesIs( 1, placed );
        parser.bfResourcesPush( { .name = "pipe.Ingress.acl", .handle = 1, .stages = 2, .stageStart = 6 } );
        BfResourceInfo::BfZelResource counter;
        counter.name = "hits";
        parser.resourceHandlesIs( 5, counter );
    }

    /// What asking for a name ends with.
    std::pair<ExitStatus, std::vector<String>> failureOf( String const& name ) {
        try {
            answerOf( "table", *model, Format::text, name );
        } catch( Bfri::Failure const& failure ) {
            message = failure.what();
            return { failure.status, failure.suggestions };
        }
        return { ExitStatus::done, {} };
    }

    ConfigurationPtr const model = emptyModel();
    String message;
};

TEST_F( Table, ShowsEveryFieldAndTheNamesBehindReferences ) {
    EXPECT_EQ( answerOf( "table", *model, Format::text, "pipe.Ingress.acl" ),
               R"(name                pipe.Ingress.acl
handle              0x00000001
size                0
totalEntries        0
hitBitSupported     no
idleTimePrecision   -
hitBitSmashOffset   -
hitBitSmashLast     -
maxEntries          0
maxPartitions       0
maxPrios            0
hasActionProfile    no
maxAdtEntries       -
maxSelGroups        -
maxSelEntries       -
adtHandle           -
selHandle           -
adtName             -
selName             -
logicalPipe         -
placed              2 stage tables, the first in stage 6, egress
stageStart          6
statReferences      0x00000005 hits
                    0x00000006 -
meterReferences     0x00000007 -
statefulReferences  -
)" );
}

TEST_F( Table, TellsZeroFromAbsent ) {
    String const text = answerOf( "table", *model, Format::text, "lpm" );
    EXPECT_THAT( text, HasSubstr( "hitBitSmashOffset   0\n" ) );
    EXPECT_THAT( text, HasSubstr( "maxAdtEntries       0\n" ) );
    EXPECT_THAT( text, HasSubstr( "adtHandle           0x00000000\n" ) );
    EXPECT_THAT( text, HasSubstr( "selHandle           0x00000000\n" ) );
    EXPECT_THAT( text,
                 HasSubstr( "placed              no\nstageStart          -\n" ) ); // no entry for its handle
}

TEST_F( Table, AsJsonHasTheRecordsOwnFieldsThenThePlacement ) {
    auto const answer = jsonAnswerOf( "table", *model, "pipe.Ingress.acl" );
    EXPECT_THAT( memberNames( answer ),
                 ElementsAre( "format", "name", "handle", "size", "totalEntries", "hitBitSupported",
                              "idleTimePrecision", "hitBitSmashOffset", "hitBitSmashLast", "maxEntries",
                              "maxPartitions", "maxPrios", "hasActionProfile", "maxAdtEntries",
                              "maxSelGroups", "maxSelEntries", "adtHandle", "selHandle", "adtName", "selName",
                              "logicalPipe", "placed", "stageStart", "statReferences", "meterReferences",
                              "statefulReferences" ) );
    EXPECT_EQ( answer[ "idleTimePrecision" ].GetUint(), 0U ); // as the record has it
    EXPECT_EQ( compact( answer[ "statReferences" ] ),
               R"([{"handle":5,"name":"hits"},{"handle":6,"name":null}])" );
    EXPECT_EQ( compact( answer[ "statefulReferences" ] ), "[]" );
}

TEST_F( Table, WithoutAnEntryForItsHandleHasNullsForThePlacement ) {
    auto const answer = jsonAnswerOf( "table", *model, "lpm" );
    for( char const* const name :
         { "stageStart", "statReferences", "meterReferences", "statefulReferences" } )
        EXPECT_TRUE( answer[ name ].IsNull() ) << name;
    EXPECT_FALSE( answer[ "placed" ].GetBool() );
    EXPECT_TRUE( jsonAnswerOf( "table", *model, "pipe.Ingress.acl" )[ "placed" ].GetBool() );
}

TEST_F( Table, IsFoundByAUniqueSuffix ) {
    for( char const* const name : { "lpm", ".lpm", "Ingress.lpm", "pipe.Ingress.lpm" } )
        EXPECT_STREQ( jsonAnswerOf( "table", *model, name )[ "name" ].GetString(), "pipe.Ingress.lpm" );
}

TEST_F( Table, IsPreferredByItsExactName ) {
    model->parser().bfTablesPush( named<BfTableInfo>( "lpm", 9 ) );
    EXPECT_EQ( jsonAnswerOf( "table", *model, "lpm" )[ "handle" ].GetUint(), 9U );
}

TEST_F( Table, IsFoundByItsHandleWhenThatIsNoName ) {
    model->parser().bfTablesPush( named<BfTableInfo>( "pipe.16", 0x11 ) );
    for( char const* const word : { "0x11", "17", "0x00000011" } )
        EXPECT_STREQ( jsonAnswerOf( "table", *model, word )[ "name" ].GetString(), "pipe.16" ) << word;
    EXPECT_STREQ( jsonAnswerOf( "table", *model, "16" )[ "name" ].GetString(), "pipe.16" );
    model->parser().bfTablesPush( named<BfTableInfo>( "17", 4 ) );
    EXPECT_STREQ( jsonAnswerOf( "table", *model, "17" )[ "name" ].GetString(), "17" );
}

TEST_F( Table, OfAHandleThatSeveralHaveIsTheFirstAndSaysSo ) {
    model->parser().bfTablesPush( named<BfTableInfo>( "other", 2 ) );
    std::ostringstream out;
    std::ostringstream err;
    Bfri::table( *model, { nullptr, { "", "0x2" } }, { out, err } );
    EXPECT_THAT( out.str(), HasSubstr( "name                pipe.Ingress.lpm\n" ) );
    EXPECT_EQ( err.str(), "bfri: 2 tables have this handle; this is the first\n" );
}

TEST_F( Table, OfTheHandleOfSomethingElseSaysOfWhat ) {
    BfTableCounterInfo counter = named<BfTableCounterInfo>( "hits", 5 );
    counter.ownHandle = 5;
    model->parser().bfCountersPush( counter );
    model->parser().bfResourcesPush( named<BfResource>( "hits", 5 ) );
    EXPECT_EQ( failureOf( "0x5" ).first, ExitStatus::no );
    EXPECT_EQ( message, "no match table '0x5': it is the handle of the counter \"hits\"" );
    failureOf( "0x99" );
    EXPECT_EQ( message, "no match table '0x99': nothing has that handle" );
}

TEST_F( Table, OfAnAmbiguousSuffixIsNotFoundButTheCandidatesAreListed ) {
    auto const [ status, names ] = failureOf( "acl" );
    EXPECT_EQ( status, ExitStatus::no );
    EXPECT_EQ( message, "'acl' is the end of several tables' names:" );
    EXPECT_THAT( names, ElementsAre( "pipe.Egress.acl", "pipe.Ingress.acl" ) );
}

TEST_F( Table, OfAnUnknownNameIsNotFoundButNearNamesAreSuggested ) {
    auto const [ status, names ] = failureOf( "lpn" );
    EXPECT_EQ( status, ExitStatus::no );
    EXPECT_EQ( message, "no match table 'lpn'; names like it:" );
    EXPECT_THAT( names, ElementsAre( "pipe.Ingress.lpm" ) );
}

TEST_F( Table, OfAnUnknownNameLikeNoOtherPointsAtTheList ) {
    auto const [ status, names ] = failureOf( "zzzzzz" );
    EXPECT_EQ( status, ExitStatus::no );
    EXPECT_EQ( message, "no match table 'zzzzzz'; 'bfri tables' lists them all" );
    EXPECT_THAT( names, ElementsAre() );
}

TEST_F( Table, OfANameThatSeveralHaveIsTheFirstAndSaysSo ) {
    model->parser().bfTablesPush( named<BfTableInfo>( "pipe.Ingress.lpm", 99 ) );
    std::ostringstream out;
    std::ostringstream err;
    Bfri::table( *model, { nullptr, { "", "lpm" } }, { out, err } );
    EXPECT_THAT( out.str(), HasSubstr( "handle              0x00000002\n" ) );
    EXPECT_EQ( err.str(), "bfri: 2 tables have this name; this is the first, as for every query\n" );
}

} // namespace
