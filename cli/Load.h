#pragma once

#include "cli/Commands.h"
#include "zel/Ptr.h"

namespace Bfri {

/// Makes the model of a switch configuration. A configuration that cannot be read is a Failure of status
/// notLoadable, and so is context data that cannot be used, unless it shall end the process as it ends every
/// process that does not handle assertions. What the library traces meanwhile goes to err.
Zel::Ptr<Model> load( String const& conf, OnBadData onBadData, std::ostream& err );

} // namespace Bfri
