#include "cli/grammar/Pattern.h"
#include "cli/grammar/Failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Bfri::Failure;
using Bfri::Pattern;
using Bfri::String;
using testing::EndsWith;
using testing::StartsWith;

struct Match {
    char const* expression;
    char const* text;
    bool found;
};

TEST( AnExpression, MatchesAnywhereAsInEcmaScript ) {
    Match const rows[] = {
        { "", "", true },
        { "", "acl", true },
        { "cl", "acl", true },
        { "lc", "acl", false },
        { "ACL", "acl", false },
        { "^acl", "pipe.acl", false },
        { "acl$", "pipe.acl", true },
        { "acl$", "acl\n", false },
        { "^a.l$", "acl", true },
        { "e\\.acl", "pipe.acl", true },
        { "e\\.acl", "pipe_acl", false },
        { "^(?!pipe_a)", "pipe_b.acl", true },
        { "^(?!pipe_a)", "pipe_a.acl", false },
        { "(\\w)\\1", "pipe.acll", true },
        { "(\\w)\\1", "pipe.acl", false },
        { "ipv[46]_(lpm|host){1,2}?", "ipv6_host", true },
        { "\\u0061cl", "acl", true },
        { "[]", "acl", false },    // the empty class
        { "^[^]+$", "a\n", true }, // and its opposite
    };
    for( Match const& row : rows )
        EXPECT_EQ( Pattern( row.expression ).isIn( row.text ), row.found )
            << row.expression << " " << row.text;
}

TEST( AnExpression, SeesTheCharactersOfUtf8 ) {
    Match const rows[] = {
        { "^.$", "\xC3\xA9", true }, { "[\xC3\xA9]$", "\xC3\xA9", true }, { "[\xC3\xA9]", "\xC3\xA8", false },
        { "y$", "x\xFFy", true },    { "x.y", "x\xFFy", false },          { "^\\d$", "\xD9\xA1", false },
    };
    for( Match const& row : rows )
        EXPECT_EQ( Pattern( row.expression ).isIn( row.text ), row.found )
            << row.expression << " " << row.text;
}

String failureOf( String const& expression, String const& text = "" ) {
    try {
        Pattern( expression ).isIn( text );
    } catch( Failure const& failure ) {
        EXPECT_EQ( failure.status, Bfri::ExitStatus::usage );
        return failure.what();
    }
    return "no failure";
}

TEST( AnExpression, ThatIsNoneIsQuotedWithTheReason ) {
    struct {
        char const* expression;
        char const* rest;
    } const rows[] = {
        { "[a", "[a' at offset 2: missing terminating ] for character class" },
        { "a(b", "a(b' at offset 3: missing closing parenthesis" },
        { "a)", "a)' at offset 1: unmatched closing parenthesis" },
        { "*", "*' at offset 0: quantifier does not follow a repeatable item" },
        { "\x1B(", "\\x1b(' at offset 2: missing closing parenthesis" },
        { "\xFF", "\\xff' at offset 0: UTF-8 error: illegal byte (0xfe or 0xff)" },
        { "(a{1,65535}){1,65535}", "(a{1,65535}){1,65535}' at offset 21: regular expression is too large" },
    };
    for( auto const& row : rows )
        EXPECT_EQ( failureOf( row.expression ), String( "can't use --filter '" ) + row.rest );
}

TEST( AnExpression, OfAnyDepthIsRefusedOrUsed ) {
    String const open( 100'000, '(' );
    EXPECT_THAT( failureOf( open + String( 100'000, ')' ) ),
                 EndsWith( ": parentheses are too deeply nested" ) );
    EXPECT_THAT( failureOf( open ), StartsWith( "can't use --filter '((((" ) );
}

TEST( AnExpression, OnALongNameNeedsNoStack ) {
    String const name( 1'000'000, 'a' );
    EXPECT_TRUE( Pattern( "(a|b)*$" ).isIn( name.substr( 0, 100'000 ) ) );
    EXPECT_FALSE( Pattern( "(a|b)*c" ).isIn( name ) );
    EXPECT_EQ( failureOf( "^(a|b)*$", name ),
               "can't use --filter '^(a|b)*$' on a name of 1000000 bytes: heap limit exceeded" );
}

TEST( AnExpression, ThatTriesEveryWayStopsAtALimit ) {
    String const name = String( 40, 'a' ) + "!";
    EXPECT_EQ( failureOf( "^(a|aa)+$", name ),
               "can't use --filter '^(a|aa)+$' on a name of 41 bytes: match limit exceeded" );
    EXPECT_THAT( failureOf( "(*LIMIT_MATCH=4000000000)^(a|aa)+$", name ),
                 EndsWith( ": match limit exceeded" ) );
    EXPECT_THAT( failureOf( "(?R)", name ), EndsWith( ": nested recursion at the same subject position" ) );
}

} // namespace
