// What a survey notes while a file is read: places, duplicate members, static entries.

#include "tests/resourceinfo/parser/context/Surveys.h"

#include <gmock/gmock.h>

namespace Context {
/// For messages of failed tests.
static void PrintTo( Place const& place, std::ostream* os ) {
    *os << place.offset << " = " << place.line << ':' << place.column;
}
} // namespace Context

namespace BfResourceInfo {
namespace {

using Context::FileSurvey;
using Context::Place;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// Counted in the plainest way.
Place placeIn( String const& text, std::size_t offset ) {
    Place place{ offset, 1, 1 };
    for( std::size_t i = 0; i < offset; ++i ) {
        ++place.column;
        if( text[ i ] == '\n' ) {
            ++place.line;
            place.column = 1;
        }
    }
    return place;
}

template<class Elements>
std::vector<Place> placesOf( Elements const& elements ) {
    std::vector<Place> places;
    for( auto const& element : elements )
        places.push_back( element.place );
    return places;
}

/// Each element has a member "at", whose text is in the file once.
String const lists = R"({ "tables": [{"at":"t0"},
     {   "x": [[{}]], "at"
 : "t1" }, 3, "t2", [ {"at":"t3"} ], {"at":"t4"}
  ],
"phv_allocation":[], "other" : [ {},
 {} ],
  "learn_quanta":
[
{ "at":"lq0"} ] ,
	"flexible_headers" : [{"at":"h0"},{"at":"h1"}], "dynamic_hash_calculations":[


	{"at": "d0"} ] })";

/// Where the object with a member "at" starts.
Place placeAt( String const& text, String const& at ) {
    auto const member = text.find( '"' + at + '"' );
    auto const start = text.rfind( at == "t1" ? "{   " : "{", member );
    EXPECT_NE( start, String::npos );
    return placeIn( text, at == "t3" ? text.rfind( '[', start ) : start );
}

void expectPlaces( FileSurvey const& survey, String const& text ) {
    auto const at = [ & ]( char const* member ) { return placeAt( text, member ); };
    EXPECT_THAT( placesOf( survey.tables ),
                 ElementsAre( at( "t0" ), at( "t1" ), Place(), Place(), at( "t3" ), at( "t4" ) ) );
    EXPECT_THAT( placesOf( survey.learnQuantas ), ElementsAre( at( "lq0" ) ) );
    EXPECT_THAT( placesOf( survey.headers ), ElementsAre( at( "h0" ), at( "h1" ) ) );
    EXPECT_THAT( placesOf( survey.hashes ), ElementsAre( at( "d0" ) ) );
}

TEST( SurveyPlaces, AreThoseOfTheBracketsOfObjectsAndArrays ) {
    expectPlaces( surveyOf( lists ), lists );
    EXPECT_EQ( surveyOf( lists ).tables.at( 1 ).place, ( Place{ 31, 2, 6 } ) ) << "counted by hand";
}

TEST( SurveyPlaces, CountCarriageReturnsAsCharactersOfTheirLine ) {
    String text = lists;
    for( auto end = text.find( '\n' ); end != String::npos; end = text.find( '\n', end + 2 ) )
        text.replace( end, 1, "\r\n" );
    expectPlaces( surveyOf( text ), text );
}

TEST( SurveyPlaces, AreThoseOfTheUnpackedText ) {
    Support::TemporaryFolder const folder;
    SurveyCollector collector;
    conditionOfLoading( *emptyParser(), std::move( *Context::gzipFile() ), {},
                        folder.writeGzip( "context.json.gz", lists ) );
    expectPlaces( collector.files.at( 0 ), lists );
}

TEST( SurveyPlaces, AreRightOnBothSidesOfTheBufferEnd ) {
    String const tail = lists.substr( 1 );
    for( char const* const filler : { " ", "\n", "x" } ) {
        for( std::size_t size = 4096 - lists.size() - 4; size < 4100; ++size ) {
            String text( "{" );
            if( *filler == 'x' )
                text += "\"x\":\"" + String( size, 'x' ) + "\",";
            else
                text += String( size, *filler );
            text += tail;
            SCOPED_TRACE( text.size() );
            expectPlaces( surveyOf( text ), text );
        }
    }
}

TEST( SurveyPlaces, AreRightInAFileOfManyBuffers ) {
    String text = "{\"tables\":[\n";
    std::vector<Place> expected;
    U32 line = 2;
    for( std::size_t i = 0; i < 3000; ++i ) {
        std::size_t const spaces = i * i % 7;
        text += String( spaces, i % 3 ? ' ' : '\n' );
        line += static_cast<U32>( i % 3 ? 0 : spaces );
        expected.push_back( { text.size(), line, static_cast<U32>( text.size() - text.rfind( '\n' ) ) } );
        text += "{\"name\":\"" + String( i % 97, 'n' ) + "\"}" + ( i == 2999 ? "]}" : "," );
    }
    EXPECT_GT( text.size(), 150000 );
    EXPECT_EQ( placesOf( surveyOf( text ).tables ), expected );
}

