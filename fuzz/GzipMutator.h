#pragma once

#include <cstddef>
#include <cstdint>

/// Changes a gzip file in a buffer of `maxSize` bytes; returns the new size. Three times in four what is
/// packed, which is packed again, in one member or two; else any bytes.
std::size_t mutateGzip( std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed );
