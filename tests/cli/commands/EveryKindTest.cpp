#include "inspect/model/RecordKinds.h"
#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>
#include <map>
#include <set>

namespace {

using Bfri::Kind;
using Bfri::RecordKind;

using Counts = std::map<String, std::size_t>; ///< by the word for one

/// What each command tells of the kinds of record, added up.
class EveryKind : public InFolder {
  protected:
    EveryKind() {
        for( RecordKind const& kind : Bfri::recordKinds() )
            expected[ kind.one ] = kind.rows( model->parser() ).size();
    }

    /// An answer of the program on the switch configuration.
    static rapidjson::Document answer( std::vector<char const*> words ) {
        words.insert( words.begin() + 1, "switch.conf" );
        words.push_back( "--json" );
        return parsed( bfri( words ).out );
    }
    static std::size_t sizeOf( rapidjson::Value const& member ) {
        return member.IsNumber() ? member.GetUint() : member.IsArray() ? member.Size() : member.MemberCount();
    }
    /// By kind, the sizes of what an object has of its collections.
    static Counts ofCollections( rapidjson::Value const& object ) {
        Counts counts;
        for( Bfri::Collection const& collection : Bfri::collections() ) {
            if( collection.kind )
                counts[ kindOf( *collection.kind ).one ] += sizeOf( object[ collection.member ] );
        }
        return counts;
    }

    ConfigurationPtr const model = modelOf( completeContext() );
    Counts expected;
};

TEST_F( EveryKind, HasRecordsInTheCompleteContext ) {
    for( auto const& [ kind, count ] : expected )
        EXPECT_GT( count, 0U ) << kind;
}

TEST_F( EveryKind, HasAList ) {
    Counts counts;
    for( RecordKind const& kind : Bfri::recordKinds() )
        counts[ kind.one ] = answer( { kind.many } )[ kind.member ].Size();
    EXPECT_EQ( counts, expected );
}

TEST_F( EveryKind, IsCountedBySummary ) {
    expected[ "phv" ] *= 2; // the field is in both directions
    EXPECT_EQ( ofCollections( answer( { "summary" } )[ "counts" ] ), expected );
}

TEST_F( EveryKind, IsInTheDump ) {
    expected[ "phv" ] *= 2;
    EXPECT_EQ( ofCollections( parsed( bfri( { "dump", "switch.conf" } ).out ) ), expected );
}

TEST_F( EveryKind, ThatHoldsRecordsOfItsOwnIsCountedByCheck ) {
    auto const checked = answer( { "check" } );
    auto const& counted = checked[ "configurations" ][ 0 ][ "checked" ];
    Counts counts;
    for( auto const& member : counted.GetObject() ) {
        for( RecordKind const& kind : Bfri::recordKinds() ) {
            if( member.name == kind.member )
                counts[ kind.one ] = member.value.GetUint();
        }
    }
    for( Kind const other : { Kind::phvFields, Kind::handles } ) // no collection, and no records of its own
        expected.erase( kindOf( other ).one );
    EXPECT_EQ( counts, expected );
    EXPECT_EQ( counted.MemberCount(), counts.size() + 1 ); // and the context files
}

TEST_F( EveryKind, IsComparedByDiff ) {
    auto const outcome = bfri( { "diff", "switch.conf", "switch.conf", "--json" } );
    auto const compared = parsed( outcome.out );
    Counts counts;
    for( RecordKind const& kind : Bfri::recordKinds() )
        counts[ kind.one ] = compared[ "kinds" ][ kind.member ][ "same" ].GetUint();
    EXPECT_EQ( counts, expected );
    EXPECT_EQ( compared[ "kinds" ].MemberCount(), expected.size() );
}

TEST_F( EveryKind, HasItsNames ) {
    std::map<String, std::set<String>> names;
    std::map<String, std::set<String>> known;
    for( RecordKind const& kind : Bfri::recordKinds() ) {
        for( Bfri::Row const& row : kind.rows( model->parser() ) )
            known[ kind.one ].insert( Bfri::valueAs<String>( row, "name" ) );
        auto const listed = answer( { "names", "--kind", kind.one } );
        for( auto const& name : listed[ "names" ].GetArray() )
            names[ kind.one ].insert( name[ "name" ].GetString() );
    }
    EXPECT_EQ( names, known );
}

TEST_F( EveryKind, IsCompleted ) {
    for( RecordKind const& kind : Bfri::recordKinds() ) {
        std::istringstream lines( bfri( { "complete", "field", "switch.conf", kind.one, "" } ).out );
        std::set<String> offered;
        for( String line; std::getline( lines, line ); )
            offered.insert( line );
        std::set<String> known;
        for( Bfri::Row const& row : kind.rows( model->parser() ) )
            known.insert( Bfri::valueAs<String>( row, "name" ) );
        EXPECT_EQ( offered, known ) << kind.one;
    }
}

/// A resource is told of in the entry of what is placed there, and a placed table is one.
TEST_F( EveryKind, HasItsPages ) {
    Counts counts;
    std::set<String> names;
    for( RecordKind const& kind : Bfri::recordKinds() ) {
        for( Bfri::Row const& row : kind.rows( model->parser() ) )
            names.insert( Bfri::valueAs<String>( row, "name" ) );
    }
    for( String const& name : names ) {
        auto const page = answer( { "show", name.c_str() } );
        for( RecordKind const& kind : Bfri::recordKinds() ) {
            if( !page.HasMember( kind.member ) )
                continue;
            counts[ kind.one ] += page[ kind.member ].Size();
            for( auto const& entry : page[ kind.member ].GetArray() )
                counts[ "resource" ] += entry.HasMember( "placed" ) && entry[ "placed" ].GetBool();
        }
    }
    expected.erase( "handle" );
    EXPECT_EQ( counts, expected );
}

/// Of every kind whose records have handles.
TEST_F( EveryKind, IsLookedUp ) {
    std::set<String> asked;
    for( RecordKind const& kind : Bfri::recordKinds() ) {
        for( Bfri::Row const& row : kind.rows( model->parser() ) ) {
            for( char const* const field : { "handle", "tableHdl" } ) {
                if( auto const* const handle = std::get_if<Bfri::Hex>( &valueOf( row, field ).is ) )
                    asked.insert( std::to_string( handle->value ) );
            }
        }
    }
    std::vector<char const*> words{ "lookup" };
    for( String const& handle : asked )
        words.push_back( handle.c_str() );
    std::map<String, std::set<String>> found; // names by kind
    auto const answers = answer( words );
    for( auto const& one : answers[ "handles" ].GetArray() ) {
        for( auto const& record : one[ "found" ].GetArray() )
            found[ record[ "kind" ].GetString() ].insert( record[ "name" ].GetString() );
    }
    Counts counts;
    for( auto const& [ kind, names ] : found )
        counts[ kind ] = names.size();
    for( Kind const other : { Kind::headers, Kind::phvFields } ) // have no handle
        expected.erase( kindOf( other ).one );
    expected[ "handle" ] = 1; // the match table alone refers to others
    EXPECT_EQ( counts, expected );
}

} // namespace
