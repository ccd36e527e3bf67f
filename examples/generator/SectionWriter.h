#pragma once

#include "JsonWriter.h"
#include "Program.h"

namespace bfgen {

/// The sections of a context file beside the tables, each with the name it stands under.
void writeLearnQuanta( JsonWriter& json, Program const& program );
void writePhvAllocation( JsonWriter& json, Program const& program );
void writeFlexibleHeaders( JsonWriter& json, Program const& program );
void writeHashCalculations( JsonWriter& json, Program const& program );

} // namespace bfgen
