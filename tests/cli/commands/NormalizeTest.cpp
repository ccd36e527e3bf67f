#include "tests/cli/Inputs.h"

namespace {

TEST( Normalize, PrintsEachNameInItsTurn ) {
    auto const outcome =
        bfri( { "normalize", "--", "hdr.vlan[0].vid", "a$12.b[3]", "plain", "", "a$b", "a\n.\xFF", "-x.y" } );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_EQ( outcome.out, "hdr_vlan_0__vid\na_1__b_3_\nplain\n\na$b\na\\x0a_\\xff\n-x_y\n" );
    EXPECT_EQ( outcome.err, "" );
}

TEST( Normalize, NeedsAName ) {
    auto const outcome = bfri( { "normalize" } );
    EXPECT_EQ( outcome.status, 2 );
    EXPECT_EQ( outcome.err, "bfri: NAME is required\nRun 'bfri normalize --help' to see how it is used.\n" );
}

} // namespace
