#pragma once

#include "vessa/Types.h"

#include <string_view>
#include <vector>

namespace Bfri {

using Vessa::String;

/// The names that end in a suffix, which begins at a dot or right behind one: "ipv4.lpm" has "lpm" and
/// ".lpm", not "pm". Each once, in byte order.
std::vector<String> namesEndingIn( std::vector<String> const& names, std::string_view suffix );

/// The names that someone who wrote a word may have meant: close to it as a whole or in the part behind the
/// last dot, or with the word in them. Nearest first, at most five.
std::vector<String> nearest( std::vector<String> const& names, std::string_view word );

} // namespace Bfri
