#pragma once

// What several passes need of the elements of "tables".

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/LooseJson.h"
#include "resourceinfo/parser/context/Survey.h"
#include "zel/Assert.h"

#include <optional>

/// The "handle" of an object with the file's pipe bits: the rule for every handle that is read. A missing
/// member or one that is no unsigned 32-bit number is fatal.
U32 getHandle( Context::Json value, BfResourceParserContext const& context );

/// The logical pipe of a table: its "logical_pipe", else "a" or "b" when the file's name ends with
/// "context_a.json" or "context_b.json", else empty. A value that is no object, and a "logical_pipe" that is
/// no string, are fatal.
String getLogicalPipe( Context::Json value, String const& fileName );

namespace Context {

/// Where a table's stage tables are, and how many it has over all its units.
struct StageTables {
    std::optional<Json> stages; ///< those of the table, or of its first unit
    U32 count = 0;
};

/// Finds them: in "stage_tables", or in "match_attributes", there in "units" or beside it. Fatal, in this
/// order:
/// "!table.HasMember( \"match_attributes\" )" for a table with both; "match_attributes.IsObject()";
/// "units.IsArray()"; "match_attributes.HasMember( \"stage_tables\" )";
/// "match_attributes[ \"stage_tables\" ].IsArray()"; "false" for a table with neither, after a trace line at
/// level 0.
StageTables findStageTables( Json table );

/// The same stage tables, one by one, for a survey.
std::vector<SurveyedStageTable> surveyStageTables( LooseJson table );

/// The handle of an object as getHandle takes it, for a survey.
std::optional<U32> surveyHandle( LooseJson value, BfResourceParserContext const& context );

/// What a placed table is, by its first stage table: "stage_table_type", or "wred" for a meter of
/// "meter_type" "red".
std::string_view stageTableType( Json table, Json stage );

/// While it lives, the failures of its thread name an element of "tables".
class TableScope : private Zel::InputScope {
  public:
    TableScope( Json table, U32 index ) : table_( table ), index_( index ) {}

  private:
    void locate( Zel::InputPlace& place ) const override;

    Json table_;
    U32 index_;
};

/// While it lives, the failures of its thread carry a handle: the one that is looked up, and leads to
/// nothing.
class HandleScope : private Zel::InputScope {
  public:
    explicit HandleScope( U32 handle ) : handle_( handle ) {}

  private:
    void locate( Zel::InputPlace& place ) const override { place.handle = handle_; }

    U32 handle_;
};

/// Hands each element of the document's "tables", which must be an array, to `step`, within its scope.
template<class Step>
void forEachTable( Json d, Step step ) {
    U32 index = 0;
    for( Json const table : d[ "tables" ] ) {
        TableScope const scope( table, index++ );
        step( table );
    }
}

} // namespace Context
