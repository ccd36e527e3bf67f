#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "MatchKind.h"
#include "Program.h"
#include "Random.h"

namespace bfgen {

/// "l3.ipv4_host", say: a part of the program and a table that it would match in that way.
std::string_view inventTableName( Random& random, MatchKind kind );

/// A number of different actions.
std::vector<std::string_view> inventActionNames( Random& random, uint32_t count );

/// A number of different packet and metadata fields.
std::vector<Field> inventFields( Random& random, uint32_t count );

std::string_view inventConditionText( Random& random );

/// A number of different packet headers. A header is the same in all pipelines, which have to agree on its
/// size.
std::vector<Header> inventFlexibleHeaders( Random& random, uint32_t count );

} // namespace bfgen
