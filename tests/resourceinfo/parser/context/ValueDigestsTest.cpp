// Digests of random files: equal for equal values, however they are written, and for no others.

#include "resourceinfo/parser/context/ContextDocument.h"
#include "tests/resourceinfo/parser/context/RandomJson.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <gmock/gmock.h>
#include <unordered_map>
#include <unordered_set>

namespace {

using Context::Digest;
using Context::PartDigest;
using Support::Edit;
using Support::Random;
using Support::RandomJson;
using Support::utf8;

/// Digests of a file, of its members, and of a list's elements with their parts; parts of one path in their
/// order.
using Digests = std::multimap<std::string, Digest>;

constexpr char const* surveyedLists[] = { "tables", "learn_quanta", "flexible_headers",
                                          "dynamic_hash_calculations" };

Digests digestsOf( Context::InputFile&& file, std::string const& path ) {
    Context::ContextDocument::Notes notes;
    Context::ValueDigests& digests = notes.digests.emplace();
    Context::ContextDocument const document( path, file, &notes );
    EXPECT_TRUE( document.isRead() );
    Digests all{ { "", digests.file() } };
    for( PartDigest const& member : digests.takeMembers() )
        all.emplace( "/" + member.path, member.digest );
    for( std::string const list : surveyedLists ) {
        std::size_t index = 0;
        for( Context::ElementDigests const& element : digests.takeElements( list ) ) {
            std::string const pointer = "/" + list + "/" + std::to_string( index++ );
            all.emplace( pointer, element.digest );
            for( PartDigest const& part : element.parts )
                all.emplace( pointer + "/" + part.path, part.digest );
        }
    }
    return all;
}

Digests digestsOf( std::string const& text ) { return digestsOf( Support::TextFile( text ), "text" ); }

/// The values that have digests, by path.
using Values = std::multimap<std::string, RandomJson const*>;

void addParts( std::string const& pointer, RandomJson const& element, Values& all ) {
    for( std::size_t m = 0; m < element.names.size(); ++m ) {
        RandomJson const& member = element.children[ m ];
        std::u32string const& name = element.names[ m ];
        std::string const path = pointer + "/" + utf8( name );
        all.emplace( path, &member );
        bool const inParts = name == U"actions"            ? member.kind == RandomJson::Kind::array
                             : name == U"match_attributes" ? member.kind == RandomJson::Kind::object
                                                           : false;
        for( std::size_t i = 0; inParts && i < member.children.size(); ++i )
            all.emplace( path + "/" +
                             ( name == U"actions" ? std::to_string( i ) : utf8( member.names[ i ] ) ),
                         &member.children[ i ] );
    }
}

Values valuesOf( RandomJson const& context ) {
    Values all{ { "", &context } };
    std::map<std::u32string, int> times;
    for( std::size_t m = 0; m < context.names.size(); ++m ) {
        std::u32string const& name = context.names[ m ];
        RandomJson const& list = context.children[ m ];
        std::string const path = "/" + utf8( name );
        all.emplace( path, &list );
        bool const isSurveyed = std::find( std::begin( surveyedLists ), std::end( surveyedLists ),
                                           utf8( name ) ) != std::end( surveyedLists );
        if( !isSurveyed || list.kind != RandomJson::Kind::array || ++times[ name ] > 1 )
            continue;
        for( std::size_t i = 0; i < list.children.size(); ++i ) {
            std::string const pointer = path + "/" + std::to_string( i );
            all.emplace( pointer, &list.children[ i ] );
            addParts( pointer, list.children[ i ], all );
        }
    }
    return all;
}

/// Which value has which digest, over all files that are looked at.
class Ledger {
  public:
    /// Whether each value that ought to have a digest has one, no other has, and equal values have equal
    /// ones, also those of the files before, and different ones different ones.
    testing::AssertionResult isRight( RandomJson const& context, Digests const& digests ) {
        Values const values = valuesOf( context );
        if( values.size() != digests.size() )
            return testing::AssertionFailure()
                   << values.size() << " values, " << digests.size() << " digests";
        auto digest = digests.begin();
        for( auto const& [ path, value ] : values ) {
            if( digest->first != path )
                return testing::AssertionFailure() << digest->first << " instead of " << path;
            if( !isRight( *value, digest->second ) )
                return testing::AssertionFailure() << "digest of " << path;
            ++digest;
        }
        return testing::AssertionSuccess();
    }

