#include "tests/cli/Inputs.h"

#include <map>

namespace {

using Bfri::Format;

class Handles : public InFolder {
  protected:
    Handles() {
        add( 0x5000003, "hits", 1024, 7 );
        add( 0x1000001, "acl", 512, 6, []( auto& entry ) {
            entry.statReferencesEnq( 0x5000003 );
            entry.statReferencesEnq( 0x5000004 );
            entry.meterReferencesEnq( 0x6000005 );
            entry.statefulReferencesEnq( 0x7000006 );
        } );
        model->parser().parentTableIs( "hits", "acl" );
    }

    void add(
        U32 handle, String const& name, U32 size, U8 stage,
        void ( *refer )( BfResourceInfo::BfZelResource& ) = []( auto& ) {} ) {
        BfResourceInfo::BfZelResource entry;
        entry.handle = handle;
        entry.name = name;
        entry.size = size;
        entry.stageStart = stage;
        refer( entry );
        model->parser().resourceHandlesIs( handle, entry );
    }

    ConfigurationPtr const model = emptyModel();
};

TEST_F( Handles, AreListedByHandle ) {
    EXPECT_EQ( answerOf( "handles", *model, Format::text ),
               "HANDLE      SIZE  STAGE  STATISTICS             METERS      STATEFUL    NAME  PARENT\n"
               "0x01000001   512      6  0x05000003 0x05000004  0x06000005  0x07000006  acl   -\n"
               "0x05000003  1024      7  -                      -           -           hits  acl\n" );
}

TEST_F( Handles, AsCsvSeparateReferencesBySpaces ) {
    EXPECT_EQ( answerOf( "handles", *model, Format::csv ),
               "handle,name,size,stageStart,statReferences,meterReferences,statefulReferences,parent,"
               "severalParents\n"
               "16777217,acl,512,6,83886083 83886084,100663301,117440518,,false\n"
               "83886083,hits,1024,7,,,,acl,false\n" );
}

TEST_F( Handles, AsJsonHaveANullParentWhenThereIsNone ) {
    EXPECT_EQ( compact( jsonAnswerOf( "handles", *model ) ),
               R"({"format":1,"resourceHandles":[{"handle":16777217,"name":"acl","size":512,"stageStart":6,)"
               R"("statReferences":[83886083,83886084],"meterReferences":[100663301],)"
               R"("statefulReferences":[117440518],"parent":null,"severalParents":false},)"
               R"({"handle":83886083,"name":"hits","size":1024,"stageStart":7,"statReferences":[],)"
               R"("meterReferences":[],"statefulReferences":[],"parent":"acl","severalParents":false}]})" );
}

TEST_F( Handles, WithSeveralParentsAreToldFromThoseWithNone ) {
    model->parser().parentTableDel( "hits" );
    model->parser().multipleParentTablesIs( "hits" );
    EXPECT_EQ( answerOf( "handles", *model, Format::text ),
               "HANDLE      SIZE  STAGE  STATISTICS             METERS      STATEFUL    NAME  PARENT\n"
               "0x01000001   512      6  0x05000003 0x05000004  0x06000005  0x07000006  acl   -\n"
               "0x05000003  1024      7  -                      -           -           hits  (several)\n" );
    auto const answer = jsonAnswerOf( "handles", *model );
    EXPECT_TRUE( answer[ "resourceHandles" ][ 1 ][ "parent" ].IsNull() );
    EXPECT_TRUE( answer[ "resourceHandles" ][ 1 ][ "severalParents" ].GetBool() );
}

TEST_F( Handles, HaveTheParentThatLookupTells ) {
    auto& parser = model->parser();
    add( 0x6000005, "police", 8, 7 );  // referenced, named by no action
    add( 0x2000001, "members", 8, 7 ); // taken by one
    add( 0x3000001, "groups", 8, 7 );  // taken by two
    add( 0x2000002, "direct", 8, 7 );  // known by nothing
    add( 0x1000002, "lpm", 8, 7,
         []( auto& entry ) { entry.statReferencesEnq( 0x5000003 ); } ); // references hits
    for( char const* const name : { "acl", "lpm" } ) {
        BfTableInfo table = named<BfTableInfo>( name, name == String( "acl" ) ? 0x1000001 : 0x1000002 );
        table.selHandle = 0x3000001;
        table.selName = "groups";
        parser.bfTablesPush( table );
    }
    BfTableInfo taker = named<BfTableInfo>( "taker", 0x1000003 );
    taker.adtHandle = 0x2000001;
    taker.adtName = "members";
    parser.bfTablesPush( taker );
    auto const answer = jsonAnswerOf( "handles", *model );
    std::map<String, String> parents;
    for( auto const& one : answer[ "resourceHandles" ].GetArray() ) {
        bool const several = one[ "severalParents" ].GetBool();
        EXPECT_TRUE( !several || one[ "parent" ].IsNull() );
        parents[ one[ "name" ].GetString() ] = several                    ? "(several)"
                                               : one[ "parent" ].IsNull() ? "-"
                                                                          : one[ "parent" ].GetString();
    }
    EXPECT_EQ( parents, ( std::map<String, String>{ { "acl", "-" },
                                                    { "direct", "-" },
                                                    { "groups", "(several)" },
                                                    { "hits", "(several)" },
                                                    { "lpm", "-" },
                                                    { "members", "taker" },
                                                    { "police", "acl" } } ) );
}

/// Of every handle of the complete context file.
TEST_F( Handles, HaveTheParentThatTheirResourcesRowOfLookupHas ) {
    auto const complete = modelOf( completeContext() );
    std::size_t known = 0;
    auto const answer = jsonAnswerOf( "handles", *complete );
    for( auto const& one : answer[ "resourceHandles" ].GetArray() ) {
        String const handle = std::to_string( one[ "handle" ].GetUint() );
        auto const found = jsonAnswerOf( "lookup", *complete, handle );
        for( auto const& row : found[ "handles" ][ 0 ][ "found" ].GetArray() ) {
            if( row[ "kind" ] != "resource" )
                continue;
            EXPECT_EQ( compact( row[ "table" ] ), compact( one[ "parent" ] ) ) << handle;
            known += row[ "table" ].IsString();
        }
    }
    EXPECT_GT( known, 2U );
}

TEST_F( Handles, AreOrderedByNumberNotByTheTextOfIt ) {
    add( 9, "nine", 1, 0 );
    add( 10, "ten", 1, 0 );
    add( 0xF0000001, "high", 1, 0 );
    auto const answer = jsonAnswerOf( "handles", *model );
    std::vector<String> names;
    for( auto const& resource : answer[ "resourceHandles" ].GetArray() )
        names.emplace_back( resource[ "name" ].GetString() );
    EXPECT_EQ( names, ( std::vector<String>{ "nine", "ten", "acl", "hits", "high" } ) );
}

} // namespace
