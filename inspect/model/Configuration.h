#pragma once

#include "ostler/DeviceProfile.h"
#include "resourceinfo/BfResourceInfoIntf.h"
#include "resourceinfo/parser/context/Survey.h"
#include "zel/Ptr.h"

namespace Bfri {

using Vessa::String;
using Vessa::U32;

using Model = BfResourceInfo::BfResourceInfoIntf;

/// A loaded configuration: everything that a front end reads. Nothing in it refers to the process-wide
/// context of the SDK library, so any number of configurations live side by side, in any threads. Immutable.
struct Configuration {
    String path;                ///< of the switch configuration, or of the context file
    bool isContextFile = false; ///< a context file was given alone: pipe 0 runs it
    Zel::Ptr<Model> model = {};
    Ostler::DeviceProfile profile = {};
    std::vector<Context::FileSurvey> files =
        {}; ///< in the order in which they were read; empty without a survey

    BfResourceInfo::BfResourceParser const& parser() const { return *model->parser(); }
};

} // namespace Bfri
