#include "resourceinfo/model/Records.h"
#include "resourceinfo/model/BfResourceParserContext.h"

#include <gtest/gtest.h>

namespace {

TEST( Records, KindsOfResourcesAreNumberedWithAGapAtEleven ) {
    struct Row {
        BfResourceType type;
        U32 number;
    };
    for( auto const& [ type, number ] :
         { Row{ BfResourceType::phase0Match, 0 }, Row{ BfResourceType::ternaryMatch, 1 },
           Row{ BfResourceType::hashMatch, 2 }, Row{ BfResourceType::algorithmicTcamMatch, 3 },
           Row{ BfResourceType::matchWithNoKey, 4 }, Row{ BfResourceType::hashAction, 5 },
           Row{ BfResourceType::actionData, 6 }, Row{ BfResourceType::selection, 7 },
           Row{ BfResourceType::statistics, 8 }, Row{ BfResourceType::meter, 9 },
           Row{ BfResourceType::stateful, 10 }, Row{ BfResourceType::wred, 12 } } )
        EXPECT_EQ( static_cast<U32>( type ), number );
}

TEST( Records, CopiesOwnTheirTexts ) {
    BfTableInfo copy;
    {
        BfTableInfo table;
        table.name = "a name that is longer than any small buffer of a string";
        table.logicalPipe = "a logical pipe that is longer than that as well";
        copy = table;
        table.name[ 0 ] = 'X';
    }
    EXPECT_EQ( copy.name, "a name that is longer than any small buffer of a string" );
    EXPECT_EQ( copy.logicalPipe, "a logical pipe that is longer than that as well" );
}

TEST( Records, NewOnesAreZeroAndEmpty ) {
    BfTableInfo const table;
    EXPECT_EQ( table.name, "" );
    EXPECT_EQ( table.totalEntries, 0 );
    EXPECT_FALSE( table.hitBitSupported );
    BfResourceParserContext const context;
    EXPECT_EQ( context.pipeMask.value(), 0 );
    EXPECT_EQ( context.handlePipeBits, 0 );
}

} // namespace
