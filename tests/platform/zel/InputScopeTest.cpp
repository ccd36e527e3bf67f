#include "zel/Assert.h"

#include <optional>
#include <thread>

#include <gtest/gtest.h>

namespace {

using Zel::InputScope;
using Zel::String;

class Place : public InputScope {
  public:
    explicit Place( String text, int* described = nullptr )
        : text_( std::move( text ) ), described_( described ) {}
    void describe( std::ostream& os ) const override {
        os << text_;
        if( described_ )
            ++*described_;
    }

  private:
    String text_;
    int* described_;
};

/// Where a failure here and now would say it is.
String position() {
    try {
        Zel::AssertionSite{ "", 0, "", "" }.fail();
    } catch( Zel::AssertionError const& error ) {
        return error.failure().position;
    }
}

class InputScopes : public testing::Test {
  protected:
    InputScopes() { Zel::assertionHandlerIs( Zel::throwAssertionError ); }
    ~InputScopes() override {
        Zel::assertionHandlerIs( nullptr );
        EXPECT_EQ( InputScope::current(), nullptr );
    }
};

TEST_F( InputScopes, NoneIsNoPosition ) {
    EXPECT_EQ( InputScope::current(), nullptr );
    EXPECT_EQ( position(), "" );
}

TEST_F( InputScopes, AreNamedOutermostFirst ) {
    Place const file( "file" );
    EXPECT_EQ( position(), "file" );
    {
        Place const table( "table" );
        EXPECT_EQ( InputScope::current(), &table );
        EXPECT_EQ( table.outer(), &file );
        Place const unit( "unit" );
        EXPECT_EQ( position(), "file, table, unit" );
    }
    EXPECT_EQ( position(), "file" );
    EXPECT_EQ( InputScope::current(), &file );
    EXPECT_EQ( file.outer(), nullptr );
    Place const other( "other" );
    EXPECT_EQ( position(), "file, other" );
}

TEST_F( InputScopes, EndWithAnException ) {
    Place const file( "file" );
    for( int round = 0; round < 2; ++round ) {
        try {
            Place const table( "table" );
            Place const unit( "unit" );
            Zel::AssertionSite{ "", 0, "", "" }.fail();
        } catch( Zel::AssertionError const& error ) {
            EXPECT_EQ( error.failure().position, "file, table, unit" );
        }
        EXPECT_EQ( InputScope::current(), &file );
        EXPECT_EQ( position(), "file" );
    }
}

TEST_F( InputScopes, EndWithAnExceptionFromTheirOwnConstructor ) {
    struct Failing : Place {
        Failing() : Place( "failing" ) { throw 1; }
    };
    Place const file( "file" );
    EXPECT_THROW( Failing(), int );
    EXPECT_EQ( InputScope::current(), &file );
    EXPECT_EQ( position(), "file" );
}

TEST_F( InputScopes, AreDescribedOnlyWhenSomethingFails ) {
    int described = 0;
    { Place const file( "file", &described ); }
    EXPECT_EQ( described, 0 );
    Place const file( "file", &described );
    position();
    EXPECT_EQ( described, 1 );
}

TEST_F( InputScopes, ShowControlCharactersByTheirNumbers ) {
    Place const file( "a\nb\x1b[31m\x7f\t\xc3\xa9\\" );
    EXPECT_EQ( position(), "a\\x0ab\\x1b[31m\\x7f\\x09\xc3\xa9\\" );
}

TEST_F( InputScopes, AreEachThreadsOwn ) {
    Place const file( "file" );
    String before, inside, after;
    std::thread( [ & ] {
        before = position();
        {
            Place const other( "other" );
            inside = position();
        }
        after = position();
    } ).join();
    EXPECT_EQ( before, "" );
    EXPECT_EQ( inside, "other" );
    EXPECT_EQ( after, "" );
    EXPECT_EQ( position(), "file" );
}

} // namespace
