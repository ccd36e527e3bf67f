// Each thread has the survey sink of its own.

#include "resourceinfo/parser/context/ContextFile.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Surveys.h"
#include "tests/support/TextFile.h"

#include <gmock/gmock.h>
#include <thread>

namespace BfResourceInfo {
namespace {

constexpr int loads = 50;

/// Loads a file of one table again and again, as long as it sees its own surveys alone.
int surveysOfItsOwn( BfResourceParser* parser, String const& table ) {
    SurveyCollector collector( SurveyCollector::Wanted::digests );
    String const text = Support::ContextBuilder().table( Support::conditionTable( table ) ).text();
    for( int i = 0; i < loads; ++i ) {
        Support::TextFile file( text );
        parseContextJson( parser, table, {}, file );
    }
    int own = 0;
    for( Context::FileSurvey const& file : collector.files )
        own += file.path == table && file.tables.at( 0 ).name == table;
    return collector.files.size() == loads ? own : -1;
}

TEST( SurveyThreads, TakeWhatTheyLoadThemselves ) {
    SurveyCollector mine;
    // Made one after the other: a parser's constructor uses the process's one SDK context.
    auto const firstParser = Zel::Ptr<BfResourceParser>( emptyParser() );
    auto const secondParser = Zel::Ptr<BfResourceParser>( emptyParser() );
    int own[ 2 ] = {};
    std::thread first( [ & ] { own[ 0 ] = surveysOfItsOwn( firstParser.get(), "first" ); } );
    std::thread second( [ & ] { own[ 1 ] = surveysOfItsOwn( secondParser.get(), "second" ); } );
    first.join();
    second.join();
    EXPECT_THAT( own, testing::ElementsAre( loads, loads ) );
    EXPECT_THAT( mine.files, testing::IsEmpty() );
    EXPECT_EQ( Context::surveySink(), &mine );
}

} // namespace
} // namespace BfResourceInfo
