#include "inspect/model/Kinds.h"
#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>

namespace {

using Bfri::kindOf;
using testing::ElementsAre;

class Kinds : public InFolder {};

TEST_F( Kinds, BearNamesInTheOrderOfTheListingsEachPairOnce ) {
    auto const model = emptyModel();
    auto& parser = model->parser();
    parser.bfHeadersIs( "x", BfHeaderInfo( 1 ) );
    for( char const* const table : { "b", "x", "b" } )
        parser.bfTablesPush( named<BfTableInfo>( table ) );
    std::vector<std::pair<String, String>> pairs;
    for( auto const& [ name, kind ] : Bfri::namesOfKinds( parser ) )
        pairs.emplace_back( kind->word, name );
    EXPECT_THAT( pairs, ElementsAre( std::pair( "tables", "b" ), std::pair( "tables", "x" ),
                                     std::pair( "headers", "x" ) ) );
}

TEST_F( Kinds, AreKnownBySingularAndPlural ) {
    for( Bfri::RecordKind const& kind : Bfri::recordKinds() ) {
        EXPECT_EQ( kindOf( kind.word ), &kind );
        EXPECT_EQ( kindOf( kind.one ), &kind );
    }
    for( char const* const word : { "", "Table", "tabl", "table ", "summary" } )
        EXPECT_EQ( kindOf( word ), nullptr ) << word;
}

} // namespace
