#include "fuzz/JsonMutator.h"
#include "fuzz/Target.h"
#include "resourceinfo/parser/context/Json.h"

#include <algorithm>
#include <set>
#include <string>

#include <gtest/gtest.h>

// A mutator that does less than it says leaves the fuzzer blind, and nobody would notice.

std::size_t LLVMFuzzerMutate( std::uint8_t* data, std::size_t size, std::size_t maxSize ) {
    if( size < maxSize )
        data[ size ] = '!';
    return std::min( size + 1, maxSize );
}

namespace {

constexpr std::string_view names[] = { "size", "list" };
constexpr unsigned seeds = 4000;

/// The text after the changes of a seed; empty when there are none.
std::string changed( std::string text, unsigned seed, std::size_t maxSize = 1000 ) {
    std::size_t const size = text.size();
    text.resize( std::max( size, maxSize ) );
    auto* const data = reinterpret_cast<std::uint8_t*>( text.data() );
    text.resize( JsonMutator( names ).change( data, size, maxSize, seed ) );
    return text;
}

/// What all seeds make of a text.
std::set<std::string> allChanged( std::string const& text ) {
    std::set<std::string> results;
    for( unsigned seed = 0; seed < seeds; ++seed )
        results.insert( changed( text, seed ) );
    return results;
}

TEST( JsonMutator, MakesEachKindOfChange ) {
    auto const results = allChanged( R"({"size":7,"other":true,"list":["a",{}]})" );
    for( char const* const expected : {
             R"({"other":true,"list":["a",{}]})",                   // left out
             R"({"size":7,"other":true,"list":[{}]})",              // an element left out
             R"({"size":7,"other":true,"list":["a",{},"a"]})",      // an element written twice
             R"({"size":7,"other":true,"list":["a",{}],"size":7})", // written twice
             R"({"other":true,"list":["a",{"size":7}]})",           // moved
             R"({"other":true,"list":["a",{},7]})",                 // moved
             R"({"size":7,"other":true,"size":["a",{}]})",          // renamed
             R"({"size":7,"other":true,"list":[{},"a"]})",          // exchanged
             R"({"size":null,"other":true,"list":["a",{}]})",       // other types
             R"({"size":false,"other":true,"list":["a",{}]})",
             R"({"size":0.5,"other":true,"list":["a",{}]})",
             R"({"size":"list","other":true,"list":["a",{}]})",
             R"({"size":[],"other":true,"list":["a",{}]})",
             R"({"size":{},"other":true,"list":["a",{}]})",
             R"({"size":7,"other":true,"list":[]})", // emptied
             R"({"size":7,"other":true,"list":["",{}]})",
             R"({"size":-1,"other":true,"list":["a",{}]})", // numbers at bounds
             R"({"size":8,"other":true,"list":["a",{}]})",
             R"({"size":2147483648,"other":true,"list":["a",{}]})",
             R"({"size":4294967295,"other":true,"list":["a",{}]})",
             R"({"size":4294967296,"other":true,"list":["a",{}]})",
             R"({"size":9223372036854775807,"other":true,"list":["a",{}]})",
             R"({"size":18446744073709551615,"other":true,"list":["a",{}]})",
             R"({"size":1e300,"other":true,"list":["a",{}]})",
             R"({"size":["a",{}],"other":true,"list":["a",{}]})", // a copy
             R"({"size":7,"other":true,"list":["a",["a",{}]]})",  // of what holds it
             R"({"size":7,"other":true,"list":["a!",{}]})",       // bytes
         } )
        EXPECT_TRUE( results.contains( expected ) ) << expected;
}

TEST( JsonMutator, LeavesOtherMembersAlone ) {
    for( std::string const& text : allChanged( R"({"size":7,"other":true})" ) )
        EXPECT_NE( text.find( R"("other":true)" ), std::string::npos ) << text;
}

TEST( JsonMutator, MakesJsonThatFits ) {
    std::string const text = R"({"size":7,"list":["a",{"list":[{"size":9}]}]})";
    unsigned tooLarge = 0;
    for( unsigned seed = 0; seed < seeds; ++seed ) {
        std::string const result = changed( text, seed, text.size() + 4 );
        tooLarge += result.empty();
        ASSERT_LE( result.size(), text.size() + 4 );
        ASSERT_TRUE( result.empty() || !rapidjson::Document().Parse( result.c_str() ).HasParseError() )
            << result;
    }
    EXPECT_GT( tooLarge, 0U );
    EXPECT_LT( tooLarge, seeds / 2 );
}

TEST( JsonMutator, ChangesNothingWhereItFindsNothing ) {
    for( std::string const text : { "", "{", "7", "{}", R"({"other":1})", "[1,]" } )
        EXPECT_EQ( changed( text, 5 ), "" ) << text;
    EXPECT_EQ( changed( std::string( 4000, '[' ) + std::string( 4000, ']' ), 5, 10'000 ), "" );
}

TEST( JsonMutator, LeavesToTheFuzzerWhatIsNoJson ) {
    for( unsigned seed = 0; seed < 8; ++seed ) {
        std::string text = "{??";
        text.back() = '\0';
        auto* const data = reinterpret_cast<std::uint8_t*>( text.data() );
        EXPECT_EQ( JsonMutator( names ).mutate( data, 2, 3, seed ), 3U );
        EXPECT_EQ( text, "{?!" );
    }
}

} // namespace