    std::size_t values() const { return digests_.size(); }

  private:
    bool isRight( RandomJson const& value, Digest const& digest ) {
        auto const [ known, isNew ] = digests_.try_emplace( canonical( value ), digest );
        bool const isNewDigest = seen_.insert( digest.low ).second;
        return known->second == digest && isNew == isNewDigest;
    }

    std::unordered_map<std::string, Digest> digests_; // by the value's key
    std::unordered_set<std::uint64_t> seen_;          // low halves: these are different already
};

TEST( ValueDigests, AreEqualHoweverAValueIsWritten ) {
    Support::TemporaryFolder const folder;
    Random random( 5 );
    Ledger ledger;
    int different = 0;
    for( int pair = 0; pair < 1000; ++pair ) {
        RandomJson const context = randomContext( random );
        std::string const one = written( context, random );
        std::string const two = written( context, random );
        SCOPED_TRACE( one + '\n' + two );
        Digests const digests = digestsOf( one );
        ASSERT_TRUE( ledger.isRight( context, digests ) );
        ASSERT_EQ( digestsOf( two ), digests );
        if( pair % 8 == 0 ) {
            ASSERT_EQ(
                digestsOf( std::move( *Context::gzipFile() ), folder.writeGzip( "context.json", two ) ),
                digests );
        }
        different += one != two;
    }
    EXPECT_GT( different, 990 );
    EXPECT_GT( ledger.values(), 5000 );
}

TEST( ValueDigests, OfAnEditedFileDifferOnTheWayToTheEditAndNowhereElse ) {
    Random random( 6 );
    Ledger ledger;
    int edits[ Support::editKinds ] = {};
    for( int done = 0; done < 10000; ) {
        RandomJson const context = randomContext( random );
        Digests const before = digestsOf( written( context, random ) );
        ASSERT_TRUE( ledger.isRight( context, before ) );
        for( std::size_t kind = 0; kind < Support::editKinds; ++kind ) {
            RandomJson changed = context;
            if( !edited( changed, static_cast<Edit>( kind ), random ) )
                continue;
            std::string const text = written( changed, random );
            SCOPED_TRACE( text );
            Digests const after = digestsOf( text );
            ASSERT_NE( after.find( "" )->second, before.find( "" )->second );
            ASSERT_TRUE( ledger.isRight( changed, after ) );
            ++edits[ kind ];
            ++done;
        }
    }
    EXPECT_THAT( edits, testing::Each( testing::Gt( 500 ) ) );
}

Digest digestOf( std::string const& text ) { return digestsOf( text ).find( "" )->second; }

TEST( ValueDigests, OfNumbersAreThoseOfTheTypeThatTheyAreReadAs ) {
    EXPECT_EQ( digestOf( "1e2" ), digestOf( "100.0" ) );
    EXPECT_NE( digestOf( "1e2" ), digestOf( "100" ) );
    EXPECT_EQ( digestOf( "-0" ), digestOf( "0" ) ) << "an integer has no sign of zero";
    EXPECT_EQ( digestOf( "-0.0" ), digestOf( "0.0" ) ) << "numbers that are equal";
    EXPECT_NE( digestOf( "0.0" ), digestOf( "0" ) );
    EXPECT_NE( digestOf( "18446744073709551615" ), digestOf( "-1" ) );
    EXPECT_NE( digestOf( "18446744073709551615" ), digestOf( "18446744073709551616" ) );
    EXPECT_EQ( digestOf( "1e-400" ), digestOf( "0.0" ) );
}

TEST( ValueDigests, OfObjectsOfManyMembersDoNotDependOnTheirOrder ) {
    // Long ones are sorted in another way than short ones.
    for( int const members : { 31, 32, 33, 34, 200 } ) {
        std::string up;
        std::string down;
        for( int i = 0; i < members; ++i ) {
            up += ( i ? ",\"" : "\"" ) + std::to_string( i ) + "\":" + std::to_string( i );
            down = "\"" + std::to_string( i ) + "\":" + std::to_string( i ) + ( i ? "," : "" ) + down;
        }
        EXPECT_EQ( digestOf( "{" + up + "}" ), digestOf( "{" + down + "}" ) ) << members;
        EXPECT_EQ( digestOf( "{\"x\":1," + up + ",\"x\":2}" ), digestOf( "{" + down + ",\"x\":1,\"x\":2}" ) );
        EXPECT_NE( digestOf( "{\"x\":1," + up + ",\"x\":2}" ), digestOf( "{\"x\":2," + up + ",\"x\":1}" ) );
    }
}

TEST( ValueDigests, TellNamesFromTextsAndLevelsFromEachOther ) {
    std::vector<std::string> const texts = { R"("a")",
                                             R"(["a"])",
                                             R"([["a"]])",
                                             R"({"a":"a"})",
                                             R"({"a":["a"]})",
                                             R"([{"a":"a"}])",
                                             "[]",
                                             "{}",
                                             "[[]]",
                                             "[{}]",
                                             "\"\"",
                                             R"({"":""})",
                                             "null",
                                             "[null]",
                                             "[null,null]",
                                             "false",
                                             "0",
                                             R"("0")",
                                             R"("null")",
                                             "[1,2]",
                                             "[2,1]",
                                             "[[1],2]",
                                             "[[1,2]]",
                                             "[1,[2]]",
                                             R"({"a":1,"b":2})",
                                             R"({"a":2,"b":1})",
                                             R"({"a":1,"a":1})",
                                             R"({"a":1})",
                                             R"("\u0000")" };
    std::set<std::pair<std::uint64_t, std::uint64_t>> digests;
    for( std::string const& text : texts )
        digests.insert( { digestOf( text ).low, digestOf( text ).high } );
    EXPECT_EQ( digests.size(), texts.size() );
}

/// The digests of what is dropped of the first table's parts, by path.
std::map<std::string, PartDigest> partsOfTable( std::string const& table ) {
    Context::ContextDocument::Notes notes;
    Context::ValueDigests& digests = notes.digests.emplace();
    std::string const text = "{\"tables\":[" + table + "]}";
    Support::TextFile file( text );
    EXPECT_TRUE( Context::ContextDocument( "text", file, &notes ).isRead() );
    std::map<std::string, PartDigest> parts;
    auto const tables = digests.takeElements( "tables" );
    for( PartDigest const& part : tables.at( 0 ).parts )
        parts.emplace( part.path, part );
    return parts;
}

TEST( ValueDigests, TellWhatNoPassReadsFromTheRest ) {
    auto const parts = partsOfTable( R"({"handle":1,"memory":[1,2],"actions":[{"handle":2,"steps":3}]})" );
    EXPECT_EQ( parts.at( "handle" ).unread, Digest() );
    EXPECT_EQ( parts.at( "memory" ).unread, parts.at( "memory" ).digest );
    EXPECT_NE( parts.at( "actions/0" ).unread, Digest() );
    EXPECT_NE( parts.at( "actions/0" ).unread, parts.at( "actions/0" ).digest );
}

TEST( ValueDigests, OfWhatNoPassReadsDoNotDependOnTheRest ) {
    struct {
        char const* from;
        char const* to;
        char const* path;
        bool isUnread;
    } const rows[] = {
        { R"({"actions":[{"handle":2,"steps":3}]})", R"({"actions":[{"handle":9,"steps":3}]})", "actions/0",
          false },
        { R"({"actions":[{"handle":2,"steps":3}]})", R"({"actions":[{"steps":3,"handle":9}]})", "actions/0",
          false },
        { R"({"actions":[{"handle":2,"steps":3}]})", R"({"actions":[{"handle":2,"steps":4}]})", "actions/0",
          true },
        { R"({"stage_tables":[{"size":2,"x":{"y":1}}]})", R"({"stage_tables":[{"size":3,"x":{"y":1}}]})",
          "stage_tables", false },
        { R"({"stage_tables":[{"size":2,"x":{"size":1}}]})",
          R"({"stage_tables":[{"size":2,"x":{"size":2}}]})", "stage_tables", true },
        { R"({"static_entries":[{"size":1}]})", R"({"static_entries":[{"size":2}]})", "static_entries",
          true },
        { R"({"size":1})", R"({"size":2})", "size", false },
    };
    for( auto const& row : rows ) {
        PartDigest const from = partsOfTable( row.from ).at( row.path );
        PartDigest const to = partsOfTable( row.to ).at( row.path );
        EXPECT_NE( from.digest, to.digest ) << row.to;
        EXPECT_EQ( from.unread != to.unread, row.isUnread ) << row.to;
    }
}

} // namespace