/// Pointers, with the text from the place on.
std::vector<std::pair<String, String>> duplicatesOf( String const& text ) {
    std::vector<std::pair<String, String>> duplicates;
    for( auto const& duplicate : surveyOf( text ).duplicates ) {
        EXPECT_EQ( duplicate.place, placeIn( text, duplicate.place.offset ) );
        duplicates.emplace_back( duplicate.pointer, text.substr( duplicate.place.offset, 12 ) );
    }
    return duplicates;
}

TEST( SurveyDuplicates, AreEachMemberThatCameBeforeInItsObject ) {
    EXPECT_THAT( duplicatesOf( R"({ "tables": [ {"name":1, "size":2,
  "name":3, "n\u0061me" :4}, {"name":5, "units":[{"name":6,"fields":[],"fields":7}]} ],
"tables":8 })" ),
                 ElementsAre( Pair( "/tables/0/name", R"("name":3, "n)" ),
                              Pair( "/tables/0/name", R"("n\u0061me" )" ),
                              Pair( "/tables/1/units/0/fields", R"("fields":7}])" ),
                              Pair( "/tables", R"("tables":8 })" ) ) );
}

TEST( SurveyDuplicates, HaveNoDuplicatesInside ) {
    EXPECT_THAT( duplicatesOf( R"({"tables":[],"tables":[{"name":1,"name":2},{"name":3,"name":4}],
"tables":{"size":1,"size":2},"units":{},"units":{},"size":[[],{"name":5,"name":6}]})" ),
                 ElementsAre( Pair( "/tables", testing::_ ), Pair( "/tables", testing::_ ),
                              Pair( "/units", testing::_ ), Pair( "/size/1/name", R"("name":6}]})" ) ) );
}

TEST( SurveyDuplicates, AreOfMembersThatAreReadAlone ) {
    EXPECT_THAT( duplicatesOf( R"({"x":1,"x":2,"":3,"":4,"other":{"name":1,"name":2},"tables":[]})" ),
                 IsEmpty() );
    EXPECT_THAT( duplicatesOf( R"([{"name":1},{"name":2},[{"name":3,"name":4}]])" ),
                 ElementsAre( Pair( "/2/0/name", R"("name":4}]])" ) ) );
}

TEST( SurveyDuplicates, OfAListLeaveTheFirstOne ) {
    FileSurvey const survey = surveyOf( R"({"tables":[{"name":"a","name":"b","size":1,"size":2}],
        "tables":[{"name":"c"},{"name":"d"}],"learn_quanta":{},"learn_quanta":[{"name":"e"}]})" );
    ASSERT_EQ( survey.tables.size(), 1 );
    EXPECT_EQ( survey.tables[ 0 ].name, "a" );
    EXPECT_EQ( survey.tables[ 0 ].size, 1 );
    EXPECT_EQ( survey.tables[ 0 ].place.offset, 11 );
    EXPECT_THAT( survey.learnQuantas, IsEmpty() );
}

/// The number in the first table.
std::uint64_t staticEntriesOf( String const& members ) {
    return surveyOf( R"({"tables":[{)" + members + R"(},{"static_entries":[1,2,3,4,5,6,7]}]})" )
        .tables.at( 0 )
        .staticEntries;
}

TEST( SurveyStaticEntries, AreCountedWhateverTheyAre ) {
    EXPECT_EQ( staticEntriesOf( R"("name":"t")" ), 0 );
    EXPECT_EQ( staticEntriesOf( R"("static_entries":[])" ), 0 );
    EXPECT_EQ( staticEntriesOf( R"("static_entries":[{}])" ), 1 );
    EXPECT_EQ( staticEntriesOf( R"("static_entries":[null,[[1],[2,3]],{"static_entries":[4,5]},"x",6.5])" ),
               5 );
    String many = "0";
    for( int i = 0; i < 4999; ++i )
        many += ",{\"name\":\"e\",\"x\":[[]]}";
    EXPECT_EQ( staticEntriesOf( "\"static_entries\":[" + many + "]" ), 5000 );
}

TEST( SurveyStaticEntries, AreNoneInWhatIsNoArray ) {
    EXPECT_EQ( staticEntriesOf( R"("static_entries":7)" ), 0 );
    EXPECT_EQ( staticEntriesOf( R"("static_entries":{"static_entries":[1,2]})" ), 0 );
    EXPECT_EQ( staticEntriesOf( R"("static_entries":{},"actions":[[1,2],[3]])" ), 0 );
    EXPECT_EQ( staticEntriesOf( R"("match_attributes":{"static_entries":[1,2]})" ), 0 );
    EXPECT_EQ( staticEntriesOf( R"("actions":[{"static_entries":[1,2]}])" ), 0 );
}

TEST( SurveyStaticEntries, AreThoseOfTheFirstMemberOfTheName ) {
    EXPECT_EQ( staticEntriesOf( R"("static_entries":[1,2],"static_entries":[1,2,3])" ), 2 );
    EXPECT_EQ( staticEntriesOf( R"("static_entries":[],"static_entries":[1])" ), 0 );
    EXPECT_EQ( staticEntriesOf( R"("static_entries":null,"static_entries":[1])" ), 0 );
    FileSurvey const survey =
        surveyOf( R"({"tables":[{"static_entries":[1]}],"tables":[{"static_entries":[1,2]}]})" );
    EXPECT_EQ( survey.tables.at( 0 ).staticEntries, 1 );
}

} // namespace
} // namespace BfResourceInfo
