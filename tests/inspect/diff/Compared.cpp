#include "tests/inspect/diff/Compared.h"

#include <gmock/gmock.h>
#include <sstream>

Bfri::Configuration loadedWithDigests( String const& path ) {
    std::ostringstream trace;
    return std::get<Bfri::Configuration>( Bfri::loadConfiguration( path, Bfri::Survey::digests, trace ) );
}

Bfri::Comparison compared( String const& old, String const& now, Bfri::ComparisonScope const& scope ) {
    writeFile( "old.json", old );
    writeFile( "new.json", now );
    return compare( loadedWithDigests( "old.json" ), loadedWithDigests( "new.json" ), scope );
}

std::vector<String> noticesIn( Bfri::Verdict const& verdict ) {
    std::vector<String> notices;
    for( Bfri::Notice const& notice : verdict.notices ) {
        if( notice.kind->code != String( "BD309" ) )
            notices.push_back( notice.kind->code + ( ' ' + notice.what ) + ' ' + notice.name +
                               ( notice.table ? " of " + *notice.table : "" ) );
    }
    return notices;
}

Support::ContextBuilder editedProgram() {
    using namespace Support;
    return ContextBuilder()
        .table( Support::matchTable( "a" )
                    .size( 1000 )
                    .stages( { StageTable( "hash_match" ).number( 1 ).size( 600 ).with( "/memory", "[1,2]" ),
                               StageTable( "hash_match" ).number( 2 ).size( 400 ) } )
                    .action( "hit", { "indirect" } )
                    .action( "miss" )
                    .with( "/actions/2/parameters", R"([{"name":"port","bits":9}])" )
                    .with( "/match_attributes/key_fields", R"([{"name":"f","bits":32}])" )
                    .with( "/default_action", "\"miss\"" )
                    .actionData( "data" )
                    .statistics( "direct" )
                    .meter( "police" )
                    .stateful( "cells" ) )
        .table( Support::matchTable( "b" ).size( 2000 ).action( "set" ) )
        .table( Support::matchTable( "fixed" ).with( "/static_entries", R"([{"entry":1},{"entry":2}])" ) )
        .table( conditionTable( "condition" ).with( "/source", "\"x == 1\"" ) )
        .table( actionDataTable( "data" ) )
        .table( statisticsTable( "direct" ).referenced( "direct" ) )
        .table( statisticsTable( "indirect" ).size( 64 ) )
        .table( meterTable( "police" ).referenced( "direct" ) )
        .table( wredTable( "wred" ) )
        .table( statefulTable( "cells" ).referenced( "direct" ).with( "/initial", "7" ) )
        .table( Support::matchTable( "plain" ).size( 10 ).action( "apply" ) )
        .learnQuanta( "learn" )
        .with( "/learn_quanta/0/fields", R"([{"name":"f"}])" )
        .phvStage( "f", 8 )
        .with( "/phv_allocation/0/ingress/0/container", "3" )
        .flexibleHeader( "header", 16 )
        .dynamicHash( "hash", { "x", "y", "z" } )
        .with( "/parser", R"({"states":[1,2]})" );
}

namespace {

using Names = std::vector<String>;

Names namesOf( std::vector<Bfri::Row> const& rows ) {
    Names names;
    for( Bfri::Row const& row : rows )
        names.push_back( Bfri::valueAs<String>( row, "name" ) );
    return names;
}

Names namesOf( std::vector<Bfri::OmittedRecord> const& records ) {
    Names names;
    for( Bfri::OmittedRecord const& record : records )
        names.push_back( Bfri::valueAs<String>( record.row, "name" ) + ": " + record.reason.text );
    return names;
}

/// The changes of a kind; with the sides exchanged those of the comparison the other way round.
Names changesOf( Bfri::KindComparison const& kind, bool isExchanged ) {
    Names names;
    for( Bfri::ChangedRecord const& record : kind.changed ) {
        auto const& [ from, to ] =
            isExchanged ? std::tie( record.now, record.row ) : std::tie( record.row, record.now );
        String text = Bfri::valueAs<String>( from, "name" ) + " -> " + Bfri::valueAs<String>( to, "name" );
        for( Bfri::Change const& change : record.fields )
            text.append( " " ).append( change.field );
        names.push_back( text + ( record.move ? " moved" : "" ) );
    }
    return names;
}

} // namespace

void expectMirrored( Bfri::Comparison const& there, Bfri::Comparison const& again ) {
    EXPECT_EQ( there.differs(), again.differs() );
    EXPECT_EQ( there.modelDiffers(), again.modelDiffers() );
    for( std::size_t i = 0; i < there.kinds.size(); ++i ) {
        auto const& kind = there.kinds[ i ];
        auto const& mirrored = again.kinds[ i ];
        EXPECT_EQ( namesOf( kind.removed ), namesOf( mirrored.added ) );
        EXPECT_EQ( namesOf( kind.added ), namesOf( mirrored.removed ) );
        EXPECT_EQ( namesOf( kind.leftOut ), namesOf( mirrored.cameBack ) );
        EXPECT_EQ( namesOf( kind.cameBack ), namesOf( mirrored.leftOut ) );
        EXPECT_THAT( changesOf( kind, false ),
                     testing::UnorderedElementsAreArray( changesOf( mirrored, true ) ) );
        EXPECT_EQ( kind.same, mirrored.same );
    }
    EXPECT_EQ( there.handles.renumbered.size(), again.handles.renumbered.size() );
    ASSERT_EQ( there.handles.reused.size(), again.handles.reused.size() );
    for( std::size_t i = 0; i < there.handles.reused.size(); ++i ) {
        EXPECT_EQ( there.handles.reused[ i ].handle, again.handles.reused[ i ].handle );
        EXPECT_EQ( there.handles.reused[ i ].from, again.handles.reused[ i ].to );
    }
    EXPECT_EQ( there.unread.tables.size(), again.unread.tables.size() );
    EXPECT_EQ( there.unread.members.size(), again.unread.members.size() );
}
