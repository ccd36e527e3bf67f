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

/// The row with its configuration as the first field.
Row withConf( String const& conf, Row row );

} // namespace Bfri
