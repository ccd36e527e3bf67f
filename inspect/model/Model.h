#pragma once

#include "resourceinfo/BfResourceInfoIntf.h"

namespace Bfri {

/// The model of one switch configuration: the library's interface entity, with its queries and its parser.
using Model = BfResourceInfo::BfResourceInfoIntf;

} // namespace Bfri
