#pragma once

#include "inspect/model/Configuration.h"
#include "inspect/model/RecordKinds.h"

#include <vector>

namespace Bfri {

/// The programs that a record belongs to: the surveys of their context files, in the order of the
/// configuration.
using Programs = std::vector<Context::FileSurvey const*>;

/// The programs of each record of a kind, in the order of the kind's rows. A record that several context
/// files share in the model, by name (header, hash, PHV field) or by handle, has several; the others have
/// one. None without a survey. The configuration must outlive them. Linear in its size.
std::vector<Programs> programsOf( Configuration const& configuration, Kind kind );

} // namespace Bfri
