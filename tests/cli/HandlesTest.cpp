#include "tests/cli/Inputs.h"

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
        model->parser()->parentTableIs( "hits", "acl" );
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
        model->parser()->resourceHandlesIs( handle, entry );
    }

    Zel::Ptr<Bfri::Model> const model = emptyModel();
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
    model->parser()->parentTableDel( "hits" );
    model->parser()->multipleParentTablesIs( "hits" );
    EXPECT_EQ( answerOf( "handles", *model, Format::text ),
               "HANDLE      SIZE  STAGE  STATISTICS             METERS      STATEFUL    NAME  PARENT\n"
               "0x01000001   512      6  0x05000003 0x05000004  0x06000005  0x07000006  acl   -\n"
               "0x05000003  1024      7  -                      -           -           hits  (several)\n" );
    auto const answer = jsonAnswerOf( "handles", *model );
    EXPECT_TRUE( answer[ "resourceHandles" ][ 1 ][ "parent" ].IsNull() );
    EXPECT_TRUE( answer[ "resourceHandles" ][ 1 ][ "severalParents" ].GetBool() );
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
