#include "inspect/model/HandleUses.h"

#include "inspect/model/RecordKinds.h"
#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>
#include <set>

namespace {

using Bfri::eachHandleUse;
using Bfri::HandleUse;
using Bfri::kindOf;
using testing::ElementsAre;

class HandleUses : public InFolder {
  protected:
    /// Who has the handle of a table: "KIND.FIELD NAME/TABLE=OWNER", in order.
    std::vector<String> usesOf( char const* table ) {
        std::vector<String> texts;
        eachHandleUse( model->parser(), [ & ]( HandleUse const& use ) {
            if( use.handle == Support::handleOf( table ) )
                texts.push_back( String( kindOf( use.kind ).one ) + "." + use.field + " " +
                                 String( use.name ) + "/" + String( use.table ) + "=" + String( use.owner ) );
        } );
        return texts;
    }

    Support::ContextBuilder context = referringContext();
    ConfigurationPtr model = modelOf( context );
};

TEST_F( HandleUses, AreThoseOfEachRecordWithTheTableBehindIt ) {
    EXPECT_THAT( usesOf( "pipe.acl" ),
                 ElementsAre( "table.handle pipe.acl/=pipe.acl", "resource.handle pipe.acl/=pipe.acl",
                              "counter.handle hits/pipe.acl=", "meter.handle police/pipe.acl=",
                              "register.handle seen/pipe.acl=" ) );
    EXPECT_THAT( usesOf( "members" ), ElementsAre( "table.adtHandle pipe.acl/=members",
                                                   "resource.handle members/pipe.acl=members" ) );
    EXPECT_THAT( usesOf( "hits" ),
                 ElementsAre( "resource.handle hits/pipe.acl=hits", "counter.ownHandle hits/pipe.acl=hits",
                              "handle.statReferences pipe.acl/=" ) );
    EXPECT_THAT( usesOf( "counter" ), ElementsAre( "resource.handle counter/pipe.acl=counter",
                                                   "counter.handle counter/pipe.acl=counter" ) );
    EXPECT_THAT( usesOf( "police" ),
                 ElementsAre( "resource.handle police/pipe.acl=police", "meter. police/pipe.acl=police",
                              "handle.meterReferences pipe.acl/=" ) );
    EXPECT_THAT( usesOf( "bucket" ), ElementsAre( "resource.handle bucket/pipe.acl=bucket",
                                                  "wred.handle bucket/pipe.acl=bucket" ) );
    EXPECT_THAT( usesOf( "seen" ),
                 ElementsAre( "resource.handle seen/pipe.acl=seen", "register. seen/pipe.acl=seen",
                              "handle.statefulReferences pipe.acl/=" ) );
    EXPECT_THAT( usesOf( "cells" ), ElementsAre( "resource.handle cells/pipe.acl=cells",
                                                 "register.handle cells/pipe.acl=cells" ) );
}

TEST_F( HandleUses, OfWhatIsDirectAreItsOwnToo ) {
    context.table( Support::matchTable( "pipe.lpm" ).meter( "wred" ) )
        .table( Support::wredTable( "wred" ).referenced( "direct" ) );
    model = modelOf( context );
    EXPECT_THAT( usesOf( "wred" ),
                 ElementsAre( "resource.handle wred/pipe.lpm=wred", "wred. wred/pipe.lpm=wred",
                              "handle.meterReferences pipe.lpm/=" ) );
}

/// Against the lists, which show whole records: a field of handles that a record gains is missed here.
TEST_F( HandleUses, AreAllThatTheListsShow ) {
    std::set<String> listed;
    for( Bfri::RecordKind const& kind : Bfri::recordKinds() ) {
        for( Bfri::Row const& row : kind.rows( model->parser() ) ) {
            auto const add = [ & ]( Bfri::Field const& field, Bfri::Value const& value ) {
                auto const* const handle = std::get_if<Bfri::Hex>( &value.is );
                if( handle && handle->value != 0 )
                    listed.insert( std::to_string( handle->value ) + String( kind.one ) + "." +
                                   String( field.name ) );
            };
            for( Bfri::Field const& field : row ) {
                add( field, field.value );
                if( auto const* const list = std::get_if<Bfri::List>( &field.value.is ) )
                    for( Bfri::Value const& value : *list )
                        add( field, value );
            }
        }
    }
    std::set<String> visited;
    Bfri::eachHandleUse( model->parser(), [ & ]( Bfri::HandleUse const& use ) {
        visited.insert( std::to_string( use.handle ) + kindOf( use.kind ).one + "." + use.field );
    } );
    for( String const& one : listed ) {
        bool const resources = one.ends_with( "handle.handle" ); // shown as their resource's
        bool const same = one.ends_with( "counter.ownHandle" );  // shown as handle where it is the same
        EXPECT_TRUE( visited.count( one ) || resources || same ) << one;
    }
    EXPECT_GT( listed.size(), 20U );
}

} // namespace
