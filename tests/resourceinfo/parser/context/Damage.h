#pragma once

// Valid inputs, damaged in every place: loading either fails by a broken condition that names the file, or
// succeeds; it never crashes, hangs, or leaves anything allocated.

#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/resourceinfo/parser/context/Surveys.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <ctime>
#include <fstream>
#include <gmock/gmock.h>
#include <rapidjson/document.h>
#include <rapidjson/istreamwrapper.h>
#include <set>
#include <sys/resource.h>
#include <unistd.h>

namespace BfResourceInfo {

/// How a load ends: with a model, or with a failure.
struct Outcome {
    String model;
    Zel::AssertionFailure failure;

    bool loaded() const { return failure.condition.empty(); }
    bool operator==( Outcome const& other ) const {
        return model == other.model && failure.condition == other.failure.condition &&
               failure.position == other.failure.position && failure.line == other.failure.line;
    }
};

/// The conditions that damage of a context file may break, those without a test left out.
inline std::set<String> expectedConditions() {
    std::ifstream file( BFRI_TREE "/tests/resourceinfo/behaviour.json" );
    rapidjson::IStreamWrapper stream( file );
    rapidjson::Document table;
    table.ParseStream( stream );
    std::set<String> conditions;
    for( auto const& section : table.GetArray() ) {
        if( !section.HasMember( "brokenByDamage" ) )
            continue;
        for( auto const& row : section[ "rows" ].GetArray() ) {
            String const subject = row[ "cells" ][ 0 ].GetString(); // `condition`
            if( row.HasMember( "tests" ) )
                conditions.insert( subject.substr( 1, subject.size() - 2 ) );
        }
    }
    return conditions;
}

/// The most memory that the process has had so far, in MB. Nothing under the sanitizers, which keep what was
/// given back.
inline long peakMemory() {
#ifdef BFRI_SANITIZED
    return 0;
#else
    rusage usage;
    getrusage( RUSAGE_SELF, &usage );
    return usage.ru_maxrss / 1024;
#endif
}

class Damage : public testing::Test {
  protected:
    ~Damage() override { EXPECT_LT( peakMemory() - peakBefore_, 64 ); }

    /// With a survey, in turns without digests and with them, it ends as it does without.
    Outcome load( std::string_view bytes ) {
        using Wanted = SurveyCollector::Wanted;
        folder_.write( "context.json", bytes );
        Outcome const outcome = load();
        SurveyCollector collector( ++loads_ % 2 ? Wanted::facts : Wanted::digests );
        EXPECT_TRUE( load() == outcome ) << "with a survey";
        EXPECT_EQ( collector.files.size(), 1 );
        EXPECT_EQ( collector.files.at( 0 ).isLoaded, outcome.loaded() );
        return outcome;
    }
    Outcome load() const {
        alarm( 60 ); // a load that hangs ends the program
        Support::ThrowingAssertions const scope;
        std::clock_t const start = std::clock();
        Outcome outcome;
        try {
            outcome.model = modelText( *bfResourceParserFactory( conf_ ) );
        } catch( Zel::AssertionError const& error ) {
            outcome.failure = error.failure();
        }
        alarm( 0 );
        EXPECT_LT( std::clock() - start, CLOCKS_PER_SEC ) << "one second of computing";
        EXPECT_EQ( liveAllocations(), before_ );
        return outcome;
    }
    /// A failure has a condition that is expected, and says where: the file, then why it cannot be used or
    /// a place in it, then the table of what is in one.
    void expectSound( Outcome const& outcome ) const {
        if( outcome.loaded() )
            return;
        EXPECT_EQ( outcome.failure.source, "BfResourceParser" );
        EXPECT_TRUE( conditions().count( outcome.failure.condition ) ) << outcome.failure.condition;
        ASSERT_THAT( outcome.failure.position, testing::StartsWith( file() ) );
        String const rest = outcome.failure.position.substr( file().size() );
        EXPECT_TRUE( rest.empty() || rest.starts_with( ": " ) || rest.starts_with( " at /" ) ||
                     rest.starts_with( ", member \"" ) || rest.starts_with( ", table " ) )
            << rest;
        if( rest.starts_with( " at /tables/" ) ) {
            String const index = rest.substr( 12, rest.find_first_of( "/,", 12 ) - 12 );
            EXPECT_NE( rest.find( ", table " + index ), String::npos ) << rest;
        }
    }
    static std::set<String> const& conditions() {
        static std::set<String> const all = expectedConditions();
        return all;
    }

    /// How every position starts.
    String file() const { return "context file " + folder_.path( "context.json" ); }

    SwitchFolder folder_;
    String const conf_ = folder_.conf( Support::DeviceBuilder().pipeline( "context.json", { 0 } ) );
    Support::TraceCollector const quiet_{ "BfResourceParser", {} };
    LiveAllocations const before_ = liveAllocations();
    long const peakBefore_ = peakMemory();
    int loads_ = 0;
};

} // namespace BfResourceInfo
