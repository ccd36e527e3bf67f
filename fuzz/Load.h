#pragma once

#include "resourceinfo/BfResourceInfoIntf.h"

/// Loads a configuration. It must give a model whose every record can be asked for, or end in an assertion
/// error that says where; either leaves no entity behind. All else is a finding. Returns what it came to in
/// words: the model's counts and names, or the failure. `check`, if any, looks at a model that was made.
using ModelCheck = void ( * )( BfResourceInfo::BfResourceParser const& );
String load( String const& switchConf, ModelCheck check = nullptr );
