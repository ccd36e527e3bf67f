#pragma once

#include "cli/grammar/Commands.h"
#include "inspect/load/Fault.h"
#include "zel/Ptr.h"

namespace Bfri {

/// Makes the model of a switch configuration. A configuration that cannot be read is a LoadFailure, and so is
/// context data that cannot be used, unless it shall end the process as it ends every process that does not
/// handle assertions. What the library traces meanwhile goes to err, and so does what is odd.
Zel::Ptr<Model> load( String const& conf, OnBadData onBadData, std::ostream& err );

/// The same, but what is odd goes nowhere.
Zel::Ptr<Model> loadSilently( String const& conf, OnBadData onBadData, std::ostream& err );

/// Where a fault is in its file: "at /tables/0, member "name", table 0"; empty when that is not known.
String placeText( Fault const& fault );

/// The context files that the configuration loaded last names, but whose pipes a later pipeline has, too: of
/// several pipelines with the same pipes only the last is read.
std::vector<String> unreadContextFiles( Model const& model );

} // namespace Bfri
