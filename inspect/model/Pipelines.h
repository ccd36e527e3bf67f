#pragma once

#include "inspect/model/Configuration.h"
#include "inspect/model/RecordKinds.h"

#include <vector>

namespace Bfri {

/// The programs of pipelines that a record is of: the surveys of their context files, in the order of the
/// configuration.
using Programs = std::vector<Context::FileSurvey const*>;

/// Those of each record of a kind, in the order of the kind's rows. A record that the model shares between
/// files of one name (header, hash, PHV field) or one handle has several; the others have one. None without a
/// survey. The configuration outlives them. Linear in its size.
std::vector<Programs> programsOf( Configuration const& configuration, Kind kind );

} // namespace Bfri
