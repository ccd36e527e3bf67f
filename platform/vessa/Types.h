#pragma once

#if __cplusplus < 202002L
#error "BfResourceInfo and its platform libraries need C++20 (-std=c++20)"
#endif

#include <cstdint>
#include <string>

namespace Vessa {

using U8 = std::uint8_t;
using U16 = std::uint16_t;
using U32 = std::uint32_t;
using U64 = std::uint64_t;
using S32 = std::int32_t;

/// The value string: compared and ordered byte for byte.
using String = std::string;

} // namespace Vessa
