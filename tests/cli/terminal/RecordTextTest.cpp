#include "cli/terminal/RecordText.h"

#include "inspect/model/RecordKinds.h"

#include <gmock/gmock.h>
#include <set>

namespace {

using Bfri::Kind;
using Vessa::String;

TEST( Columns, AreOfFieldsThatThereAreEachOnce ) {
    for( Bfri::RecordKind const& kind : Bfri::recordKinds() ) {
        std::set<std::string_view> fields;
        for( Bfri::Field const& field : kind.blank() )
            fields.insert( field.name );
        ASSERT_FALSE( Bfri::columnsOf( kind.kind ).empty() ) << kind.one;
        for( Bfri::Column const& column : Bfri::columnsOf( kind.kind ) )
            EXPECT_EQ( fields.erase( column.field ), 1U ) << kind.one << ": " << column.title;
    }
}

TEST( Resources, HaveTheirTypeByName ) {
    struct {
        BfResourceType type;
        char const* name;
    } const rows[] = { { BfResourceType::phase0Match, "phase_0_match" },
                       { BfResourceType::ternaryMatch, "ternary_match" },
                       { BfResourceType::hashMatch, "hash_match" },
                       { BfResourceType::algorithmicTcamMatch, "algorithmic_tcam_match" },
                       { BfResourceType::matchWithNoKey, "match_with_no_key" },
                       { BfResourceType::hashAction, "hash_action" },
                       { BfResourceType::actionData, "action_data" },
                       { BfResourceType::selection, "selection" },
                       { BfResourceType::statistics, "statistics" },
                       { BfResourceType::meter, "meter" },
                       { BfResourceType::stateful, "stateful" },
                       { BfResourceType::wred, "wred" } };
    for( auto const& row : rows ) {
        BfResource record;
        record.type = static_cast<U32>( row.type );
        auto const shown = Bfri::rowForPeople( Kind::resources, Bfri::rowOf( record ) );
        EXPECT_EQ( Bfri::valueAs<String>( shown, "type" ), row.name );
    }
}

} // namespace
