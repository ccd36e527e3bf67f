#pragma once

#include "cli/grammar/Commands.h"

#include <functional>

namespace Bfri {

/// The answers of several configurations.
struct SeveralAnswers {
    std::vector<Row> rows = {};           ///< each starts with its configuration, as "conf"
    List failures = {};                   ///< the configurations without an answer, and why
    ExitStatus status = ExitStatus::done; ///< the worst
};

/// The rows of every configuration in the request, loaded one after the other. A configuration that fails is
/// reported, and does not keep the others from answering.
SeveralAnswers answersOf( Request const& request, Streams const& io,
                          std::function<std::vector<Row>( Configuration const& )> const& rowsOf );

/// Leaves the chosen rows, and says why there are none.
void chooseRows( std::vector<Row>& rows, Request const& request, RowSelection const& choice,
                 std::ostream& err );

/// A row with a configuration in front.
Row withConf( String const& conf, Row row );

} // namespace Bfri
