#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>

namespace {

using Bfri::Format;
using testing::StartsWith;

class NamesOfAll : public InFolder {
  protected:
    NamesOfAll() {
        auto& parser = model->parser();
        for( char const* const name : { "b", "a.b", "\xC3\xBC", "B", "b" } )
            parser.bfTablesPush( named<BfTableInfo>( name ) );
        parser.bfResourcesPush( named<BfResource>( "b" ) );
        parser.bfHeadersIs( "two\nlines", {} );
    }

    ConfigurationPtr const model = emptyModel();
};

TEST_F( NamesOfAll, AreOnceEachOneALineInTheOrderOfTheirBytes ) {
    EXPECT_EQ( answerOf( "names", *model, Format::text ), "B\na.b\nb\ntwo\\x0alines\n\xC3\xBC\n" );
}

TEST_F( NamesOfAll, AsCsvAndJsonComeWithTheirKinds ) {
    EXPECT_EQ( answerOf( "names", *model, Format::csv ),
               "name,kinds\nB,table\na.b,table\nb,table resource\n\"two\nlines\",header\n\xC3\xBC,table\n" );
    EXPECT_EQ( compact( jsonAnswerOf( "names", *model )[ "names" ] ),
               R"([{"name":"B","kinds":["table"]},{"name":"a.b","kinds":["table"]},)"
               R"({"name":"b","kinds":["table","resource"]},{"name":"two\nlines","kinds":["header"]},)"
               "{\"name\":\"\xC3\xBC\",\"kinds\":[\"table\"]}]" );
}

TEST_F( NamesOfAll, OfAnEmptyModelAreNone ) {
    auto const empty = emptyModel();
    EXPECT_EQ( answerOf( "names", *empty, Format::text ), "" );
    EXPECT_EQ( compact( jsonAnswerOf( "names", *empty ) ), R"({"format":1,"names":[]})" );
}

class NamesOfAFile : public InFolder {
  protected:
    NamesOfAFile() { modelOf( completeContext() ); }
};

TEST_F( NamesOfAFile, AreOfEveryKind ) {
    EXPECT_EQ(
        bfri( { "names", "switch.conf" } ).out,
        "NoAction\ncount\ncounter\nhash\nhdr.mac\nheader\nhits\nlearn\npipe.acl\npolice\nseen\nwred\n" );
}

TEST_F( NamesOfAFile, MayBeOfOneKindOnly ) {
    EXPECT_EQ( bfri( { "names", "switch.conf", "--kind", "table" } ).out, "pipe.acl\n" );
    EXPECT_EQ( bfri( { "names", "switch.conf", "--kind=counters" } ).out, "counter\nhits\n" );
    EXPECT_EQ( bfri( { "names", "switch.conf", "--kind", "phv" } ).out, "hdr.mac\n" );
}

TEST_F( NamesOfAFile, OfAnUnknownKindAreWrongUsage ) {
    auto const outcome = bfri( { "names", "switch.conf", "--kind", "conter" } );
    EXPECT_EQ( outcome.status, 2 );
    EXPECT_EQ( outcome.out, "" );
    EXPECT_THAT( outcome.err,
                 StartsWith( "bfri: no kind 'conter'; did you mean 'counter'? The kinds are table, " ) );
}

} // namespace
