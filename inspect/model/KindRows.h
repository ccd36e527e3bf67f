#pragma once

// The rows of each kind of record, with every field, and for each kind a blank row of which only the types
// count.

#include "inspect/rows/Row.h"
#include "resourceinfo/BfResourceInfoIntf.h"

namespace Bfri {

using BfResourceInfo::BfResourceParser;

Row blankTable();
std::vector<Row> tableRows( BfResourceParser const& parser );
Row blankResource();
std::vector<Row> resourceRows( BfResourceParser const& parser );

// What belongs to tables: with the table if there is just one, or with the fact that there are several.
Row blankCounter();
std::vector<Row> counterRows( BfResourceParser const& parser );
Row blankMeter();
std::vector<Row> meterRows( BfResourceParser const& parser );
Row blankWred();
std::vector<Row> wredRows( BfResourceParser const& parser );
Row blankRegister();
std::vector<Row> registerRows( BfResourceParser const& parser );
Row blankHandle();
std::vector<Row> handleRows( BfResourceParser const& parser ); ///< placed tables, ascending

Row blankLearnQuanta();
std::vector<Row> learnQuantaRows( BfResourceParser const& parser );
Row blankAction();
std::vector<Row> actionRows( BfResourceParser const& parser );

// By name in the order of their bytes.
Row blankHeader();
std::vector<Row> headerRows( BfResourceParser const& parser );
Row blankHash();
std::vector<Row> hashRows( BfResourceParser const& parser );
Row blankPhv();
std::vector<Row> phvRows( BfResourceParser const& parser ); ///< one per field, of both directions

} // namespace Bfri
