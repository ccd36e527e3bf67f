#pragma once

#include "inspect/rows/Row.h"

namespace Bfri {

struct Command;

/// The keys of every answer and their meanings, in the notation that AnswerKeys.cpp explains.
extern char const* const answerKeys;

/// Whether a command prints JSON.
bool hasSchema( Command const& command );

/// The JSON Schema (2020-12) of a command's JSON answers, failures included.
Row schemaOf( Command const& command );

} // namespace Bfri
