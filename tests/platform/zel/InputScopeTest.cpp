#include "zel/Assert.h"

#include <optional>
#include <thread>

#include <gtest/gtest.h>

namespace {

using Zel::InputPlace;
using Zel::InputScope;
using Zel::String;

/// Adds its text to the file's path, after what is there.
class Place : public InputScope {
  public:
    explicit Place( String text, int* located = nullptr ) : text_( std::move( text ) ), located_( located ) {}
    void locate( InputPlace& place ) const override {
        place.file += ( place.file.empty() ? "" : ", " ) + text_;
        if( located_ )
            ++*located_;
    }

  private:
    String text_;
    int* located_;
};

Zel::AssertionFailure failureHere() {
    try {
        Zel::AssertionSite{ "", 0, "", "" }.fail();
    } catch( Zel::AssertionError const& error ) {
        return error.failure();
    }
}

/// Where a failure here and now would say it is.
String position() { return failureHere().position; }

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

TEST_F( InputScopes, MakeAPlaceTogetherThatTravelsWithTheFailure ) {
    struct File : InputScope {
        void locate( InputPlace& place ) const override {
            place.kind = "context file";
            place.file = "a\n.json";
            place.pointer = "/tables/3";
        }
    } const file;
    struct Table : InputScope {
        void locate( InputPlace& place ) const override { place.element = { "table", 3, "acl" }; }
    } const table;
    auto const failure = failureHere();
    EXPECT_EQ( failure.position, "context file a\\x0a.json at /tables/3, table 3 \"acl\"" );
    EXPECT_EQ( failure.position, toText( failure.place ) );
    EXPECT_EQ( failure.place.file, "a\n.json" ) << "as it is";
    EXPECT_EQ( failure.place.pointer, "/tables/3" );
    ASSERT_TRUE( failure.place.element );
    EXPECT_EQ( failure.place.element->index, 3U );
    EXPECT_EQ( failure.place.element->name, "acl" );
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

TEST_F( InputScopes, AreAskedOnlyWhenSomethingFails ) {
    int located = 0;
    { Place const file( "file", &located ); }
    EXPECT_EQ( located, 0 );
    Place const file( "file", &located );
    position();
    EXPECT_EQ( located, 1 );
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

TEST( InputPlaceText, HasAPartForEachThingThatIsKnown ) {
    using Problem = InputPlace::Problem;
    struct {
        InputPlace place;
        char const* text;
    } const rows[] = {
        { {}, "" },
        { { .file = "f" }, "f" },
        { { .kind = "file", .file = "f" }, "file f" },
        { { .kind = "file" }, "file " },
        { { .kind = "file", .file = "f", .pointer = "" }, "file f" },
        { { .kind = "file", .file = "f", .pointer = "", .member = "m" }, "file f, member \"m\"" },
        { { .file = "f", .pointer = "/a/1", .member = "m" }, "f at /a/1, member \"m\"" },
        { { .pointer = "/a" }, "at /a" },
        { { .element = { { "table", 7, {} } } }, "table 7" },
        { { .file = "f", .element = { { "table", 7, "" } } }, "f, table 7 \"\"" },
        { { .file = "f", .pointer = "/a", .member = "m", .element = { { "row", 0, "n" } }, .handle = 5 },
          "f at /a, member \"m\", row 0 \"n\"" },
        { { .file = "f", .problem = Problem::open, .reason = "No such file" },
          "f: can't open it: No such file" },
        { { .file = "f", .problem = Problem::read, .reason = "Bad data" }, "f: can't read it: Bad data" },
        { { .file = "f", .problem = Problem::syntax, .reason = "Bad." }, "f: Bad." },
        { { .file = "f", .problem = Problem::syntax, .reason = "Bad.", .line = 2, .column = 14 },
          "f: line 2, column 14: Bad." },
        { { .file = "f", .problem = Problem::syntax, .reason = "Bad.", .line = 1, .column = 5000000000 },
          "f: line 1, column 5000000000: Bad." },
    };
    for( auto const& [ place, text ] : rows )
        EXPECT_EQ( toText( place ), text );
}

} // namespace
